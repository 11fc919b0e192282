// What the toolkit and the allocator keep for later, held to a size that does not grow with use.
#pragma once

namespace lirovan::platform {

/// To be called once, after the application object is made and before a window is.
void boundMemory();

}  // namespace lirovan::platform
