// Groups of float RGBA pixels for kernel units.
//
// A pixel is four floats and always occupies one 128-bit lane: a group holds
// one pixel in __m128, two in __m256 (levels 3 and 4) or four in __m512
// (level 5).  Every operation here works lane by lane, or within a pixel's
// own 128-bit lane, so a pixel's result does not depend on how many pixels
// share its group; the wide loops and their one-pixel tails agree bit for bit.
// Included after core/simd.h; everything lands in the unit's level namespace.
#ifndef PXL_CORE_PIXEL_GROUPS_H
#define PXL_CORE_PIXEL_GROUPS_H

#include "core/simd.h"

PXL_LEVEL_BEGIN
namespace px {

// ---- one pixel ---------------------------------------------------------------
PXL_INLINE __m128 Add(__m128 a, __m128 b) { return _mm_add_ps(a, b); }
PXL_INLINE __m128 Sub(__m128 a, __m128 b) { return _mm_sub_ps(a, b); }
PXL_INLINE __m128 Mul(__m128 a, __m128 b) { return _mm_mul_ps(a, b); }
PXL_INLINE __m128 Div(__m128 a, __m128 b) { return _mm_div_ps(a, b); }
// min and max return the second operand when either is NaN.
PXL_INLINE __m128 Min(__m128 a, __m128 b) { return _mm_min_ps(a, b); }
PXL_INLINE __m128 Max(__m128 a, __m128 b) { return _mm_max_ps(a, b); }
template <int Lane>
PXL_INLINE __m128 Splat(__m128 v) {
  return _mm_shuffle_ps(v, v, Lane * 0x55);
}
// The pixel (result0, result1, result2, input3): lane 3 is restored bit for
// bit from the input, whatever the formula computed for it.
PXL_INLINE __m128 KeepAlpha(__m128 result, __m128 input) {
#if PXL_LEVEL >= 1
  return _mm_blend_ps(result, input, 0x8);
#else
  const __m128 mask = _mm_castsi128_ps(_mm_setr_epi32(-1, -1, -1, 0));
  return _mm_or_ps(_mm_and_ps(mask, result), _mm_andnot_ps(mask, input));
#endif
}

template <typename V>
struct Traits;

template <>
struct Traits<__m128> {
  static constexpr int kPixels = 1;
  static PXL_INLINE __m128 Load(const float* p) { return _mm_loadu_ps(p); }
  static PXL_INLINE void Store(float* p, __m128 v) { _mm_storeu_ps(p, v); }
  static PXL_INLINE __m128 Set1(float v) { return _mm_set1_ps(v); }
  // The same four lanes in every pixel.
  static PXL_INLINE __m128 PerLane(__m128 lanes) { return lanes; }
  // One float a pixel from a map at any byte address, spread over the
  // pixel's four lanes.
  static PXL_INLINE __m128 LoadPerPixel(const float* m) { return _mm_set1_ps(LoadFloat(m)); }
};

// ---- two pixels --------------------------------------------------------------
#if PXL_LEVEL >= 3
PXL_INLINE __m256 Add(__m256 a, __m256 b) { return _mm256_add_ps(a, b); }
PXL_INLINE __m256 Sub(__m256 a, __m256 b) { return _mm256_sub_ps(a, b); }
PXL_INLINE __m256 Mul(__m256 a, __m256 b) { return _mm256_mul_ps(a, b); }
PXL_INLINE __m256 Div(__m256 a, __m256 b) { return _mm256_div_ps(a, b); }
PXL_INLINE __m256 Min(__m256 a, __m256 b) { return _mm256_min_ps(a, b); }
PXL_INLINE __m256 Max(__m256 a, __m256 b) { return _mm256_max_ps(a, b); }
template <int Lane>
PXL_INLINE __m256 Splat(__m256 v) {
  return _mm256_shuffle_ps(v, v, Lane * 0x55);
}
PXL_INLINE __m256 KeepAlpha(__m256 result, __m256 input) {
  return _mm256_blend_ps(result, input, 0x88);
}

template <>
struct Traits<__m256> {
  static constexpr int kPixels = 2;
  static PXL_INLINE __m256 Load(const float* p) { return _mm256_loadu_ps(p); }
  static PXL_INLINE void Store(float* p, __m256 v) { _mm256_storeu_ps(p, v); }
  static PXL_INLINE __m256 Set1(float v) { return _mm256_set1_ps(v); }
  static PXL_INLINE __m256 PerLane(__m128 lanes) { return _mm256_set_m128(lanes, lanes); }
  static PXL_INLINE __m256 LoadPerPixel(const float* m) {
    return _mm256_set_m128(_mm_set1_ps(LoadFloat(m + 1)), _mm_set1_ps(LoadFloat(m)));
  }
};
#endif

// ---- four pixels -------------------------------------------------------------
#if PXL_LEVEL >= 5
PXL_INLINE __m512 Add(__m512 a, __m512 b) { return _mm512_add_ps(a, b); }
PXL_INLINE __m512 Sub(__m512 a, __m512 b) { return _mm512_sub_ps(a, b); }
PXL_INLINE __m512 Mul(__m512 a, __m512 b) { return _mm512_mul_ps(a, b); }
PXL_INLINE __m512 Div(__m512 a, __m512 b) { return _mm512_div_ps(a, b); }
PXL_INLINE __m512 Min(__m512 a, __m512 b) { return _mm512_min_ps(a, b); }
PXL_INLINE __m512 Max(__m512 a, __m512 b) { return _mm512_max_ps(a, b); }
template <int Lane>
PXL_INLINE __m512 Splat(__m512 v) {
  return _mm512_shuffle_ps(v, v, Lane * 0x55);
}
PXL_INLINE __m512 KeepAlpha(__m512 result, __m512 input) {
  return _mm512_mask_blend_ps(0x8888, result, input);
}

template <>
struct Traits<__m512> {
  static constexpr int kPixels = 4;
  static PXL_INLINE __m512 Load(const float* p) { return _mm512_loadu_ps(p); }
  static PXL_INLINE void Store(float* p, __m512 v) { _mm512_storeu_ps(p, v); }
  static PXL_INLINE __m512 Set1(float v) { return _mm512_set1_ps(v); }
  static PXL_INLINE __m512 PerLane(__m128 lanes) { return _mm512_broadcast_f32x4(lanes); }
  static PXL_INLINE __m512 LoadPerPixel(const float* m) {
    const __m512i spread = _mm512_setr_epi32(0, 0, 0, 0, 1, 1, 1, 1, 2, 2, 2, 2, 3, 3, 3, 3);
    return _mm512_permutexvar_ps(spread, _mm512_castps128_ps512(_mm_loadu_ps(m)));
  }
};
#endif

// The widest group of this level.
#if PXL_LEVEL >= 5
using Wide = __m512;
#elif PXL_LEVEL >= 3
using Wide = __m256;
#else
using Wide = __m128;
#endif

template <typename V>
PXL_INLINE V Load(const float* p) {
  return Traits<V>::Load(p);
}
template <typename V>
PXL_INLINE void Store(float* p, V v) {
  Traits<V>::Store(p, v);
}
template <typename V>
PXL_INLINE V Set1(float v) {
  return Traits<V>::Set1(v);
}
template <typename V>
PXL_INLINE V LoadPerPixel(const float* m) {
  return Traits<V>::LoadPerPixel(m);
}
template <typename V>
PXL_INLINE V PerLane(float l0, float l1, float l2, float l3) {
  return Traits<V>::PerLane(_mm_setr_ps(l0, l1, l2, l3));
}

// Runs op(group, x of its first pixel) over a row of `width` pixels and
// stores what it returns: wide groups first, then single pixels.
template <typename Op>
PXL_INLINE void ForRow(float* p, int width, Op op) {
  int x = 0;
  constexpr int n = Traits<Wide>::kPixels;
  if (n > 1) {
    for (; x + n <= width; x += n) Store(p + 4 * x, op(Load<Wide>(p + 4 * x), x));
  }
  for (; x < width; ++x) Store(p + 4 * x, op(Load<__m128>(p + 4 * x), x));
}

// op(group) over every pixel of a region, rows from the top.
template <typename Op>
PXL_INLINE void ForRegion(float* p, int step, int width, int height, Op op) {
  for (int y = 0; y < height; ++y) {
    ForRow(p, width, [&](auto v, int) { return op(v); });
    p = AddBytes(p, step);
  }
}

// op(group, pointer to the group's first map float) over every pixel of a
// region; image and map advance by their own steps.
template <typename Op>
PXL_INLINE void ForRegionWithMap(float* p, int step, const float* map, int mapStep, int width,
                                 int height, Op op) {
  for (int y = 0; y < height; ++y) {
    ForRow(p, width, [&](auto v, int x) { return op(v, map + x); });
    p = AddBytes(p, step);
    map = AddBytes(map, mapStep);
  }
}

}  // namespace px
PXL_LEVEL_END

#endif
