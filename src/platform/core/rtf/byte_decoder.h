// Text of many code pages, by number, as rich text names them.
#pragma once

#include <QByteArrayView>
#include <QString>
#include <map>
#include <memory>

struct UConverter;

namespace lirovan::platform::rtf {

class ByteDecoder {
  public:
    ByteDecoder();
    ~ByteDecoder();

    /// Bytes without a meaning become U+FFFD. A code page that nobody knows is taken as windows-1252.
    QString decode(int codePage, QByteArrayView bytes);

    /// The code page of a font's \fcharset; 0: that of the document.
    static int ofCharset(int charset);

    static constexpr int SymbolCharset = 2;
    static constexpr int Western = 1252, Turkish = 1254;

  private:
    UConverter* converter(int codePage);
    struct Close {
        void operator()(UConverter* converter) const;
    };
    std::map<int, std::unique_ptr<UConverter, Close>> converters_;
};

}  // namespace lirovan::platform::rtf
