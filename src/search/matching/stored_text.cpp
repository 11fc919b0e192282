#include "search/matching/stored_text.h"

#include <algorithm>

#include "text/alphabet.h"

namespace lirovan::search {
namespace {

bool isTrail(char byte) {
    return (static_cast<unsigned char>(byte) & 0xC0) == 0x80;
}

// How many units begin with a byte: with a lead byte one, with that of four bytes two.
unsigned char unitsAt(char byte) {
    return static_cast<unsigned char>(!isTrail(byte) + (static_cast<unsigned char>(byte) >= 0xF0));
}

// So many units that a byte holds their number, and the compiler can add many bytes at a time.
constexpr size_t Block = 64;

unsigned char unitsInBlock(std::string_view text, size_t at) {
    unsigned char sum = 0;
    for (size_t i = 0; i < Block; ++i) sum = static_cast<unsigned char>(sum + unitsAt(text[at + i]));
    return sum;
}

// Whether a block holds nothing but whole characters of one or two bytes, the first of which may have begun
// before it and the last of which may end behind it. Most blocks of Turkish do; the compiler makes this test
// many bytes wide, and no character is looked at one by one.
bool isShortCharacters(std::string_view text, size_t at) {
    unsigned char bad = 0;
    for (size_t i = at; i < at + Block; ++i) {
        const auto byte = static_cast<unsigned char>(text[i]),
                   before = static_cast<unsigned char>(text[i - 1]);
        const bool trail = (byte & 0xC0) == 0x80, expected = before >= 0xC2;
        bad =
            static_cast<unsigned char>(bad | (trail != expected) | (byte >= 0xE0) | ((byte & 0xFE) == 0xC0));
    }
    return bad == 0;
}

bool isValid(std::string_view text) {
    constexpr unsigned char FirstLead = 0xC0;
    size_t at = 0;
    while (at < text.size()) {
        if (at > 0 && text.size() - at >= Block && isShortCharacters(text, at)) {
            at += Block;
            continue;
        }
        const size_t begin = at > 0 && static_cast<unsigned char>(text[at - 1]) >= FirstLead ? at - 1 : at;
        at = std::min(at + Block, text.size());
        while (at < text.size() && isTrail(text[at])) ++at;
        const std::string_view piece = text.substr(begin, at - begin);
        if (!QByteArrayView(piece.data(), static_cast<qsizetype>(piece.size())).isValidUtf8()) return false;
    }
    // A character that the last block left open.
    return text.empty() || static_cast<unsigned char>(text.back()) < FirstLead;
}

size_t characterEnd(std::string_view text, size_t begin) {
    size_t end = begin + 1;
    while (end < text.size() && isTrail(text[end])) ++end;
    return end;
}

// The unit of the character at a byte. Of four bytes no character is a letter: no unit then.
char16_t unitAt(std::string_view text, size_t begin) {
    const auto lead = static_cast<unsigned char>(text[begin]);
    if (lead < 0x80) return lead;
    const size_t length = characterEnd(text, begin) - begin;
    const auto bits = [&](size_t i) {
        return static_cast<unsigned>(static_cast<unsigned char>(text[begin + i]) & 0x3F);
    };
    if (length == 2) return static_cast<char16_t>((lead & 0x1Fu) << 6 | bits(1));
    if (length == 3) return static_cast<char16_t>((lead & 0x0Fu) << 12 | bits(1) << 6 | bits(2));
    return 0;
}

}  // namespace

qint64 TagTest::next(qint64& known, char mark, size_t at) noexcept {
    if (known != None && known < static_cast<qint64>(at)) {
        const size_t found = text_.find(mark, at);
        known = found == std::string_view::npos ? None : static_cast<qint64>(found);
    }
    return known;
}

bool TagTest::inside(size_t at) noexcept {
    return next(less_, '<', at) > next(greater_, '>', at);
}

bool isWholeWord(std::string_view text, ByteRange hit) noexcept {
    // At the very beginning the hit's own first character stands for the one before it.
    size_t before = hit.begin;
    if (before > 0) --before;
    while (before > 0 && before < hit.begin && isTrail(text[before])) --before;
    return text::KontTumKelime(unitAt(text, before),
                               hit.end < text.size() ? std::optional(unitAt(text, hit.end)) : std::nullopt);
}

QByteArray properUtf8(std::string_view text) {
    const QByteArrayView bytes(text.data(), static_cast<qsizetype>(text.size()));
    if (isValid(text) && !bytes.startsWith("\xEF\xBB\xBF")) return {};
    return QString::fromUtf8(bytes).toUtf8();
}

size_t UnitCounter::byteOf(qint64 position) noexcept {
    for (; text_.size() - at_ >= Block; at_ += Block) {
        const unsigned char sum = unitsInBlock(text_, at_);
        if (units_ + sum >= position) break;
        units_ += sum;
    }
    // Up to the first byte of the unit's character.
    while (at_ < text_.size() && units_ + unitsAt(text_[at_]) < position) units_ += unitsAt(text_[at_++]);
    return units_ + 1 < position && at_ == text_.size() ? at_ + 1 : at_;
}

qint64 UnitCounter::position(size_t at) noexcept {
    for (; at - at_ >= Block; at_ += Block) units_ += unitsInBlock(text_, at_);
    for (; at_ < at; ++at_) units_ += unitsAt(text_[at_]);
    return units_ + 1;
}

std::optional<ByteRange> HitWalk::next() noexcept {
    while (const auto hit = pattern_.find(text_, from_)) {
        if (tags_.inside(hit->begin)) {
            from_ = hit->end;
        } else if (wholeWord_ && !isWholeWord(text_, *hit)) {
            from_ = characterEnd(text_, hit->begin);
        } else {
            from_ = hit->end;
            return hit;
        }
    }
    return std::nullopt;
}

}  // namespace lirovan::search
