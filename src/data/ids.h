// Ids of the library's rows as types that cannot be mixed up.
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

}  // namespace lirovan::data
