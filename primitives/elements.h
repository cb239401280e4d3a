// Element conversions shared by the Convert, Scale and ScaleC kernels:
// type ranges, saturating casts, rounding by mode, and the walk over an
// image's rows.  Included by kernel units after core/simd.h and
// primitives/rows.h; everything lands in the unit's level namespace.
#ifndef PXL_PRIMITIVES_ELEMENTS_H
#define PXL_PRIMITIVES_ELEMENTS_H

#include "primitives/rows.h"

PXL_LEVEL_BEGIN
namespace elems {

using namespace rows;

constexpr int kZero = 0;
constexpr int kNear = 1;
constexpr int kFinancial = 2;

template <typename A, typename B>
struct Same {
  static constexpr bool value = false;
};
template <typename A>
struct Same<A, A> {
  static constexpr bool value = true;
};

// Range and kind of each element type.
template <typename T>
struct Lim;
#define PXL_LIM(T, l, h, f)            \
  template <>                          \
  struct Lim<T> {                      \
    static constexpr double lo = l;    \
    static constexpr double hi = h;    \
    static constexpr bool isFloat = f; \
  };
PXL_LIM(uint8_t, 0, 255, false)
PXL_LIM(int8_t, -128, 127, false)
PXL_LIM(uint16_t, 0, 65535, false)
PXL_LIM(int16_t, -32768, 32767, false)
PXL_LIM(uint32_t, 0, 4294967295.0, false)
PXL_LIM(int32_t, -2147483648.0, 2147483647, false)
PXL_LIM(float, -3.4028234663852886e38, 3.4028234663852886e38, true)
PXL_LIM(double, -1.7976931348623157e308, 1.7976931348623157e308, true)
#undef PXL_LIM

// ---- conversions without parameters -------------------------------------------

template <typename S, typename D>
PXL_INLINE D Cast(S v) {
  if constexpr (Lim<D>::isFloat && !Lim<S>::isFloat) {
    return static_cast<D>(v);  // integers: nearest, ties to even
  } else if constexpr (Same<S, float>::value) {
    return v;  // 32f to 64f
  } else if constexpr (Same<S, double>::value) {
    // 64f to 32f: finite values beyond the range to its ends; inf and NaN stay.
    constexpr double m = Lim<float>::hi;
    const double c = v > m && v <= Lim<double>::hi ? m : v;
    return static_cast<float>(c < -m && c >= Lim<double>::lo ? -m : c);
  } else if constexpr (Same<S, uint32_t>::value) {
    constexpr uint32_t hi = static_cast<uint32_t>(Lim<D>::hi);
    return static_cast<D>(v > hi ? hi : v);
  } else if constexpr (Same<D, uint32_t>::value) {
    return static_cast<D>(v < 0 ? 0 : v);
  } else {
    // 8u, 8s, 16u, 16s and 32s all fit a 32-bit signed integer.
    constexpr int32_t lo = Lim<D>::lo > Lim<S>::lo ? static_cast<int32_t>(Lim<D>::lo)
                                                   : static_cast<int32_t>(Lim<S>::lo);
    constexpr int32_t hi = Lim<D>::hi < Lim<S>::hi ? static_cast<int32_t>(Lim<D>::hi)
                                                   : static_cast<int32_t>(Lim<S>::hi);
    int32_t x = v;
    x = x < lo ? lo : x;
    x = x > hi ? hi : x;
    return static_cast<D>(x);
  }
}

// A 32-bit signed integer holds every 8- and 16-bit value; 32-bit types
// convert through 64 bits.
template <typename D>
struct Wide {
  using type = int64_t;
};
template <>
struct Wide<uint8_t> {
  using type = int32_t;
};
template <>
struct Wide<int8_t> {
  using type = int32_t;
};
template <>
struct Wide<uint16_t> {
  using type = int32_t;
};
template <>
struct Wide<int16_t> {
  using type = int32_t;
};

// y (float or double, already scaled) to D: NaN to 0, clamped to the range,
// then rounded by the mode.
template <typename F, typename D, int Mode>
PXL_INLINE D RoundSat(F y) {
  using I = typename Wide<D>::type;
  constexpr F lo = static_cast<F>(Lim<D>::lo), hi = static_cast<F>(Lim<D>::hi);
  F z = y < lo ? lo : y;
  z = z > hi ? hi : z;
  z = y == y ? z : F(0);
  if constexpr (Mode == kZero) {
    return static_cast<D>(static_cast<I>(z));
  } else if constexpr (Mode == kNear) {
    constexpr F m = Same<F, float>::value ? F(12582912.0f) : F(6755399441055744.0);
    const F r = (z + m) - m;
    return static_cast<D>(static_cast<I>(r));
  } else {
    F t = static_cast<F>(static_cast<I>(z));
    const F f = z - t;
    t = f >= F(0.5) ? t + F(1) : t;
    t = f <= F(-0.5) ? t - F(1) : t;
    return static_cast<D>(static_cast<I>(t));
  }
}

// ---- walking the image -------------------------------------------------------------

// work(s, d, n) converts n elements.  C == NV: rows of width x C elements,
// or one row when both images have no gaps; AC4: through a buffer.
template <typename S, typename D, int C, int NV, typename Work>
PXL_INLINE void Walk(const S* src, int srcStep, D* dst, int dstStep, int width, int height,
                     Work work) {
  constexpr int64_t kPiece = int64_t{1} << 30;
  if constexpr (C == NV) {
    const int64_t count = static_cast<int64_t>(width) * C;
    int64_t total = count;
    int rows = height;
    if (srcStep == count * static_cast<int64_t>(sizeof(S)) &&
        dstStep == count * static_cast<int64_t>(sizeof(D))) {
      total = count * height;
      rows = 1;
    }
    for (int y = 0; y < rows; ++y) {
      const S* s = Row(src, srcStep, y);
      D* d = Row(dst, dstStep, y);
      for (int64_t i = 0; i < total; i += kPiece)
        work(s + i, d + i, static_cast<int>(total - i < kPiece ? total - i : kPiece));
    }
  } else {
    constexpr int K = 256;
    alignas(64) D buffer[4 * K];
    for (int y = 0; y < height; ++y) {
      const S* s = Row(src, srcStep, y);
      D* d = Row(dst, dstStep, y);
      for (int x = 0; x < width; x += K) {
        const int n = width - x < K ? width - x : K;
        work(s + 4 * static_cast<intptr_t>(x), buffer, 4 * n);
        MergeFirstThree<sizeof(D)>(reinterpret_cast<const uint8_t*>(buffer),
                                   reinterpret_cast<uint8_t*>(d + 4 * static_cast<intptr_t>(x)),
                                   static_cast<size_t>(n));
      }
    }
  }
}

}  // namespace elems
PXL_LEVEL_END

#endif
