// Per-pixel routines shared by the tonal kernels.  Included by kernel units
// after core/simd.h; everything here lands in the unit's level namespace.
// A pixel is one 128-bit group of four floats, R, G, B, A.
#ifndef PXL_TONAL_PIXEL_H
#define PXL_TONAL_PIXEL_H

#include "core/simd.h"

PXL_LEVEL_BEGIN
namespace px {

PXL_INLINE __m128 Load(const float* p) { return _mm_loadu_ps(p); }
PXL_INLINE void Store(float* p, __m128 v) { _mm_storeu_ps(p, v); }

// A float of a map, which may sit at any byte address.
PXL_INLINE float LoadScalar(const float* p) { return _mm_cvtss_f32(_mm_load_ss(p)); }

// (p0 * 0.299f + p1 * 0.587f) + p2 * 0.114f, summed in that order, broadcast
// to all four lanes.  Lane 3 takes no part.
PXL_INLINE __m128 LumaDot(__m128 p) {
  const __m128 w = _mm_mul_ps(p, _mm_setr_ps(0.299f, 0.587f, 0.114f, 0.0f));
  const __m128 s = _mm_add_ss(w, _mm_shuffle_ps(w, w, _MM_SHUFFLE(1, 1, 1, 1)));
  const __m128 y = _mm_add_ss(s, _mm_shuffle_ps(w, w, _MM_SHUFFLE(2, 2, 2, 2)));
  return _mm_shuffle_ps(y, y, 0);
}

// min(max(v, 0), 1) per lane, the maximum first: NaN gives 0.
PXL_INLINE __m128 Clamp01(__m128 v) {
  return _mm_min_ps(_mm_max_ps(v, _mm_setzero_ps()), _mm_set1_ps(1.0f));
}

// Lanes 0..2 of `result`, lane 3 of `input`, bit for bit.
PXL_INLINE __m128 KeepAlpha(__m128 result, __m128 input) {
#if PXL_LEVEL >= 1
  return _mm_blend_ps(result, input, 0x8);
#else
  const __m128 colour = _mm_castsi128_ps(_mm_setr_epi32(-1, -1, -1, 0));
  return _mm_or_ps(_mm_and_ps(colour, result), _mm_andnot_ps(colour, input));
#endif
}

}  // namespace px
PXL_LEVEL_END

#endif
