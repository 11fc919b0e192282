#include "notes/note_editor.h"

#include <array>

#include "notes/note_text.h"
#include "platform/core/file_writer.h"
#include "platform/core/rtf/writer.h"

namespace lirovan::notes {
namespace {

using platform::Answer;
using platform::Buttons;
using platform::Icon;
using platform::Result;
using platform::Twips;
namespace rtf = platform::rtf;

struct ColorKey {
    QStringView key;
    rtf::Rgb value;
};

// In the order in which the state refresh tests them.
constexpr std::array colorKeys{ColorKey{key::Kirmizi, {255, 0, 0}}, ColorKey{key::Mavi, {0, 0, 255}},
                               ColorKey{key::Yesil, {0, 255, 0}}, ColorKey{key::Siyah, rtf::Black}};

struct StyleKey {
    QStringView key;
    Style style;
};

constexpr std::array styleKeys{StyleKey{key::Bold, Style::Bold}, StyleKey{key::Italic, Style::Italic},
                               StyleKey{key::Underline, Style::Underline}};

constexpr double NormalPoints = 10, StepPoints = 2, LeastPoints = 2;

QString captionOf(const QString& title) {
    return QStringLiteral("Not Defteri - ") + title;
}

}  // namespace

platform::TwipsRect editorPlace(const platform::MainFrame& frame) {
    return {frame.width() / 5, Twips{500}, frame.width() / 1.69, frame.height() - Twips{1530}};
}

NoteEditor::NoteEditor(Parts parts, OpenNotes openNotes, std::function<QDate()> today)
    : parts_(parts), openNotes_(std::move(openNotes)), today_(std::move(today)) {}

void NoteEditor::load(NoteDraft draft) {
    parts_.window.setCaption(QStringLiteral("Not Defteri"));
    draft_ = std::move(draft);
    if (const Result<void> opened = connect(); !opened)
        parts_.dialogs.show(platform::errorMessage(
            QStringLiteral(
                "Not dosyası açılamadı.\n%1\n\nNot defterine yazabilirsiniz; kaydederken dosya yeniden "
                "denenecek.")
                .arg(opened.error().message),
            QStringLiteral("Not Defteri")));
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
        {QStringLiteral(
             "Kaydedilmemiş bir not bulundu. Açmak istiyor musunuz?\n\n\"Hayır\" derseniz bu metin "
             "silinir."),
         QStringLiteral("Not Defteri"), Icon::Question, Buttons::YesNo});
    if (answer != Answer::Yes) return false;
    if (left.note.value > 0) {
        // Shown as the stored note with the changes that were not saved.
        const Result<std::optional<Note>> row = NotBaglanti_.find(left.note);
        if (!row || !*row || !put(**row)) txt_invisible_ = left.note, NotBasligi_ = left.title;
        // The note may have changed since; then the text was not made from what is stored now, and saving
        // meets a conflict.
        if (NoteDraft::version(storedRtf_) != left.version) storedRtf_.clear();
        parts_.window.setCaption(captionOf(NotBasligi_));
    }
    parts_.box.setDocument(left.text);
    parts_.box.moveToEnd();
    return true;
}

// --- Saving
// -----------------------------------------------------------------------------------------------------

void NoteEditor::save() {
    KayitIptal_ = saveFailed_ = false;
    if (txt_invisible_.value == 0)
        saveNew();
    else
        saveExisting();
}

void NoteEditor::saveNew() {
    const std::optional<QString> title =
        parts_.dialogs.ask({QStringLiteral("Not için bir başlık giriniz."), QStringLiteral("Not Başlığı"),
                            QStringLiteral("Not"), parts_.window.onScreen(Twips{500}, Twips{1000})});
    if (!title || title->trimmed().isEmpty()) {
        parts_.dialogs.show(
            platform::errorMessage(QStringLiteral("Başlık girmediniz! Kayıt işlemi iptal edildi."),
                                   QStringLiteral("Başlık Hatası")));
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
    const Result<NoteId> key = NotBaglanti_.add(title, rtf, today_());
    if (!key) return fail(key.error()), false;
    NotBasligi_ = title;
    txt_invisible_ = *key;
    parts_.window.setCaption(captionOf(title));
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
        {QStringLiteral("'%1' notunuzda yaptığınız değişiklikleri kaydetmek istiyormusunuz?")
             .arg(stored.title.trimmed()),
         QStringLiteral("Kaydet"), Icon::Question, Buttons::YesNo});
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
                    QStringLiteral(
                        "Bu not bu arada başka bir pencerede değiştirilmiş. Metniniz aynı başlıkla yeni "
                        "bir not olarak kaydedildi."),
                    QStringLiteral("Kaydet")));
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
        {QStringLiteral(
             "%1\n\nNotunuz kaydedilemedi; metni pencerede duruyor. Metni bir RTF dosyasına kaydetmek ister "
             "misiniz?")
             .arg(error.message),
         QStringLiteral("Kayıt Hatası"), Icon::Critical, Buttons::YesNo});
    if (answer != Answer::Yes) return;
    const QString name = fileTitle(NotBasligi_);
    const QString path =
        parts_.dialogs.askSavePath(QStringLiteral("Notu Dosyaya Kaydet"),
                                   (name.isEmpty() ? QStringLiteral("Not") : name) + QStringLiteral(".rtf"),
                                   QStringLiteral("RTF (*.rtf)"));
    if (path.isEmpty()) return;
    const Result<void> written = platform::writeWholeFile(path, rtf::write(parts_.box.document()));
    if (written)
        KayitIptal_ = saveFailed_ = false;
    else
        parts_.dialogs.show(platform::errorMessage(written.error().message, QStringLiteral("Kayıt Hatası")));
}

Result<void> NoteEditor::connect() {
    if (NotBaglanti_.isOpen()) return {};
    Result<NotesDatabase> notes = openNotes_();
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
    if (parts_.box.plainText().trimmed().isEmpty()) return;
    const Answer answer = parts_.dialogs.show({QStringLiteral("Notunuzu kaydetmek istiyor musunuz?"),
                                               QStringLiteral("Not Kayıt"), Icon::Question, Buttons::YesNo});
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
    parts_.window.setCaption(QStringLiteral("Not Defteri"));
}

void NoteEditor::open() {
    NotuKaydetSor();
    // A text that could not be written is not given up for another one.
    if (!saveFailed_) parts_.window.showNoteList();
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
    const bool blankNew = txt_invisible_.value == 0 && parts_.box.plainText().trimmed().isEmpty();
    if (blankNew || sameText(text, stored_))
        draft_.clear();
    else
        draft_.keep({txt_invisible_, NotBasligi_, {}, std::move(text)}, storedRtf_);
}

// --- For the note list
// ------------------------------------------------------------------------------------------

void NoteEditor::show(const Note& note) {
    if (unasked_) NotuKaydetSor();
    // A text that could not be written is not given up for another one; one that was to be saved and got no
    // title is set aside.
    if (saveFailed_ || (KayitIptal_ && !setTextAside())) return;
    if (put(note)) draft_.clear();
}

bool NoteEditor::setTextAside() {
    keepDraft();
    if (parts_.box.plainText().trimmed().isEmpty()) return true;
    const bool done = draft_.setAside();
    parts_.dialogs.show(platform::noticeMessage(
        done ? QStringLiteral(
                   "Kaydetmediğiniz metin saklandı. Not defterini bir dahaki açışınızda size sunulacak.")
             : QStringLiteral("Kaydetmediğiniz metin saklanamadı. Kaybolmaması için yerinde bırakıldı; not "
                              "açılmadı."),
        QStringLiteral("Not Defteri")));
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
    parts_.window.setCaption(captionOf(note.title));
    return true;
}

void NoteEditor::rowDeleted() {
    becomeNew();
    unasked_ = true;
    keepDraft();
}

// --- Commands
// ---------------------------------------------------------------------------------------------------

void NoteEditor::menu(QStringView item) {
    if (item == item::Yeni) return newNote();
    if (item == item::Ac) return open();
    if (item == item::Kaydet) return save();
    if (item == item::Yazdir) return printWithDialog();
    if (item == item::Cikis) return parts_.window.closeWindow();
    if (item == item::Buyult) return setFontSize(parts_.box.fontSize() + StepPoints);
    if (item == item::Normal) return setFontSize(NormalPoints);
    if (item == item::Kucult) return setFontSize(parts_.box.fontSize() - StepPoints);
    if (item == item::Kes) return cut();
    if (item == item::Kopyala) return copy();
    if (item == item::Yapistir) return paste();
}

void NoteEditor::button(QStringView key) {
    if (key == key::New) newNote();
    if (key == key::Open) open();
    if (key == key::Save) save();
    if (key == key::Cut) cut();
    if (key == key::Copy) copy();
    if (key == key::Paste) paste();
    if (key == key::Print) printDirectly();
    for (const StyleKey& style : styleKeys)
        if (key == style.key) toggle(style.style, key);
    for (const ColorKey& color : colorKeys)
        if (key == color.key) toggleColor(key);
    refreshState();
}

// The size 1.5, at which shrinking once stopped, lies below the least size.
void NoteEditor::setFontSize(double points) {
    if (points >= LeastPoints) parts_.box.setFontSize(points);
}

void NoteEditor::cut() {
    copy();
    parts_.box.replaceSelection({});
    parts_.box.setFocus();
}

void NoteEditor::copy() {
    parts_.clipboard.put(parts_.box.selection());
    parts_.box.setFocus();
}

void NoteEditor::printWithDialog() {
    const std::optional<platform::PrintTarget> target = parts_.printing.ask(parts_.box.hasSelection());
    if (target && !parts_.window.print(*target))
        parts_.dialogs.show(
            platform::errorMessage(QStringLiteral("Yazıcı algılanamadı!"), QStringLiteral("Yazıcı Hatası")));
}

void NoteEditor::printDirectly() {
    std::optional<platform::PrintTarget> target = parts_.printing.defaultPrinter();
    if (!target) return;
    target->range = parts_.box.hasSelection() ? platform::PrintRange::Selection : platform::PrintRange::Page;
    (void)parts_.window.print(*target);
}

void NoteEditor::toggle(Style style, QStringView key) {
    const bool on = !parts_.box.style(style).value_or(false);
    parts_.box.setStyle(style, on);
    parts_.window.setButtonPressed(key, on);
}

void NoteEditor::toggleColor(QStringView key) {
    for (const ColorKey& color : colorKeys) {
        if (color.key != key) continue;
        if (parts_.box.color() != color.value) {
            parts_.box.setColor(color.value);
            return pressOnly(key);
        }
        // A second time: back to black; black itself turns red.
        const ColorKey& other = key == key::Siyah ? colorKeys.front() : colorKeys.back();
        parts_.box.setColor(other.value);
        return pressOnly(other.key);
    }
}

void NoteEditor::pressOnly(QStringView colorKey) {
    for (const ColorKey& color : colorKeys) parts_.window.setButtonPressed(color.key, color.key == colorKey);
}

// --- The edit box
// -----------------------------------------------------------------------------------------------

void NoteEditor::refreshState() {
    for (const StyleKey& style : styleKeys)
        if (const std::optional<bool> on = parts_.box.style(style.style))
            parts_.window.setButtonPressed(style.key, *on);
    const std::optional<rtf::Rgb> shown = parts_.box.color();
    for (const ColorKey& color : colorKeys)
        if (shown == color.value) return pressOnly(color.key);
}

void NoteEditor::selectionChanged() {
    const bool selected = parts_.box.hasSelection();
    parts_.window.setItemEnabled(item::Kes, selected);
    parts_.window.setItemEnabled(item::Kopyala, selected);
    parts_.window.setButtonEnabled(key::Cut, selected);
    parts_.window.setButtonEnabled(key::Copy, selected);
    if (selected) {
        refreshState();
    } else {
        for (const StyleKey& style : styleKeys) parts_.window.setButtonPressed(style.key, false);
        for (const ColorKey& color : colorKeys) parts_.window.setButtonPressed(color.key, false);
    }
    if (!pasteEnabled_) clipboardChanged();  // some systems tell of a change late
}

void NoteEditor::clipboardChanged() {
    pasteEnabled_ = parts_.clipboard.hasText();
    parts_.window.setButtonEnabled(key::Paste, pasteEnabled_);
    parts_.window.setItemEnabled(item::Yapistir, pasteEnabled_);
}

void NoteEditor::rightButtonDown() {
    parts_.window.popUpSizes();
    refreshState();
}

}  // namespace lirovan::notes
