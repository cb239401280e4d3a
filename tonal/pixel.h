// Per-pixel routines shared by the tonal kernels, on pixel groups of any
// width (core/pixel_groups.h).  Included by kernel units after core/simd.h.
#ifndef PXL_TONAL_PIXEL_H
#define PXL_TONAL_PIXEL_H

#include "core/pixel_groups.h"

PXL_LEVEL_BEGIN
namespace px {

// (p0 * 0.299f + p1 * 0.587f) + p2 * 0.114f, summed in that order, in all
// four lanes of each pixel.  Lane 3 takes no part.
template <typename V>
PXL_INLINE V LumaDot(V p) {
  const V w = Mul(p, PerLane<V>(0.299f, 0.587f, 0.114f, 0.0f));
  return Add(Add(Splat<0>(w), Splat<1>(w)), Splat<2>(w));
}

// min(max(v, 0), 1) per lane, the maximum first: NaN gives 0.
template <typename V>
PXL_INLINE V Clamp01(V v) {
  return Min(Max(v, Set1<V>(0.0f)), Set1<V>(1.0f));
}

}  // namespace px
PXL_LEVEL_END

#endif
