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
#include "primitives/elements.h"
#include "primitives/rows.h"

#define PXL_THIS_UNIT_convert PXL_PROBE
#define PXL_ROWS_KERNELS
#include "core/member_rows.h"

PXL_LEVEL_BEGIN

namespace {

using namespace rows;
using namespace elems;

template <typename S, typename D>
PXL_NOINLINE void PlainElems(const S* __restrict s, D* __restrict d, int n) {
  for (int i = 0; i < n; ++i) d[i] = Cast<S, D>(s[i]);
}

// ---- float to integer: scaled, rounded, saturated --------------------------------

#if PXL_LEVEL >= 4
// 32f to an 8- or 16-bit type, nearest even: sixteen elements at a time.
// NaN becomes 0 before the clamp, which leaves 0 alone (for unsigned types
// the maximum with 0 does both: it gives its second operand for a NaN), and
// the conversion instruction rounds to nearest even as the scalar path does.
template <typename D, bool Scaled>
PXL_INLINE int NearestVectors(const float* s, D* d, int n, float scale) {
  constexpr bool unsignedD = Lim<D>::lo == 0;
  const __m256 vs = _mm256_set1_ps(scale);
  const __m256 lo = _mm256_set1_ps(static_cast<float>(Lim<D>::lo));
  const __m256 hi = _mm256_set1_ps(static_cast<float>(Lim<D>::hi));
  const auto in = [&](const float* p) {
    __m256 v = _mm256_loadu_ps(p);
    if (Scaled) v = _mm256_mul_ps(v, vs);
    if (!unsignedD) v = _mm256_and_ps(v, _mm256_cmp_ps(v, v, _CMP_ORD_Q));
    return _mm256_cvtps_epi32(_mm256_min_ps(_mm256_max_ps(v, lo), hi));
  };
  int i = 0;
#if PXL_LEVEL >= 5
  // Sixteen floats a register, narrowed by the saturating moves.
  const __m512 vs5 = _mm512_set1_ps(scale);
  const __m512 lo5 = _mm512_set1_ps(static_cast<float>(Lim<D>::lo));
  const __m512 hi5 = _mm512_set1_ps(static_cast<float>(Lim<D>::hi));
  for (; i + 16 <= n; i += 16) {
    __m512 v = _mm512_loadu_ps(s + i);
    if (Scaled) v = _mm512_mul_ps(v, vs5);
    if (!unsignedD) v = _mm512_maskz_mov_ps(_mm512_cmp_ps_mask(v, v, _CMP_ORD_Q), v);
    const __m512i r = _mm512_cvtps_epi32(_mm512_min_ps(_mm512_max_ps(v, lo5), hi5));
    if constexpr (sizeof(D) == 2)
      _mm256_storeu_si256(reinterpret_cast<__m256i*>(d + i),
                          unsignedD ? _mm512_cvtusepi32_epi16(r) : _mm512_cvtsepi32_epi16(r));
    else
      _mm_storeu_si128(reinterpret_cast<__m128i*>(d + i),
                       unsignedD ? _mm512_cvtusepi32_epi8(r) : _mm512_cvtsepi32_epi8(r));
  }
  return i;
#endif
  for (; i + 16 <= n; i += 16) {
    const __m256i a = in(s + i), b = in(s + i + 8);
    // Values are in range already, so the saturating packs only narrow.
    __m256i w = Same<D, uint16_t>::value ? _mm256_packus_epi32(a, b) : _mm256_packs_epi32(a, b);
    w = _mm256_permute4x64_epi64(w, 0xD8);
    if constexpr (sizeof(D) == 2) {
      _mm256_storeu_si256(reinterpret_cast<__m256i*>(d + i), w);
    } else {
      const __m128i l = _mm256_castsi256_si128(w), h = _mm256_extracti128_si256(w, 1);
      _mm_storeu_si128(reinterpret_cast<__m128i*>(d + i),
                       Same<D, uint8_t>::value ? _mm_packus_epi16(l, h) : _mm_packs_epi16(l, h));
    }
  }
  return i;
}
#endif

template <typename S, typename D, int Mode, typename F>
PXL_NOINLINE void ScaledElems(const S* __restrict s, D* __restrict d, int n, F scale) {
  int i = 0;
#if PXL_LEVEL >= 4
  if constexpr (Same<S, float>::value && Same<F, float>::value && Mode == kNear)
    i = scale == 1.0f ? NearestVectors<D, false>(s, d, n, scale)
                      : NearestVectors<D, true>(s, d, n, scale);
#endif
  for (; i < n; ++i) d[i] = RoundSat<F, D, Mode>(static_cast<F>(s[i]) * scale);
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
