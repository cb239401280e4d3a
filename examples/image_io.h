// Image file reading and writing for the example programs.
//
// The library itself does no file I/O; hosts bring their own.  These helpers
// wrap libpng's simplified API and libjpeg, and work on tightly packed 8-bit
// pixel rows (no padding between rows).
#ifndef PXL_EXAMPLES_IMAGE_IO_H
#define PXL_EXAMPLES_IMAGE_IO_H

#include <cstdint>
#include <string>
#include <vector>

namespace pxl_examples {

struct Rgba8Image {
  int width = 0;
  int height = 0;
  std::vector<std::uint8_t> pixels;  // width * height * 4 bytes, R G B A
};

// Reads a PNG or a JPEG file, told apart by their first bytes whatever the
// file is called, as 8-bit RGBA.  PNG: gray, gray+alpha, palette, RGB and
// RGBA; 16-bit files are reduced to 8 bits.  JPEG: gray and colour (YCbCr or
// RGB); CMYK files are refused; alpha is set to 255.  EXIF orientation is not
// applied.  On failure returns false and puts the reason in *error.
bool ReadImageRgba8(const std::string& path, Rgba8Image* image, std::string* error);

// Writes width x height 8-bit pixels of 3 (RGB) or 4 (RGBA) channels,
// channels * width bytes a row, as a PNG.  On failure returns false and puts
// libpng's message in *error.
bool WritePng8(const std::string& path, int width, int height, int channels,
               const std::uint8_t* pixels, std::string* error);

// Writes width x height 8-bit pixels of 1 (gray) or 3 (RGB) channels as a
// baseline JPEG of the given quality (1..100).
bool WriteJpeg8(const std::string& path, int width, int height, int channels,
                const std::uint8_t* pixels, int quality, std::string* error);

}  // namespace pxl_examples

#endif  // PXL_EXAMPLES_IMAGE_IO_H
