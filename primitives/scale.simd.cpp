// Kernels of the Scale and ScaleC families: linear maps between ranges,
// one element loop a pair of types (primitives/elements.h walks the image).
// The float arithmetic is double precision in a fixed order, rounded once
// at the end, so every level gives the same bits.
#include "core/simd.h"
#include "primitives/elements.h"
#include "primitives/rows.h"

#define PXL_THIS_UNIT_scale PXL_PROBE
#define PXL_ROWS_KERNELS
#include "core/member_rows.h"

PXL_LEVEL_BEGIN

namespace {

using namespace rows;
using namespace elems;

// Full range onto full range, in integers.
template <typename S, typename D>
PXL_INLINE D RangeMap(S v) {
  if constexpr (Same<S, uint8_t>::value && Same<D, uint16_t>::value) {
    return static_cast<D>(v * 257);
  } else if constexpr (Same<S, uint8_t>::value && Same<D, int16_t>::value) {
    return static_cast<D>(v * 257 - 32768);
  } else if constexpr (Same<S, uint8_t>::value) {
    return static_cast<D>(static_cast<int64_t>(v) * 16843009 - 2147483648LL);
  } else if constexpr (Same<S, uint16_t>::value) {
    return static_cast<D>((v + 128) / 257);
  } else if constexpr (Same<S, int16_t>::value) {
    return static_cast<D>((v + 32896) / 257);
  } else {
    return static_cast<D>((static_cast<int64_t>(v) + 2147483648LL + 8421504) / 16843009);
  }
}

template <typename S, typename D>
PXL_NOINLINE void RangeElems(const S* __restrict s, D* __restrict d, int n) {
  for (int i = 0; i < n; ++i) d[i] = RangeMap<S, D>(s[i]);
}

// Integer to [vMin, vMax]: (vMin * (M - v) + vMax * v) / M.
template <typename S>
PXL_NOINLINE void ToFloatElems(const S* __restrict s, float* __restrict d, int n, double lo,
                               double hi) {
  constexpr double M = Lim<S>::hi;
  for (int i = 0; i < n; ++i) {
    const double v = s[i];
    d[i] = static_cast<float>((lo * (M - v) + hi * v) / M);
  }
}

// [vMin, vMax] to the integer range: (x - vMin) * M / (vMax - vMin), rounded.
template <typename D>
PXL_NOINLINE void FromFloatElems(const float* __restrict s, D* __restrict d, int n, double lo,
                                 double range) {
  constexpr double M = Lim<D>::hi;
  for (int i = 0; i < n; ++i) d[i] = RoundSat<double, D, kNear>((s[i] - lo) * M / range);
}

// v * mVal + aVal.  Source and destination may be the same elements.
template <typename S, typename D>
PXL_NOINLINE void LinearElems(const S* s, D* d, int n, double m, double a) {
  for (int i = 0; i < n; ++i) {
    const double y = static_cast<double>(s[i]) * m + a;
    if constexpr (Same<D, float>::value)
      d[i] = Cast<double, float>(y);
    else
      d[i] = RoundSat<double, D, kNear>(y);
  }
}

template <typename S, typename D, int C, int NV>
PxlStatus ScaleRange(const S* src, int srcStep, D* dst, int dstStep, int width, int height) {
  if (PxlStatus st = Check(width, height, src, dst)) return st;
  Walk<S, D, C, NV>(src, srcStep, dst, dstStep, width, height,
                    [](const S* s, D* d, int n) { RangeElems<S, D>(s, d, n); });
  return pxlStsNoErr;
}

template <typename S, typename D, int C, int NV>
PxlStatus ScaleFloat(const S* src, int srcStep, D* dst, int dstStep, int width, int height,
                     float vMin, float vMax) {
  if (PxlStatus st = Check(width, height, src, dst)) return st;
  if (!(vMax > vMin)) return pxlStsScaleRangeErr;
  const double lo = vMin, hi = vMax;
  if constexpr (Same<D, float>::value) {
    Walk<S, D, C, NV>(src, srcStep, dst, dstStep, width, height,
                      [=](const S* s, D* d, int n) { ToFloatElems<S>(s, d, n, lo, hi); });
  } else {
    Walk<S, D, C, NV>(src, srcStep, dst, dstStep, width, height,
                      [=](const S* s, D* d, int n) { FromFloatElems<D>(s, d, n, lo, hi - lo); });
  }
  return pxlStsNoErr;
}

template <typename S, typename D, int C, int NV>
PxlStatus ScaleLinear(const S* src, int srcStep, D* dst, int dstStep, int width, int height,
                      double m, double a) {
  if (PxlStatus st = Check(width, height, src, dst)) return st;
  Walk<S, D, C, NV>(src, srcStep, dst, dstStep, width, height,
                    [=](const S* s, D* d, int n) { LinearElems<S, D>(s, d, n, m, a); });
  return pxlStsNoErr;
}

}  // namespace

#include "primitives/scale.def"
#include "primitives/scale_c.def"

PXL_LEVEL_END
