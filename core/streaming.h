// When large outputs are written with non-temporal stores.  Safe to include
// in kernel units.
#ifndef PXL_CORE_STREAMING_H
#define PXL_CORE_STREAMING_H

#include <stdint.h>

namespace pxl {

// True when a fill of `pixels` one-byte pixels is to bypass the cache: more
// than 0x80000 pixels, and the largest cache size is known and not above
// that count.  The cache is asked only for fills of that size.
bool StreamLargeFill(int64_t pixels);

}  // namespace pxl

#endif
