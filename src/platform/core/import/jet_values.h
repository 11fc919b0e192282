// Stored values of Jet files as values of ours. Pure: bytes in, values out; nothing here trusts its input.
#pragma once

#include <QByteArrayView>
#include <QString>
#include <memory>
#include <optional>

struct UConverter;

namespace lirovan::platform {

/// Turns the stored bytes of text and memo columns into text.
class JetTextDecoder {
  public:
    /// Jet 4: UTF-16, plain or compressed. `codePage` is not asked for.
    static JetTextDecoder jet4();
    /// Jet 3: 8-bit text in this Windows code page; windows-1254 where it is 0 or unknown.
    static JetTextDecoder jet3(quint16 codePage);

    JetTextDecoder(JetTextDecoder&&) noexcept;
    JetTextDecoder& operator=(JetTextDecoder&&) noexcept;
    ~JetTextDecoder();

    /// Half a unit at the end is dropped; bytes without a meaning in the code page become U+FFFD.
    QString decode(QByteArrayView bytes) const;

  private:
    struct Closer {
        void operator()(UConverter* converter) const;
    };
    JetTextDecoder() = default;
    std::unique_ptr<UConverter, Closer> converter_;
};

/// A stored date (days since 1899-12-30, the fraction is the time of day, also before that day) as ISO text:
/// 39521.0 → "2008-03-14", 39521.5 → "2008-03-14T12:00:00", -1.25 → "1899-12-29T06:00:00".
/// Nothing for what is no date of the years 100 to 9999.
std::optional<QString> isoDate(double jetDate);

}  // namespace lirovan::platform
