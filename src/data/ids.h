// Ids of the library's rows, and positions in a text, as types that cannot be mixed up.
#pragma once

#include <QtGlobal>
#include <compare>
#include <functional>

namespace lirovan::data {

template <class Tag>
struct Id {
    qint64 value = 0;  ///< 0: none
    friend constexpr auto operator<=>(Id, Id) = default;
};

using AuthorId = Id<struct AuthorTag>;  ///< tbl_Yazar.YazarID
using BookId = Id<struct BookTag>;      ///< tbl_Kitaplar.KitapID
using TopicId = Id<struct TopicTag>;    ///< tbl_KonuBaslik.KonuID = tbl_Konu.KonuID

/// 1-based UTF-16 position in a text; 0 means "not found".
struct TextPosition {
    qint32 value = 0;
    friend constexpr auto operator<=>(TextPosition, TextPosition) = default;
};

/// Left out of the book selector and of every search, present in the book tree.
inline constexpr BookId HiddenBook{35};

}  // namespace lirovan::data
