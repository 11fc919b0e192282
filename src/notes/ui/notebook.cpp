#include "notes/ui/notebook.h"

#include "notes/notes_place.h"
#include "notes/ui/frm_NotList.h"
#include "platform/ui/icons.h"
#include "platform/ui/mdi_child.h"
#include "platform/ui/twips_pixels.h"

namespace lirovan::notes {

using namespace Qt::StringLiterals;

Notebook::Notebook(QMdiArea& area, platform::AppFolder folder, const platform::MainFrame& frame,
                   platform::Dialogs& dialogs, platform::Printing& printing, NotesDatabase::Importer importer,
                   QObject* parent)
    : QObject(parent),
      area_(area),
      folder_(std::move(folder)),
      frame_(frame),
      dialogs_(dialogs),
      printing_(printing),
      importer_(std::move(importer)) {}

// A window that was closed may stay for a while, hidden, until events are handled again.
bool Notebook::isOpen() const {
    return window_ && window_->parentWidget() && !window_->parentWidget()->isHidden();
}

void Notebook::show() {
    if (isOpen()) {
        if (auto* frame = qobject_cast<platform::MdiChild*>(window_->parentWidget())) frame->bringForward();
        window_->box().setFocus();
        return;
    }
    const NotesPlace place = notesPlace(folder_);
    const auto prepared = preparePlace(place);
    window_ = new frm_IcerikCopy({dialogs_, printing_, [this, place] { return openNotes(place, importer_); },
                                  [this](NoteEditor& editor) { showNoteList(editor); }});
    connect(&window_->box(), &NoteBox::linkWanted, this, &Notebook::linkWanted);
    auto* frame = new platform::MdiChild(u"notebookFrame"_s);
    frame->setWidget(window_);
    frame->setWindowIcon(platform::icon(u"not"));
    area_.addSubWindow(frame);
    frame->setPlace(editorPlace(frame_));
    frame->bringForward();
    window_->box().setFocus();
    window_->editor().load(NoteDraft::in(place.home));
    // What went wrong is told when the notes are opened.
    if (prepared && *prepared) dialogs_.show(platform::noticeMessage(placeNotice(place), u"Notlar"_s));
}

void Notebook::pasteFromClipboard() {
    show();
    window_->editor().paste();
}

bool Notebook::confirmClose() {
    if (!isOpen()) return true;
    show();  // the question belongs to a text that can be seen
    QWidget* frame = window_->parentWidget();
    return frame ? frame->close() : window_->close();
}

void Notebook::showNoteList(NoteEditor& editor) {
    if (window_) window_->findBar().closeBar();
    frm_NotList list(editor, dialogs_, area_.window());
    const ListPlace place = listPlace(frame_);
    list.move(area_.window()->frameGeometry().topLeft() +
              QPoint(platform::toPixelsX(place.left, area_), platform::toPixelsY(place.top, area_)));
    list.run();
    if (const auto& wish = list.openedBy(); wish && window_)
        window_->findBar().find(wish->query, wish->options);
    // After a message and the list some window managers leave no window active.
    area_.window()->activateWindow();
}

}  // namespace lirovan::notes
