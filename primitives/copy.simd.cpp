// Kernels of the Copy family.  Rows are copied whole where the layouts agree;
// channel moves are loops over pixels that the compiler vectorises per level,
// and interleaved 8-bit three-channel pixels are split into planes with byte
// shuffles from level 1 up.
#include "core/simd.h"
#include "primitives/rows.h"

#define PXL_THIS_UNIT_copy PXL_PROBE
#define PXL_ROWS_KERNELS
#include "core/member_rows.h"

PXL_LEVEL_BEGIN

using rows::Check;
using rows::Row;

namespace {

// C copies whole pixels; NV == 3 with C == 4 keeps the fourth element.
template <typename T, int C, int NV>
PxlStatus CopySame(const T* src, int srcStep, T* dst, int dstStep, int width, int height) {
  if (PxlStatus st = Check(width, height, src, dst)) return st;
  if (NV == C)
    rows::CopyRows(src, srcStep, dst, dstStep, sizeof(T) * C * static_cast<size_t>(width), height);
  else
    rows::MergeRows<sizeof(T)>(src, srcStep, dst, dstStep, width, height);
  return pxlStsNoErr;
}

// N elements a pixel from pixels of SC elements to pixels of DC elements;
// Fill sets the fourth destination element to the opaque value.
template <typename T, int SC, int DC, int N, bool Fill>
PXL_NOINLINE void CopyStridedRows(const T* src, int srcStep, T* dst, int dstStep, int width,
                                  int height) {
  for (int y = 0; y < height; ++y) {
    const T* __restrict s = Row(src, srcStep, y);
    T* __restrict d = Row(dst, dstStep, y);
    for (int x = 0; x < width; ++x) {
      for (int k = 0; k < N; ++k) d[DC * x + k] = s[SC * x + k];
      if (Fill) d[DC * x + 3] = rows::Opaque<T>();
    }
  }
}

template <typename T, int SC, int DC, int N, bool Fill>
PxlStatus CopyStrided(const T* src, int srcStep, T* dst, int dstStep, int width, int height) {
  if (PxlStatus st = Check(width, height, src, dst)) return st;
  CopyStridedRows<T, SC, DC, N, Fill>(src, srcStep, dst, dstStep, width, height);
  return pxlStsNoErr;
}

#if PXL_LEVEL >= 1
// 16 pixels of three bytes into three planes of 16 bytes.
PXL_INLINE void SplitBytes3x16(const uint8_t* s, uint8_t* p0, uint8_t* p1, uint8_t* p2) {
  const __m128i a = _mm_loadu_si128(reinterpret_cast<const __m128i*>(s));
  const __m128i b = _mm_loadu_si128(reinterpret_cast<const __m128i*>(s + 16));
  const __m128i c = _mm_loadu_si128(reinterpret_cast<const __m128i*>(s + 32));
  // Channel k of pixel i sits at byte 3i + k of the 48; each plane gathers
  // its bytes from the three vectors (-1 leaves a byte 0) and ors them.
  const __m128i a0 = _mm_setr_epi8(0, 3, 6, 9, 12, 15, -1, -1, -1, -1, -1, -1, -1, -1, -1, -1);
  const __m128i b0 = _mm_setr_epi8(-1, -1, -1, -1, -1, -1, 2, 5, 8, 11, 14, -1, -1, -1, -1, -1);
  const __m128i c0 = _mm_setr_epi8(-1, -1, -1, -1, -1, -1, -1, -1, -1, -1, -1, 1, 4, 7, 10, 13);
  const __m128i a1 = _mm_setr_epi8(1, 4, 7, 10, 13, -1, -1, -1, -1, -1, -1, -1, -1, -1, -1, -1);
  const __m128i b1 = _mm_setr_epi8(-1, -1, -1, -1, -1, 0, 3, 6, 9, 12, 15, -1, -1, -1, -1, -1);
  const __m128i c1 = _mm_setr_epi8(-1, -1, -1, -1, -1, -1, -1, -1, -1, -1, -1, 2, 5, 8, 11, 14);
  const __m128i a2 = _mm_setr_epi8(2, 5, 8, 11, 14, -1, -1, -1, -1, -1, -1, -1, -1, -1, -1, -1);
  const __m128i b2 = _mm_setr_epi8(-1, -1, -1, -1, -1, 1, 4, 7, 10, 13, -1, -1, -1, -1, -1, -1);
  const __m128i c2 = _mm_setr_epi8(-1, -1, -1, -1, -1, -1, -1, -1, -1, -1, 0, 3, 6, 9, 12, 15);
  const auto gather = [&](__m128i ma, __m128i mb, __m128i mc) {
    return _mm_or_si128(_mm_or_si128(_mm_shuffle_epi8(a, ma), _mm_shuffle_epi8(b, mb)),
                        _mm_shuffle_epi8(c, mc));
  };
  _mm_storeu_si128(reinterpret_cast<__m128i*>(p0), gather(a0, b0, c0));
  _mm_storeu_si128(reinterpret_cast<__m128i*>(p1), gather(a1, b1, c1));
  _mm_storeu_si128(reinterpret_cast<__m128i*>(p2), gather(a2, b2, c2));
}
#endif

// Pixels of SC elements to NP planes (the first NP channels).
template <typename T, int SC, int NP>
PXL_NOINLINE void ToPlanesRows(const T* src, int srcStep, T* const* planes, int dstStep, int width,
                               int height) {
  for (int y = 0; y < height; ++y) {
    const T* __restrict s = Row(src, srcStep, y);
    T* __restrict p[NP];
    for (int k = 0; k < NP; ++k) p[k] = Row(planes[k], dstStep, y);
    int x = 0;
#if PXL_LEVEL >= 1
    if constexpr (sizeof(T) == 1 && SC == 3 && NP == 3) {
      const uint8_t* sb = reinterpret_cast<const uint8_t*>(s);
      for (; x + 16 <= width; x += 16)
        SplitBytes3x16(sb + 3 * x, reinterpret_cast<uint8_t*>(p[0]) + x,
                       reinterpret_cast<uint8_t*>(p[1]) + x, reinterpret_cast<uint8_t*>(p[2]) + x);
    }
#endif
    for (; x < width; ++x)
      for (int k = 0; k < NP; ++k) p[k][x] = s[SC * x + k];
  }
}

template <typename T, int SC, int NP>
PxlStatus CopyToPlanes(const T* src, int srcStep, T* const* dst, int dstStep, int width,
                       int height) {
  if (!rows::PlanesGiven<NP>(dst)) return pxlStsNullPtrErr;
  if (PxlStatus st = Check(width, height, src)) return st;
  ToPlanesRows<T, SC, NP>(src, srcStep, dst, dstStep, width, height);
  return pxlStsNoErr;
}

// NP planes to the first NP channels of pixels of DC elements.
template <typename T, int NP, int DC>
PXL_NOINLINE void FromPlanesRows(const T* const* planes, int srcStep, T* dst, int dstStep,
                                 int width, int height) {
  for (int y = 0; y < height; ++y) {
    const T* __restrict p[NP];
    for (int k = 0; k < NP; ++k) p[k] = Row(planes[k], srcStep, y);
    T* __restrict d = Row(dst, dstStep, y);
    for (int x = 0; x < width; ++x)
      for (int k = 0; k < NP; ++k) d[DC * x + k] = p[k][x];
  }
}

template <typename T, int NP, int DC>
PxlStatus CopyFromPlanes(const T* const* src, int srcStep, T* dst, int dstStep, int width,
                         int height) {
  if (!rows::PlanesGiven<NP>(src)) return pxlStsNullPtrErr;
  if (PxlStatus st = Check(width, height, dst)) return st;
  FromPlanesRows<T, NP, DC>(src, srcStep, dst, dstStep, width, height);
  return pxlStsNoErr;
}

template <typename T, int C, int NV>
PXL_NOINLINE void MaskedRows(const T* src, int srcStep, T* dst, int dstStep, int width, int height,
                             const uint8_t* mask, int maskStep) {
  for (int y = 0; y < height; ++y) {
    const T* __restrict s = Row(src, srcStep, y);
    T* __restrict d = Row(dst, dstStep, y);
    const uint8_t* __restrict m = Row(mask, maskStep, y);
    for (int x = 0; x < width; ++x)
      if (m[x])
        for (int k = 0; k < NV; ++k) d[C * x + k] = s[C * x + k];
  }
}

template <typename T, int C, int NV>
PxlStatus CopyMasked(const T* src, int srcStep, T* dst, int dstStep, int width, int height,
                     const uint8_t* mask, int maskStep) {
  if (PxlStatus st = Check(width, height, src, dst, mask)) return st;
  MaskedRows<T, C, NV>(src, srcStep, dst, dstStep, width, height, mask, maskStep);
  return pxlStsNoErr;
}

}  // namespace

#include "primitives/copy.def"

PXL_LEVEL_END
