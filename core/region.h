// Applying a region of interest to an image pointer.
//
// Each image of a call is moved to the region's first pixel on its own: by
// y * step bytes, a 32-bit signed product that wraps and is then
// sign-extended, and by x * (elements a pixel), also a wrapping 32-bit
// product, times the element width in pointer-wide arithmetic.  Nothing is
// clamped or checked; a negative x or y moves the pointer in front of the
// buffer.
#ifndef PXL_CORE_REGION_H
#define PXL_CORE_REGION_H

#include <stdint.h>

#include "pxl/pxl_types.h"

namespace pxl {

inline intptr_t WrappingProduct32(int32_t a, int32_t b) {
  return static_cast<intptr_t>(
      static_cast<int32_t>(static_cast<uint32_t>(a) * static_cast<uint32_t>(b)));
}

// Byte offset of pixel (x, y) in an image of the given step and pixel size.
inline intptr_t RegionOffset(int32_t x, int32_t y, int32_t step, int32_t elementsPerPixel,
                             intptr_t elementBytes) {
  return WrappingProduct32(y, step) + WrappingProduct32(x, elementsPerPixel) * elementBytes;
}

// An interleaved image of `channels` elements a pixel (C1: 1, C3: 3, C4 and AC4: 4).
template <typename T>
inline T* RegionStart(T* base, int32_t step, const PxliRect& roi, int32_t channels) {
  return reinterpret_cast<T*>(
      reinterpret_cast<uintptr_t>(base) +
      static_cast<uintptr_t>(RegionOffset(roi.x, roi.y, step, channels, sizeof(T))));
}

// Every plane of a planar image, which share one step.
template <typename T>
inline void RegionStartPlanes(T* const* planes, int count, int32_t step, const PxliRect& roi,
                              T** out) {
  for (int i = 0; i < count; ++i) out[i] = RegionStart(planes[i], step, roi, 1);
}

// The planes of a planar image moved to a region, for passing to a kernel:
// get() is null when the array itself is null, and a null plane stays null
// for a region at the origin.
template <int N, typename T>
struct PlaneStarts {
  PlaneStarts(T* const* planes, int32_t step, const PxliRect& roi) : given(planes != nullptr) {
    if (given)
      for (int i = 0; i < N; ++i) p[i] = RegionStart(planes[i], step, roi, 1);
  }
  T* const* get() const { return given ? p : nullptr; }
  T* p[N] = {};
  bool given;
};
template <int N, typename T>
inline PlaneStarts<N, T> PlanesAt(T* const* planes, int32_t step, const PxliRect& roi) {
  return PlaneStarts<N, T>(planes, step, roi);
}

// An 8-bit mask: y * maskStep + x.
inline const Pxl8u* MaskStart(const Pxl8u* mask, int32_t maskStep, const PxliRect& roi) {
  return RegionStart(mask, maskStep, roi, 1);
}

}  // namespace pxl

#endif
