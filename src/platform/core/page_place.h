// A place on a page as a reader would name it: what is read there. It is found again after the page was made
// anew, in another width or type size, and in another page with the same text.
#pragma once

#include <QByteArray>
#include <QString>
#include <QStringView>
#include <optional>

namespace lirovan::platform {

struct PagePlace {
    bool atTop = false;    ///< the page stands at its top; then the passage is what is seen there first
    QString passage = {};  ///< text from the place on, each run of blanks one; may be empty
    QString before = {};   ///< text in front of it, without blanks; tells equal passages apart
    double share =
        0;  ///< of the page's height that lies above the line: where the passage is not found any more
    double gap = 0;  ///< from the view's upper edge down to the passage's line, in heights of that line

    friend bool operator==(const PagePlace&, const PagePlace&) = default;
};

/// So many characters of a passage are taken where nothing is selected, and of a selection at most.
inline constexpr int PassageLength = 120, LongestPassage = 300, BeforeLength = 40;

/// For storing. The names are those of the fields.
QByteArray placeJson(const PagePlace& place);
/// Nothing where `json` is no such text.
std::optional<PagePlace> placeFromJson(const QByteArray& json);

/// A text without its blanks, as places are compared: markup leaves blanks between words or takes them.
QString withoutBlanks(QStringView text);
/// Where the place stands in a text without blanks: its passage behind `before`, or else the passage, or else
/// one half of it (the other may belong to a heading). -1: nowhere.
qsizetype findPlace(const QString& textWithoutBlanks, const PagePlace& place);

}  // namespace lirovan::platform
