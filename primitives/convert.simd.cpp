// Kernels of the Convert family.
//
// The work is done by one element loop for each pair of types (and each
// rounding mode), written as plain loops that the compiler vectorises at
// each level; the members of a pair only differ in how they walk the image:
//
// - C1, C3 and C4 convert width x channels elements a row; when both steps
//   equal their row's bytes the image is one long row (in pieces below 2^30
//   elements);
// - AC4 converts pieces of a row, alpha included, into a buffer in the first
//   cache and copies the first three elements of each pixel from there.
//
// Rounding uses exact arithmetic only: clamping first keeps every value
// below 2^32, where adding and subtracting 1.5 * 2^52 (2^23 for floats below
// 2^22) rounds to an integer, ties to even, under the default rounding mode;
// truncation is the conversion instruction.
#include "core/simd.h"
#include "primitives/rows.h"

#define PXL_THIS_UNIT_convert PXL_PROBE
#define PXL_ROWS_KERNELS
#include "core/member_rows.h"

PXL_LEVEL_BEGIN

namespace {

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

template <typename S, typename D>
PXL_NOINLINE void PlainElems(const S* __restrict s, D* __restrict d, int n) {
  for (int i = 0; i < n; ++i) d[i] = Cast<S, D>(s[i]);
}

// ---- float to integer: scaled, rounded, saturated --------------------------------

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

template <typename S, typename D, int Mode, typename F>
PXL_NOINLINE void ScaledElems(const S* __restrict s, D* __restrict d, int n, F scale) {
  for (int i = 0; i < n; ++i) d[i] = RoundSat<F, D, Mode>(static_cast<F>(s[i]) * scale);
}

// ---- 32s to smaller integers by a power of two ------------------------------------

template <typename D>
PXL_INLINE D Clamp64(int64_t v) {
  constexpr int64_t lo = static_cast<int64_t>(Lim<D>::lo), hi = static_cast<int64_t>(Lim<D>::hi);
  return static_cast<D>(v < lo ? lo : (v > hi ? hi : v));
}

// Divided by 2^sf, 0 < sf <= 31, rounded by the mode.
template <typename D, int Mode>
PXL_NOINLINE void ShiftedDown(const int32_t* __restrict s, D* __restrict d, int n, int sf) {
  const int64_t one = int64_t{1} << sf, half = one >> 1;
  for (int i = 0; i < n; ++i) {
    const int64_t v = s[i];
    int64_t q;
    if constexpr (Mode == kZero) {
      q = (v + (v < 0 ? one - 1 : 0)) >> sf;
    } else if constexpr (Mode == kNear) {
      q = v >> sf;
      const int64_t r = v - q * one;
      q += (r > half || (r == half && (q & 1))) ? 1 : 0;
    } else {
      const int64_t a = v < 0 ? -v : v;
      q = (a + half) >> sf;
      q = v < 0 ? -q : q;
    }
    d[i] = Clamp64<D>(q);
  }
}

// Multiplied by 2^-sf, -15 <= sf < 0.
template <typename D>
PXL_NOINLINE void ShiftedUp(const int32_t* __restrict s, D* __restrict d, int n, int sf) {
  const int64_t times = int64_t{1} << -sf;
  for (int i = 0; i < n; ++i) d[i] = Clamp64<D>(s[i] * times);
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

template <int M>
struct ModeTag {
  static constexpr int value = M;
};

// f(ModeTag<mode>) for a valid mode.
template <typename F>
PXL_INLINE void WithMode(int mode, F f) {
  if (mode == kZero)
    f(ModeTag<kZero>{});
  else if (mode == kNear)
    f(ModeTag<kNear>{});
  else
    f(ModeTag<kFinancial>{});
}

template <typename T>
PXL_INLINE T Pow2(int e);
// 2^e for -126 <= e <= 127.
template <>
PXL_INLINE float Pow2<float>(int e) {
  const uint32_t bits = static_cast<uint32_t>(e + 127) << 23;
  float f;
  __builtin_memcpy(&f, &bits, 4);
  return f;
}
// 2^e for -1022 <= e <= 1023.
template <>
PXL_INLINE double Pow2<double>(int e) {
  const uint64_t bits = static_cast<uint64_t>(e + 1023) << 52;
  double f;
  __builtin_memcpy(&f, &bits, 8);
  return f;
}

// ---- the kernels ---------------------------------------------------------------------

template <typename S, typename D, int C, int NV>
PxlStatus ConvertPlain(const S* src, int srcStep, D* dst, int dstStep, int width, int height) {
  if (PxlStatus st = Check(width, height, src, dst)) return st;
  Walk<S, D, C, NV>(src, srcStep, dst, dstStep, width, height,
                    [](const S* s, D* d, int n) { PlainElems<S, D>(s, d, n); });
  return pxlStsNoErr;
}

template <typename S, typename D, int C, int NV>
PxlStatus ConvertScaled(const S* src, int srcStep, D* dst, int dstStep, int width, int height,
                        int mode, int sf) {
  if (PxlStatus st = Check(width, height, src, dst)) return st;
  if (mode != kZero && mode != kNear && mode != kFinancial) return pxlStsRoundModeNotSupportedErr;
  if constexpr (Lim<S>::isFloat) {
    if constexpr (Same<S, float>::value && sizeof(D) <= 2) {
      // Single precision is exact enough here: a product that leaves the
      // normal range is 0 or saturates either way.
      if (sf >= -126 && sf <= 126) {
        const float scale = Pow2<float>(-sf);
        WithMode(mode, [&](auto tag) {
          constexpr int M = decltype(tag)::value;
          Walk<S, D, C, NV>(
              src, srcStep, dst, dstStep, width, height,
              [scale](const S* s, D* d, int n) { ScaledElems<S, D, M, float>(s, d, n, scale); });
        });
        return pxlStsNoErr;
      }
    }
    const int e = sf < -1000 ? 1000 : (sf > 1000 ? -1000 : -sf);
    const double scale = Pow2<double>(e);
    WithMode(mode, [&](auto tag) {
      constexpr int M = decltype(tag)::value;
      Walk<S, D, C, NV>(
          src, srcStep, dst, dstStep, width, height,
          [scale](const S* s, D* d, int n) { ScaledElems<S, D, M, double>(s, d, n, scale); });
    });
  } else {
    // 32s: the factor is bounded to -15 .. 31; 0 shifts nothing.
    const int f = sf > 31 ? 31 : (sf < -15 ? -15 : sf);
    if (f == 0) {
      Walk<S, D, C, NV>(src, srcStep, dst, dstStep, width, height,
                        [](const S* s, D* d, int n) { PlainElems<S, D>(s, d, n); });
    } else if (f < 0) {
      Walk<S, D, C, NV>(src, srcStep, dst, dstStep, width, height,
                        [f](const S* s, D* d, int n) { ShiftedUp<D>(s, d, n, f); });
    } else {
      WithMode(mode, [&](auto tag) {
        constexpr int M = decltype(tag)::value;
        Walk<S, D, C, NV>(src, srcStep, dst, dstStep, width, height,
                          [f](const S* s, D* d, int n) { ShiftedDown<D, M>(s, d, n, f); });
      });
    }
  }
  return pxlStsNoErr;
}

}  // namespace

#include "primitives/convert.def"

PXL_LEVEL_END
