#include "gallery/images.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <new>

namespace gallery {
namespace {

int FormatCode(int channels, Element element) {
  const bool f = element == Element::k32f;
  switch (channels) {
    case 1:
      return f ? PXL_FMT_32F_C1 : PXL_FMT_8U_C1;
    case 2:
      return f ? PXL_FMT_32F_C2 : PXL_FMT_8U_C2;
    case 3:
      return f ? PXL_FMT_32F_C3 : PXL_FMT_8U_C3;
    default:
      return f ? PXL_FMT_32F_C4 : PXL_FMT_8U_C4;
  }
}

float Clamp01(float v) { return v > 0.0f ? (v < 1.0f ? v : 1.0f) : 0.0f; }  // NaN gives 0

float SmoothStep(float x) {
  const float t = Clamp01(x);
  return t * t * (3.0f - 2.0f * t);
}

// Fills a one-channel float image with f(x, y).
template <typename F>
Image MakeMap(int width, int height, F f) {
  Image map = Image::Allocate(width, height, 1, Element::k32f);
  for (int y = 0; y < height; ++y) {
    Pxl32f* row = map.RowF(y);
    for (int x = 0; x < width; ++x) row[x] = f(x, y);
  }
  return map;
}

// One pixel as four floats 0..1 (one-channel images give gray, three-channel
// images an opaque alpha).
void LoadPixel(const Image& image, int x, int y, float out[4]) {
  const int c = image.channels();
  float v[4] = {0, 0, 0, 1};
  for (int i = 0; i < c && i < 4; ++i)
    v[i] = image.element() == Element::k32f ? image.RowF(y)[c * x + i]
                                            : image.RowU(y)[c * x + i] * (1.0f / 255.0f);
  if (c == 1) v[1] = v[2] = v[0];
  for (int i = 0; i < 4; ++i) out[i] = Clamp01(v[i]);
}

std::uint8_t ToByte(float v) { return static_cast<std::uint8_t>(v * 255.0f + 0.5f); }

}  // namespace

Image Image::Allocate(int width, int height, int channels, Element element, int startOffsetBytes) {
  Image image;
  image.width_ = width;
  image.height_ = height;
  image.channels_ = channels;
  image.element_ = element;
  const int pixelBytes = static_cast<int>(image.PixelBytes());
  const int extraPixels = (startOffsetBytes + pixelBytes - 1) / pixelBytes;
  int step = 0;
  void* block = Malloc(width + extraPixels, height, FormatCode(channels, element), &step);
  if (!block) throw std::bad_alloc();
  image.memory_.reset(block, Release());
  image.data_ = static_cast<Pxl8u*>(block) + startOffsetBytes;
  image.step_ = step;
  return image;
}

std::size_t Image::PixelBytes() const {
  return static_cast<std::size_t>(channels_) * (element_ == Element::k32f ? 4 : 1);
}

Image Image::Clone() const { return CloneWithOffset(0); }

Image Image::CloneWithOffset(int startOffsetBytes) const {
  Image copy = Allocate(width_, height_, channels_, element_, startOffsetBytes);
  copy.CopyPixelsFrom(*this);
  return copy;
}

void Image::CopyPixelsFrom(const Image& other) {
  const std::size_t rowBytes = static_cast<std::size_t>(width_) * PixelBytes();
  for (int y = 0; y < height_; ++y) std::memcpy(RowBytes(y), other.RowBytes(y), rowBytes);
}

Image ConstantMap(int width, int height, float value) {
  return MakeMap(width, height, [=](int, int) { return value; });
}

Image HorizontalRamp(int width, int height, float left, float right) {
  const float span = width > 1 ? static_cast<float>(width - 1) : 1.0f;
  return MakeMap(width, height, [=](int x, int) { return left + (right - left) * (x / span); });
}

Image RadialFalloff(int width, int height, float centre, float corners) {
  return MakeMap(width, height, [=](int x, int y) {
    const float dx = (x + 0.5f - 0.5f * width) / (0.5f * width);
    const float dy = (y + 0.5f - 0.5f * height) / (0.5f * height);
    const float r = std::sqrt((dx * dx + dy * dy) * 0.5f);  // 1 at the corners
    return centre + (corners - centre) * SmoothStep(r);
  });
}

Image FromRgba8(const pxl_examples::Rgba8Image& picture) {
  Image image = Image::Allocate(picture.width, picture.height, 4, Element::k32f);
  for (int y = 0; y < picture.height; ++y) {
    const std::uint8_t* in =
        picture.pixels.data() + static_cast<std::size_t>(y) * picture.width * 4;
    Pxl32f* out = image.RowF(y);
    for (int i = 0; i < picture.width * 4; ++i) out[i] = in[i] * (1.0f / 255.0f);
  }
  return image;
}

Picture ToPicture(const Image& image, int maxSide) {
  const int factor = std::max(1, (std::max(image.width(), image.height()) + maxSide - 1) / maxSide);
  Picture picture;
  picture.width = (image.width() + factor - 1) / factor;
  picture.height = (image.height() + factor - 1) / factor;

  // Box averages, colours weighted by alpha so that transparent pixels do
  // not darken the edges of what is left.
  std::vector<float> rgba(static_cast<std::size_t>(picture.width) * picture.height * 4);
  bool opaque = true;
  for (int by = 0; by < picture.height; ++by) {
    for (int bx = 0; bx < picture.width; ++bx) {
      double sum[4] = {0, 0, 0, 0};
      int count = 0;
      for (int y = by * factor; y < std::min(image.height(), (by + 1) * factor); ++y) {
        for (int x = bx * factor; x < std::min(image.width(), (bx + 1) * factor); ++x) {
          float p[4];
          LoadPixel(image, x, y, p);
          for (int i = 0; i < 3; ++i) sum[i] += p[i] * p[3];
          sum[3] += p[3];
          ++count;
        }
      }
      float* out = &rgba[(static_cast<std::size_t>(by) * picture.width + bx) * 4];
      for (int i = 0; i < 3; ++i) out[i] = sum[3] > 0 ? static_cast<float>(sum[i] / sum[3]) : 0.0f;
      out[3] = static_cast<float>(sum[3] / count);
      if (ToByte(out[3]) != 255) opaque = false;
    }
  }

  picture.channels = opaque ? 3 : 4;
  picture.pixels.resize(static_cast<std::size_t>(picture.width) * picture.height *
                        picture.channels);
  std::uint8_t* out = picture.pixels.data();
  for (std::size_t i = 0; i < rgba.size(); i += 4)
    for (int c = 0; c < picture.channels; ++c) *out++ = ToByte(rgba[i + c]);
  return picture;
}

Summary Summarise(const Image& image) {
  Summary s;
  if (image.element() != Element::k32f) return s;
  const int c = image.channels();
  double luma = 0;
  std::size_t outside = 0;
  float alphaMin = INFINITY, alphaMax = -INFINITY;
  for (int y = 0; y < image.height(); ++y) {
    const Pxl32f* row = image.RowF(y);
    for (int x = 0; x < image.width(); ++x) {
      const Pxl32f* p = row + c * x;
      const int colours = c >= 3 ? 3 : c;
      for (int i = 0; i < colours; ++i) outside += !(p[i] >= 0.0f && p[i] <= 1.0f);
      if (c >= 3) luma += 0.299 * p[0] + 0.587 * p[1] + 0.114 * p[2];
      if (c == 4) {
        alphaMin = std::min(alphaMin, p[3]);
        alphaMax = std::max(alphaMax, p[3]);
      }
    }
  }
  const double pixels = static_cast<double>(image.width()) * image.height();
  s.meanLuma = c >= 3 ? luma / pixels : 0.0;
  s.outsideRange = outside / (pixels * (c >= 3 ? 3 : c));
  if (c == 4) {
    s.alphaMin = alphaMin;
    s.alphaMax = alphaMax;
  }
  return s;
}

}  // namespace gallery
