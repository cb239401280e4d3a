// Tests over the members of a family table: typed images with guard bytes,
// the region geometries every member is tried on, and the checks that a
// refused call changed nothing.
#ifndef PXL_TESTS_SUPPORT_GRID_H
#define PXL_TESTS_SUPPORT_GRID_H

#include <gtest/gtest.h>

#include <climits>
#include <cstdint>
#include <cstring>
#include <functional>
#include <random>
#include <string>
#include <vector>

#include "core/family.h"
#include "pxl/pxl.h"
#include "support/image.h"
#include "support/levels.h"

namespace pxltest {

// One case of a parametrised family test: the export's name and a runner.
struct MemberCase {
  const char* name;
  void (*run)();
};
inline std::string CaseName(const testing::TestParamInfo<MemberCase>& info) {
  return info.param.name;
}

// An image of `elems` elements of T a pixel (or one plane), with a padded
// step and a start shifted by whole elements from a 64-byte boundary, inside
// guard bytes.
template <typename T>
class Img {
 public:
  Img(int width, int height, int elems, int padElems = 0, int shiftElems = 0)
      : width_(width),
        height_(height),
        elems_(elems),
        step_(static_cast<int>(sizeof(T)) * (width * elems + padElems)),
        buf_(static_cast<size_t>(step_) * height, sizeof(T) * shiftElems) {}

  T* data() { return buf_.as<T>(); }
  int step() const { return step_; }
  int width() const { return width_; }
  int height() const { return height_; }
  int elems() const { return elems_; }
  T* row(int y) { return reinterpret_cast<T*>(buf_.data() + static_cast<size_t>(y) * step_); }
  T& at(int x, int y, int k = 0) { return row(y)[x * elems_ + k]; }

  // Random bits in every byte, padding and guards included.
  void randomize(std::mt19937& rng) {
    std::vector<uint8_t>& raw = const_cast<std::vector<uint8_t>&>(buf_.raw());
    for (uint8_t& b : raw) b = static_cast<uint8_t>(rng());
  }
  // Values from `draw` in every element of every pixel.
  template <typename Draw>
  void fill(Draw draw) {
    for (int y = 0; y < height_; ++y)
      for (int x = 0; x < width_ * elems_; ++x) row(y)[x] = draw();
  }
  const std::vector<uint8_t>& bytes() const { return buf_.raw(); }
  // Index in bytes() of element k of pixel (x, y).
  size_t index(int x, int y, int k = 0) const {
    return buf_.payloadOffset() + static_cast<size_t>(y) * step_ +
           sizeof(T) * (static_cast<size_t>(x) * elems_ + k);
  }
  // A byte index of bytes() described as a place in the image.
  std::string where(size_t i) const {
    const long off = static_cast<long>(i) - static_cast<long>(buf_.payloadOffset());
    if (off < 0 || off >= static_cast<long>(step_) * height_)
      return "guard byte " + std::to_string(off) + " from the image start";
    const long y = off / step_, inRow = off % step_;
    const long e = inRow / static_cast<long>(sizeof(T));
    if (e >= static_cast<long>(width_) * elems_)
      return "padding of row " + std::to_string(y) + " (byte " + std::to_string(inRow) + ")";
    return "pixel (" + std::to_string(e / elems_) + ", " + std::to_string(y) + ") element " +
           std::to_string(e % elems_) + " byte " + std::to_string(inRow % sizeof(T));
  }
  void setBytes(const std::vector<uint8_t>& b) {
    const_cast<std::vector<uint8_t>&>(buf_.raw()) = b;
  }

 private:
  int width_, height_, elems_, step_;
  GuardedBuffer buf_;
};

// An element in a snapshot of an image's storage (Img::bytes()).
template <typename T>
T Peek(const std::vector<uint8_t>& bytes, size_t index) {
  T v;
  std::memcpy(&v, bytes.data() + index, sizeof v);
  return v;
}
template <typename T>
void Poke(std::vector<uint8_t>& bytes, size_t index, T v) {
  std::memcpy(bytes.data() + index, &v, sizeof v);
}

// Empty when the snapshots agree; else where they first differ.
template <typename T>
std::string Diff(const Img<T>& img, const std::vector<uint8_t>& got,
                 const std::vector<uint8_t>& want) {
  for (size_t i = 0; i < got.size(); ++i)
    if (got[i] != want[i])
      return img.where(i) + ": got " + std::to_string(got[i]) + ", want " + std::to_string(want[i]);
  return "";
}

// Calls `call`, expects status `want`, and expects no byte of any image in
// `outs` (guards and padding included) to have changed.
template <typename... Outs>
void ExpectRefused(PxlStatus want, const std::function<PxlStatus()>& call, const std::string& what,
                   const Outs&... outs) {
  const std::vector<std::vector<uint8_t>> before{outs.bytes()...};
  EXPECT_EQ(want, call()) << what;
  const std::vector<std::vector<uint8_t>> after{outs.bytes()...};
  EXPECT_TRUE(before == after) << what << ": an output byte changed";
}

// The regions each member is tried on: a region inside a larger image
// (offset, padded and shifted buffers), widths around every vector width up
// to twice the widest plus one, and one image used whole.
struct Geometry {
  int imgW, imgH;
  PxliRect roi;
  int srcPad, dstPad;      // elements of padding a row
  int srcShift, dstShift;  // elements from a 64-byte boundary
};

inline std::vector<Geometry> Geometries() {
  std::vector<Geometry> g;
  const int widths[] = {1, 2, 3, 4, 5, 7, 8, 9, 15, 16, 17, 31, 32, 33, 63, 64, 65, 127, 129};
  int i = 0;
  for (int w : widths) {
    const int x = i % 3, y = (i + 1) % 2;
    g.push_back({w + x + 1, 3 + y, {x, y, w, 3}, i % 4, (i + 1) % 3, i % 2, (i / 2) % 3});
    ++i;
  }
  g.push_back({40, 5, {0, 0, 40, 5}, 0, 0, 0, 0});  // rows without gaps
  return g;
}

// Region bounds that every validating kernel refuses with pxlStsSizeErr.
inline std::vector<PxliRect> BadSizes() {
  return {{0, 0, 0, 2},  {0, 0, 2, 0},       {0, 0, -1, 2},
          {0, 0, 2, -1}, {0, 0, INT_MIN, 2}, {0, 0, 2, INT_MIN}};
}

}  // namespace pxltest

#endif
