// What the toolkit and the allocator keep for later, held to a size that does not grow with use.
#pragma once

namespace lirovan::platform {

/// To be called once, after the application object is made and before a window is.
void boundMemory();

/// Gives the system what the allocator keeps free: a few milliseconds, worth them once a window is gone.
void giveBackMemory();

}  // namespace lirovan::platform
