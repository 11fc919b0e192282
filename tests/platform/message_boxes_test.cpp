#include "platform/ui/message_boxes.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QTimer>

#include "platform/ui/twips_pixels.h"

using namespace lirovan::platform;
using namespace Qt::StringLiterals;

namespace {

/// Does something with the window that opens next, and presses a button of it; "": the window is closed.
template <class Window>
void whenOpen(QStringView press, std::function<void(Window&)> act) {
    QTimer::singleShot(0, [press, act] {
        auto* window = qobject_cast<Window*>(QApplication::activeModalWidget());
        if (!window) return whenOpen<Window>(press, act);
        act(*window);
        for (auto* button : window->template findChildren<QAbstractButton*>())
            if (!press.isEmpty() && button->text().remove(u'&') == press) return button->click();
        EXPECT_TRUE(press.isEmpty()) << "no button " << press.toString().toStdString();
        window->reject();
    });
}

}  // namespace

TEST(MessageBoxes, AnswerWithTurkishButtons) {
    const std::tuple<Buttons, QStringView, Answer> cases[] = {
        {Buttons::Ok, u"Tamam", Answer::Ok},       {Buttons::Ok, u"", Answer::Ok},
        {Buttons::OkCancel, u"Tamam", Answer::Ok}, {Buttons::OkCancel, u"İptal", Answer::Cancel},
        {Buttons::OkCancel, u"", Answer::Cancel},  {Buttons::YesNo, u"Evet", Answer::Yes},
        {Buttons::YesNo, u"Hayır", Answer::No},
    };
    for (const auto& [buttons, press, answer] : cases) {
        whenOpen<QMessageBox>(press, [](QMessageBox& box) {
            EXPECT_EQ(box.text(), u"<b>metin</b>");
            EXPECT_EQ(box.textFormat(), Qt::PlainText);
            EXPECT_EQ(box.icon(), QMessageBox::Critical);
            EXPECT_GE(box.width(), box.fontMetrics().horizontalAdvance(box.windowTitle()) + 80);
        });
        EXPECT_EQ(MessageBoxes().show({u"<b>metin</b>"_s, u"Uzun Bir Başlık"_s, Icon::Critical, buttons}),
                  answer);
    }
}

TEST(MessageBoxes, TakeNoWayOutOfAQuestionForNo) {
    whenOpen<QMessageBox>(u"Evet", [](QMessageBox& box) {
        QKeyEvent escape(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier);
        QApplication::sendEvent(&box, &escape);
        box.close();
        EXPECT_TRUE(box.isVisible());
    });
    EXPECT_EQ(MessageBoxes().show({u"Silinsin mi?"_s, u"Soru"_s, Icon::Question, Buttons::YesNo}),
              Answer::Yes);
}

TEST(MessageBoxes, AskForALineOfText) {
    for (const bool accept : {true, false}) {
        whenOpen<QDialog>(accept ? u"Tamam" : u"İptal", [](QDialog& dialog) {
            auto* line = dialog.findChild<QLineEdit*>();
            ASSERT_TRUE(line);
            EXPECT_EQ(line->text(), u"ilk");
            EXPECT_EQ(dialog.pos(), QPoint(120, 80));
            line->setText(u"yeni"_s);
        });
        EXPECT_EQ(MessageBoxes().ask({u"Ad?"_s, u"Başlık"_s, u"ilk"_s, QPoint(120, 80)}),
                  accept ? std::optional(u"yeni"_s) : std::nullopt);
    }
}

TEST(Translations, MakeTheToolkitsOwnTextsTurkish) {
    ASSERT_TRUE(installTranslations(*qApp)) << "the toolkit's translations are not installed";
    EXPECT_EQ(QCoreApplication::translate("QPlatformTheme", "Cancel"), u"İptal");
    EXPECT_EQ(QCoreApplication::translate("QAbstractFileIconProvider", "Folder", "All other platforms"),
              u"Klasör");
}

TEST(TwipsPixels, RoundOnceAndComeBack) {
    EXPECT_EQ(toPixels(1530_tw, 96), 102);
    EXPECT_EQ(toPixels({7.5}, 96), 1);
    EXPECT_EQ(toPixels({-7.5}, 96), -1);
    for (const int dpi : {72, 96, 120, 144, 192})
        for (int pixels = -50; pixels < 3000; pixels += 7)
            EXPECT_EQ(toPixels(toTwips(pixels, dpi), dpi), pixels);
}
