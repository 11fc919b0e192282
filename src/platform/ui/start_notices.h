// What the libraries print at a start though nothing is wrong.
#pragma once

namespace lirovan::platform {

/// Keeps the toolkit's and the page engine's set-up off standard error; faults still go there.
/// QT_LOGGING_RULES brings the engine's list back ("qt.webenginecontext=true"). Before the application is
/// made.
void hideStartNotices();

}  // namespace lirovan::platform
