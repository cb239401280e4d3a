// The gallery's own parts: its entries run and change the picture, the two
// uniform-exposure entries really do land on different curves, and pictures
// for the page are reduced, clamped and keep their transparency.
#include "gallery/gallery.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>
#include <set>
#include <string>

#include "gallery/images.h"
#include "gallery/landscape.h"

namespace {

using namespace gallery;

bool SamePixels(const Image& a, const Image& b) {
  if (a.width() != b.width() || a.height() != b.height() || a.channels() != b.channels())
    return false;
  for (int y = 0; y < a.height(); ++y)
    if (std::memcmp(a.RowF(y), b.RowF(y), sizeof(float) * a.width() * a.channels()) != 0)
      return false;
  return true;
}

Image RunOnce(const Entry& entry, const Image& input, std::vector<CallRecord>* calls) {
  Job job(input);
  entry.run(job);
  *calls = job.Calls();
  return job.Output().Clone();
}

TEST(GalleryEntries, EveryEntryCallsExportsThatSucceedAndChangeThePicture) {
  const Image input = GenerateLandscape(37, 23);  // odd sizes: partial pixel groups
  std::set<std::string> titles;
  for (const Entry& entry : Entries()) {
    SCOPED_TRACE(entry.title);
    EXPECT_TRUE(titles.insert(entry.title).second) << "two entries with one title";
    std::vector<CallRecord> calls;
    const Image out = RunOnce(entry, input, &calls);
    ASSERT_FALSE(calls.empty());
    for (const CallRecord& call : calls) EXPECT_EQ(pxlStsNoErr, call.status) << call.exportName;
    EXPECT_FALSE(SamePixels(input, out));
    // Each run starts from the input again: a second run gives the same picture.
    EXPECT_TRUE(SamePixels(out, RunOnce(entry, input, &calls)));
  }
}

TEST(GalleryEntries, UniformExposureEntriesLandOnBothCurves) {
  // The entries differ only in where the region starts; if the offset copy
  // were aligned after all, both would show the same curve.
  const Image input = GenerateLandscape(16, 8);
  const Image shifted = input.CloneWithOffset(4);
  EXPECT_EQ(4u, reinterpret_cast<std::uintptr_t>(shifted.f32()) % 16);
  EXPECT_EQ(0u, reinterpret_cast<std::uintptr_t>(input.f32()) % 16);
  EXPECT_TRUE(SamePixels(input, shifted));

  std::vector<const Entry*> uniform;
  for (const Entry& entry : Entries())
    if (std::string(entry.title).rfind("Uniform exposure", 0) == 0) uniform.push_back(&entry);
  ASSERT_EQ(2u, uniform.size());
  std::vector<CallRecord> calls;
  EXPECT_FALSE(
      SamePixels(RunOnce(*uniform[0], input, &calls), RunOnce(*uniform[1], input, &calls)));
}

TEST(GalleryPictures, ReducedByBoxAverageWithAlphaWeight) {
  // 5 x 2 float RGBA reduced to at most 2 pixels a side: factor 3, so boxes of
  // 3 x 2 and, at the right edge, 2 x 2.
  Image img = Image::Allocate(5, 2, 4, Element::k32f);
  for (int y = 0; y < 2; ++y)
    for (int x = 0; x < 5; ++x) {
      float* p = img.RowF(y) + 4 * x;
      const bool clear = x == 1;  // transparent red: must not tint the box
      p[0] = clear ? 1.0f : 0.0f;
      p[1] = x < 3 ? 0.6f : 0.2f;
      p[2] = 0.0f;
      p[3] = clear ? 0.0f : 1.0f;
    }
  const Picture pic = ToPicture(img, 2);
  ASSERT_EQ(2, pic.width);
  ASSERT_EQ(1, pic.height);
  ASSERT_EQ(4, pic.channels);  // alpha below 1: kept
  const std::uint8_t* a = pic.pixels.data();
  EXPECT_EQ(0, a[0]);                                      // red only where alpha is 0
  EXPECT_EQ(153, a[1]);                                    // 0.6
  EXPECT_EQ(static_cast<int>(255 * 4.0 / 6 + 0.5), a[3]);  // 4 of 6 pixels opaque
  EXPECT_EQ(51, a[5]);                                     // 0.2
  EXPECT_EQ(255, a[7]);
}

TEST(GalleryPictures, FloatValuesAreClampedAndOpaquePicturesLoseAlpha) {
  Image img = Image::Allocate(4, 1, 4, Element::k32f);
  const float nan = std::numeric_limits<float>::quiet_NaN();
  const float values[16] = {-0.5f, 1.5f, nan,  1.0f, 0.5f, 0.25f, 1.0f, 1.0f,
                            2.0f,  0.0f, 0.0f, 3.0f, 0.0f, 0.0f,  0.0f, 1.0f};
  std::memcpy(img.RowF(0), values, sizeof values);
  const Picture pic = ToPicture(img, 100);
  ASSERT_EQ(3, pic.channels);  // alpha 3.0 is clamped to 1: still opaque
  const std::uint8_t want[12] = {0, 255, 0, 128, 64, 255, 255, 0, 0, 0, 0, 0};
  for (int i = 0; i < 12; ++i) EXPECT_EQ(want[i], pic.pixels[i]) << i;

  const Summary s = Summarise(img);
  EXPECT_DOUBLE_EQ(4.0 / 12, s.outsideRange);  // -0.5, 1.5, NaN and 2.0
}

}  // namespace
