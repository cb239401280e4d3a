// Kernels of Transpose: destination row x, column y takes source row y,
// column x.
//
// The region is walked in tiles of 64 x 64 bytes' worth of pixels so that
// the rows being read and the rows being written stay in the first cache.
// Inside a tile, pixels of 1, 2, 4 and 8 bytes move as square blocks of
// 16 bytes a row held in vector registers (16 x 16, 8 x 8, 4 x 4, 2 x 2
// pixels), transposed by rounds of interleaving; other pixel sizes, and the
// tile edges that no whole block covers, move one pixel at a time.
#include "core/simd.h"
#include "primitives/layout.h"
#include "primitives/rows.h"

#define PXL_THIS_UNIT_transpose PXL_PROBE
#define PXL_ROWS_KERNELS
#include "core/member_rows.h"

PXL_LEVEL_BEGIN

namespace {

using namespace rows;

// Interleaves the low (high) halves of a and b by elements of E bytes.
template <int E>
PXL_INLINE __m128i Lo(__m128i a, __m128i b) {
  if (E == 1) return _mm_unpacklo_epi8(a, b);
  if (E == 2) return _mm_unpacklo_epi16(a, b);
  if (E == 4) return _mm_unpacklo_epi32(a, b);
  return _mm_unpacklo_epi64(a, b);
}
template <int E>
PXL_INLINE __m128i Hi(__m128i a, __m128i b) {
  if (E == 1) return _mm_unpackhi_epi8(a, b);
  if (E == 2) return _mm_unpackhi_epi16(a, b);
  if (E == 4) return _mm_unpackhi_epi32(a, b);
  return _mm_unpackhi_epi64(a, b);
}

// An N x N block of E-byte pixels (N = 16 / E): rows i and i + N/2
// interleaved into rows 2i and 2i + 1, log2(N) times over, transpose it.
template <int E>
PXL_INLINE void Block(const uint8_t* s, int ss, uint8_t* d, int ds) {
  constexpr int N = 16 / E;
  __m128i r[N], o[N];
  for (int i = 0; i < N; ++i)
    r[i] = _mm_loadu_si128(reinterpret_cast<const __m128i*>(s + static_cast<intptr_t>(i) * ss));
  for (int round = 1; round < N; round *= 2) {
    for (int i = 0; i < N / 2; ++i) {
      o[2 * i] = Lo<E>(r[i], r[i + N / 2]);
      o[2 * i + 1] = Hi<E>(r[i], r[i + N / 2]);
    }
    for (int i = 0; i < N; ++i) r[i] = o[i];
  }
  for (int i = 0; i < N; ++i)
    _mm_storeu_si128(reinterpret_cast<__m128i*>(d + static_cast<intptr_t>(i) * ds), r[i]);
}

template <int PB>
PXL_INLINE void Pixels(const uint8_t* s, int ss, uint8_t* d, int ds, int x0, int x1, int y0,
                       int y1) {
  for (int x = x0; x < x1; ++x) {
    uint8_t* dr = Row(d, ds, x);
    for (int y = y0; y < y1; ++y)
      __builtin_memcpy(dr + static_cast<intptr_t>(y) * PB,
                       Row(s, ss, y) + static_cast<intptr_t>(x) * PB, PB);
  }
}

template <int PB>
PxlStatus TransposeCopy(const void* src, int ss, void* dst, int ds, int width, int height) {
  if (PxlStatus st = Check(width, height, src, dst)) return st;
  const uint8_t* s = static_cast<const uint8_t*>(src);
  uint8_t* d = static_cast<uint8_t*>(dst);
  constexpr bool blocks = PB == 1 || PB == 2 || PB == 4 || PB == 8;
  constexpr int N = blocks ? 16 / PB : 1;
  constexpr int tile = 64 / PB > 4 ? 64 / PB : 4;
  for (int ty = 0; ty < height; ty += tile) {
    const int y1 = ty + tile < height ? ty + tile : height;
    for (int tx = 0; tx < width; tx += tile) {
      const int x1 = tx + tile < width ? tx + tile : width;
      int yb = ty, xb = tx;
      if (blocks) {
        yb = ty + (y1 - ty) / N * N;
        xb = tx + (x1 - tx) / N * N;
        for (int y = ty; y < yb; y += N)
          for (int x = tx; x < xb; x += N)
            Block<PB>(Row(s, ss, y) + static_cast<intptr_t>(x) * PB, ss,
                      Row(d, ds, x) + static_cast<intptr_t>(y) * PB, ds);
      }
      // What no block covered: the right strip of the tile, then the bottom.
      Pixels<PB>(s, ss, d, ds, xb, x1, ty, y1);
      Pixels<PB>(s, ss, d, ds, tx, xb, yb, y1);
    }
  }
  return pxlStsNoErr;
}

template <int PB>
PXL_INLINE void Swap(uint8_t* a, uint8_t* b) {
  uint8_t t[PB];
  __builtin_memcpy(t, a, PB);
  __builtin_memcpy(a, b, PB);
  __builtin_memcpy(b, t, PB);
}

// In place, square: pixel (x, y) and pixel (y, x) are exchanged, tile by
// tile so that both tiles of a pair stay in the cache.
template <int PB>
PxlStatus TransposeSquare(void* image, int step, int width, int height) {
  if (PxlStatus st = Check(width, height, image)) return st;
  if (width != height) return pxlStsSizeErr;
  uint8_t* p = static_cast<uint8_t*>(image);
  const int n = width;
  constexpr int tile = 64 / PB > 4 ? 64 / PB : 4;
  for (int ty = 0; ty < n; ty += tile) {
    const int y1 = ty + tile < n ? ty + tile : n;
    for (int tx = ty; tx < n; tx += tile) {
      const int x1 = tx + tile < n ? tx + tile : n;
      for (int y = ty; y < y1; ++y) {
        uint8_t* row = Row(p, step, y);
        for (int x = (tx == ty ? y + 1 : tx); x < x1; ++x)
          Swap<PB>(row + static_cast<intptr_t>(x) * PB,
                   Row(p, step, x) + static_cast<intptr_t>(y) * PB);
      }
    }
  }
  return pxlStsNoErr;
}

}  // namespace

#include "primitives/transpose.def"

PXL_LEVEL_END
