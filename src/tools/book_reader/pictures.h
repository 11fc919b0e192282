// The pictures of a book: which there are, what they are, and their bytes when they are handed over.
#pragma once

#include <QByteArray>
#include <QHash>
#include <QString>
#include <functional>
#include <set>
#include <vector>

#include "tools/book_reader/files.h"
#include "tools/book_reader/markup.h"
#include "tools/book_reader/package.h"

namespace lirovan::book_reader {

class Pictures {
  public:
    explicit Pictures(Files& files) : files_(files) {}

    /// Number of the picture that a file holds, or -1 with an entry in skipped().
    int ofFile(const QString& name);
    /// Number of a drawing that stands in a document; `base` is the document's name.
    int ofDrawing(const Markup& markup, quint32 svg, const QString& base);
    /// For what cannot be a picture of a library.
    void skip(const QString& name, const QString& reason);

    struct Picture {
        QString name, type;
        QByteArray drawing;  ///< sanitised SVG; other pictures are read again when they are needed
    };
    const Picture& operator[](int number) const { return pictures_[static_cast<size_t>(number)]; }
    Result<QByteArray> bytes(int number) const;
    const std::vector<Skipped>& skipped() const { return skipped_; }

  private:
    int add(const QString& name, const QString& type, QByteArray drawing);

    Files& files_;
    std::vector<Picture> pictures_;
    QHash<QString, int> byName_;
    std::vector<Skipped> skipped_;
    std::set<QString> named_;
    qint64 drawings_ = 0;
};

/// "image/png" and the like by the first bytes; empty for what a library does not take.
QString pictureType(const QByteArray& bytes);

/// The drawing as a document of its own, without scripts, foreign addresses and what moves. `embedded` gives
/// the data address of a picture that it shows, or nothing.
QByteArray sanitisedDrawing(const Markup& markup, quint32 svg,
                            const std::function<QByteArray(std::string_view)>& embedded);

}  // namespace lirovan::book_reader
