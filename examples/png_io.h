// PNG reading and writing for the example programs.
//
// The library itself does no file I/O; hosts bring their own.  These two
// helpers wrap libpng's simplified API and work on tightly packed 8-bit
// pixel rows (no padding between rows).
#ifndef PXL_EXAMPLES_PNG_IO_H
#define PXL_EXAMPLES_PNG_IO_H

#include <cstdint>
#include <string>
#include <vector>

namespace pxl_examples {

struct Rgba8Image {
  int width = 0;
  int height = 0;
  std::vector<std::uint8_t> pixels;  // width * height * 4 bytes, R G B A
};

// Reads any PNG libpng understands (gray, gray+alpha, palette, RGB, RGBA;
// 16-bit files are reduced to 8 bits) as 8-bit RGBA.  On failure returns
// false and puts libpng's message in *error.
bool ReadPngRgba8(const std::string& path, Rgba8Image* image, std::string* error);

// Writes width x height 8-bit RGB pixels, 3 * width bytes a row, as a PNG.
// On failure returns false and puts libpng's message in *error.
bool WritePngRgb8(const std::string& path, int width, int height, const std::uint8_t* rgb,
                  std::string* error);

}  // namespace pxl_examples

#endif  // PXL_EXAMPLES_PNG_IO_H
