// Image allocation kernels, one a format code of Malloc.
#include "core/image_formats.h"
#include "core/memory.h"
#include "core/simd.h"

PXL_LEVEL_BEGIN

namespace {

template <int64_t PixelBytes>
void* AllocateImage(int width, int height, int* pStepBytes) {
  if (!pStepBytes) return nullptr;
  if (width < 1 || height < 1) {
    *pStepBytes = 0;
    return nullptr;
  }
  const int64_t row = int64_t{width} * PixelBytes;
  if (row > 0x7FFFFFFF) {
    *pStepBytes = 0;
    return nullptr;
  }
  const int64_t step = (row + 63) & ~int64_t{63};
  *pStepBytes = static_cast<int>(step);
  const int64_t total = step * height;
  if (total > 0x7FFFFFFF) return nullptr;  // the step stays written
  return pxlBufferAlloc(static_cast<int>(total));
}

}  // namespace

#define PXL_MALLOC_DEFINE(code, bytes)                               \
  void* mallocFormat##code(int width, int height, int* pStepBytes) { \
    return AllocateImage<bytes>(width, height, pStepBytes);          \
  }
PXL_IMAGE_FORMATS(PXL_MALLOC_DEFINE)
#undef PXL_MALLOC_DEFINE

PXL_LEVEL_END
