// Markdown through md4c, with what that leaves out: a heading block with title and author, footnotes, and the
// names that links give to headings.
#include <md4c-html.h>
#include <QRegularExpression>

#include "text/comparison.h"
#include "tools/book_reader/open_source.h"
#include "tools/book_reader/source_text.h"

namespace lirovan::book_reader {

using namespace Qt::StringLiterals;
namespace {

bool isFence(QStringView line) {
    const QStringView rest = line.trimmed();
    return rest.startsWith(u"```") || rest.startsWith(u"~~~");
}

QString unquoted(QString value) {
    value = value.trimmed();
    if (value.size() > 1 && (value.startsWith(u'"') || value.startsWith(u'\'')) &&
        value.endsWith(value.front()))
        value = value.mid(1, value.size() - 2);
    return value;
}

// "---", keys and values, "---" or "...": taken out of `lines`.
void takeHeadingBlock(QStringList& lines, PlainBook& book) {
    if (lines.isEmpty() || lines.front().trimmed() != u"---") return;
    qsizetype end = 1;
    while (end < lines.size() && end < 200 && lines[end].trimmed() != u"---" &&
           lines[end].trimmed() != u"...")
        ++end;
    if (end >= lines.size() || end >= 200) return;
    for (qsizetype i = 1; i < end; ++i) {
        const qsizetype colon = lines[i].indexOf(u':');
        if (colon < 0) continue;
        const QString key = lines[i].left(colon).trimmed(), value = unquoted(lines[i].mid(colon + 1));
        if (key == u"title") book.title = value;
        if (key == u"author") book.author = value;
        if (key == u"lang") book.language = value;
    }
    lines.remove(0, end + 1);
}

struct Footnote {
    QString label;
    QStringList lines;
};

// Definitions "[^a]: …", with the indented lines that belong to them, taken out of `lines`.
std::vector<Footnote> takeFootnotes(QStringList& lines) {
    static const QRegularExpression definition(u"^ {0,3}\\[\\^([^\\]\\s]{1,64})\\]:[ \t]*(.*)$"_s);
    std::vector<Footnote> notes;
    QStringList kept;
    bool inNote = false, inFence = false;
    for (const QString& line : std::as_const(lines)) {
        if (!inNote && isFence(line)) inFence = !inFence;
        const QRegularExpressionMatch match = inFence ? QRegularExpressionMatch() : definition.match(line);
        if (match.hasMatch()) {
            notes.push_back({match.captured(1), {match.captured(2)}});
            inNote = true;
        } else if (inNote && (line.startsWith(u"    ") || line.startsWith(u'\t'))) {
            notes.back().lines += line.mid(line.startsWith(u'\t') ? 1 : 4);
        } else if (inNote && line.trimmed().isEmpty()) {
            notes.back().lines += QString();
            kept += QString();
        } else {
            inNote = inNote && !notes.back().lines.isEmpty() && !notes.back().lines.back().isEmpty();
            if (inNote)
                notes.back().lines += line;
            else
                kept += line;
        }
    }
    lines = kept;
    return notes;
}

QString reference(qsizetype number) {
    return u"<a role=\"doc-noteref\" id=\"dn%1\" href=\"#dip%1\"><sup>%1</sup></a>"_s.arg(number);
}

// References outside code become links; labels without a definition stay as they are written.
void linkFootnotes(QStringList& lines, const std::vector<Footnote>& notes) {
    static const QRegularExpression mark(u"`+[^`]*`+|\\[\\^([^\\]\\s]{1,64})\\]"_s);
    bool inFence = false;
    for (QString& line : lines) {
        if (isFence(line)) inFence = !inFence;
        if (inFence || !line.contains(u"[^")) continue;
        QString out;
        qsizetype at = 0;
        for (auto found = mark.globalMatch(line); found.hasNext();) {
            const QRegularExpressionMatch match = found.next();
            const auto note = std::find_if(notes.begin(), notes.end(),
                                           [&](const Footnote& n) { return n.label == match.captured(1); });
            out += QStringView(line).sliced(at, match.capturedStart() - at);
            out += match.captured(1).isEmpty() || note == notes.end() ? match.captured(0)
                                                                      : reference(note - notes.begin() + 1);
            at = match.capturedEnd();
        }
        line = out + line.mid(at);
    }
}

void appendFootnotes(QStringList& lines, const std::vector<Footnote>& notes) {
    for (size_t i = 0; i < notes.size(); ++i) {
        lines += {QString(), u"<aside role=\"doc-footnote\" id=\"dip%1\">"_s.arg(i + 1), QString()};
        QStringList body = notes[i].lines;
        body.front().prepend(u"<a href=\"#dn%1\">%1.</a> "_s.arg(i + 1));
        lines += body + QStringList{QString(), u"</aside>"_s, QString()};
    }
}

// As writers of links to headings expect: small letters, hyphens for blanks, no punctuation.
QString headingName(QString title) {
    title.remove(QRegularExpression(u"<[^>]*>"_s));
    QString name;
    for (const QChar unit : text::lower(title.simplified())) {
        if (unit == u'ı')
            name += u'i';
        else if (unit == u' ')
            name += u'-';
        else if (unit.isLetterOrNumber() || unit == u'-' || unit == u'_' || unit == u'.')
            name += unit;
    }
    return name;
}

QByteArray withHeadingNames(const QByteArray& html) {
    static const QRegularExpression heading(u"<h([1-6])>(.*?)</h"_s,
                                            QRegularExpression::DotMatchesEverythingOption);
    const QString text = QString::fromUtf8(html);
    QString out;
    qsizetype at = 0;
    for (auto found = heading.globalMatch(text); found.hasNext();) {
        const QRegularExpressionMatch match = found.next();
        out += QStringView(text).sliced(at, match.capturedStart() - at);
        out += u"<h%1 id=\"%2\">"_s.arg(match.captured(1), headingName(match.captured(2)));
        at = match.capturedStart(2);
    }
    return (out + text.mid(at)).toUtf8();
}

void append(const MD_CHAR* piece, MD_SIZE size, void* target) {
    static_cast<QByteArray*>(target)->append(piece, static_cast<qsizetype>(size));
}

}  // namespace

PlainBook fromMarkdown(const QByteArray& bytes) {
    PlainBook book;
    const QString text = withPlainLineEnds(toUtf8(bytes, SourceKind::Plain));
    QStringList lines = text.split(u'\n');
    takeHeadingBlock(lines, book);
    const std::vector<Footnote> notes = takeFootnotes(lines);
    appendFootnotes(lines, notes);
    linkFootnotes(lines, notes);
    const QByteArray source = lines.join(u'\n').toUtf8();
    QByteArray html;
    md_html(source.constData(), static_cast<MD_SIZE>(source.size()), append, &html, MD_DIALECT_GITHUB,
            MD_HTML_FLAG_XHTML);
    book.html = "<html><body>" + withHeadingNames(html) + "</body></html>";
    return book;
}

}  // namespace lirovan::book_reader
