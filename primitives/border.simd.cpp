// Kernels of the border copies: the source placed in a larger destination
// and the pixels around it filled with a value, with the nearest edge pixel,
// or with the source reflected about its edge.
//
// Each destination row is written once, from left to right: the left border,
// the source row (one copy), the right border.  The rows above and below the
// source are then whole copies of rows already built (replicate: the first or
// last; mirror: the reflected one; constant: the first border row, filled
// once), so a border never becomes a per-pixel test inside a row copy, and
// the corners follow from the two axes taken one after the other.
#include "core/simd.h"
#include "primitives/layout.h"
#include "primitives/rows.h"

#define PXL_THIS_UNIT_border PXL_PROBE
#define PXL_ROWS_KERNELS
#include "core/member_rows.h"

PXL_LEVEL_BEGIN

namespace {

using namespace rows;

constexpr int kConst = 0;
constexpr int kReplicate = 1;
constexpr int kMirror = 2;
constexpr int kInPlace = 4;

// The source column (or row) that border position i copies, i counted from
// the source's first pixel (negative before it, n and above after it).
template <int Kind>
PXL_INLINE int EdgeIndex(int64_t i, int n) {
  if (Kind == kReplicate) return i < 0 ? 0 : (i >= n ? n - 1 : static_cast<int>(i));
  // Reflection about the edge pixel, which is not repeated: period 2(n - 1).
  if (n == 1) return 0;
  const int64_t period = 2 * static_cast<int64_t>(n) - 2;
  int64_t r = i % period;
  if (r < 0) r += period;
  return static_cast<int>(r < n ? r : period - r);
}

template <int PB>
PXL_INLINE void PutPixel(uint8_t* d, const uint8_t* s) {
  __builtin_memcpy(d, s, PB);
}

// The left and right borders of one row whose source pixels start at s.
template <int PB, int Kind>
PXL_NOINLINE void SideBorders(uint8_t* row, const uint8_t* s, int sw, int left, int right,
                              const uint8_t* value) {
  if (Kind == kConst) {
    for (int x = 0; x < left; ++x) PutPixel<PB>(row + x * PB, value);
    uint8_t* r = row + (static_cast<intptr_t>(left) + sw) * PB;
    for (int x = 0; x < right; ++x) PutPixel<PB>(r + x * PB, value);
  } else if (Kind == kReplicate) {
    for (int x = 0; x < left; ++x) PutPixel<PB>(row + x * PB, s);
    const uint8_t* last = s + static_cast<intptr_t>(sw - 1) * PB;
    uint8_t* r = row + (static_cast<intptr_t>(left) + sw) * PB;
    for (int x = 0; x < right; ++x) PutPixel<PB>(r + x * PB, last);
  } else {
    for (int x = 0; x < left; ++x)
      PutPixel<PB>(row + x * PB, s + static_cast<intptr_t>(EdgeIndex<kMirror>(x - left, sw)) * PB);
    uint8_t* r = row + (static_cast<intptr_t>(left) + sw) * PB;
    for (int x = 0; x < right; ++x)
      PutPixel<PB>(r + x * PB, s + static_cast<intptr_t>(EdgeIndex<kMirror>(sw + x, sw)) * PB);
  }
}

// Checks in this order: pointers; both steps above zero; then the sizes
// together.  In place, `src` and `dst` are the same pointer and step, at the
// source's first pixel.
template <int PB, int Mode>
PxlStatus BorderCopy(const void* src, int srcStep, PxliSize ss, void* dst, int dstStep, PxliSize ds,
                     int top, int left, const void* value) {
  constexpr int Kind = Mode & 3;
  constexpr bool inPlace = (Mode & kInPlace) != 0;
  if (!src || !dst || !value) return pxlStsNullPtrErr;
  if (srcStep <= 0 || dstStep <= 0) return pxlStsStepErr;
  if (ss.width < 1 || ss.height < 1 || ds.width < 1 || ds.height < 1 || top < 0 || left < 0 ||
      int64_t{ss.width} + left > ds.width || int64_t{ss.height} + top > ds.height)
    return pxlStsSizeErr;

  const uint8_t* s = static_cast<const uint8_t*>(src);
  uint8_t* origin = static_cast<uint8_t*>(dst);
  if (inPlace) origin -= static_cast<intptr_t>(top) * dstStep + static_cast<intptr_t>(left) * PB;
  const uint8_t* v = static_cast<const uint8_t*>(value);
  const int right = ds.width - ss.width - left;
  const size_t srcBytes = static_cast<size_t>(ss.width) * PB;
  const size_t rowBytes = static_cast<size_t>(ds.width) * PB;

  for (int y = 0; y < ss.height; ++y) {
    uint8_t* row = Row(origin, dstStep, top + y);
    const uint8_t* from = Row(s, srcStep, y);
    if (!inPlace) __builtin_memcpy(row + static_cast<intptr_t>(left) * PB, from, srcBytes);
    SideBorders<PB, Kind>(row, from, ss.width, left, right, v);
  }

  // Rows above and below the source.
  const int bottom = ds.height - ss.height - top;
  if (Kind == kConst) {
    uint8_t* filled = nullptr;
    for (int y = 0; y < ds.height; ++y) {
      if (y == top) y += ss.height;
      if (y >= ds.height) break;
      uint8_t* row = Row(origin, dstStep, y);
      if (filled) {
        __builtin_memcpy(row, filled, rowBytes);
      } else {
        for (int x = 0; x < ds.width; ++x) PutPixel<PB>(row + static_cast<intptr_t>(x) * PB, v);
        filled = row;
      }
    }
  } else {
    for (int y = 0; y < top; ++y)
      __builtin_memcpy(Row(origin, dstStep, y),
                       Row(origin, dstStep, top + EdgeIndex<Kind>(y - top, ss.height)), rowBytes);
    for (int y = 0; y < bottom; ++y)
      __builtin_memcpy(
          Row(origin, dstStep, top + ss.height + y),
          Row(origin, dstStep, top + EdgeIndex<Kind>(int64_t{ss.height} + y, ss.height)), rowBytes);
  }
  return pxlStsNoErr;
}

}  // namespace

#include "primitives/border.def"

PXL_LEVEL_END
