// Whether bytes that come from a foreign book are the picture that they are said to be.
#pragma once

#include <QByteArray>
#include <QString>
#include <optional>

namespace lirovan::platform {

/// Largest picture in pixels that a page is asked to show.
inline constexpr qint64 MaximalPicturePixels = 100'000'000;

/// What speaks against showing the picture, in Turkish: not of that type, without a size, too many pixels; a
/// drawing (SVG) with script, handlers of events, foreign addresses, embedded pages or a document type.
/// `type`: one of BookPictureTypes.
std::optional<QString> pictureFault(const QByteArray& bytes, QStringView type);

}  // namespace lirovan::platform
