// Writes the pictures the gallery's page test runs on, into a folder:
//
//   samples/gray.jpg    a gray JPEG, 120 x 80
//   samples/wide.png    an RGB PNG, 900 x 60, wider than the page's limit
//   samples/alpha.png   an RGBA PNG, 200 x 100, alpha falling to 0 across
//   a <b> c & "d".jpg   a colour JPEG, 97 x 61, whose name needs escaping on a page
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <string>
#include <vector>

#include "image_io.h"

namespace {

// Smooth colour bands, different in every channel.
std::vector<std::uint8_t> Pattern(int width, int height, int channels) {
  std::vector<std::uint8_t> p(static_cast<size_t>(width) * height * channels);
  for (int y = 0; y < height; ++y)
    for (int x = 0; x < width; ++x)
      for (int c = 0; c < channels; ++c) {
        const double v = 0.5 + 0.45 * std::sin(0.05 * x * (c + 1) + 0.09 * y * (3 - c));
        p[(static_cast<size_t>(y) * width + x) * channels + c] =
            c == 3 ? static_cast<std::uint8_t>(255 - 255 * x / (width - 1))
                   : static_cast<std::uint8_t>(v * 255);
      }
  return p;
}

bool Check(bool ok, const std::string& path, const std::string& error) {
  if (!ok) std::fprintf(stderr, "error: %s: %s\n", path.c_str(), error.c_str());
  return ok;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2) {
    std::fprintf(stderr, "usage: %s DIR\n", argv[0]);
    return 2;
  }
  const std::filesystem::path dir = argv[1];
  std::filesystem::create_directories(dir / "samples");
  std::string e;
  const std::string gray = (dir / "samples" / "gray.jpg").string();
  const std::string wide = (dir / "samples" / "wide.png").string();
  const std::string alpha = (dir / "samples" / "alpha.png").string();
  const std::string odd = (dir / "a <b> c & \"d\".jpg").string();
  const bool ok =
      Check(pxl_examples::WriteJpeg8(gray, 120, 80, 1, Pattern(120, 80, 1).data(), 90, &e), gray,
            e) &&
      Check(pxl_examples::WritePng8(wide, 900, 60, 3, Pattern(900, 60, 3).data(), &e), wide, e) &&
      Check(pxl_examples::WritePng8(alpha, 200, 100, 4, Pattern(200, 100, 4).data(), &e), alpha,
            e) &&
      Check(pxl_examples::WriteJpeg8(odd, 97, 61, 3, Pattern(97, 61, 3).data(), 90, &e), odd, e);
  return ok ? 0 : 1;
}
