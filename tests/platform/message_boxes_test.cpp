#include "platform/ui/message_boxes.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QTimer>

#include "platform/ui/twips_pixels.h"

using namespace lirovan::platform;
using namespace Qt::StringLiterals;

namespace {

/// Does something with the window that opens next.
template <class Window>
void whenOpen(std::function<void(Window&)> act) {
    QTimer::singleShot(0, [act] {
        auto* window = qobject_cast<Window*>(QApplication::activeModalWidget());
        if (!window) return whenOpen<Window>(act);
        act(*window);
    });
}

QAbstractButton* buttonCalled(QWidget& window, QStringView text) {
    for (auto* button : window.findChildren<QAbstractButton*>())
        if (button->text().remove(u'&') == text) return button;
    ADD_FAILURE() << "no button " << text.toString().toStdString();
    return nullptr;
}

}  // namespace

TEST(MessageBoxes, AnswerWithTurkishButtons) {
    MessageBoxes boxes;
    const struct {
        Buttons buttons;
        QString press;  ///< empty: the box is closed
        Answer answer;
    } cases[] = {
        {Buttons::Ok, u"Tamam"_s, Answer::Ok},       {Buttons::Ok, u""_s, Answer::Ok},
        {Buttons::OkCancel, u"Tamam"_s, Answer::Ok}, {Buttons::OkCancel, u"İptal"_s, Answer::Cancel},
        {Buttons::OkCancel, u""_s, Answer::Cancel},  {Buttons::YesNo, u"Evet"_s, Answer::Yes},
        {Buttons::YesNo, u"Hayır"_s, Answer::No},    {Buttons::YesNo, u""_s, Answer::No},
    };
    for (const auto& test : cases) {
        whenOpen<QMessageBox>([&](QMessageBox& box) {
            EXPECT_EQ(box.text(), u"<b>metin</b>");
            EXPECT_EQ(box.textFormat(), Qt::PlainText);
            EXPECT_EQ(box.icon(), QMessageBox::Critical);
            EXPECT_GE(box.width(), box.fontMetrics().horizontalAdvance(box.windowTitle()) + 80);
            if (test.press.isEmpty()) return box.reject();
            if (auto* button = buttonCalled(box, test.press)) button->click();
        });
        EXPECT_EQ(boxes.show({u"<b>metin</b>"_s, u"Uzun Bir Başlık"_s, Icon::Critical, test.buttons}),
                  test.answer);
    }
}

TEST(MessageBoxes, AskForALineOfText) {
    MessageBoxes boxes;
    for (const bool accept : {true, false}) {
        whenOpen<QDialog>([&](QDialog& dialog) {
            auto* line = dialog.findChild<QLineEdit*>();
            ASSERT_TRUE(line);
            EXPECT_EQ(line->text(), u"ilk");
            EXPECT_EQ(dialog.pos(), QPoint(120, 80));
            line->setText(u"yeni"_s);
            if (auto* button = buttonCalled(dialog, accept ? u"Tamam" : u"İptal")) button->click();
        });
        EXPECT_EQ(boxes.ask({u"Ad?"_s, u"Başlık"_s, u"ilk"_s, QPoint(120, 80)}),
                  accept ? std::optional(u"yeni"_s) : std::nullopt);
    }
}

TEST(Translations, MakeTheToolkitsOwnTextsTurkish) {
    QCoreApplication& application = *QCoreApplication::instance();
    ASSERT_TRUE(installTranslations(application)) << "the toolkit's translations are not installed";
    EXPECT_EQ(QCoreApplication::translate("QPlatformTheme", "Cancel"), u"İptal");
}

TEST(TwipsPixels, RoundOnceAndComeBack) {
    EXPECT_EQ(toPixels(1530_tw, 96), 102);
    EXPECT_EQ(toPixels({7.5}, 96), 1);
    EXPECT_EQ(toPixels({-7.5}, 96), -1);
    EXPECT_EQ(toPixels(1440_tw, 144), 144);
    for (const int dpi : {72, 96, 120, 144, 192})
        for (int pixels = -50; pixels < 3000; pixels += 7)
            EXPECT_EQ(toPixels(toTwips(pixels, dpi), dpi), pixels);
}
