#include "tools/book_reader/topic_text.h"

#include <algorithm>

#include "tools/book_reader/text_form.h"

namespace lirovan::book_reader {
namespace {

bool isLetter(QChar unit) {
    return unit.isLetter() || unit.isMark() || unit.isSurrogate();
}
bool isApostrophe(QChar unit) {
    return unit == u'\'' || unit == QChar(0x2019);
}

// How many units at the beginning of `piece` belong to the word that stands before it.
qsizetype wordEnd(QStringView piece) {
    qsizetype at = 0;
    for (; at < piece.size(); ++at) {
        const QChar unit = piece[at];
        const bool joins = isLetter(unit) || isInvisible(unit.unicode()) ||
                           (isApostrophe(unit) && at + 1 < piece.size() && piece[at + 1].isLetter());
        if (!joins) break;
    }
    return at;
}

bool isBlankText(QStringView piece) {
    return std::all_of(piece.begin(), piece.end(), [](QChar unit) {
        return isBlank(unit.unicode()) || unit.unicode() == 0x00AD || unit.unicode() == 0x200B ||
               unit.unicode() == 0xFEFF;
    });
}

}  // namespace

bool TopicText::sameInlines() const {
    return std::equal(wanted_.begin(), wanted_.end(), written_.begin(), written_.end(),
                      [](const Inline& a, const Inline& b) { return a.serial == b.serial; });
}

// A word goes on where emphasis begins or ends inside it, but not into a link or a raised sign: those mark
// notes.
bool TopicText::joinsOpening() const {
    const auto apart = [](const Inline& one) {
        return one.name == "a" || one.name == "sup" || one.name == "sub";
    };
    const auto [wanted, written] =
        std::mismatch(wanted_.begin(), wanted_.end(), written_.begin(), written_.end(),
                      [](const Inline& a, const Inline& b) { return a.serial == b.serial; });
    const auto raised = [](const Inline& one) { return one.name == "sup" || one.name == "sub"; };
    return std::none_of(wanted, wanted_.end(), apart) && std::none_of(written, written_.end(), raised);
}

void TopicText::takeWordEnd(QString& piece) {
    if (run_.isEmpty() || sameInlines() || !joinsOpening()) return;
    qsizetype last = run_.size() - 1;
    while (last >= 0 && isInvisible(run_[last].unicode())) --last;
    if (last < 0 || !isLetter(run_[last])) return;
    const qsizetype count = wordEnd(piece);
    run_ += QStringView(piece).first(count);
    piece.remove(0, count);
}

// Closes the inline elements that are no longer wanted.
void TopicText::closeExtra() {
    const auto [wanted, written] =
        std::mismatch(wanted_.begin(), wanted_.end(), written_.begin(), written_.end(),
                      [](const Inline& a, const Inline& b) { return a.serial == b.serial; });
    const size_t common = static_cast<size_t>(written - written_.begin());
    if (written_.size() == common) return;
    flush();
    while (written_.size() > common) {
        out_ += "</" + written_.back().name + '>';
        written_.pop_back();
    }
}

// The inline elements that are written become those that are wanted.
void TopicText::settle() {
    if (sameInlines()) return;
    closeExtra();
    flush();
    for (size_t next = written_.size(); next < wanted_.size(); ++next) {
        out_ += '<' + wanted_[next].name + wanted_[next].attributes + '>';
        written_.push_back(wanted_[next]);
    }
}

// A blank behind an element stands behind it, one before an element before it.
void TopicText::appendBlank() {
    closeExtra();
    run_ += u' ';
}

void TopicText::flush() {
    if (run_.isEmpty()) return;
    const bool keepLines =
        std::any_of(blocks_.begin(), blocks_.end(), [](const Block& b) { return b.kind.keepLines; });
    QString text = inTextForm(run_, keepLines);
    run_.clear();
    if (!keepLines && blankBefore_ && text.startsWith(u' ')) text.remove(0, 1);
    if (text.isEmpty()) return;
    blankBefore_ = text.endsWith(u' ');
    if (runCounts_) {
        words_ += countWords(text);
        // A word that began before the tag goes on.
        if (inWord_ && isWordCharacter(text.front().unicode())) --words_;
        inWord_ = isWordCharacter(text.back().unicode()) || text.back().isSurrogate();
    }
    out_ += escaped(text);
}

void TopicText::endInlines() {
    flush();
    while (!written_.empty()) {
        out_ += "</" + written_.back().name + '>';
        written_.pop_back();
    }
}

void TopicText::endRun() {
    while (run_.endsWith(u' ') || run_.endsWith(u'\n')) run_.chop(1);
    endInlines();
    inWord_ = false;
    blankBefore_ = true;
}

void TopicText::closeImplicit() {
    Block* block = innermost();
    if (!block || !block->implicit) return;
    if (block->written) out_ += "</" + block->kind.name + '>';
    blocks_.pop_back();
}

void TopicText::suspendTextOnly() {
    Block* block = innermost();
    if (!block || !block->kind.textOnly) return;
    if (block->written) {
        out_ += "</" + block->kind.name + '>';
        block->written = false;
        block->reopened = true;
    }
}

void TopicText::openBlock(const BlockKind& kind) {
    endRun();
    breakWanted_ = wroteInBlock_ = false;
    closeImplicit();
    suspendTextOnly();
    blocks_.push_back({kind, false, false, false});
}

void TopicText::closeBlock() {
    endRun();
    breakWanted_ = wroteInBlock_ = false;
    closeImplicit();
    if (blocks_.empty()) return;
    if (Block& block = blocks_.back(); block.kind.keepEmpty && !block.reopened) writeBlocks();
    if (blocks_.back().written) out_ += "</" + blocks_.back().kind.name + '>';
    blocks_.pop_back();
}

void TopicText::boundary() {
    Block* block = innermost();
    if (block && block->implicit) {
        endRun();
        closeImplicit();
        wroteInBlock_ = false;
    } else if (block && block->kind.holdsText) {
        if (wroteInBlock_) breakWanted_ = true;
    } else {
        endRun();
    }
}

void TopicText::openInline(const QByteArray& name, const QByteArray& attributes) {
    silent_.push_back(name.isEmpty());
    if (!name.isEmpty()) wanted_.push_back({++serial_, name, attributes});
}

void TopicText::closeInline() {
    if (silent_.empty()) return;
    if (!silent_.back() && !wanted_.empty()) wanted_.pop_back();
    silent_.pop_back();
}

void TopicText::writeBlocks() {
    for (size_t i = 0; i < blocks_.size(); ++i) {
        Block& block = blocks_[i];
        if (block.written || (block.kind.textOnly && i + 1 < blocks_.size())) continue;
        out_ += '<' + block.kind.name + block.kind.attributes + '>';
        block.written = true;
        wroteInBlock_ = false;
        blankBefore_ = true;
    }
}

void TopicText::writePlaces() {
    for (const QByteArray& id : places_) out_ += "<a id=\"" + id + "\"></a>";
    places_.clear();
}

// Opens what is needed before something that is read, at the place where it goes.
void TopicText::ensureHolder() {
    if (Block* block = innermost(); !block || !block->kind.holdsText) {
        endInlines();
        blocks_.push_back({{"P", {}, true, true, false, false}, false, true, false});
    }
    writeBlocks();
    if (breakWanted_) {
        endRun();
        out_ += "<br>";
        breakWanted_ = false;
    }
    if (!places_.empty()) {
        flush();
        writePlaces();
    }
    wroteInBlock_ = true;
}

void TopicText::text(QString piece, bool counts) {
    const bool keepLines =
        std::any_of(blocks_.begin(), blocks_.end(), [](const Block& b) { return b.kind.keepLines; });
    if (!keepLines && isBlankText(piece)) {
        if (wroteInBlock_ && !breakWanted_ &&
            std::any_of(piece.begin(), piece.end(), [](QChar u) { return isBlank(u.unicode()); }))
            appendBlank();
        return;
    }
    if (counts != runCounts_) {
        flush();
        runCounts_ = counts;
    }
    if (places_.empty() && !breakWanted_ && wroteInBlock_) {
        takeWordEnd(piece);
        qsizetype blanks = 0;
        while (!keepLines && blanks < piece.size() && isBlank(piece[blanks].unicode())) ++blanks;
        if (blanks > 0) appendBlank();
        piece.remove(0, blanks);
        if (piece.isEmpty()) return;
    }
    ensureHolder();
    if (!before_.isEmpty()) {
        flush();
        out_ += before_;
        before_.clear();
    }
    settle();
    run_ += piece;
}

void TopicText::lineBreak() {
    if (Block* block = innermost(); !block || !block->kind.holdsText || !wroteInBlock_) return;
    if (breakWanted_) ensureHolder();
    while (run_.endsWith(u' ')) run_.chop(1);
    settle();
    flush();
    out_ += "<br>";
    inWord_ = false;
    blankBefore_ = true;
}

void TopicText::rule() {
    endRun();
    closeImplicit();
    suspendTextOnly();
    if (out_.isEmpty() || out_.endsWith("<hr>")) return;
    for (const Block& block : blocks_)
        if (!block.written && !block.kind.textOnly) return;
    out_ += "<hr>";
}

void TopicText::picture(const QByteArray& attributes) {
    ensureHolder();
    settle();
    flush();
    out_ += "<img" + attributes + '>';
    pictures_ = true;
    inWord_ = false;
    blankBefore_ = false;
}

void TopicText::place(const QByteArray& id) {
    places_.push_back(id);
}

TopicText::Finished TopicText::take() {
    endRun();
    closeImplicit();
    for (auto block = blocks_.rbegin(); block != blocks_.rend(); ++block) {
        if (block->written) out_ += "</" + block->kind.name + '>';
        block->written = false;
        block->reopened = true;
    }
    // Places behind the last word.
    if (!places_.empty() && !out_.isEmpty()) writePlaces();
    while (out_.endsWith("<hr>")) out_.chop(4);
    Finished finished{std::move(out_), words_, pictures_};
    out_.clear();
    words_ = 0;
    pictures_ = breakWanted_ = wroteInBlock_ = inWord_ = false;
    blankBefore_ = true;
    return finished;
}

}  // namespace lirovan::book_reader
