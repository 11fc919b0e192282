// "Orana Göre Sırala": topics by their hits per 1,000 words of text.
#pragma once

#include <QString>
#include <string_view>

namespace lirovan::search {

/// The words of a stored text: what stands between blanks, tags and entities and has a letter or a digit.
/// Zero for markup alone. «<p>Bir&nbsp;<b>iki</b> - 3.</p>» has three.
qint64 wordsOfText(std::string_view text) noexcept;

struct Ratio {
    qint64 hits = 0;
    qint64 words = 0;  ///< a text without any counts as one word
};

/// Exact, without rounding.
bool isHigher(const Ratio& a, const Ratio& b) noexcept;

/// "binde" with one decimal, halves rounded up: {3, 80} gives «37,5», {2000, 1000} «2.000,0».
QString formatRatio(const Ratio& ratio);

}  // namespace lirovan::search
