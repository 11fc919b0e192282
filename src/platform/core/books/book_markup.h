// What the texts of an added book may hold.
#pragma once

#include <QString>
#include <QStringView>
#include <functional>
#include <optional>

namespace lirovan::platform {

/// An address in a topic text: "konu:12", "konu:12#yer", "#yer", "resim:3".
struct BookAddress {
    enum class Kind { Topic, Place, Picture };
    Kind kind = Kind::Place;
    qint64 number = -1;  ///< of the topic or picture
    QString place;       ///< without "#"
    friend bool operator==(const BookAddress&, const BookAddress&) = default;
};

/// Nothing for any other address.
std::optional<BookAddress> bookAddress(QStringView text);
QString addressText(const BookAddress& address);

/// The first thing in a topic text that may not stand there, in Turkish: an element or attribute that is not
/// one of reading, a value without quotes, an element that is not closed where it should be, an address that
/// is none of the above, a comment. Elements and attributes may be in capitals or not.
std::optional<QString> bookMarkupFault(QStringView html);

/// The text with the address of every HREF and SRC as `changed` gives it; where it answers nothing, the
/// attribute goes (and a picture with it). For a text without a fault.
QString withAddresses(QStringView html,
                      const std::function<std::optional<BookAddress>(const BookAddress&)>& changed);

}  // namespace lirovan::platform
