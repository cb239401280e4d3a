// Reading and writing picture files for the example programs: PNG and JPEG
// told apart by content, every PNG colour type and both kinds of JPEG coming
// back as 8-bit RGBA, and bad files refused with a reason.
#include "image_io.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

namespace {

namespace fs = std::filesystem;
using pxl_examples::ReadImageRgba8;
using pxl_examples::Rgba8Image;

class ImageFiles : public ::testing::Test {
 protected:
  void SetUp() override {
    dir_ = fs::temp_directory_path() /
           ("pxl-image-io-" + std::to_string(::testing::UnitTest::GetInstance()->random_seed()) +
            "-" + ::testing::UnitTest::GetInstance()->current_test_info()->name());
    fs::create_directories(dir_);
  }
  void TearDown() override { fs::remove_all(dir_); }
  std::string Path(const std::string& name) const { return (dir_ / name).string(); }

  fs::path dir_;
};

// A smooth gradient, which JPEG keeps within a few levels.
std::vector<std::uint8_t> Gradient(int w, int h, int channels) {
  std::vector<std::uint8_t> p(static_cast<size_t>(w) * h * channels);
  for (int y = 0; y < h; ++y)
    for (int x = 0; x < w; ++x)
      for (int c = 0; c < channels; ++c)
        p[(static_cast<size_t>(y) * w + x) * channels + c] =
            static_cast<std::uint8_t>((x * 4 + y * 2 + c * 60) % 256 / 2 + 40);
  return p;
}

TEST_F(ImageFiles, PngAndJpegOfEveryKindComeBackAsRgba) {
  std::string error;
  const int w = 24, h = 16;

  const auto rgba = Gradient(w, h, 4);
  ASSERT_TRUE(pxl_examples::WritePng8(Path("rgba.png"), w, h, 4, rgba.data(), &error)) << error;
  Rgba8Image img;
  ASSERT_TRUE(ReadImageRgba8(Path("rgba.png"), &img, &error)) << error;
  EXPECT_EQ(w, img.width);
  EXPECT_EQ(h, img.height);
  EXPECT_EQ(rgba, img.pixels);  // lossless, alpha included

  const auto rgb = Gradient(w, h, 3);
  ASSERT_TRUE(pxl_examples::WritePng8(Path("rgb.png"), w, h, 3, rgb.data(), &error)) << error;
  ASSERT_TRUE(ReadImageRgba8(Path("rgb.png"), &img, &error)) << error;
  for (int i = 0; i < w * h; ++i) {
    for (int c = 0; c < 3; ++c) ASSERT_EQ(rgb[3 * i + c], img.pixels[4 * i + c]) << i;
    ASSERT_EQ(255, img.pixels[4 * i + 3]);
  }

  ASSERT_TRUE(pxl_examples::WriteJpeg8(Path("rgb.jpg"), w, h, 3, rgb.data(), 95, &error)) << error;
  ASSERT_TRUE(ReadImageRgba8(Path("rgb.jpg"), &img, &error)) << error;
  ASSERT_EQ(static_cast<size_t>(w * h * 4), img.pixels.size());
  for (int i = 0; i < w * h; ++i) {
    for (int c = 0; c < 3; ++c) ASSERT_NEAR(rgb[3 * i + c], img.pixels[4 * i + c], 12) << i;
    ASSERT_EQ(255, img.pixels[4 * i + 3]);
  }

  const auto gray = Gradient(w, h, 1);
  ASSERT_TRUE(pxl_examples::WriteJpeg8(Path("gray.jpg"), w, h, 1, gray.data(), 95, &error));
  ASSERT_TRUE(ReadImageRgba8(Path("gray.jpg"), &img, &error)) << error;
  for (int i = 0; i < w * h; ++i) {
    ASSERT_NEAR(gray[i], img.pixels[4 * i], 6) << i;
    ASSERT_EQ(img.pixels[4 * i], img.pixels[4 * i + 1]);
    ASSERT_EQ(img.pixels[4 * i], img.pixels[4 * i + 2]);
    ASSERT_EQ(255, img.pixels[4 * i + 3]);
  }

  // The kind comes from the content: a PNG named .jpg reads as a PNG.
  fs::copy_file(Path("rgba.png"), Path("really-a-png.jpg"));
  ASSERT_TRUE(ReadImageRgba8(Path("really-a-png.jpg"), &img, &error)) << error;
  EXPECT_EQ(rgba, img.pixels);
}

TEST_F(ImageFiles, BadFilesAreRefusedWithAReason) {
  std::string error;
  Rgba8Image img;
  const auto write = [&](const std::string& name, const std::string& bytes) {
    std::ofstream(Path(name), std::ios::binary) << bytes;
  };
  write("empty.png", "");
  write("text.png", "just some text, no picture\n");
  for (const char* name : {"missing.png", "empty.png", "text.png"}) {
    error.clear();
    EXPECT_FALSE(ReadImageRgba8(Path(name), &img, &error)) << name;
    EXPECT_FALSE(error.empty()) << name;
  }

  // Cut short in the middle of the pixel data.  A PNG is refused; a JPEG
  // decoder fills in what is missing, so it may read, but must not fault.
  const auto rgb = Gradient(64, 64, 3);
  ASSERT_TRUE(pxl_examples::WritePng8(Path("full.png"), 64, 64, 3, rgb.data(), &error));
  ASSERT_TRUE(pxl_examples::WriteJpeg8(Path("full.jpg"), 64, 64, 3, rgb.data(), 90, &error));
  for (const char* name : {"full.png", "full.jpg"}) {
    const std::string cut = std::string(name).replace(0, 4, "cut");
    fs::copy_file(Path(name), Path(cut));
    fs::resize_file(Path(cut), fs::file_size(Path(name)) / 2);
    error.clear();
    const bool read = ReadImageRgba8(Path(cut), &img, &error);
    if (cut == "cut.png") {
      EXPECT_FALSE(read);
      EXPECT_FALSE(error.empty());
    } else if (read) {
      EXPECT_EQ(static_cast<size_t>(64 * 64 * 4), img.pixels.size());
    }
  }
  // Only the header of a JPEG: the decoder cannot start.
  std::ifstream jpeg(Path("full.jpg"), std::ios::binary);
  std::string head(20, '\0');
  jpeg.read(head.data(), 20);
  write("head.jpg", head);
  error.clear();
  EXPECT_FALSE(ReadImageRgba8(Path("head.jpg"), &img, &error));
  EXPECT_FALSE(error.empty());
}

}  // namespace
