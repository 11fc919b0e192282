// The libraries that were open last, as the settings keep them.
#pragma once

#include <QStringList>

#include "shell/reg_api.h"

namespace lirovan::shell {

inline constexpr int MostRecentLibraries = 8;

/// Their folders, the latest first, without `current`; at most MostRecentLibraries.
QStringList recentLibraries(const reg_api& registry, const QString& current);

/// Puts a folder in front of the list.
void rememberLibrary(reg_api& registry, const QString& folder);
/// Takes one out that is no longer there.
void forgetLibrary(reg_api& registry, const QString& folder);

/// What a menu shows of a folder: its own name, and behind it as much of its place as `most` characters hold.
QString libraryCaption(const QString& folder, int most = 60);

}  // namespace lirovan::shell
