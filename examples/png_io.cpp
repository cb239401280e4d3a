#include "png_io.h"

#include <png.h>

namespace pxl_examples {

bool ReadPngRgba8(const std::string& path, Rgba8Image* image, std::string* error) {
  png_image png{};
  png.version = PNG_IMAGE_VERSION;
  if (!png_image_begin_read_from_file(&png, path.c_str())) {
    *error = png.message;
    return false;
  }

  // Asking for 8-bit RGBA makes libpng expand gray and palette images,
  // add an opaque alpha where the file has none and reduce 16-bit samples.
  png.format = PNG_FORMAT_RGBA;
  std::vector<std::uint8_t> pixels(PNG_IMAGE_SIZE(png));
  if (!png_image_finish_read(&png, nullptr, pixels.data(), 0 /* packed rows */, nullptr)) {
    *error = png.message;  // libpng has already released its state
    return false;
  }

  image->width = static_cast<int>(png.width);
  image->height = static_cast<int>(png.height);
  image->pixels = std::move(pixels);
  return true;
}

bool WritePngRgb8(const std::string& path, int width, int height, const std::uint8_t* rgb,
                  std::string* error) {
  png_image png{};
  png.version = PNG_IMAGE_VERSION;
  png.width = static_cast<png_uint_32>(width);
  png.height = static_cast<png_uint_32>(height);
  png.format = PNG_FORMAT_RGB;
  if (!png_image_write_to_file(&png, path.c_str(), 0, rgb, 0 /* packed rows */, nullptr)) {
    *error = png.message;
    return false;
  }
  return true;
}

}  // namespace pxl_examples
