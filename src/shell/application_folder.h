// Which folder holds the library, the notes and the page assets.
#pragma once

#include <QString>
#include <optional>

#include "platform/core/paths.h"
#include "platform/core/result.h"

namespace lirovan::shell {

struct FolderCandidates {
    std::optional<QString> option;  ///< --klasor DIR
    QString executable;             ///< the folder of the program
    QString shipped;                ///< data installed with the program for all users
    QString user;                   ///< the user's own data folder
};

/// The option's folder; else the program's folder if it holds kitaplar.vq; else, where shipped data is
/// installed, the user's folder, into which the files it still lacks are copied; else the program's folder.
/// Fails only when the user's folder cannot be filled.
platform::Result<platform::AppFolder> applicationFolder(const FolderCandidates& candidates);

/// Copies every file of `from` that `to` lacks or holds only the beginning of, kitaplar.vq last, each under
/// its name only once it is complete. Other files are never touched.
platform::Result<void> fillFolder(const QString& from, const QString& to);

}  // namespace lirovan::shell
