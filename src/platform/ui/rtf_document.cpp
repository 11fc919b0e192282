#include "platform/ui/rtf_document.h"

#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>
#include <QTextFrame>
#include <QTextList>
#include <QTextTable>
#include <algorithm>
#include <cmath>
#include <unordered_map>

#include "platform/core/html_depth.h"
#include "platform/core/rtf/bounds.h"
#include "platform/core/rtf/writer.h"

namespace lirovan::platform::rtf {

using namespace Qt::StringLiterals;
namespace {

// Text documents measure in pixels of 1/96 inch, rich text in twips.
constexpr double twipsInPixel = 15;
constexpr double pointsInPixel = 0.75;
constexpr double indentStepPixels = 40;  // QTextDocument's own step of lists and quotations
constexpr int hangingTwips = 360;        // room for a bullet

QString fontName(const QTextCharFormat& format, const QFont& otherwise) {
    QString name = format.fontFamilies().toStringList().value(0);
    if (name.isEmpty()) name = format.property(QTextFormat::OldFontFamily).toString();
    if (name.isEmpty()) name = otherwise.family();
    // Pages name kinds of face as well as faces.
    if (name == u"serif") return u"Times New Roman"_s;
    if (name == u"sans-serif" || name == u"system-ui") return DefaultFont.toString();
    if (name == u"monospace") return u"Courier New"_s;
    return name;
}

double points(const QFont& font) {
    return font.pointSizeF() > 0 ? font.pointSizeF() : font.pixelSize() * pointsInPixel;
}

double points(const QTextCharFormat& format, const QFont& otherwise) {
    double size = points(otherwise);
    if (format.hasProperty(QTextFormat::FontPointSize))
        size = format.fontPointSize();
    else if (format.hasProperty(QTextFormat::FontPixelSize))
        size = format.intProperty(QTextFormat::FontPixelSize) * pointsInPixel;
    // <font size=4>, <h2>, <small>: steps from the normal size, as browsers scale them.
    constexpr double factors[] = {0.7, 0.8, 1.0, 1.2, 1.5, 2.0, 2.4};
    if (format.hasProperty(QTextFormat::FontSizeAdjustment))
        size *= factors[std::clamp(format.intProperty(QTextFormat::FontSizeAdjustment) + 2, 0, 6)];
    return size;
}

std::optional<Rgb> colorOf(const QBrush& brush) {
    if (brush.style() == Qt::NoBrush || brush.color().alpha() == 0) return std::nullopt;
    const QColor color = brush.color().toRgb();
    return Rgb{static_cast<std::uint8_t>(color.red()), static_cast<std::uint8_t>(color.green()),
               static_cast<std::uint8_t>(color.blue())};
}

CharFormat fromCharFormat(const QTextCharFormat& format, const QFont& otherwise) {
    CharFormat made;
    made.font = fontName(format, otherwise);
    made.halfPoints = static_cast<int>(std::lround(points(format, otherwise) * 2));
    made.bold = format.fontWeight() >= QFont::DemiBold;
    made.italic = format.fontItalic();
    made.underline = format.fontUnderline();
    made.strike = format.fontStrikeOut();
    if (format.verticalAlignment() == QTextCharFormat::AlignSuperScript) made.script = Script::Super;
    if (format.verticalAlignment() == QTextCharFormat::AlignSubScript) made.script = Script::Sub;
    if (format.hasProperty(QTextFormat::ForegroundBrush)) made.color = colorOf(format.foreground());
    if (format.hasProperty(QTextFormat::BackgroundBrush)) made.background = colorOf(format.background());
    if (format.isAnchor()) made.link = cleanLink(format.anchorHref());
    // Paper, not a marker pen.
    if (made.background == Rgb{255, 255, 255}) made.background.reset();
    // Letters of a page's dark head; a cell's colour does not come along.
    if (made.color == Rgb{255, 255, 255} && !made.background) made.color.reset();
    return made;
}

ParagraphFormat fromBlock(const QTextBlock& block) {
    const QTextBlockFormat format = block.blockFormat();
    ParagraphFormat made;
    const Qt::Alignment alignment = format.alignment() & Qt::AlignHorizontal_Mask;
    if (alignment & Qt::AlignRight) made.alignment = Alignment::Right;
    if (alignment & Qt::AlignHCenter) made.alignment = Alignment::Center;
    if (alignment & Qt::AlignJustify) made.alignment = Alignment::Justify;
    double indent = format.leftMargin() + format.indent() * indentStepPixels;
    if (const QTextList* list = block.textList()) indent += list->format().indent() * indentStepPixels;
    made.leftIndent = static_cast<int>(std::lround(indent * twipsInPixel));
    made.firstIndent = static_cast<int>(std::lround(format.textIndent() * twipsInPixel));
    if (block.textList()) made.firstIndent = -hangingTwips;
    return made;
}

QTextBlockFormat toBlockFormat(const ParagraphFormat& format) {
    QTextBlockFormat made;
    constexpr Qt::Alignment alignments[] = {Qt::AlignLeft, Qt::AlignHCenter, Qt::AlignRight,
                                            Qt::AlignJustify};
    if (format.alignment != Alignment::Left)
        made.setAlignment(alignments[static_cast<int>(format.alignment)]);
    if (format.leftIndent) made.setLeftMargin(format.leftIndent / twipsInPixel);
    if (format.firstIndent) made.setTextIndent(format.firstIndent / twipsInPixel);
    return made;
}

QString bullet(const QTextList& list, const QTextBlock& block) {
    const bool numbered = list.format().style() <= QTextListFormat::ListDecimal;
    return (numbered ? list.itemText(block) : u"•"_s) + u'\t';
}

// Walks the blocks of a text document that lie between two positions.
class Walker {
  public:
    Walker(const QTextDocument& document, int begin, int end)
        : font_(document.defaultFont()), begin_(begin), end_(end) {}

    /// A frame, or a cell that stands for one.
    template <class Frame>
    void walk(const Frame& frame) {
        for (auto it = frame.begin(); it != frame.end(); ++it) {
            if (const auto* table = qobject_cast<const QTextTable*>(it.currentFrame()))
                walkTable(*table);
            else if (it.currentFrame())
                walk(*it.currentFrame());
            else if (touches(it.currentBlock()) && !isBesideTable(it))
                paragraph(it.currentBlock());
        }
    }

    Document take() { return builder_.take(); }

  private:
    bool touches(const QTextBlock& block) const {
        return block.position() <= end_ && block.position() + block.length() > begin_;
    }

    // A document has an empty block before and behind a table, where nothing else stands there.
    static bool isBesideTable(QTextFrame::iterator it) {
        if (it.currentBlock().length() > 1) return false;
        QTextFrame::iterator before = it, after = it;
        --before;
        ++after;
        return before.currentFrame() || after.currentFrame();
    }

    void paragraph(const QTextBlock& block) {
        if (const QTextList* list = block.textList(); list && block.position() >= begin_)
            builder_.append(bullet(*list, block), fromCharFormat(block.charFormat(), font_));
        text(block);
        builder_.endParagraph(fromBlock(block));
    }

    void text(const QTextBlock& block) {
        for (auto it = block.begin(); !it.atEnd(); ++it) {
            const QTextFragment fragment = it.fragment();
            const int from = std::max(fragment.position(), begin_);
            const int to = std::min(fragment.position() + fragment.length(), end_);
            if (from >= to) continue;
            const QString whole = fragment.text();
            builder_.append(QStringView(whole).sliced(from - fragment.position(), to - from),
                            formatOf(fragment));
        }
    }

    const CharFormat& formatOf(const QTextFragment& fragment) {
        const auto [known, isNew] = formats_.try_emplace(fragment.charFormatIndex());
        if (isNew) known->second = fromCharFormat(fragment.charFormat(), font_);
        return known->second;
    }

    // A row becomes a paragraph. A cell that spans several places is met once at its own. A single column is
    // the frame of a page rather than a table: what stands in it keeps its paragraphs.
    void walkTable(const QTextTable& table) {
        for (int row = 0; row < table.rows(); ++row) {
            if (table.columns() == 1) {
                walk(table.cellAt(row, 0));
                continue;
            }
            bool first = true;
            for (int column = 0; column < table.columns(); ++column) {
                const QTextTableCell cell = table.cellAt(row, column);
                if (cell.row() != row || cell.column() != column) continue;
                if (!std::exchange(first, false)) builder_.append(u"\t", fromCharFormat({}, font_));
                walkCell(cell);
            }
            builder_.endParagraph({});
        }
    }

    void walkCell(const QTextTableCell& cell) {
        bool first = true;
        for (auto it = cell.begin(); it != cell.end(); ++it) {
            if (const auto* table = qobject_cast<const QTextTable*>(it.currentFrame())) {
                if (!builder_.atParagraphStart()) builder_.endParagraph({});
                walkTable(*table);
            } else if (it.currentFrame()) {
                walk(*it.currentFrame());
            } else {
                if (!std::exchange(first, false)) builder_.append(u" ", fromCharFormat({}, font_));
                text(it.currentBlock());
            }
        }
    }

    QFont font_;
    int begin_, end_;
    std::unordered_map<int, CharFormat> formats_;  // by the document's own numbers
    Builder builder_;
};

void insertRuns(QTextCursor& cursor, const Paragraph& paragraph, const QTextCharFormat* format) {
    for (const Run& run : paragraph.runs)
        cursor.insertText(run.text, format ? *format : toCharFormat(run.format));
}

// The first paragraph goes into the block at the cursor, the others into blocks of their own.
bool insertParagraphs(QTextCursor& cursor, const Document& document, const std::function<bool()>& goOn = {},
                      const QTextCharFormat* format = nullptr) {
    constexpr qsizetype aTurn = 200;
    qsizetype pieces = 0;
    for (const Paragraph& paragraph : document.paragraphs) {
        if (goOn && (pieces += 1 + std::ssize(paragraph.runs)) > aTurn) {
            if (!goOn()) return false;
            pieces = 0;
        }
        if (&paragraph != &document.paragraphs.front())
            cursor.insertBlock(toBlockFormat(paragraph.format), QTextCharFormat());
        else if (cursor.block().length() <= 1)
            cursor.setBlockFormat(toBlockFormat(paragraph.format));
        insertRuns(cursor, paragraph, format);
    }
    return true;
}

/// HTML comes from pages and from other programs; it loads no style sheet and no picture.
class OfflineDocument : public QTextDocument {
  protected:
    QVariant loadResource(int, const QUrl&) override { return {}; }
};

}  // namespace

QTextCharFormat toCharFormat(const CharFormat& format) {
    QTextCharFormat made;
    made.setFontFamilies({format.font});
    made.setFontPointSize(format.halfPoints / 2.0);
    if (format.bold) made.setFontWeight(QFont::Bold);
    if (format.italic) made.setFontItalic(true);
    if (format.underline) made.setFontUnderline(true);
    if (format.strike) made.setFontStrikeOut(true);
    if (format.script == Script::Super) made.setVerticalAlignment(QTextCharFormat::AlignSuperScript);
    if (format.script == Script::Sub) made.setVerticalAlignment(QTextCharFormat::AlignSubScript);
    const auto qt = [](const Rgb& color) { return QColor(color.red, color.green, color.blue); };
    if (format.background) made.setBackground(qt(*format.background));
    if (!format.link.isEmpty()) {
        made.setAnchor(true);
        made.setAnchorHref(format.link);
    }
    // On a marker's colour the text stays black under a dark desktop too.
    if (format.color || format.background) made.setForeground(qt(format.color.value_or(Black)));
    return made;
}

Document fromTextDocument(const QTextDocument& document) {
    Walker walker(document, 0, document.characterCount());
    walker.walk(*document.rootFrame());
    return walker.take();
}

Document fromSelection(const QTextCursor& cursor) {
    if (!cursor.hasSelection()) return {};
    Walker walker(*cursor.document(), cursor.selectionStart(), cursor.selectionEnd());
    walker.walk(*cursor.document()->rootFrame());
    return walker.take();
}

void fill(QTextDocument& target, const Document& document) {
    const bool undo = target.isUndoRedoEnabled();
    target.setUndoRedoEnabled(false);
    target.clear();
    QTextCursor cursor(&target);
    cursor.beginEditBlock();
    insertParagraphs(cursor, document);
    cursor.endEditBlock();
    target.setUndoRedoEnabled(undo);
    target.setModified(false);
}

void insert(QTextCursor& cursor, const Document& document) {
    cursor.beginEditBlock();
    cursor.removeSelectedText();
    insertParagraphs(cursor, document);
    cursor.endEditBlock();
}

bool insert(QTextCursor& cursor, const Document& document, const std::function<bool()>& goOn,
            const QTextCharFormat* format) {
    cursor.beginEditBlock();
    cursor.removeSelectedText();
    const bool done = insertParagraphs(cursor, document, goOn, format);
    cursor.endEditBlock();
    return done;
}

Document fromHtml(const QString& html) {
    OfflineDocument page;
    page.setUndoRedoEnabled(false);
    page.setDefaultFont(QFont(DefaultFont.toString(), DefaultHalfPoints / 2));
    page.setHtml(withBoundedDepth(html, MaxHtmlDepth));
    return fromTextDocument(page);
}

QByteArray htmlToRtf(const QString& html) {
    return write(fromHtml(html), Ending::Inline);
}

}  // namespace lirovan::platform::rtf
