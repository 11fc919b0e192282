// Plain text: paragraphs between blank lines, headings told by blank lines and by capitals or numbers.
#include <QRegularExpression>
#include <algorithm>

#include "text/comparison.h"
#include "tools/book_reader/open_source.h"
#include "tools/book_reader/source_text.h"
#include "tools/book_reader/text_form.h"

namespace lirovan::book_reader {

using namespace Qt::StringLiterals;
namespace {

constexpr qsizetype LongestHeading = 80;
constexpr qsizetype FullLine = 60;  // a shorter line was ended on purpose

struct Block {
    QStringList lines;
    int blanksBefore = 0;
    int level = 0;  // of a heading
    bool isTitle = false;
};

std::vector<Block> blocksOf(const QString& text) {
    std::vector<Block> blocks;
    int blanks = 2;  // the beginning divides as well as blank lines do
    bool open = false;
    for (const QString& line : text.split(u'\n')) {
        if (line.trimmed().isEmpty()) {
            ++blanks;
            open = false;
            continue;
        }
        if (!open) blocks.push_back({{}, blanks, 0, false});
        open = true;
        blanks = 0;
        blocks.back().lines += line;
    }
    return blocks;
}

bool isShortLine(const Block& block) {
    if (block.lines.size() != 1) return false;
    const QString line = block.lines.front().trimmed();
    return line.size() <= LongestHeading && !line.endsWith(u'.') && !line.endsWith(u',') &&
           !line.endsWith(u';') && !line.endsWith(u':') && !line.startsWith(u'-') && !line.startsWith(u'*') &&
           std::any_of(line.begin(), line.end(), [](QChar u) { return u.isLetterOrNumber(); });
}

bool isInCapitals(const QString& line) {
    qsizetype letters = 0;
    for (const QChar unit : line) {
        if (unit.isLower()) return false;
        letters += unit.isUpper();
    }
    return letters > 1;
}

// "3", "3.", "IV.", "1.2 …": the parts of the number; 0 where there is none.
int numberLevel(const QString& line) {
    static const QRegularExpression number(u"^(\\d{1,3}(?:\\.\\d{1,3})*)(?:[.)]?\\s|[.)]?$)"_s);
    static const QRegularExpression roman(u"^[IVXLC]{1,6}[.)]?(\\s|$)"_s);
    if (const auto match = number.match(line); match.hasMatch())
        return static_cast<int>(match.captured(1).count(u'.')) + 1;
    return roman.match(line).hasMatch() ? 1 : 0;
}

bool namesPart(const QString& line) {
    static const QStringList words{u"bölüm"_s, u"kısım"_s, u"fasıl"_s, u"kitap"_s, u"cilt"_s};
    const QStringList own = text::lower(line).split(QRegularExpression(u"[^\\p{L}]+"_s), Qt::SkipEmptyParts);
    return std::any_of(words.begin(), words.end(),
                       [&](const QString& word) { return own.mid(0, 3).contains(word); });
}

// Two blank lines before and a line of its own make a heading; one is enough where it also looks like one.
void findHeadings(std::vector<Block>& blocks) {
    bool parts = false;
    for (size_t i = 0; i < blocks.size(); ++i) {
        Block& block = blocks[i];
        if (!isShortLine(block) || i + 1 == blocks.size()) continue;
        const QString line = block.lines.front().trimmed();
        const bool dividesTwice = block.blanksBefore >= 2 && blocks[i + 1].blanksBefore >= 1;
        if (isInCapitals(line) || namesPart(line))
            block.level = 1, parts = true;
        else if (const int level = numberLevel(line); level > 0)
            block.level = level + 1;
        else if (dividesTwice)
            block.level = 2;
    }
    if (parts) return;
    for (Block& block : blocks) block.level = std::max(0, block.level - 1);
}

// The first lines, where they stand alone, name the book and its author.
void takeTitle(std::vector<Block>& blocks, PlainBook& book) {
    if (blocks.size() < 2) return;
    Block& first = blocks.front();
    const bool isShort = std::all_of(first.lines.begin(), first.lines.end(), [](const QString& line) {
        return line.trimmed().size() <= LongestHeading && !line.trimmed().endsWith(u'.');
    });
    const bool headingsFollow =
        std::any_of(blocks.begin() + 1, blocks.end(), [](const Block& b) { return b.level > 0; });
    if (first.lines.size() > 3 || !isShort || !headingsFollow || blocks[1].blanksBefore < 2 ||
        namesPart(first.lines.front()))
        return;
    first.isTitle = true;
    first.level = 0;
    book.title = first.lines.front().trimmed();
    if (first.lines.size() > 1) book.author = first.lines[1].trimmed();
}

QByteArray html(QStringView line) {
    return escaped(line.trimmed().toString());
}

bool isListLine(const QString& line) {
    const QString rest = line.trimmed();
    return rest.startsWith(u"- ") || rest.startsWith(u"* ") || rest.startsWith(u"• ");
}

QByteArray htmlOf(const Block& block) {
    QByteArray out;
    if (block.level > 0) {
        const QByteArray tag = "h" + QByteArray::number(std::min(block.level, 6));
        return '<' + tag + '>' + html(block.lines.front()) + "</" + tag + ">\n";
    }
    if (block.isTitle) {
        out = "<h1 class=\"title\">" + html(block.lines.front()) + "</h1>\n";
        for (const QString& line : block.lines.mid(1)) out += "<p>" + html(line) + "</p>\n";
        return out;
    }
    if (std::all_of(block.lines.begin(), block.lines.end(), isListLine)) {
        for (const QString& line : block.lines)
            out += "<li>" + html(QStringView(line).trimmed().sliced(2)) + "</li>";
        return "<ul>" + out + "</ul>\n";
    }
    for (qsizetype i = 0; i < block.lines.size(); ++i) {
        out += html(block.lines[i]);
        if (i + 1 < block.lines.size())
            out += block.lines[i].trimmed().size() >= FullLine && !isListLine(block.lines[i + 1]) ? " "
                                                                                                  : "<br/>";
    }
    return "<p>" + out + "</p>\n";
}

}  // namespace

PlainBook fromPlainText(const QByteArray& bytes) {
    PlainBook book;
    const QString text = withPlainLineEnds(toUtf8(bytes, SourceKind::Plain));
    std::vector<Block> blocks = blocksOf(text);
    findHeadings(blocks);
    takeTitle(blocks, book);
    book.html = "<html><body>";
    for (const Block& block : blocks) book.html += htmlOf(block);
    book.html += "</body></html>";
    return book;
}

}  // namespace lirovan::book_reader
