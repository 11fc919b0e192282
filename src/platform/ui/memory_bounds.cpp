#include "platform/ui/memory_bounds.h"

#include <QPixmapCache>
#ifdef __GLIBC__
#include <malloc.h>
#endif

namespace lirovan::platform {

namespace {

// Enough for every drawn control and icon of the windows that are open. The toolkit keeps one picture for
// each size that a control ever had: at its own limit of 10 MB these pile up over thousands of clicks.
constexpr int PixmapCacheKb = 2048;

#ifdef __GLIBC__
// Left alone, the allocator raises these bounds with the largest block freed so far. Then the bitmaps of
// pages, megabytes each, lie between small blocks and leave holes that stay with the program.
constexpr int OwnMappingFrom = 256 * 1024;
constexpr int FreeAtTheTop = 1024 * 1024;
#endif

}  // namespace

void boundMemory() {
    QPixmapCache::setCacheLimit(PixmapCacheKb);
#ifdef __GLIBC__
    mallopt(M_MMAP_THRESHOLD, OwnMappingFrom);
    mallopt(M_TRIM_THRESHOLD, FreeAtTheTop);
#endif
}

void giveBackMemory() {
#ifdef __GLIBC__
    malloc_trim(0);
#endif
}

}  // namespace lirovan::platform
