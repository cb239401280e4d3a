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

// True when a call that reads and writes `bytesMoved` bytes in all is to
// write its output with non-temporal stores: more than the largest cache,
// whose size is asked once (0 when unknown: never).  The output then cannot
// stay in the cache anyway, and bypassing it keeps the input there and
// saves reading each output line before writing it.
bool StreamOutput(int64_t bytesMoved);

}  // namespace pxl

#endif
