#include "notes/ui/note_list.h"

#include "platform/core/rtf/reader.h"

namespace lirovan::notes {

using namespace Qt::StringLiterals;
namespace {

using platform::Answer;
using platform::Buttons;
using platform::Icon;
using platform::Result;
using platform::Twips;
namespace rtf = platform::rtf;

constexpr int dateWidth = 10, titleCharacters = 20, titleWidth = 25, textCharacters = 50;
// Enough rich text for a line of the list, unless another program wrote long tables before the text.
constexpr int rtfForALine = 4096;

// A title from another program may have several lines too.
QString inOneLine(QString text) {
    for (QChar& unit : text)
        if (unit < u' ' || unit == QChar::LineSeparator || unit == QChar::ParagraphSeparator) unit = u' ';
    return text;
}

// Not half of a character that takes two units.
QString first(int units, const QString& text) {
    const bool splits = text.size() > units && text.at(units - 1).isHighSurrogate();
    return text.left(splits ? units - 1 : units);
}

QString beginningOf(const QString& notRtf) {
    const QString trimmed = notRtf.trimmed();
    return inOneLine(first(textCharacters, rtf::read(QStringView(trimmed), {textCharacters}).plainText()));
}

QString dateOf(const Note& note, const std::function<QString(QDate)>& shortDate) {
    const QDate date = QDate::fromString(note.date.left(10), Qt::ISODate);
    return date.isValid() ? shortDate(date) : QString(dateWidth, u' ');
}

}  // namespace

QString listHeader() {
    return u"Not Tarihi   Başlık"_s + QString(19, u' ') + u"Not"_s;
}

QString listLine(const Note& note, const std::function<QString(QDate)>& shortDate) {
    return dateOf(note, shortDate) + u"   "_s +
           inOneLine(first(titleCharacters, note.title.trimmed())).leftJustified(titleWidth) +
           beginningOf(note.rtf) + u"..."_s;
}

ListPlace listPlace(const platform::MainFrame& frame) {
    return {frame.width() / 5.5, Twips{1550}};
}

void NoteList::load() {
    const Result<void> filled = notlistele();
    if (filled && lines_.size() > 1) return;
    dialogs_.show(platform::errorMessage(filled ? u"Gösterilecek not bulunamadı!"_s : filled.error().message,
                                         u"Not Açma Hatası"_s));
}

Result<void> NoteList::notlistele() {
    all_.clear();
    searchable_.reset();
    const Result<void> opened = editor_.connect();
    const NotesDatabase& notes = editor_.NotBaglanti();
    Result<std::vector<Note>> rows =
        opened ? notes.list(rtfForALine) : Result<std::vector<Note>>(opened.error());
    if (rows) {
        for (Note& note : *rows) {
            const bool cutOff = note.rtf.size() >= rtfForALine;
            if (cutOff && beginningOf(note.rtf).size() < textCharacters)
                if (const Result<std::optional<Note>> whole = notes.find(note.id); whole && *whole)
                    note.rtf = (*whole)->rtf;
            all_.push_back({note.id, note.date, note.title, listLine(note, shortDate_)});
        }
    }
    choose(wish_);
    if (!rows) return rows.error();
    return {};
}

void NoteList::choose(NoteWish wish) {
    wish_ = std::move(wish);
    hits_.reset();
    if (!wish_.query.trimmed().isEmpty()) {
        if (!searchable_) {
            auto read = searchableNotes(editor_.NotBaglanti());
            if (!read) {
                dialogs_.show(platform::errorMessage(read.error().message, u"Notlarda Arama"_s));
                return showChosen();
            }
            searchable_ = std::move(*read);
        }
        hits_ = hitsByNote(*searchable_, wish_.query, wish_.options);
    }
    showChosen();
}

void NoteList::showChosen() {
    lines_ = {{listHeader(), {}}};
    for (ListedNote& note : chosenNotes(all_, hits_, wish_.order))
        lines_.push_back({std::move(note.line), note.id});
    window_.setLines(lines_);
}

NoteId NoteList::selected() const {
    const int line = window_.selectedLine();
    return line >= 0 && line < std::ssize(lines_) ? lines_[static_cast<size_t>(line)].id : NoteId{};
}

void NoteList::mnu_Ac() {
    if (window_.selectedLine() >= 1) return openSelected();
    dialogs_.show(platform::errorMessage(u"Not seçmelisiniz!"_s, u"Not Açma Hatası"_s));
}

void NoteList::openSelected() {
    const NoteId id = selected();
    if (id.value == 0) return;
    const Result<std::optional<Note>> note = editor_.NotBaglanti().find(id);
    if (!note) {
        dialogs_.show(platform::errorMessage(note.error().message, u"Not Açma Hatası"_s));
        return;
    }
    if (*note) {
        editor_.show(**note);
        if (hits_ && editor_.currentNote() == id) openedBy_ = wish_;
    }
    window_.closeWindow();
}

void NoteList::mnu_Sil() {
    if (window_.selectedLine() < 1) {
        dialogs_.show(platform::errorMessage(u"Not seçmelisiniz!"_s, u"Not Silme Hatası"_s));
        return;
    }
    const Answer answer = dialogs_.show(
        {u"Seçili notu silmek istediğinize eminmisiniz?"_s, u"Not Silme"_s, Icon::None, Buttons::YesNo});
    if (answer != Answer::Yes) return;
    if (!deleteNote(selected())) dialogs_.show(platform::errorMessage(u"Hata oluştu!"_s, u"Hata"_s));
}

Result<void> NoteList::deleteNote(NoteId id) {
    const Result<void> removed = editor_.NotBaglanti().remove(id);
    if (!removed) return removed;
    // Its text stays in the notebook, as a new note.
    if (editor_.currentNote() == id) editor_.rowDeleted();
    return notlistele();
}

}  // namespace lirovan::notes
