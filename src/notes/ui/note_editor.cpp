#include "notes/ui/note_editor.h"

#include <QDate>

#include "notes/note_text.h"
#include "platform/core/file_writer.h"
#include "platform/core/rtf/writer.h"
#include "platform/ui/twips_pixels.h"

namespace lirovan::notes {

using namespace Qt::StringLiterals;

namespace {

using platform::Answer;
using platform::Buttons;
using platform::Icon;
using platform::Result;
using platform::Twips;
namespace rtf = platform::rtf;

QString captionOf(const QString& title) {
    return u"Not Defteri - "_s + title;
}

// Where on the screen a point of the window's frame lies, counted from its top left corner.
QPoint onScreen(const QWidget& window, Twips x, Twips y) {
    const QWidget& frame = window.parentWidget() ? *window.parentWidget() : window;
    return frame.mapToGlobal(QPoint(platform::toPixelsX(x, window), platform::toPixelsY(y, window)));
}

}  // namespace

platform::TwipsRect editorPlace(const platform::MainFrame& frame) {
    return {frame.width() / 5, Twips{500}, frame.width() / 1.69, frame.height() - Twips{1530}};
}

void NoteEditor::load(NoteDraft draft) {
    parts_.window.setWindowTitle(u"Not Defteri"_s);
    draft_ = std::move(draft);
    if (const Result<void> opened = connect(); !opened)
        parts_.dialogs.show(platform::errorMessage(
            u"Not dosyası açılamadı.\n%1\n\nNot defterine yazabilirsiniz; kaydederken dosya yeniden "
            "denenecek."_s.arg(opened.error().message),
            u"Not Defteri"_s));
    selectionChanged();
    clipboardChanged();

    while (const std::optional<Unsaved> left = draft_.left()) {
        // One that cannot be removed is asked about once, not without end.
        if (offerDraft(*left) || !draft_.clear()) break;
    }
}

// The draft stays on the disk until its text is saved or given up.
bool NoteEditor::offerDraft(const Unsaved& left) {
    const Answer answer = parts_.dialogs.show(
        {u"Kaydedilmemiş bir not bulundu. Açmak istiyor musunuz?\n\n\"Hayır\" derseniz bu metin "
         "silinir."_s,
         u"Not Defteri"_s, Icon::Question, Buttons::YesNo});
    if (answer != Answer::Yes) return false;
    if (left.note.value > 0) {
        // Shown as the stored note with the changes that were not saved.
        const Result<std::optional<Note>> row = NotBaglanti_.find(left.note);
        if (!row || !*row || !put(**row)) txt_invisible_ = left.note, NotBasligi_ = left.title;
        // The note may have changed since; then the text was not made from what is stored now, and saving
        // meets a conflict.
        if (NoteDraft::version(storedRtf_) != left.version) storedRtf_.clear();
        parts_.window.setWindowTitle(captionOf(NotBasligi_));
    }
    parts_.box.setDocument(left.text);
    parts_.box.moveToEnd();
    return true;
}

// --- Saving

void NoteEditor::save() {
    KayitIptal_ = saveFailed_ = false;
    if (txt_invisible_.value == 0)
        saveNew();
    else
        saveExisting();
}

void NoteEditor::saveNew() {
    const std::optional<QString> title =
        parts_.dialogs.ask({u"Not için bir başlık giriniz."_s, u"Not Başlığı"_s, u"Not"_s,
                            onScreen(parts_.window, Twips{500}, Twips{1000})});
    if (!title || title->trimmed().isEmpty()) {
        parts_.dialogs.show(
            platform::errorMessage(u"Başlık girmediniz! Kayıt işlemi iptal edildi."_s, u"Başlık Hatası"_s));
        KayitIptal_ = true;
        return;
    }
    NotBasligi_ = *title;
    insertAs(*title);
}

bool NoteEditor::insertAs(const QString& title) {
    if (!ensureOpen()) return false;
    const rtf::Document text = parts_.box.document();
    const QString rtf = storedRtf(text);
    const Result<NoteId> key = NotBaglanti_.add(title, rtf, QDate::currentDate());
    if (!key) return fail(key.error()), false;
    NotBasligi_ = title;
    txt_invisible_ = *key;
    parts_.window.setWindowTitle(captionOf(title));
    wasStored(text, rtf);
    return true;
}

void NoteEditor::saveExisting() {
    if (!ensureOpen()) return;
    const Result<std::optional<Note>> row = NotBaglanti_.find(txt_invisible_);
    if (!row) return fail(row.error());
    if (!*row) {
        insertAs(NotBasligi_);
        return;
    }
    const Note& stored = **row;
    const rtf::Document text = parts_.box.document();
    const bool changedHere = !sameText(text, stored_);
    if (!differs(text, stored.rtf)) {
        // Nothing to write; from here on the row as it stands now is the one that this text belongs to.
        storedRtf_ = stored.rtf;
        stored_ = text;
        draft_.clear();
        return;
    }
    // Another program has saved this note; only changes made here are worth a question.
    if (!changedHere) return;
    const Answer answer = parts_.dialogs.show(
        {u"'%1' notunuzda yaptığınız değişiklikleri kaydetmek istiyormusunuz?"_s.arg(stored.title.trimmed()),
         u"Kaydet"_s, Icon::Question, Buttons::YesNo});
    if (answer == Answer::Yes) write(stored, text);
}

void NoteEditor::write(const Note& stored, const rtf::Document& text) {
    const QString rtf = storedRtf(text);
    const Result<Change> change = NotBaglanti_.replaceRtf(stored.id, storedRtf_, rtf);
    if (!change) return fail(change.error());
    switch (*change) {
        case Change::Done:
            wasStored(text, rtf);
            break;
        case Change::Gone:
            insertAs(stored.title);
            break;
        case Change::Conflict:
            if (insertAs(stored.title))
                parts_.dialogs.show(platform::noticeMessage(
                    u"Bu not bu arada başka bir pencerede değiştirilmiş. Metniniz aynı başlıkla yeni "
                    "bir not olarak kaydedildi."_s,
                    u"Kaydet"_s));
            break;
    }
}

void NoteEditor::wasStored(const rtf::Document& text, const QString& rtf) {
    storedRtf_ = rtf;
    stored_ = text;
    draft_.clear();
}

// The window stays open and the text in it, unless the user has put the text into a file.
void NoteEditor::fail(const platform::Error& error) {
    KayitIptal_ = saveFailed_ = true;
    const Answer answer = parts_.dialogs.show(
        {u"%1\n\nNotunuz kaydedilemedi; metni pencerede duruyor. Metni bir RTF dosyasına kaydetmek ister "
         "misiniz?"_s.arg(error.message),
         u"Kayıt Hatası"_s, Icon::Critical, Buttons::YesNo});
    if (answer != Answer::Yes) return;
    const QString name = fileTitle(NotBasligi_);
    const QString path = parts_.dialogs.askSavePath(
        u"Notu Dosyaya Kaydet"_s, (name.isEmpty() ? u"Not"_s : name) + u".rtf"_s, u"RTF (*.rtf)"_s);
    if (path.isEmpty()) return;
    const Result<void> written = platform::writeWholeFile(path, rtf::write(parts_.box.document()));
    if (written)
        KayitIptal_ = saveFailed_ = false;
    else
        parts_.dialogs.show(platform::errorMessage(written.error().message, u"Kayıt Hatası"_s));
}

Result<void> NoteEditor::connect() {
    if (NotBaglanti_.isOpen()) return {};
    Result<NotesDatabase> notes = parts_.openNotes();
    if (!notes) return notes.error();
    NotBaglanti_ = std::move(*notes);
    return {};
}

bool NoteEditor::ensureOpen() {
    const Result<void> opened = connect();
    if (!opened) fail(opened.error());
    return bool(opened);
}

// Compared as the box shows them, since another program may have written NotRTF in its own way.
bool NoteEditor::differs(const rtf::Document& text, const QString& notRtf) {
    if (notRtf == storedRtf_) return !sameText(text, stored_);
    parts_.scratch.setDocument(textOf(notRtf));
    const bool same = sameText(text, parts_.scratch.document());
    parts_.scratch.setDocument({});
    return !same;
}

void NoteEditor::NotuKaydetSor() {
    unasked_ = false;
    if (txt_invisible_.value > 0) return save();
    KayitIptal_ = saveFailed_ = false;
    if (parts_.box.toPlainText().trimmed().isEmpty()) return;
    const Answer answer = parts_.dialogs.show(
        {u"Notunuzu kaydetmek istiyor musunuz?"_s, u"Not Kayıt"_s, Icon::Question, Buttons::YesNo});
    if (answer == Answer::Yes) save();
}

void NoteEditor::newNote() {
    NotuKaydetSor();
    if (KayitIptal_) return;
    parts_.box.setDocument({});
    becomeNew();
    draft_.clear();
}

void NoteEditor::becomeNew() {
    txt_invisible_ = {};
    NotBasligi_.clear();
    storedRtf_.clear();
    stored_ = {};
    parts_.window.setWindowTitle(u"Not Defteri"_s);
}

void NoteEditor::open() {
    NotuKaydetSor();
    // A text that could not be written is not given up for another one.
    if (!saveFailed_) parts_.showNoteList(*this);
}

bool NoteEditor::differsFromRow() {
    const rtf::Document text = parts_.box.document();
    const Result<std::optional<Note>> row = NotBaglanti_.find(txt_invisible_);
    if (!row) return !sameText(text, stored_);   // it cannot be read; what was read last serves
    return !*row || differs(text, (*row)->rtf);  // saving puts a vanished note back
}

bool NoteEditor::close() {
    KayitIptal_ = saveFailed_ = false;
    if (txt_invisible_.value == 0 || differsFromRow()) newNote();
    if (KayitIptal_) return false;
    draft_.clear();
    draft_ = {};
    NotBaglanti_.close();
    return true;
}

void NoteEditor::keepDraft() {
    rtf::Document text = parts_.box.document();
    const bool blankNew = txt_invisible_.value == 0 && parts_.box.toPlainText().trimmed().isEmpty();
    if (blankNew || sameText(text, stored_))
        draft_.clear();
    else
        draft_.keep({txt_invisible_, NotBasligi_, {}, std::move(text)}, storedRtf_);
}

// --- For the note list

void NoteEditor::show(const Note& note) {
    if (unasked_) NotuKaydetSor();
    // A text that could not be written is not given up for another one; one that was to be saved and got no
    // title is set aside.
    if (saveFailed_ || (KayitIptal_ && !setTextAside())) return;
    if (put(note)) draft_.clear();
}

bool NoteEditor::setTextAside() {
    keepDraft();
    if (parts_.box.toPlainText().trimmed().isEmpty()) return true;
    const bool done = draft_.setAside();
    parts_.dialogs.show(platform::noticeMessage(
        done ? u"Kaydetmediğiniz metin saklandı. Not defterini bir dahaki açışınızda size sunulacak."_s
             : u"Kaydetmediğiniz metin saklanamadı. Kaybolmaması için yerinde bırakıldı; not "
               "açılmadı."_s,
        u"Not Defteri"_s));
    return done;
}

bool NoteEditor::put(const Note& note) {
    std::optional<rtf::Document> text = parts_.box.load(note.rtf);
    if (!text) return false;
    unasked_ = false;
    txt_invisible_ = note.id;
    NotBasligi_ = note.title;
    storedRtf_ = note.rtf;
    stored_ = std::move(*text);
    parts_.window.setWindowTitle(captionOf(note.title));
    return true;
}

void NoteEditor::rowDeleted() {
    becomeNew();
    unasked_ = true;
    keepDraft();
}

}  // namespace lirovan::notes
