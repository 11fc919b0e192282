#include "tools/book_reader/finished_book.h"

#include <QHash>
#include <algorithm>

#include "platform/core/books/book_protocol.h"
#include "text/comparison.h"
#include "tools/book_reader/text_form.h"

namespace lirovan::book_reader {

using namespace Qt::StringLiterals;
namespace {

// The words of a text or title, without numbers: "1. Giriş" and "Giriş" are one title.
QStringList titleWords(const QString& plain) {
    QStringList words;
    QString word;
    const auto finish = [&] {
        const bool hasLetter = std::any_of(word.begin(), word.end(), [](QChar u) { return u.isLetter(); });
        if (hasLetter) words += text::folded(word);
        word.clear();
    };
    for (const QChar unit : plain) {
        if (unit.isLetterOrNumber() || unit.isMark() || unit.isSurrogate())
            word += unit;
        else
            finish();
    }
    finish();
    return words;
}

QString withoutTags(const QByteArray& markup) {
    QByteArray out;
    for (qsizetype at = 0; at < markup.size();) {
        const qsizetype tag = markup.indexOf('<', at);
        out += markup.sliced(at, (tag < 0 ? markup.size() : tag) - at) + ' ';
        const qsizetype end = tag < 0 ? -1 : markup.indexOf('>', tag);
        at = end < 0 ? markup.size() : end + 1;
    }
    QString plain = QString::fromUtf8(out);
    for (const auto& [entity, sign] :
         {std::pair(u"&quot;", u"\""), {u"&lt;", u"<"}, {u"&gt;", u">"}, {u"&amp;", u"&"}})
        plain.replace(QStringView(entity).toString(), QStringView(sign).toString());
    return plain;
}

QString cleanTitle(const QString& title) {
    const QString plain = inTextForm(title).simplified();
    return plain.size() > 500 ? plain.left(499) + u'…' : plain;
}

}  // namespace

FinishedBook::FinishedBook(const Outline& outline) {
    for (const Entry& entry : outline.entries) {
        parts_.push_back({entry, {}, 0, false, false, false, -1, -1, {}});
        parts_.back().entry.title = cleanTitle(entry.title);
    }
}

void FinishedBook::append(int entry, const TopicText::Finished& piece) {
    if (entry < 0) return;
    Part& part = parts_[static_cast<size_t>(entry)];
    part.text += part.text.isEmpty() ? piece.text : '\n' + piece.text;
    part.words += piece.words;
    part.hasPictures |= piece.hasPictures;
}

void FinishedBook::appendNote(int entry, int note, TopicText::Finished text) {
    parts_[static_cast<size_t>(entry)].notes.emplace(note, std::move(text));
}

void FinishedBook::joinNotes() {
    for (Part& part : parts_) {
        bool first = true;
        for (auto& [number, note] : part.notes) {
            if (note.text.isEmpty()) continue;
            if (first && !part.text.isEmpty()) part.text += "\n<hr>";
            first = false;
            part.text += '\n' + note.text;
            part.words += note.words;
            part.hasPictures |= note.hasPictures;
        }
        part.notes.clear();
        if (part.text.startsWith('\n')) part.text.remove(0, 1);
    }
}

void FinishedBook::chooseTopics() {
    std::vector<bool> hasChildren(parts_.size());
    for (const Part& part : parts_)
        if (part.entry.parent >= 0) hasChildren[static_cast<size_t>(part.entry.parent)] = true;
    bool any = false;
    for (size_t i = 0; i < parts_.size(); ++i) {
        Part& part = parts_[i];
        const bool isOnlyTitle =
            part.words <= 60 && titleWords(withoutTags(part.text)) == titleWords(part.entry.title);
        const bool hasReading = part.words > 0 && (part.entry.isStart || !isOnlyTitle);
        part.isTopic = part.hasPictures || hasReading;
        part.isDropped = part.text.isEmpty() && !hasChildren[i] && (part.entry.isCover || part.entry.isStart);
        any |= part.isTopic;
    }
    if (any) return;
    for (Part& part : parts_) part.isTopic = part.words > 0;
}

void FinishedBook::carry(size_t from, size_t to, bool before) {
    Part &source = parts_[from], &target = parts_[to];
    target.text = before ? source.text + '\n' + target.text : target.text + '\n' + source.text;
    target.words += source.words;
    source.text.clear();
    source.words = 0;
    source.carrier = static_cast<int>(to);
}

// What stands in a level, mostly its heading, is read over the topic that follows, so that search finds it.
void FinishedBook::carryLevels() {
    int next = -1;
    for (size_t i = parts_.size(); i-- > 0;) {
        if (parts_[i].isTopic)
            next = static_cast<int>(i);
        else if (next >= 0)
            parts_[i].carrier = next,
            parts_[i].text.isEmpty() ? void() : carry(i, static_cast<size_t>(next), true);
    }
    int last = -1;
    for (size_t i = 0; i < parts_.size(); ++i) {
        if (parts_[i].isTopic)
            last = static_cast<int>(i);
        else if (parts_[i].carrier < 0 && last >= 0)
            parts_[i].carrier = last,
            parts_[i].text.isEmpty() ? void() : carry(i, static_cast<size_t>(last), false);
    }
}

// "Giriş" in three parts of a book says nothing in a list of hits.
void FinishedBook::nameTopics() {
    QHash<QString, int> count;
    for (const Part& part : parts_)
        if (part.isTopic) ++count[text::folded(part.entry.title)];
    std::vector<QString> titles;
    for (const Part& part : parts_) {
        QString title = part.entry.title;
        if (part.isTopic && part.entry.parent >= 0 && count.value(text::folded(title)) > 1) {
            const auto parent = static_cast<size_t>(part.entry.parent);
            // The parent's may be shared as well, and has that of its own parent by now.
            if (text::folded(parts_[parent].entry.title) != text::folded(title))
                title = titles[parent] + u" – "_s + title;
        }
        titles.push_back(title);
    }
    for (size_t i = 0; i < parts_.size(); ++i) parts_[i].entry.title = titles[i];
}

void FinishedBook::numberLines() {
    int number = 0;
    for (Part& part : parts_)
        if (!part.isDropped) part.number = number++;
}

Result<void> FinishedBook::writeTopic(const Part& part, Pictures& pictures, bool withPictures, Lines& lines) {
    const QByteArray& text = part.text;
    QByteArray out;
    out.reserve(text.size());
    for (qsizetype at = 0; at < text.size();) {
        const qsizetype quote = text.indexOf("=\"", at);
        if (quote < 0) {
            out += text.sliced(at);
            break;
        }
        const QByteArrayView rest = QByteArrayView(text).sliced(quote + 2);
        const bool topic = rest.startsWith("konu:"), picture = rest.startsWith("resim:");
        qsizetype digits = quote + 2 + (topic ? 5 : picture ? 6 : 0), end = digits;
        out += text.sliced(at, digits - at);
        while (end < text.size() && text[end] >= '0' && text[end] <= '9') ++end;
        if (topic || picture) {
            const int own = text.sliced(digits, end - digits).toInt();
            if (picture) {
                const auto [known, isNew] =
                    pictureNumbers_.emplace(own, static_cast<int>(pictureNumbers_.size()));
                if (isNew && withPictures) {
                    const Result<QByteArray> bytes = pictures.bytes(own);
                    if (!bytes) return bytes.error();
                    pictureBytes_ += bytes->size();
                    if (pictureBytes_ > platform::MaximalPicturesBytes)
                        return Error{u"Kitabın resimleri çok büyük."_s};
                    lines.picture(known->second, pictures[own].name.section(u'/', -1), pictures[own].type,
                                  *bytes);
                }
                out += QByteArray::number(known->second);
            } else {
                const Part& target = parts_[static_cast<size_t>(own)];
                const int carrier = target.isTopic ? own : target.carrier;
                out += QByteArray::number(carrier < 0 ? part.number
                                                      : parts_[static_cast<size_t>(carrier)].number);
            }
        } else {
            end = digits;
        }
        at = end;
    }
    if (out.size() > platform::MaximalTopicBytes)
        return Error{u"Kitabın “%1” bölümü çok büyük."_s.arg(part.entry.title)};
    const int parent = part.entry.parent < 0 ? -1 : parts_[static_cast<size_t>(part.entry.parent)].number;
    lines.topic(part.number, parent, part.entry.depth, part.entry.title, out, part.words);
    return {};
}

Result<void> FinishedBook::write(Pictures& pictures, bool withPictures, Lines& lines) {
    joinNotes();
    chooseTopics();
    carryLevels();
    nameTopics();
    numberLines();
    int written = 0;
    for (const Part& part : parts_) {
        if (part.isDropped) continue;
        if (const Result<void> topic = writeTopic(part, pictures, withPictures, lines); !topic) return topic;
        if (!lines.good()) return Error{u"Okuma durduruldu."_s};
        ++written;
    }
    lines.done(written, static_cast<int>(pictureNumbers_.size()));
    return {};
}

}  // namespace lirovan::book_reader
