#include "notes/ui/frm_IcerikCopy.h"

#include <QClipboard>
#include <QCloseEvent>
#include <QGuiApplication>
#include <QMdiSubWindow>
#include <QMenu>
#include <QMenuBar>
#include <QPrinter>
#include <QStatusBar>
#include <QToolBar>
#include <QToolButton>

#include "platform/ui/icons.h"
#include "platform/ui/rtf_document.h"
#include "platform/ui/system_printing.h"
#include "platform/ui/twips_pixels.h"

namespace lirovan::notes {
namespace {

struct Button {
    QStringView key;
    QStringView tooltip;
    bool twoState = false;
    Qt::Key withCtrl = {};  ///< its shortcut where no menu item has it
};

// Toolbar1; an empty key is a separator.
constexpr Button buttons[] = {
    {key::New, u"Yeni"},
    {key::Open, u"Aç"},
    {key::Save, u"Kaydet"},
    {},
    {key::Cut, u"Kes"},
    {key::Copy, u"Kopyala"},
    {key::Paste, u"Yapıştır"},
    {},
    {key::Print, u"Yazdır"},
    {},
    {key::Bold, u"Kalın", true, Qt::Key_B},
    {key::Italic, u"İtalik", true, Qt::Key_I},
    {key::Underline, u"Altı Çizili", true, Qt::Key_U},
    {},
    {key::Kirmizi, u"Kırmızı", true},
    {key::Mavi, u"Mavi", true},
    {key::Yesil, u"Yeşil", true},
    {key::Siyah, u"Siyah", true},
};

// A draft is written a moment after a change. One that takes noticeably long waits for a pause in typing.
constexpr int draftAfterMs = 2000, slowDraftMs = 10, latestDraftMs = 20'000, draftDoneMs = 250;

}  // namespace

frm_IcerikCopy::frm_IcerikCopy(Surroundings surroundings, QWidget* parent)
    : QMainWindow(parent),
      surroundings_(std::move(surroundings)),
      txt_Icerik(new NoteBox(this)),
      txt_Icerik2(new NoteBox(this)),
      editor_({*this, *txt_Icerik, *txt_Icerik2, clipboard_, surroundings_.dialogs, surroundings_.printing},
              surroundings_.openNotes) {
    setObjectName(QStringLiteral("frm_IcerikCopy"));
    setWindowFlag(Qt::Window, false);
    txt_Icerik->setObjectName(QStringLiteral("txt_Icerik"));
    txt_Icerik->setAccessibleName(QStringLiteral("Not"));
    txt_Icerik2->setObjectName(QStringLiteral("txt_Icerik2"));
    txt_Icerik2->hide();
    // Nobody looks at it, so its text needs no lines.
    static_cast<QTextEdit*>(txt_Icerik2)->document()->setLayoutEnabled(false);
    setCentralWidget(txt_Icerik);
    makeMenus();
    makeToolbar();
    watchTheBox();
    setFocusProxy(txt_Icerik);
}

void frm_IcerikCopy::addItem(QMenu* menu, QStringView name, const QString& caption,
                             const QKeySequence& shortcut) {
    QAction* action = menu->addAction(caption);
    action->setObjectName(name.toString());
    giveShortcut(*action, shortcut);
    connect(action, &QAction::triggered, this, [this, name] { editor_.menu(name); });
}

// The main window has items with the same keys; within this window its own come first (see event()).
void frm_IcerikCopy::giveShortcut(QAction& action, const QKeySequence& shortcut) {
    action.setShortcutContext(Qt::WidgetWithChildrenShortcut);
    action.setShortcut(shortcut);
    addAction(&action);
}

void frm_IcerikCopy::makeMenus() {
    menuBar()->setNativeMenuBar(false);
    QMenu* mnu_Dosya = menuBar()->addMenu(QStringLiteral("Do&sya"));
    mnu_Dosya->setObjectName(QStringLiteral("mnu_Dosya"));
    addItem(mnu_Dosya, item::Yeni, QStringLiteral("Ye&ni"), QKeySequence(Qt::CTRL | Qt::Key_N));
    addItem(mnu_Dosya, item::Ac, QStringLiteral("&Aç"), QKeySequence(Qt::CTRL | Qt::Key_O));
    addItem(mnu_Dosya, item::Kaydet, QStringLiteral("Kayde&t"), QKeySequence(Qt::CTRL | Qt::Key_S));
    mnu_Dosya->addSeparator();
    addItem(mnu_Dosya, item::Yazdir, QStringLiteral("Ya&zdır..."), QKeySequence(Qt::CTRL | Qt::Key_P));
    mnu_Dosya->addSeparator();
    addItem(mnu_Dosya, item::Cikis, QStringLiteral("&Çıkış"));

    mnu_yazi = new QMenu(this);
    mnu_yazi->setObjectName(QStringLiteral("mnu_yazi"));
    addItem(mnu_yazi, item::Buyult, QStringLiteral("Yazı Boyutunu Büyült"));
    addItem(mnu_yazi, item::Normal, QStringLiteral("Normal Yazı Boyutu"));
    addItem(mnu_yazi, item::Kucult, QStringLiteral("Yazı Boyutunu Küçült"));

    QMenu* mnu_Duzen = menuBar()->addMenu(QStringLiteral("&Düzen"));
    mnu_Duzen->setObjectName(QStringLiteral("mnu_Duzen"));
    addItem(mnu_Duzen, item::Kes, QStringLiteral("Ke&s"), QKeySequence(Qt::CTRL | Qt::Key_X));
    addItem(mnu_Duzen, item::Kopyala, QStringLiteral("&Kopyala"), QKeySequence(Qt::CTRL | Qt::Key_C));
    addItem(mnu_Duzen, item::Yapistir, QStringLiteral("&Yapıştır"), QKeySequence(Qt::CTRL | Qt::Key_V));
    frm_IcerikCopy::setItemEnabled(item::Yapistir, false);
}

void frm_IcerikCopy::makeToolbar() {
    QToolBar* toolbar = addToolBar(QStringLiteral("Araç Çubuğu"));
    toolbar->setObjectName(QStringLiteral("Toolbar1"));
    toolbar->setMovable(false);
    toolbar->setContextMenuPolicy(Qt::PreventContextMenu);
    toolbar->setIconSize({20, 20});
    for (const Button& button : buttons) {
        if (button.key.isEmpty()) {
            toolbar->addSeparator();
            continue;
        }
        QAction* action = toolbar->addAction(platform::icon(button.key), button.tooltip.toString());
        action->setObjectName(button.key.toString());
        action->setCheckable(button.twoState);
        if (button.withCtrl) {
            giveShortcut(*action, Qt::CTRL | button.withCtrl);
            action->setToolTip(
                QStringLiteral("%1 (Ctrl+%2)").arg(button.tooltip).arg(QChar(button.withCtrl)));
        }
        connect(action, &QAction::triggered, this, [this, key = button.key] { editor_.button(key); });
        QWidget* widget = toolbar->widgetForAction(action);
        widget->setObjectName(button.key.toString());
        widget->setAccessibleName(button.tooltip.toString());
        widget->setFocusPolicy(Qt::TabFocus);
    }
    for (const QStringView key : {key::Cut, key::Copy, key::Paste}) setButtonEnabled(key, false);
}

void frm_IcerikCopy::watchTheBox() {
    connect(txt_Icerik, &QTextEdit::selectionChanged, this, [this] { editor_.selectionChanged(); });
    connect(txt_Icerik, &QTextEdit::cursorPositionChanged, this, [this] { editor_.selectionChanged(); });
    connect(txt_Icerik, &NoteBox::inputHandled, this, [this] { editor_.inputHappened(); });
    connect(txt_Icerik, &NoteBox::rightButtonDown, this, [this] { editor_.rightButtonDown(); });
    connect(QGuiApplication::clipboard(), &QClipboard::dataChanged, this,
            [this] { editor_.clipboardChanged(); });

    draftTimer_.setSingleShot(true);
    connect(&draftTimer_, &QTimer::timeout, this, &frm_IcerikCopy::keepDraft);
    draftDoneTimer_.setSingleShot(true);
    connect(&draftDoneTimer_, &QTimer::timeout, this, &frm_IcerikCopy::showDraftState);
    statusBar()->setObjectName(QStringLiteral("draftState"));
    statusBar()->setSizeGripEnabled(false);
    statusBar()->hide();
    connect(txt_Icerik, &QTextEdit::textChanged, this, [this] {
        const bool first = !draftTimer_.isActive();
        if (first) unkept_.start();
        if (first || (draftIsSlow_ && unkept_.elapsed() < latestDraftMs)) draftTimer_.start(draftAfterMs);
    });
}

void frm_IcerikCopy::keepDraft() {
    if (txt_Icerik->isBusy()) return draftTimer_.start();  // half a text is none
    QElapsedTimer timer;
    timer.start();
    editor_.keepDraft();
    draftIsSlow_ = timer.elapsed() > slowDraftMs;
    draftDoneTimer_.start(draftDoneMs);
}

// A line at the foot and no box: nobody should be stopped in the middle of a word.
void frm_IcerikCopy::showDraftState() {
    const std::optional<QString> failure = editor_.draft().failure();
    if (!failure || !failure->isEmpty()) draftDoneTimer_.start(draftDoneMs);
    if (!failure) return;
    if (!failure->isEmpty() && !draftTimer_.isActive()) draftTimer_.start(latestDraftMs);  // tried again
    statusBar()->setVisible(!failure->isEmpty());
    statusBar()->setToolTip(*failure);
    statusBar()->showMessage(failure->isEmpty()
                                 ? QString()
                                 : QStringLiteral("Taslak saklanamıyor; metin yalnız bu pencerede duruyor."));
}

QAction* frm_IcerikCopy::itemFor(const QKeyEvent& event) const {
    // A key without a meaning would be taken for the shortcut of the items that have none.
    if (event.key() == 0) return nullptr;
    const QKeySequence pressed(event.keyCombination());
    const QList<QAction*> items = actions();
    const auto found = std::find_if(items.begin(), items.end(), [&pressed](const QAction* action) {
        return action->shortcut() == pressed;
    });
    return found == items.end() ? nullptr : *found;
}

// A key that both windows have as a shortcut would reach neither. This window takes it before shortcuts are
// looked up.
bool frm_IcerikCopy::event(QEvent* event) {
    if (event->type() == QEvent::ShortcutOverride && itemFor(*static_cast<QKeyEvent*>(event))) {
        event->accept();
        return true;
    }
    return QMainWindow::event(event);
}

void frm_IcerikCopy::keyPressEvent(QKeyEvent* event) {
    if (QAction* item = itemFor(*event))
        item->trigger();
    else
        QMainWindow::keyPressEvent(event);
}

void frm_IcerikCopy::closeEvent(QCloseEvent* event) {
    event->setAccepted(editor_.close());
    if (!event->isAccepted()) return;
    draftTimer_.stop();
    draftDoneTimer_.stop();
}

QPoint frm_IcerikCopy::onScreen(platform::Twips x, platform::Twips y) const {
    const QWidget* frame = parentWidget() ? parentWidget() : this;
    return frame->mapToGlobal(QPoint(platform::toPixelsX(x, *this), platform::toPixelsY(y, *this)));
}

void frm_IcerikCopy::setButtonPressed(QStringView key, bool pressed) {
    if (auto* action = findChild<QAction*>(key.toString())) action->setChecked(pressed);
}

void frm_IcerikCopy::setButtonEnabled(QStringView key, bool enabled) {
    if (auto* action = findChild<QAction*>(key.toString())) action->setEnabled(enabled);
}

void frm_IcerikCopy::setItemEnabled(QStringView item, bool enabled) {
    if (auto* action = findChild<QAction*>(item.toString())) action->setEnabled(enabled);
}

void frm_IcerikCopy::popUpSizes() {
    mnu_yazi->popup(txt_Icerik->menuPlace());
}

void frm_IcerikCopy::closeWindow() {
    // The frame asks this window in turn.
    if (auto* frame = qobject_cast<QMdiSubWindow*>(parentWidget()))
        frame->close();
    else
        close();
}

bool frm_IcerikCopy::print(const platform::PrintTarget& target) {
    QTextDocument sheet;
    sheet.setDefaultFont(txt_Icerik->font());
    sheet.setMetaInformation(QTextDocument::DocumentTitle, windowTitle());
    const bool selection = target.range == platform::PrintRange::Selection && txt_Icerik->hasSelection();
    platform::rtf::fill(sheet, selection ? txt_Icerik->selection() : txt_Icerik->document());
    if (!target.pdfPath.isEmpty()) {
        QPrinter pdf(QPrinter::HighResolution);
        pdf.setOutputFormat(QPrinter::PdfFormat);
        pdf.setOutputFileName(target.pdfPath);
        sheet.print(&pdf);
        return platform::isPrinted(pdf);
    }
    if (!target.printer || !target.printer->isValid()) return false;
    sheet.print(target.printer.get());
    return platform::isPrinted(*target.printer);
}

}  // namespace lirovan::notes
