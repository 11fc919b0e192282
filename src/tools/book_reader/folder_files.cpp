#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QUrl>

#include "tools/book_reader/files.h"
#include "tools/book_reader/limits.h"

namespace lirovan::book_reader {

using namespace Qt::StringLiterals;
namespace {

class FolderFiles : public Files {
  public:
    explicit FolderFiles(const QString& folder) : folder_(QFileInfo(folder).canonicalFilePath()) {}

    bool has(const QString& name) const override { return !path(name).isEmpty(); }

    Result<QByteArray> read(const QString& name, qint64 limit) override {
        QFile file(path(name));
        if (!file.open(QIODevice::ReadOnly)) return Error{u"“%1” okunamıyor."_s.arg(name)};
        const QByteArray bytes = file.read(limit + 1);
        if (bytes.size() > limit) return Error{u"“%1” çok büyük."_s.arg(name)};
        return bytes;
    }

  private:
    QString path(const QString& name) const {
        const QFileInfo info(folder_ + u'/' + name);
        const QString real = info.canonicalFilePath();
        return info.isFile() && real.startsWith(folder_ + u'/') ? real : QString();
    }

    QString folder_;
};

class Overlay : public Files {
  public:
    Overlay(const QString& name, QByteArray bytes, std::unique_ptr<Files> below)
        : name_(name), bytes_(std::move(bytes)), below_(std::move(below)) {}

    bool has(const QString& name) const override { return name == name_ || (below_ && below_->has(name)); }

    Result<QByteArray> read(const QString& name, qint64 limit) override {
        if (name == name_ && bytes_.size() <= limit) return bytes_;
        if (name == name_ || !below_) return Error{u"“%1” çok büyük."_s.arg(name)};
        return below_->read(name, limit);
    }

  private:
    QString name_;
    QByteArray bytes_;
    std::unique_ptr<Files> below_;
};

}  // namespace

std::unique_ptr<Files> openFolder(const QString& folder) {
    return std::make_unique<FolderFiles>(folder);
}

std::unique_ptr<Files> overlay(const QString& name, QByteArray bytes, std::unique_ptr<Files> below) {
    return std::make_unique<Overlay>(name, std::move(bytes), std::move(below));
}

QString resolvedName(const QString& base, QStringView relative) {
    const QString decoded = QUrl::fromPercentEncoding(relative.toUtf8());
    QStringList parts;
    if (!decoded.startsWith(u'/')) {
        parts = base.split(u'/');
        parts.removeLast();
    }
    for (const QString& part : decoded.split(u'/')) {
        if (part.isEmpty() || part == u".") continue;
        if (part != u"..")
            parts += part;
        else if (parts.isEmpty())
            return {};
        else
            parts.removeLast();
    }
    return parts.join(u'/');
}

}  // namespace lirovan::book_reader
