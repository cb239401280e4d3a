// Working memory of staged exports.  Safe to include in kernel units.
#ifndef PXL_CORE_MEMORY_H
#define PXL_CORE_MEMORY_H

// A block of `size` bytes aligned to 64, or null when size < 1, when
// size + 72 does not fit a signed 32-bit value, or when the heap fails.  The
// heap block's own address is kept in the eight bytes in front of the result.
void* pxlBufferAlloc(int size);

// Releases a block of pxlBufferAlloc (or of Malloc); null does nothing.
void pxlBufferFree(void* ptr);

namespace pxl {
namespace test {
// Makes allocation number `n` from now (0: the next one) fail; -1 disarms.
void FailAllocation(int n);
// Blocks handed out by pxlBufferAlloc and not yet released.
long LiveBuffers();
}  // namespace test
}  // namespace pxl

#endif
