// Places of the user's own, and folders that cannot be written, whoever runs the tests.
#pragma once

#include <sys/stat.h>
#include <unistd.h>

#include <QFile>
#include <QTemporaryDir>
#include <stdexcept>

#include "support/files.h"

namespace lirovan::test {

/// Lets everybody look into a folder, as "somebody else" below has to.
inline void letLookInto(const QString& folder) {
    ::chmod(QFile::encodeName(folder).constData(), 0755);
}

/// Cache and data folder of the user, empty; as long as it lives.
class UserPlaces {
  public:
    enum class Kind { Open, Shut };
    explicit UserPlaces(Kind kind = Kind::Open) {
        letLookInto(folder_.path());
        // Nothing can be made below a file.
        const QString top =
            kind == Kind::Open ? folder_.path() : writeFile(folder_.filePath(QStringLiteral("dosya")), {});
        qputenv("XDG_CACHE_HOME", QFile::encodeName(top + QStringLiteral("/cache")));
        qputenv("XDG_DATA_HOME", QFile::encodeName(top + QStringLiteral("/data")));
    }
    ~UserPlaces() {
        qunsetenv("XDG_CACHE_HOME");
        qunsetenv("XDG_DATA_HOME");
    }
    Q_DISABLE_COPY_MOVE(UserPlaces)

  private:
    QTemporaryDir folder_;
};

/// Takes the right to write away from a folder. From root nothing can be taken, so the question for rights
/// (which goes by the real user) is asked as somebody else meanwhile.
class ProtectedFolder {
  public:
    explicit ProtectedFolder(const QString& path) : path_(QFile::encodeName(path)) {
        constexpr uid_t Nobody = 65534;
        if (::chmod(path_.constData(), 0555) != 0 || (isRoot_ && ::setreuid(Nobody, uid_t(-1)) != 0))
            throw std::runtime_error("cannot protect a folder");
    }
    ~ProtectedFolder() {
        if (isRoot_ && ::setreuid(0, uid_t(-1)) != 0) std::abort();
        ::chmod(path_.constData(), 0755);
    }
    Q_DISABLE_COPY_MOVE(ProtectedFolder)

  private:
    const QByteArray path_;
    const bool isRoot_ = ::getuid() == 0;
};

}  // namespace lirovan::test
