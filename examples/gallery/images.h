// Images in library memory for the gallery, and what it needs around them:
// parameter maps, conversion from and to 8-bit pixels, measurements.
#ifndef PXL_EXAMPLES_GALLERY_IMAGES_H
#define PXL_EXAMPLES_GALLERY_IMAGES_H

#include <pxl/pxl.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

#include "image_io.h"

namespace gallery {

enum class Element { k8u, k32f };

// An image allocated with Malloc and released with Free.  Rows are step()
// bytes apart and start on 64-byte boundaries, unless the image was made
// with a start offset: then every row starts that many bytes later (for
// showing what an export does with a pointer that is not aligned).  Copies
// of an Image share its pixels; Clone makes new ones.
class Image {
 public:
  Image() = default;

  // Throws std::bad_alloc when Malloc refuses.
  static Image Allocate(int width, int height, int channels, Element element,
                        int startOffsetBytes = 0);

  int width() const { return width_; }
  int height() const { return height_; }
  int channels() const { return channels_; }
  Element element() const { return element_; }
  int step() const { return step_; }
  bool empty() const { return data_ == nullptr; }
  PxliRect whole() const { return PxliRect{0, 0, width_, height_}; }

  Pxl32f* f32() const { return static_cast<Pxl32f*>(data_); }
  Pxl8u* u8() const { return static_cast<Pxl8u*>(data_); }
  Pxl32f* RowF(int y) const { return reinterpret_cast<Pxl32f*>(RowBytes(y)); }
  Pxl8u* RowU(int y) const { return RowBytes(y); }

  // A new image of the same shape and pixels, rows aligned (offset 0).
  Image Clone() const;
  // A new image of the same shape and pixels whose rows start the given
  // number of bytes past a 64-byte boundary.
  Image CloneWithOffset(int startOffsetBytes) const;
  // Copies the pixels of an image of the same shape into this one.
  void CopyPixelsFrom(const Image& other);

 private:
  Pxl8u* RowBytes(int y) const {
    return static_cast<Pxl8u*>(data_) + static_cast<std::ptrdiff_t>(y) * step_;
  }
  std::size_t PixelBytes() const;

  struct Release {
    void operator()(void* p) const { Free(p); }
  };
  std::shared_ptr<void> memory_;
  void* data_ = nullptr;
  int width_ = 0, height_ = 0, channels_ = 0, step_ = 0;
  Element element_ = Element::k32f;
};

// ---- parameter maps: one-channel float images -------------------------------

Image ConstantMap(int width, int height, float value);
// From `left` at the left edge to `right` at the right edge, linearly.
Image HorizontalRamp(int width, int height, float left, float right);
// From `centre` in the middle to `corners` at the corners, easing out along
// the ellipse that passes through the corners, whatever the aspect ratio.
Image RadialFalloff(int width, int height, float centre, float corners);

// ---- 8-bit pixels ---------------------------------------------------------

// Float RGBA 0..1 from 8-bit RGBA.
Image FromRgba8(const pxl_examples::Rgba8Image& picture);

// 8-bit pixels for showing an image: 3 channels (RGB) when the picture is
// opaque, 4 (RGBA) when any alpha is below 1.  Float values are clamped to
// 0..1 (NaN to 0) and rounded; one-channel images become gray.  Images wider
// or taller than maxSide are reduced by averaging boxes of pixels (alpha
// weighted), so a big photograph still makes a page a browser shows quickly.
struct Picture {
  int width = 0, height = 0, channels = 0;
  std::vector<std::uint8_t> pixels;
};
Picture ToPicture(const Image& image, int maxSide);

// ---- measurements ---------------------------------------------------------

// What a reader cannot see in an 8-bit picture: the float values themselves.
struct Summary {
  double meanLuma = 0;               // 0.299 R + 0.587 G + 0.114 B, colour images only
  double outsideRange = 0;           // fraction of colour values below 0 or above 1 (or NaN)
  float alphaMin = 1, alphaMax = 1;  // four-channel images only
};
Summary Summarise(const Image& image);

}  // namespace gallery

#endif  // PXL_EXAMPLES_GALLERY_IMAGES_H
