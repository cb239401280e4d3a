#include "image_io.h"

#include <cerrno>
#include <csetjmp>
#include <cstdio>
#include <cstring>
#include <memory>

// jpeglib.h needs FILE and size_t declared before it.
#include <jpeglib.h>
#include <png.h>

namespace pxl_examples {
namespace {

struct FileCloser {
  void operator()(std::FILE* f) const { std::fclose(f); }
};
using File = std::unique_ptr<std::FILE, FileCloser>;

bool ReadPng(const std::string& path, Rgba8Image* image, std::string* error) {
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

// libjpeg reports a fatal error by calling error_exit, which must not
// return: it jumps back to the setjmp in the reading or writing function with
// the message kept here.
struct JpegError {
  jpeg_error_mgr manager;
  std::jmp_buf jump;
  char message[JMSG_LENGTH_MAX];
};

[[noreturn]] void JpegErrorExit(j_common_ptr info) {
  JpegError* e = reinterpret_cast<JpegError*>(info->err);
  info->err->format_message(info, e->message);
  std::longjmp(e->jump, 1);
}

// Warnings (a file that ends early, for instance) are not fatal; the
// decoder fills what is missing and goes on.
void JpegIgnoreMessage(j_common_ptr) {}

// Nothing with a destructor may live between setjmp and a longjmp to it, so
// the reading state is plain data set up by the caller.
bool DecodeJpeg(std::FILE* file, std::vector<std::uint8_t>* pixels, int* width, int* height,
                std::string* error) {
  jpeg_decompress_struct info;
  JpegError err;
  info.err = jpeg_std_error(&err.manager);
  err.manager.error_exit = JpegErrorExit;
  err.manager.output_message = JpegIgnoreMessage;
  if (setjmp(err.jump)) {
    jpeg_destroy_decompress(&info);
    *error = err.message;
    return false;
  }
  jpeg_create_decompress(&info);
  jpeg_stdio_src(&info, file);
  jpeg_read_header(&info, TRUE);
  if (info.jpeg_color_space == JCS_CMYK || info.jpeg_color_space == JCS_YCCK) {
    jpeg_destroy_decompress(&info);
    *error = "CMYK JPEG files are not supported";
    return false;
  }
  // libjpeg-turbo converts gray and colour files alike to RGBA with an
  // opaque alpha.
  info.out_color_space = JCS_EXT_RGBA;
  jpeg_start_decompress(&info);
  const std::size_t rowBytes = static_cast<std::size_t>(info.output_width) * 4;
  pixels->resize(rowBytes * info.output_height);
  while (info.output_scanline < info.output_height) {
    JSAMPROW row = pixels->data() + rowBytes * info.output_scanline;
    jpeg_read_scanlines(&info, &row, 1);
  }
  *width = static_cast<int>(info.output_width);
  *height = static_cast<int>(info.output_height);
  jpeg_finish_decompress(&info);
  jpeg_destroy_decompress(&info);
  return true;
}

bool ReadJpeg(const std::string& path, Rgba8Image* image, std::string* error) {
  File file(std::fopen(path.c_str(), "rb"));
  if (!file) {
    *error = std::strerror(errno);
    return false;
  }
  std::vector<std::uint8_t> pixels;
  int width = 0, height = 0;
  if (!DecodeJpeg(file.get(), &pixels, &width, &height, error)) return false;
  image->width = width;
  image->height = height;
  image->pixels = std::move(pixels);
  return true;
}

bool EncodeJpeg(std::FILE* file, int width, int height, int channels, const std::uint8_t* pixels,
                int quality, std::string* error) {
  jpeg_compress_struct info;
  JpegError err;
  info.err = jpeg_std_error(&err.manager);
  err.manager.error_exit = JpegErrorExit;
  err.manager.output_message = JpegIgnoreMessage;
  if (setjmp(err.jump)) {
    jpeg_destroy_compress(&info);
    *error = err.message;
    return false;
  }
  jpeg_create_compress(&info);
  jpeg_stdio_dest(&info, file);
  info.image_width = static_cast<JDIMENSION>(width);
  info.image_height = static_cast<JDIMENSION>(height);
  info.input_components = channels;
  info.in_color_space = channels == 1 ? JCS_GRAYSCALE : JCS_RGB;
  jpeg_set_defaults(&info);
  jpeg_set_quality(&info, quality, TRUE);
  jpeg_start_compress(&info, TRUE);
  const std::size_t rowBytes = static_cast<std::size_t>(width) * channels;
  while (info.next_scanline < info.image_height) {
    JSAMPROW row = const_cast<std::uint8_t*>(pixels) + rowBytes * info.next_scanline;
    jpeg_write_scanlines(&info, &row, 1);
  }
  jpeg_finish_compress(&info);
  jpeg_destroy_compress(&info);
  return true;
}

// libpng reports errors through its error function, which must not return:
// it jumps back to the setjmp in EncodePng with the message kept here.
struct PngError {
  std::jmp_buf jump;
  char message[256];
};

[[noreturn]] void PngErrorExit(png_structp png, png_const_charp message) {
  PngError* e = static_cast<PngError*>(png_get_error_ptr(png));
  std::snprintf(e->message, sizeof e->message, "%s", message);
  std::longjmp(e->jump, 1);
}

void PngIgnoreWarning(png_structp, png_const_charp) {}

bool EncodePng(std::FILE* file, int width, int height, int channels, const std::uint8_t* pixels,
               std::string* error) {
  PngError err;
  png_structp png =
      png_create_write_struct(PNG_LIBPNG_VER_STRING, &err, PngErrorExit, PngIgnoreWarning);
  if (!png) {
    *error = "out of memory";
    return false;
  }
  png_infop info = png_create_info_struct(png);
  if (!info || setjmp(err.jump)) {
    png_destroy_write_struct(&png, &info);
    *error = info ? err.message : "out of memory";
    return false;
  }
  png_init_io(png, file);
  png_set_IHDR(png, info, static_cast<png_uint_32>(width), static_cast<png_uint_32>(height), 8,
               channels == 4 ? PNG_COLOR_TYPE_RGBA : PNG_COLOR_TYPE_RGB, PNG_INTERLACE_NONE,
               PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
  png_set_compression_level(png, 2);
  png_write_info(png, info);
  const std::size_t rowBytes = static_cast<std::size_t>(width) * channels;
  for (int y = 0; y < height; ++y)
    png_write_row(png, const_cast<std::uint8_t*>(pixels) + rowBytes * y);
  png_write_end(png, info);
  png_destroy_write_struct(&png, &info);
  return true;
}

}  // namespace

bool ReadImageRgba8(const std::string& path, Rgba8Image* image, std::string* error) {
  unsigned char magic[8] = {};
  {
    File file(std::fopen(path.c_str(), "rb"));
    if (!file) {
      *error = std::strerror(errno);
      return false;
    }
    if (std::fread(magic, 1, sizeof magic, file.get()) < 3) {
      *error = "too short to be an image";
      return false;
    }
  }
  static const unsigned char kPng[8] = {0x89, 'P', 'N', 'G', '\r', '\n', 0x1A, '\n'};
  if (std::memcmp(magic, kPng, 8) == 0) return ReadPng(path, image, error);
  if (magic[0] == 0xFF && magic[1] == 0xD8 && magic[2] == 0xFF) return ReadJpeg(path, image, error);
  *error = "neither a PNG nor a JPEG file";
  return false;
}

// The full libpng API, for the choice of compression level: the simplified
// one always uses zlib's default, several times slower on photographs for a
// few percent of size.
bool WritePng8(const std::string& path, int width, int height, int channels,
               const std::uint8_t* pixels, std::string* error) {
  File file(std::fopen(path.c_str(), "wb"));
  if (!file) {
    *error = std::strerror(errno);
    return false;
  }
  if (!EncodePng(file.get(), width, height, channels, pixels, error)) return false;
  if (std::fflush(file.get()) != 0) {
    *error = std::strerror(errno);
    return false;
  }
  return true;
}

bool WriteJpeg8(const std::string& path, int width, int height, int channels,
                const std::uint8_t* pixels, int quality, std::string* error) {
  File file(std::fopen(path.c_str(), "wb"));
  if (!file) {
    *error = std::strerror(errno);
    return false;
  }
  if (!EncodeJpeg(file.get(), width, height, channels, pixels, quality, error)) return false;
  if (std::fflush(file.get()) != 0) {
    *error = std::strerror(errno);
    return false;
  }
  return true;
}

}  // namespace pxl_examples
