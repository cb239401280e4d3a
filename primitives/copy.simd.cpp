// Kernels of the Copy family.  Rows are copied whole where the layouts agree;
// channel moves are loops over pixels that the compiler vectorises per level,
// and interleaved 8-bit three-channel pixels are split into planes with byte
// shuffles from level 1 up.
#include "core/simd.h"
#include "core/streaming.h"
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
  const int64_t bytes = int64_t{width} * height * C * static_cast<int64_t>(sizeof(T));
  if (NV == C)
    rows::CopyRows(src, srcStep, dst, dstStep, sizeof(T) * C * static_cast<size_t>(width), height,
                   ::pxl::StreamOutput(2 * bytes));
  else
    rows::MergeRows<sizeof(T)>(src, srcStep, dst, dstStep, width, height);
  return pxlStsNoErr;
}

// N elements a pixel from pixels of SC elements to pixels of DC elements;
// Fill sets the fourth destination element to the opaque value.
template <typename T, int SC, int DC, int N, bool Fill>
PXL_INLINE void StridedPixels(const T* __restrict s, T* __restrict d, int count) {
  for (int x = 0; x < count; ++x) {
    for (int k = 0; k < N; ++k) d[DC * x + k] = s[SC * x + k];
    if (Fill) d[DC * x + 3] = rows::Opaque<T>();
  }
}

// With `stream`, rows whose every byte is written (N == DC, or the fourth
// filled) go out through a buffer with non-temporal stores.
template <typename T, int SC, int DC, int N, bool Fill>
PXL_NOINLINE void CopyStridedRows(const T* src, int srcStep, T* dst, int dstStep, int width,
                                  int height, bool stream) {
  constexpr bool whole = N == DC || Fill;
  for (int y = 0; y < height; ++y) {
    const T* s = Row(src, srcStep, y);
    T* d = Row(dst, dstStep, y);
    if (whole && stream)
      rows::StreamRow<T, DC>(d, width, [&](T* b, int x, int n) {
        StridedPixels<T, SC, DC, N, Fill>(s + SC * x, b, n);
      });
    else
      StridedPixels<T, SC, DC, N, Fill>(s, d, width);
  }
  if (whole && stream) _mm_sfence();
}

template <typename T, int SC, int DC, int N, bool Fill>
PxlStatus CopyStrided(const T* src, int srcStep, T* dst, int dstStep, int width, int height) {
  if (PxlStatus st = Check(width, height, src, dst)) return st;
  const int64_t pixels = int64_t{width} * height;
  CopyStridedRows<T, SC, DC, N, Fill>(
      src, srcStep, dst, dstStep, width, height,
      ::pxl::StreamOutput(pixels * static_cast<int64_t>(sizeof(T)) * (SC + DC)));
  return pxlStsNoErr;
}

#if PXL_LEVEL >= 1
// Splitting 16 three-byte pixels (48 bytes in the vectors v0, v1, v2) into
// three planes.  Byte p of v0, v1 and v2 holds channel p % 3, (p + 1) % 3 and
// (p + 2) % 3 of some pixel, so for each channel the three vectors hold its
// 16 bytes at 16 distinct positions: two blends gather them into one vector
// and one shuffle puts them in pixel order.  kSplitFrom[k][j] selects, for
// channel k, the bytes that come from v(j + 1); kSplitOrder[k] orders them.
constexpr int8_t SplitFrom(int k, int j, int p) { return (p + j + 1) % 3 == k ? -1 : 0; }
alignas(16) constexpr int8_t kSplitFrom[3][2][16] = {
#define PXL_ROW16(k, j)                                                                    \
  {                                                                                        \
    SplitFrom(k, j, 0), SplitFrom(k, j, 1), SplitFrom(k, j, 2), SplitFrom(k, j, 3),        \
        SplitFrom(k, j, 4), SplitFrom(k, j, 5), SplitFrom(k, j, 6), SplitFrom(k, j, 7),    \
        SplitFrom(k, j, 8), SplitFrom(k, j, 9), SplitFrom(k, j, 10), SplitFrom(k, j, 11),  \
        SplitFrom(k, j, 12), SplitFrom(k, j, 13), SplitFrom(k, j, 14), SplitFrom(k, j, 15) \
  }
    {PXL_ROW16(0, 0), PXL_ROW16(0, 1)},
    {PXL_ROW16(1, 0), PXL_ROW16(1, 1)},
    {PXL_ROW16(2, 0), PXL_ROW16(2, 1)},
#undef PXL_ROW16
};
// Pixel i's channel k is byte 3i + k of the 48, so position (3i + k) % 16.
alignas(16) constexpr int8_t kSplitOrder[3][16] = {
    {0, 3, 6, 9, 12, 15, 2, 5, 8, 11, 14, 1, 4, 7, 10, 13},
    {1, 4, 7, 10, 13, 0, 3, 6, 9, 12, 15, 2, 5, 8, 11, 14},
    {2, 5, 8, 11, 14, 1, 4, 7, 10, 13, 0, 3, 6, 9, 12, 15}};

template <typename V>
PXL_INLINE V SplitMask(const int8_t* m);
template <>
PXL_INLINE __m128i SplitMask<__m128i>(const int8_t* m) {
  return _mm_load_si128(reinterpret_cast<const __m128i*>(m));
}
PXL_INLINE __m128i Blend(__m128i a, __m128i b, __m128i m) { return _mm_blendv_epi8(a, b, m); }
PXL_INLINE __m128i Shuffle(__m128i a, __m128i m) { return _mm_shuffle_epi8(a, m); }
#if PXL_LEVEL >= 4
template <>
PXL_INLINE __m256i SplitMask<__m256i>(const int8_t* m) {
  return _mm256_broadcastsi128_si256(_mm_load_si128(reinterpret_cast<const __m128i*>(m)));
}
PXL_INLINE __m256i Blend(__m256i a, __m256i b, __m256i m) { return _mm256_blendv_epi8(a, b, m); }
PXL_INLINE __m256i Shuffle(__m256i a, __m256i m) { return _mm256_shuffle_epi8(a, m); }
#endif

#if PXL_LEVEL >= 5
template <>
PXL_INLINE __m512i SplitMask<__m512i>(const int8_t* m) {
  return _mm512_broadcast_i32x4(_mm_load_si128(reinterpret_cast<const __m128i*>(m)));
}
PXL_INLINE __m512i Blend(__m512i a, __m512i b, __m512i m) {
  return _mm512_mask_blend_epi8(_mm512_movepi8_mask(m), a, b);
}
PXL_INLINE __m512i Shuffle(__m512i a, __m512i m) { return _mm512_shuffle_epi8(a, m); }
#endif

// The 48 bytes at s as three vectors; in wider vectors, lane L holds the 48
// bytes that follow lane L - 1's, so that each lane splits 16 pixels of its
// own and the planes come out in pixel order.
PXL_INLINE void Load3(const uint8_t* s, __m128i* v) {
  for (int j = 0; j < 3; ++j) v[j] = _mm_loadu_si128(reinterpret_cast<const __m128i*>(s + 16 * j));
}
#if PXL_LEVEL >= 4
PXL_INLINE void Load3(const uint8_t* s, __m256i* v) {
  for (int j = 0; j < 3; ++j)
    v[j] = _mm256_inserti128_si256(
        _mm256_castsi128_si256(_mm_loadu_si128(reinterpret_cast<const __m128i*>(s + 16 * j))),
        _mm_loadu_si128(reinterpret_cast<const __m128i*>(s + 48 + 16 * j)), 1);
}
#endif

#if PXL_LEVEL >= 5
PXL_INLINE void Load3(const uint8_t* s, __m512i* v) {
  __m256i half[2][3];
  Load3(s, half[0]);
  Load3(s + 96, half[1]);
  for (int j = 0; j < 3; ++j)
    v[j] = _mm512_inserti64x4(_mm512_castsi256_si512(half[0][j]), half[1][j], 1);
}
#endif

// sizeof(V) pixels of three bytes at s into the planes at p[k] + x; NT
// streams them, the planes at p[k] + x aligned to sizeof(V).
template <typename V, bool NT>
PXL_INLINE void SplitBytes3(const uint8_t* s, uint8_t* const* p, int x) {
  V v[3];
  Load3(s, v);
  for (int k = 0; k < 3; ++k) {
    const V t = Blend(Blend(v[0], v[1], SplitMask<V>(kSplitFrom[k][0])), v[2],
                      SplitMask<V>(kSplitFrom[k][1]));
    rows::Put<NT>(p[k] + x, Shuffle(t, SplitMask<V>(kSplitOrder[k])));
  }
}
#endif

#if PXL_LEVEL >= 1
// Splits pixels x.. of a row of three-byte pixels while 16 or more are left;
// returns the first pixel not done.
template <bool NT>
PXL_INLINE int SplitRow(const uint8_t* s, uint8_t* const* p, int x, int width) {
#if PXL_LEVEL >= 5
  for (; x + 64 <= width; x += 64) SplitBytes3<__m512i, NT>(s + 3 * x, p, x);
#endif
#if PXL_LEVEL >= 4
  for (; x + 32 <= width; x += 32) SplitBytes3<__m256i, NT>(s + 3 * x, p, x);
#endif
  for (; x + 16 <= width; x += 16) SplitBytes3<__m128i, NT>(s + 3 * x, p, x);
  return x;
}
#endif

// Pixels of SC elements to NP planes (the first NP channels).  Three-byte
// pixels are split with vectors; with `stream`, and planes equally aligned,
// each row's aligned part is written with non-temporal stores.
template <typename T, int SC, int NP>
PXL_NOINLINE void ToPlanesRows(const T* src, int srcStep, T* const* planes, int dstStep, int width,
                               int height, bool stream) {
  bool streamed = false;
  for (int y = 0; y < height; ++y) {
    const T* __restrict s = Row(src, srcStep, y);
    T* __restrict p[NP];
    for (int k = 0; k < NP; ++k) p[k] = Row(planes[k], dstStep, y);
    int x = 0;
#if PXL_LEVEL >= 1
    if constexpr (sizeof(T) == 1 && SC == 3 && NP == 3) {
      const uint8_t* sb = reinterpret_cast<const uint8_t*>(s);
      uint8_t* pb[3] = {reinterpret_cast<uint8_t*>(p[0]), reinterpret_cast<uint8_t*>(p[1]),
                        reinterpret_cast<uint8_t*>(p[2])};
      const size_t head = rows::ToLine(pb[0]);
      if (stream && rows::ToLine(pb[1]) == head && rows::ToLine(pb[2]) == head &&
          static_cast<int>(head) + 64 <= width) {
        for (; x < static_cast<int>(head); ++x)
          for (int k = 0; k < 3; ++k) pb[k][x] = sb[3 * x + k];
        x = SplitRow<true>(sb, pb, x, width);
        streamed = true;
      }
      x = SplitRow<false>(sb, pb, x, width);
    }
#endif
    if (stream && x == 0) {
      // Pieces of the row into one buffer a plane, streamed from there.
      constexpr int K = rows::ChunkPixels<T, NP>();
      alignas(64) T b[NP][K];
      for (; x < width; x += K) {
        const int n = width - x < K ? width - x : K;
        for (int i = 0; i < n; ++i)
          for (int k = 0; k < NP; ++k) b[k][i] = s[SC * (x + i) + k];
        for (int k = 0; k < NP; ++k)
          rows::StreamCopy(reinterpret_cast<uint8_t*>(p[k] + x),
                           reinterpret_cast<const uint8_t*>(b[k]), sizeof(T) * n);
      }
      streamed = true;
    }
    for (; x < width; ++x)
      for (int k = 0; k < NP; ++k) p[k][x] = s[SC * x + k];
  }
  if (streamed) _mm_sfence();
}

template <typename T, int SC, int NP>
PxlStatus CopyToPlanes(const T* src, int srcStep, T* const* dst, int dstStep, int width,
                       int height) {
  if (!rows::PlanesGiven<NP>(dst)) return pxlStsNullPtrErr;
  if (PxlStatus st = Check(width, height, src)) return st;
  const int64_t pixels = int64_t{width} * height;
  const bool stream = ::pxl::StreamOutput(pixels * static_cast<int64_t>(sizeof(T)) * (SC + NP));
  ToPlanesRows<T, SC, NP>(src, srcStep, dst, dstStep, width, height, stream);
  return pxlStsNoErr;
}

// NP planes to the first NP channels of pixels of DC elements; with
// `stream`, rows that are written whole (NP == DC) go out through a buffer
// with non-temporal stores.
template <typename T, int NP, int DC>
PXL_INLINE void MergePixels(const T* const* p, int x0, T* __restrict d, int count) {
  const T* __restrict q[NP];
  for (int k = 0; k < NP; ++k) q[k] = p[k] + x0;
  for (int x = 0; x < count; ++x)
    for (int k = 0; k < NP; ++k) d[DC * x + k] = q[k][x];
}

template <typename T, int NP, int DC>
PXL_NOINLINE void FromPlanesRows(const T* const* planes, int srcStep, T* dst, int dstStep,
                                 int width, int height, bool stream) {
  constexpr bool whole = NP == DC;
  for (int y = 0; y < height; ++y) {
    const T* p[NP];
    for (int k = 0; k < NP; ++k) p[k] = Row(planes[k], srcStep, y);
    T* d = Row(dst, dstStep, y);
    if (whole && stream)
      rows::StreamRow<T, DC>(d, width,
                             [&](T* b, int x, int n) { MergePixels<T, NP, DC>(p, x, b, n); });
    else
      MergePixels<T, NP, DC>(p, 0, d, width);
  }
  if (whole && stream) _mm_sfence();
}

template <typename T, int NP, int DC>
PxlStatus CopyFromPlanes(const T* const* src, int srcStep, T* dst, int dstStep, int width,
                         int height) {
  if (!rows::PlanesGiven<NP>(src)) return pxlStsNullPtrErr;
  if (PxlStatus st = Check(width, height, dst)) return st;
  const int64_t pixels = int64_t{width} * height;
  FromPlanesRows<T, NP, DC>(
      src, srcStep, dst, dstStep, width, height,
      ::pxl::StreamOutput(pixels * static_cast<int64_t>(sizeof(T)) * (NP + DC)));
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
