#include "platform/ui/message_boxes.h"

#include <QApplication>
#include <QCloseEvent>
#include <QDialogButtonBox>
#include <QFileDialog>
#include <QFileInfo>
#include <QGridLayout>
#include <QInputDialog>
#include <QKeyEvent>
#include <QLabel>
#include <QLibraryInfo>
#include <QLocale>
#include <QMessageBox>
#include <QPushButton>
#include <QScreen>
#include <QStyle>
#include <QTranslator>
#include <algorithm>

namespace lirovan::platform {

using namespace Qt::StringLiterals;

namespace {

QMessageBox::Icon boxIcon(Icon icon) {
    switch (icon) {
        case Icon::Critical:
            return QMessageBox::Critical;
        case Icon::Information:
            return QMessageBox::Information;
        case Icon::Question:
            return QMessageBox::Question;
        case Icon::None:
            break;
    }
    return QMessageBox::NoIcon;
}

struct Choice {
    QString text;
    QMessageBox::ButtonRole role;
    Answer answer;
};

std::vector<Choice> choices(Buttons buttons) {
    const Choice ok{u"Tamam"_s, QMessageBox::AcceptRole, Answer::Ok};
    switch (buttons) {
        case Buttons::OkCancel:
            return {ok, {u"İptal"_s, QMessageBox::RejectRole, Answer::Cancel}};
        case Buttons::YesNo:
            return {{u"Evet"_s, QMessageBox::YesRole, Answer::Yes},
                    {u"Hayır"_s, QMessageBox::NoRole, Answer::No}};
        case Buttons::Ok:
            break;
    }
    return {ok};
}

/// Without a button to cancel with, there is no third way out: Esc and the close button answer nothing, since
/// "Hayır" may give up a text.
class Box : public QMessageBox {
  public:
    Box(QWidget* owner, bool mustChoose) : QMessageBox(owner), mustChoose_(mustChoose) {
        setWindowFlag(Qt::WindowCloseButtonHint, !mustChoose);
    }

  protected:
    void keyPressEvent(QKeyEvent* event) override {
        if (!mustChoose_ || !event->matches(QKeySequence::Cancel)) QMessageBox::keyPressEvent(event);
    }
    void closeEvent(QCloseEvent* event) override {
        if (mustChoose_)
            event->ignore();
        else
            QMessageBox::closeEvent(event);
    }

  private:
    const bool mustChoose_;
};

constexpr int InputWidth = 360;

/// As near to `place` as the screen allows.
void moveOnScreen(QWidget& window, QPoint place) {
    const QScreen* screen = QGuiApplication::screenAt(place);
    const QRect room = (screen ? screen : QGuiApplication::primaryScreen())->availableGeometry();
    const QSize size = window.size();
    window.move(std::clamp(place.x(), room.left(), std::max(room.left(), room.right() - size.width())),
                std::clamp(place.y(), room.top(), std::max(room.top(), room.bottom() - size.height())));
}

/// The window that the user looks at; a splash screen or a menu that is closing is none.
QWidget* owner() {
    if (QWidget* modal = QApplication::activeModalWidget()) return modal;
    return QApplication::activeWindow();
}

}  // namespace

Answer MessageBoxes::show(const Message& message) {
    Box box(owner(), message.buttons == Buttons::YesNo);
    box.setObjectName(u"messageBox"_s);
    box.setWindowTitle(message.title);
    box.setTextFormat(Qt::PlainText);
    box.setText(message.text);
    box.setIcon(boxIcon(message.icon));
    const std::vector<Choice> offered = choices(message.buttons);
    std::vector<QAbstractButton*> buttons;
    buttons.reserve(offered.size());
    for (const Choice& choice : offered) buttons.push_back(box.addButton(choice.text, choice.role));
    box.setDefaultButton(static_cast<QPushButton*>(buttons.front()));
    box.setEscapeButton(buttons.back());  // closing the box: Cancel, or the one button
    // Wide enough for the title, which may be bold, and the buttons beside it.
    QFont titleFont = box.font();
    titleFont.setBold(true);
    const int titleWidth = QFontMetrics(titleFont).horizontalAdvance(message.title);
    const int besideTitle = 4 * box.style()->pixelMetric(QStyle::PM_TitleBarHeight);
    if (auto* grid = qobject_cast<QGridLayout*>(box.layout()))
        grid->addItem(new QSpacerItem(titleWidth + besideTitle, 0), grid->rowCount(), 0, 1, -1);
    box.exec();
    const auto clicked = std::find(buttons.begin(), buttons.end(), box.clickedButton());
    const auto index = clicked == buttons.end() ? offered.size() - 1 : std::size_t(clicked - buttons.begin());
    return offered[index].answer;
}

std::optional<QString> MessageBoxes::ask(const Question& question) {
    QInputDialog dialog(owner());
    dialog.setObjectName(u"inputDialog"_s);
    dialog.setWindowTitle(question.title);
    dialog.setLabelText(question.prompt);
    // It may quote a page.
    if (auto* label = dialog.findChild<QLabel*>()) label->setTextFormat(Qt::PlainText);
    dialog.setTextValue(question.initial);
    dialog.setOkButtonText(u"Tamam"_s);
    dialog.setCancelButtonText(u"İptal"_s);
    // Wide enough for the title.
    dialog.resize(InputWidth, dialog.sizeHint().height());
    if (question.place) moveOnScreen(dialog, *question.place);
    if (dialog.exec() != QDialog::Accepted) return std::nullopt;
    return dialog.textValue();
}

namespace {

// "html" of "HTML (*.html)"
QString endingOf(const QString& kind) {
    return kind.section(u"(*."_s, 1).section(u')', 0, 0).section(u' ', 0, 0);
}

}  // namespace

QString MessageBoxes::askSavePath(const QString& title, const QString& suggestion, const QString& filter) {
    QFileDialog dialog(owner(), title, QFileInfo(suggestion).path(), filter);
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.selectFile(suggestion);
    // A name without an ending gets that of the kind that is chosen; one that was offered follows it.
    const auto follow = [&dialog](const QString& kind) {
        const QString ending = endingOf(kind);
        dialog.setDefaultSuffix(ending);
        const QFileInfo name(dialog.selectedFiles().value(0));
        const bool isOffered = dialog.nameFilters().join(u' ').contains(u"*."_s + name.suffix() + u')');
        if (!ending.isEmpty() && isOffered) dialog.selectFile(name.completeBaseName() + u'.' + ending);
    };
    QObject::connect(&dialog, &QFileDialog::filterSelected, &dialog, follow);
    dialog.setDefaultSuffix(endingOf(dialog.selectedNameFilter()));
    return dialog.exec() == QDialog::Accepted ? dialog.selectedFiles().value(0) : QString();
}

namespace {

// The toolkit moved its words for kinds of files to another class; the translations still have them under the
// old one.
class ToolkitTexts : public QTranslator {
  public:
    using QTranslator::QTranslator;

    QString translate(const char* context, const char* source, const char* note, int n) const override {
        QString text = QTranslator::translate(context, source, note, n);
        if (text.isEmpty() && qstrcmp(context, "QAbstractFileIconProvider") == 0)
            text = QTranslator::translate("QFileDialog", source, note, n);
        return text;
    }
};

}  // namespace

bool installTranslations(QCoreApplication& application) {
    const QLocale turkish(QLocale::Turkish, QLocale::Turkey);
    QLocale::setDefault(turkish);
    auto* translator = new ToolkitTexts(&application);
    if (!translator->load(turkish, u"qtbase"_s, u"_"_s, QLibraryInfo::path(QLibraryInfo::TranslationsPath))) {
        delete translator;
        return false;
    }
    return QCoreApplication::installTranslator(translator);
}

}  // namespace lirovan::platform
