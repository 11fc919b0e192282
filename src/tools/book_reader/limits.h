// What one source may ask for. A book that wants more is refused with a sentence; real books stay far below.
#pragma once

#include <QtGlobal>

namespace lirovan::book_reader {

inline constexpr qint64 MaximalSourceBytes = qint64(2) << 30;  ///< the file itself
inline constexpr qint64 MaximalDocumentBytes = 24 << 20;       ///< one chapter, package or contents list
inline constexpr qint64 MaximalReadBytes = qint64(1) << 30;    ///< all that is unpacked for one book
inline constexpr qint64 MaximalEntries = 20'000;               ///< files in the container
inline constexpr int MaximalDepth = 1'000;                     ///< elements inside each other
inline constexpr qint64 MaximalTokens = 4'000'000;             ///< elements and texts of one document
inline constexpr qint64 MaximalPlaces = 300'000;               ///< ids that links of a book can lead to
inline constexpr qint64 MaximalLinks = 500'000;                ///< links of a book
/// A file inside the container that grows by more than this when it is unpacked, and to more than this, is a
/// trap and no book.
inline constexpr qint64 TrapFactor = 200;
inline constexpr qint64 TrapBytes = 16 << 20;

}  // namespace lirovan::book_reader
