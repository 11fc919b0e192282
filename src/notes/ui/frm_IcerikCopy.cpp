#include "notes/ui/frm_IcerikCopy.h"

#include <QClipboard>
#include <QCloseEvent>
#include <QGuiApplication>
#include <QStatusBar>

namespace lirovan::notes {

using namespace Qt::StringLiterals;
namespace {

// A draft is written a moment after a change. One that takes noticeably long waits for a pause in typing.
constexpr int draftAfterMs = 2000, slowDraftMs = 10, latestDraftMs = 20'000, draftDoneMs = 250;

}  // namespace

frm_IcerikCopy::frm_IcerikCopy(Surroundings surroundings, QWidget* parent)
    : QMainWindow(parent),
      txt_Icerik(new NoteBox(this)),
      txt_Icerik2(new NoteBox(this)),
      findBar_(new NoteFindBar(*txt_Icerik, this)),
      editor_({*this, *txt_Icerik, *txt_Icerik2, actions_, surroundings.dialogs, surroundings.printing,
               std::move(surroundings.openNotes), std::move(surroundings.showNoteList)}) {
    setObjectName(u"frm_IcerikCopy"_s);
    setWindowFlag(Qt::Window, false);
    txt_Icerik->setObjectName(u"txt_Icerik"_s);
    txt_Icerik->setAccessibleName(u"Not"_s);
    txt_Icerik2->setObjectName(u"txt_Icerik2"_s);
    txt_Icerik2->hide();
    // Nobody looks at it, so its text needs no lines.
    txt_Icerik2->QTextEdit::document()->setLayoutEnabled(false);
    setCentralWidget(txt_Icerik);
    actions_.make(*this, editor_);
    makeFindBar();
    watchTheBox();
    setFocusProxy(txt_Icerik);
}

void frm_IcerikCopy::makeFindBar() {
    addToolBar(Qt::BottomToolBarArea, findBar_);
    const auto add = [this](const QKeySequence& key, auto action) {
        auto* item = new QAction(this);
        item->setShortcutContext(Qt::WidgetWithChildrenShortcut);
        item->setShortcut(key);
        addAction(item);
        connect(item, &QAction::triggered, findBar_, action);
    };
    add(QKeySequence(Qt::CTRL | Qt::Key_F), [this] { findBar_->open(); });
    add(QKeySequence(Qt::Key_F3), [this] { findBar_->step(1); });
    add(QKeySequence(Qt::SHIFT | Qt::Key_F3), [this] { findBar_->step(-1); });
}

void frm_IcerikCopy::watchTheBox() {
    connect(txt_Icerik, &QTextEdit::selectionChanged, this, [this] { editor_.selectionChanged(); });
    connect(txt_Icerik, &QTextEdit::cursorPositionChanged, this, [this] { editor_.selectionChanged(); });
    connect(txt_Icerik, &NoteBox::inputHandled, this, [this] { editor_.refreshState(); });
    connect(txt_Icerik, &NoteBox::rightButtonDown, this, [this] { editor_.rightButtonDown(); });
    connect(QGuiApplication::clipboard(), &QClipboard::dataChanged, this,
            [this] { editor_.clipboardChanged(); });

    draftTimer_.setSingleShot(true);
    connect(&draftTimer_, &QTimer::timeout, this, &frm_IcerikCopy::keepDraft);
    draftDoneTimer_.setSingleShot(true);
    connect(&draftDoneTimer_, &QTimer::timeout, this, &frm_IcerikCopy::showDraftState);
    statusBar()->setObjectName(u"draftState"_s);
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
    statusBar()->showMessage(
        failure->isEmpty() ? QString() : u"Taslak saklanamıyor; metin yalnız bu pencerede duruyor."_s);
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

}  // namespace lirovan::notes
