#include "notes/note_list.h"

#include "platform/core/rtf/reader.h"

namespace lirovan::notes {

using namespace Qt::StringLiterals;
namespace {

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
    return inOneLine(
        first(textCharacters, rtf::read(QStringView(trimmed), {textCharacters, false}).plainText()));
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

Result<std::vector<ListedNote>> listedNotes(const NotesDatabase& notes,
                                            const std::function<QString(QDate)>& shortDate) {
    Result<std::vector<Note>> rows = notes.list(rtfForALine);
    if (!rows) return rows.error();
    std::vector<ListedNote> all;
    for (Note& note : *rows) {
        const bool cutOff = note.rtf.size() >= rtfForALine;
        if (cutOff && beginningOf(note.rtf).size() < textCharacters)
            if (const Result<std::optional<Note>> whole = notes.find(note.id); whole && *whole)
                note.rtf = (*whole)->rtf;
        all.push_back({note.id, note.date, note.title, listLine(note, shortDate)});
    }
    return all;
}

}  // namespace lirovan::notes
