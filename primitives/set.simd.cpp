// Kernels of the Set family.  A fill writes the first row by doubling a
// pixel pattern with block copies and then copies that row to the others;
// rows without gaps are filled as one long row.
#include "core/simd.h"
#include "core/streaming.h"
#include "primitives/rows.h"

#define PXL_THIS_UNIT_set PXL_PROBE
#define PXL_ROWS_KERNELS
#include "core/member_rows.h"

PXL_LEVEL_BEGIN

using rows::Check;
using rows::Row;

namespace {

// Fills `bytes` bytes at d with the pattern of `period` bytes at pattern.
PXL_NOINLINE void FillBytes(uint8_t* d, size_t bytes, const uint8_t* pattern, size_t period) {
  if (bytes < period) period = bytes;
  __builtin_memcpy(d, pattern, period);
  // Double what is written, in blocks of a whole number of periods of at
  // most 4 KiB, so that the source of each copy stays in the first cache.
  const size_t cap = 4096 / period * period;
  for (size_t done = period; done < bytes;) {
    size_t n = done < cap ? done : cap;
    if (n > bytes - done) n = bytes - done;
    __builtin_memcpy(d + done, d, n);
    done += n;
  }
}

// Every pixel of a region gets the pixel pattern of `pixelBytes` bytes.
PXL_NOINLINE void FillRegion(const uint8_t* pixel, size_t pixelBytes, uint8_t* d, int step,
                             int width, int height) {
  const size_t rowBytes = pixelBytes * static_cast<size_t>(width);
  if (static_cast<size_t>(step) == rowBytes) {
    FillBytes(d, rowBytes * static_cast<size_t>(height), pixel, pixelBytes);
    return;
  }
  FillBytes(d, rowBytes, pixel, pixelBytes);
  for (int y = 1; y < height; ++y) __builtin_memcpy(Row(d, step, y), d, rowBytes);
}

// `bytes` bytes of value at d with non-temporal 16-byte stores where d is
// 16-byte aligned, ordinary stores before and after.
void StreamBytes(uint8_t* d, size_t bytes, uint8_t value) {
  size_t head = (16 - reinterpret_cast<uintptr_t>(d) % 16) % 16;
  if (head > bytes) head = bytes;
  __builtin_memset(d, value, head);
  const __m128i v = _mm_set1_epi8(static_cast<char>(value));
  size_t i = head;
  for (; i + 16 <= bytes; i += 16) _mm_stream_si128(reinterpret_cast<__m128i*>(d + i), v);
  __builtin_memset(d + i, value, bytes - i);
}

template <typename T>
PxlStatus SetC1(T value, T* dst, int dstStep, int width, int height) {
  if (PxlStatus st = Check(width, height, dst)) return st;
  FillRegion(reinterpret_cast<const uint8_t*>(&value), sizeof(T), reinterpret_cast<uint8_t*>(dst),
             dstStep, width, height);
  return pxlStsNoErr;
}

// Rows without a gap (width equal to the step) are one row; an image of more
// than 0x80000 pixels, when the largest cache is known and no larger, is
// written with non-temporal stores and a store fence.
template <>
PxlStatus SetC1<uint8_t>(uint8_t value, uint8_t* dst, int dstStep, int width, int height) {
  if (PxlStatus st = Check(width, height, dst)) return st;
  const int64_t pixels = int64_t{width} * height;
  const bool stream = ::pxl::StreamLargeFill(pixels);
  int rows = height;
  size_t rowBytes = static_cast<size_t>(width);
  if (width == dstStep) {
    rowBytes *= static_cast<size_t>(height);
    rows = 1;
  }
  for (int y = 0; y < rows; ++y) {
    if (stream)
      StreamBytes(Row(dst, dstStep, y), rowBytes, value);
    else
      __builtin_memset(Row(dst, dstStep, y), value, rowBytes);
  }
  if (stream) _mm_sfence();
  return pxlStsNoErr;
}

// C channels a pixel, the first NV of which take the values.
template <typename T, int C, int NV>
PxlStatus SetPixel(const T* value, T* dst, int dstStep, int width, int height) {
  if (PxlStatus st = Check(width, height, value, dst)) return st;
  // A run of pixels of the pattern; with a fourth channel left alone, runs
  // of it are merged into each row.
  constexpr int kRun = 1024 / (C * static_cast<int>(sizeof(T)));
  T run[kRun * C];
  for (int i = 0; i < kRun; ++i)
    for (int k = 0; k < C; ++k) run[i * C + k] = value[k < NV ? k : 0];
  if (NV == C) {
    FillRegion(reinterpret_cast<const uint8_t*>(run), sizeof(T) * C,
               reinterpret_cast<uint8_t*>(dst), dstStep, width, height);
    return pxlStsNoErr;
  }
  for (int y = 0; y < height; ++y) {
    uint8_t* d = reinterpret_cast<uint8_t*>(Row(dst, dstStep, y));
    for (int x = 0; x < width; x += kRun) {
      const int n = width - x < kRun ? width - x : kRun;
      rows::MergeFirstThree<sizeof(T)>(reinterpret_cast<const uint8_t*>(run), d + sizeof(T) * C * x,
                                       static_cast<size_t>(n));
    }
  }
  return pxlStsNoErr;
}

// The first NV of C channels get the values, in the pixels whose mask byte
// is not 0 (every pixel when not Masked).
template <typename T, int C, int NV, bool Masked>
PXL_NOINLINE void SetRows(const T* value, T* dst, int dstStep, int width, int height,
                          const uint8_t* mask, int maskStep) {
  T v[NV];
  for (int k = 0; k < NV; ++k) v[k] = value[k];
  for (int y = 0; y < height; ++y) {
    T* __restrict d = Row(dst, dstStep, y);
    const uint8_t* __restrict m = Masked ? Row(mask, maskStep, y) : nullptr;
    for (int x = 0; x < width; ++x)
      if (!Masked || m[x])
        for (int k = 0; k < NV; ++k) d[C * x + k] = v[k];
  }
}

template <typename T, int C, int NV, bool Masked>
PxlStatus SetMasked(const T* value, T* dst, int dstStep, int width, int height, const uint8_t* mask,
                    int maskStep) {
  const void* maskGiven =
      Masked ? static_cast<const void*>(mask) : dst;  // unmasked: no mask to check
  if (PxlStatus st = Check(width, height, value, dst, maskGiven)) return st;
  SetRows<T, C, NV, Masked>(value, dst, dstStep, width, height, mask, maskStep);
  return pxlStsNoErr;
}

}  // namespace

#include "primitives/set.def"

PXL_LEVEL_END
