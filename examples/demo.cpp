// pxl_demo: a small host program for the tonal adjustments.
//
// It starts the library, reports what it found about the processor, then
// takes a picture (a generated landscape, or a PNG file), converts it to float
// RGBA in library-allocated memory and runs four per-pixel adjustments, each
// driven by a parameter map:
//
//   exposure    +0.3, plus a radial map from +0.4 in the centre to -0.4 in
//               the corners (bounded to -2..2)
//   contrast    1.15 everywhere
//   saturation  1.25 everywhere
//   brightness  a vignette, gain 1.0 in the centre down to 0.85 in the corners
//
// The picture before and after is written as before.png and after.png.
//
//   pxl_demo [--out DIR]          adjust the generated landscape
//   pxl_demo INPUT.png [OUTDIR]   adjust a picture read from a PNG file

#include <pxl/pxl.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "png_io.h"

namespace {

using pxl_examples::Rgba8Image;

// ---------------------------------------------------------------------------
// Status codes, processor features and levels
// ---------------------------------------------------------------------------

const char* StatusName(PxlStatus status) {
  switch (status) {
    case pxlStsNoErr:
      return "pxlStsNoErr";
    case pxlStsNoOperation:
      return "pxlStsNoOperation";
    case pxlStsNonIntelCpu:
      return "pxlStsNonIntelCpu";
    case pxlStsNotSupportedCpu:
      return "pxlStsNotSupportedCpu";
    case pxlStsFeatureNotSupported:
      return "pxlStsFeatureNotSupported";
    case pxlStsFeaturesCombination:
      return "pxlStsFeaturesCombination";
    case pxlStsNoMemErr:
      return "pxlStsNoMemErr";
    case pxlStsBadArgErr:
      return "pxlStsBadArgErr";
    case pxlStsSizeErr:
      return "pxlStsSizeErr";
    case pxlStsNullPtrErr:
      return "pxlStsNullPtrErr";
    case pxlStsStepErr:
      return "pxlStsStepErr";
    default:
      return status < 0 ? "error" : "warning";
  }
}

struct FeatureName {
  Pxl64u bit;
  const char* name;
};

const FeatureName kFeatureNames[] = {
    {PXL_CPU_MMX, "MMX"},
    {PXL_CPU_SSE, "SSE"},
    {PXL_CPU_SSE2, "SSE2"},
    {PXL_CPU_SSE3, "SSE3"},
    {PXL_CPU_SSSE3, "SSSE3"},
    {PXL_CPU_MOVBE, "MOVBE"},
    {PXL_CPU_SSE41, "SSE4.1"},
    {PXL_CPU_SSE42, "SSE4.2"},
    {PXL_CPU_AVX, "AVX"},
    {PXL_CPU_AVX_OS, "AVX(OS)"},
    {PXL_CPU_AES, "AES"},
    {PXL_CPU_CLMUL, "CLMUL"},
    {PXL_CPU_RDRAND, "RDRAND"},
    {PXL_CPU_F16C, "F16C"},
    {PXL_CPU_AVX2, "AVX2"},
    {PXL_CPU_ADX, "ADX"},
    {PXL_CPU_RDSEED, "RDSEED"},
    {PXL_CPU_PREFETCHW, "PREFETCHW"},
    {PXL_CPU_SHA, "SHA"},
    {PXL_CPU_AVX512F, "AVX512F"},
    {PXL_CPU_AVX512CD, "AVX512CD"},
    {PXL_CPU_AVX512ER, "AVX512ER"},
    {PXL_CPU_AVX512PF, "AVX512PF"},
    {PXL_CPU_AVX512BW, "AVX512BW"},
    {PXL_CPU_AVX512DQ, "AVX512DQ"},
    {PXL_CPU_AVX512VL, "AVX512VL"},
    {PXL_CPU_AVX512VBMI, "AVX512VBMI"},
    {PXL_CPU_MPX, "MPX"},
    {PXL_CPU_AVX5124FMAPS, "AVX512_4FMAPS"},
    {PXL_CPU_AVX5124VNNIW, "AVX512_4VNNIW"},
    {PXL_CPU_MODEL_TEST, "MODEL_TEST"},
    {PXL_CPU_AVX512IFMA, "AVX512IFMA"},
    {PXL_CPU_AVX512_OS, "AVX512(OS)"},
    {PXL_CPU_AVX512VPOPCNT, "AVX512VPOPCNTDQ"},
    {PXL_CPU_AVX512BITALG, "AVX512BITALG"},
};

// The library does not report the level it picked, so recompute it from the
// feature mask by the same rule: the highest level whose instruction sets are
// all present and, for AVX and AVX-512, whose register state the operating
// system saves.
int LevelFromFeatures(Pxl64u mask) {
  const auto has = [mask](Pxl64u bits) { return (mask & bits) == bits; };
  if (has(PXL_CPU_AVX512F | PXL_CPU_AVX512CD | PXL_CPU_AVX512BW | PXL_CPU_AVX512DQ |
          PXL_CPU_AVX512VL | PXL_CPU_AVX512_OS))
    return 5;
  if (has(PXL_CPU_AVX2 | PXL_CPU_AVX_OS)) return 4;
  if (has(PXL_CPU_AVX | PXL_CPU_AVX_OS)) return 3;
  if (has(PXL_CPU_SSE42)) return 2;
  if (mask & (PXL_CPU_SSE41 | PXL_CPU_MOVBE | PXL_CPU_SSSE3)) return 1;
  return 0;
}

const char* LevelName(int level) {
  static const char* const kNames[] = {
      "0 (SSE2/SSE3)", "1 (SSSE3/SSE4.1)", "2 (SSE4.2)",
      "3 (AVX)",       "4 (AVX2/FMA/BMI)", "5 (AVX-512)",
  };
  return kNames[level];
}

// ---------------------------------------------------------------------------
// Float images in library memory
// ---------------------------------------------------------------------------

constexpr int kFormatC1_32f = 5;   // layout C1 (0) * 7 + type 32f (4) + 1
constexpr int kFormatC4_32f = 26;  // layout C4 (3) * 7 + type 32f (4) + 1

// An image from Malloc, released with Free.  Rows are `step` bytes apart.
struct FloatImage {
  struct Release {
    void operator()(void* p) const { Free(p); }
  };
  std::unique_ptr<Pxl32f, Release> data;
  int width = 0;
  int height = 0;
  int channels = 0;
  int step = 0;

  Pxl32f* Row(int y) const {
    return reinterpret_cast<Pxl32f*>(reinterpret_cast<std::uint8_t*>(data.get()) +
                                     static_cast<std::ptrdiff_t>(y) * step);
  }
};

bool AllocateFloatImage(int width, int height, int channels, FloatImage* image) {
  int step = 0;
  const int format = channels == 4 ? kFormatC4_32f : kFormatC1_32f;
  image->data.reset(static_cast<Pxl32f*>(Malloc(width, height, format, &step)));
  if (!image->data) {
    std::fprintf(stderr, "error: Malloc(%d, %d, %d) failed\n", width, height, format);
    return false;
  }
  image->width = width;
  image->height = height;
  image->channels = channels;
  image->step = step;
  return true;
}

// Distance from the image centre, scaled so that the ellipse through the
// corners is 1: a falloff of this reaches its end value exactly at the
// corners whatever the aspect ratio.
float RadialDistance(int x, int y, int width, int height) {
  const float dx = (x + 0.5f - 0.5f * width) / (0.5f * width);
  const float dy = (y + 0.5f - 0.5f * height) / (0.5f * height);
  return std::sqrt((dx * dx + dy * dy) * 0.5f);
}

float SmoothStep(float edge0, float edge1, float x) {
  const float t = std::clamp((x - edge0) / (edge1 - edge0), 0.0f, 1.0f);
  return t * t * (3.0f - 2.0f * t);
}

float Mix(float a, float b, float t) { return a + (b - a) * t; }

// Fills a one-channel map with f(r), r the radial distance above.
template <typename F>
void FillRadialMap(FloatImage& map, F f) {
  for (int y = 0; y < map.height; ++y) {
    Pxl32f* row = map.Row(y);
    for (int x = 0; x < map.width; ++x) row[x] = f(RadialDistance(x, y, map.width, map.height));
  }
}

void FillConstantMap(FloatImage& map, float value) {
  for (int y = 0; y < map.height; ++y) std::fill_n(map.Row(y), map.width, value);
}

// ---------------------------------------------------------------------------
// A generated landscape
// ---------------------------------------------------------------------------
//
// Sky gradient with a few soft clouds, a sun with its glow, three ranges of
// hills (the far one hazy) shaded by the slope of their ridge line, grass
// texture, a darker foreground and a touch of grain.  All randomness comes
// from an integer hash with a fixed seed, so every run gives the same image.

constexpr std::uint32_t kSceneSeed = 0x5EED2024u;

std::uint32_t Hash(std::int32_t x, std::int32_t y, std::uint32_t seed) {
  std::uint32_t h = seed;
  h ^= static_cast<std::uint32_t>(x) * 0x8DA6B343u;
  h ^= static_cast<std::uint32_t>(y) * 0xD8163841u;
  h ^= h >> 15;
  h *= 0x2C1B3C6Du;
  h ^= h >> 12;
  h *= 0x297A2D39u;
  h ^= h >> 15;
  return h;
}

// Uniform in [0, 1).
float HashUnit(std::int32_t x, std::int32_t y, std::uint32_t seed) {
  return static_cast<float>(Hash(x, y, seed) >> 8) * (1.0f / 16777216.0f);
}

// Value noise: random values on the integer lattice, smoothly interpolated.
float ValueNoise(float x, float y, std::uint32_t seed) {
  const float fx = std::floor(x), fy = std::floor(y);
  const auto ix = static_cast<std::int32_t>(fx), iy = static_cast<std::int32_t>(fy);
  const float tx = SmoothStep(0.0f, 1.0f, x - fx), ty = SmoothStep(0.0f, 1.0f, y - fy);
  const float top = Mix(HashUnit(ix, iy, seed), HashUnit(ix + 1, iy, seed), tx);
  const float bottom = Mix(HashUnit(ix, iy + 1, seed), HashUnit(ix + 1, iy + 1, seed), tx);
  return Mix(top, bottom, ty);
}

// Octaves of value noise, each twice the frequency and half the weight of
// the one before; the result stays in [0, 1).
float Fbm(float x, float y, int octaves, std::uint32_t seed) {
  float sum = 0.0f, weight = 0.5f, total = 0.0f;
  for (int i = 0; i < octaves; ++i) {
    sum += weight * ValueNoise(x, y, seed + static_cast<std::uint32_t>(i) * 101u);
    total += weight;
    x *= 2.0f;
    y *= 2.0f;
    weight *= 0.5f;
  }
  return sum / total;
}

struct Rgb {
  float r, g, b;
};

Rgb Mix(Rgb a, Rgb b, float t) { return {Mix(a.r, b.r, t), Mix(a.g, b.g, t), Mix(a.b, b.b, t)}; }
Rgb Scale(Rgb c, float k) { return {c.r * k, c.g * k, c.b * k}; }

// One range of hills: its ridge line (in image heights from the top, as a
// function of the horizontal position u in image widths) and its colours.
struct HillRange {
  float base, amp1, freq1, phase1, amp2, freq2, phase2;
  Rgb lit, shade;
  float haze;          // how much of the horizon colour covers it
  std::uint32_t seed;  // its texture

  // The broad shape of the ridge, which also sets the shading.
  float SmoothRidge(float u) const {
    return base + amp1 * std::sin(u * freq1 + phase1) + amp2 * std::sin(u * freq2 + phase2);
  }

  // The outline itself: the broad shape roughened a little.
  float Ridge(float u) const {
    return SmoothRidge(u) + 0.012f * (ValueNoise(u * 24.0f, 0.5f, seed) - 0.5f);
  }
};

void GenerateLandscape(FloatImage& image) {
  const int w = image.width, h = image.height;
  const float aspect = static_cast<float>(w) / static_cast<float>(h);

  const Rgb skyTop{0.16f, 0.33f, 0.66f};
  const Rgb skyHorizon{0.86f, 0.80f, 0.68f};
  const Rgb sunColour{1.0f, 0.97f, 0.88f};
  const Rgb glowColour{1.0f, 0.78f, 0.50f};
  const float sunU = 0.70f, sunV = 0.27f, sunRadius = 0.045f;

  // Front to back: the first range whose ridge lies above a pixel owns it.
  // clang-format off
  const HillRange ranges[] = {
      {0.76f, 0.045f, 3.1f, 4.0f, 0.015f, 12.7f, 1.1f,
       {0.36f, 0.52f, 0.18f}, {0.12f, 0.22f, 0.08f}, 0.0f, kSceneSeed + 3},
      {0.62f, 0.055f, 4.3f, 2.2f, 0.020f, 10.9f, 0.3f,
       {0.42f, 0.58f, 0.27f}, {0.18f, 0.30f, 0.16f}, 0.15f, kSceneSeed + 2},
      {0.53f, 0.035f, 6.7f, 1.3f, 0.022f, 16.1f, 0.4f,
       {0.46f, 0.54f, 0.52f}, {0.30f, 0.38f, 0.44f}, 0.55f, kSceneSeed + 1},
  };
  // clang-format on

  for (int y = 0; y < h; ++y) {
    Pxl32f* row = image.Row(y);
    const float v = (y + 0.5f) / static_cast<float>(h);
    for (int x = 0; x < w; ++x) {
      const float u = (x + 0.5f) / static_cast<float>(w);

      const HillRange* owner = nullptr;
      float ridge = 0.0f;
      for (const HillRange& range : ranges) {
        ridge = range.Ridge(u);
        if (v >= ridge) {
          owner = &range;
          break;
        }
      }

      Rgb c;
      if (!owner) {
        // Sky: gradient towards a warm horizon, clouds, the sun.
        c = Mix(skyTop, skyHorizon, std::pow(std::min(v / 0.62f, 1.0f), 1.6f));
        const float cloud =
            SmoothStep(0.55f, 0.80f, Fbm(u * aspect * 3.0f, v * 9.0f, 5, kSceneSeed + 7));
        c = Mix(c, Rgb{0.96f, 0.95f, 0.93f}, cloud * 0.8f * (1.0f - v));
        const float du = (u - sunU) * aspect, dv = v - sunV;
        const float d = std::sqrt(du * du + dv * dv);
        const float glow = 0.45f * std::exp(-d / 0.10f);
        c = {c.r + glowColour.r * glow, c.g + glowColour.g * glow, c.b + glowColour.b * glow};
        c = Mix(c, sunColour, 1.0f - SmoothStep(sunRadius - 0.003f, sunRadius, d));
      } else {
        // Slopes that face the sun (to the upper right) are lit, the
        // others in shade; the effect fades with depth below the ridge.
        // The slope is that of the broad shape, so that the small
        // wiggles of the outline do not streak the shading.
        const float e = 1.0f / static_cast<float>(w);
        const float slope = (owner->SmoothRidge(u + e) - owner->SmoothRidge(u - e)) / (2.0f * e);
        const float depth = v - ridge;
        const float facing = 0.5f + 0.5f * std::tanh(-slope * 4.0f + 0.3f);
        const float light = Mix(facing, 0.55f, SmoothStep(0.0f, 0.18f, depth));
        c = Mix(owner->shade, owner->lit, light);

        // Grass: patches and fine blades, both from value noise.
        const float patches = Fbm(u * 18.0f, v * 30.0f, 4, owner->seed);
        const float blades = ValueNoise(x * 0.9f, y * 0.25f, owner->seed + 50);
        c = Scale(c, 0.78f + 0.34f * patches + 0.12f * (blades - 0.5f));
        c = Mix(c, skyHorizon, owner->haze);
      }

      // The bottom of the frame falls into shadow.
      c = Scale(c, 1.0f - 0.45f * SmoothStep(0.82f, 1.0f, v));

      // Grain of about one 8-bit level either way.
      const float grain = (HashUnit(x, y, kSceneSeed) - 0.5f) * (2.5f / 255.0f);
      row[4 * x + 0] = std::clamp(c.r + grain, 0.0f, 1.0f);
      row[4 * x + 1] = std::clamp(c.g + grain, 0.0f, 1.0f);
      row[4 * x + 2] = std::clamp(c.b + grain, 0.0f, 1.0f);
      row[4 * x + 3] = 1.0f;
    }
  }
}

// ---------------------------------------------------------------------------
// Conversions to and from 8 bits
// ---------------------------------------------------------------------------

// Colour from the file, scaled to 0..1; alpha set to 1 (the adjustments work
// on opaque pictures here, so any transparency in the file is dropped).
void FromRgba8(const Rgba8Image& src, FloatImage& dst) {
  for (int y = 0; y < dst.height; ++y) {
    const std::uint8_t* in = src.pixels.data() + static_cast<std::size_t>(y) * src.width * 4;
    Pxl32f* out = dst.Row(y);
    for (int x = 0; x < dst.width; ++x) {
      for (int c = 0; c < 3; ++c) out[4 * x + c] = in[4 * x + c] * (1.0f / 255.0f);
      out[4 * x + 3] = 1.0f;
    }
  }
}

// Clamped to 0..1 (NaN to 0) and rounded to the nearest level.
std::uint8_t ToByte(float v) {
  if (!(v > 0.0f)) return 0;
  if (v >= 1.0f) return 255;
  return static_cast<std::uint8_t>(v * 255.0f + 0.5f);
}

bool WriteRgbPng(const FloatImage& image, const std::string& path) {
  std::vector<std::uint8_t> rgb(static_cast<std::size_t>(image.width) * image.height * 3);
  std::uint8_t* out = rgb.data();
  for (int y = 0; y < image.height; ++y) {
    const Pxl32f* in = image.Row(y);
    for (int x = 0; x < image.width; ++x)
      for (int c = 0; c < 3; ++c) *out++ = ToByte(in[4 * x + c]);
  }
  std::string error;
  if (!pxl_examples::WritePngRgb8(path, image.width, image.height, rgb.data(), &error)) {
    std::fprintf(stderr, "error: cannot write %s: %s\n", path.c_str(), error.c_str());
    return false;
  }
  std::printf("wrote %s\n", path.c_str());
  return true;
}

// Mean luma of the middle of the picture and of its four corners, as a quick
// check that the radial maps did what they should.
struct LumaSummary {
  double centre, corners;
};

LumaSummary MeasureLuma(const FloatImage& image) {
  const int bw = std::max(1, image.width / 8), bh = std::max(1, image.height / 8);
  auto boxMean = [&](int x0, int y0) {
    double sum = 0.0;
    for (int y = y0; y < y0 + bh; ++y) {
      const Pxl32f* row = image.Row(y);
      for (int x = x0; x < x0 + bw; ++x)
        sum += 0.299 * row[4 * x] + 0.587 * row[4 * x + 1] + 0.114 * row[4 * x + 2];
    }
    return sum / (static_cast<double>(bw) * bh);
  };
  const int right = image.width - bw, bottom = image.height - bh;
  return {boxMean((image.width - bw) / 2, (image.height - bh) / 2),
          (boxMean(0, 0) + boxMean(right, 0) + boxMean(0, bottom) + boxMean(right, bottom)) / 4.0};
}

// ---------------------------------------------------------------------------
// Command line
// ---------------------------------------------------------------------------

void PrintUsage(std::FILE* out) {
  std::fprintf(out,
               "usage: pxl_demo [--out DIR]           adjust a generated 1600x1067 landscape\n"
               "       pxl_demo INPUT.png [OUTDIR]    adjust a picture read from a PNG file\n"
               "       pxl_demo --help\n"
               "\n"
               "Writes before.png and after.png (8-bit RGB) into the output directory:\n"
               "OUTDIR or --out DIR, else the current directory; it is created if missing.\n"
               "INPUT.png may be gray, RGB or RGBA (transparency is ignored).\n");
}

struct Options {
  std::string input;   // empty: generate the landscape
  std::string outDir;  // empty: the current directory
};

// Returns 0 to go on, otherwise the exit code.
int ParseArguments(int argc, char** argv, Options* options) {
  std::vector<std::string> positional;
  bool outGiven = false;
  for (int i = 1; i < argc; ++i) {
    const std::string arg = argv[i];
    if (arg == "--help" || arg == "-h") {
      PrintUsage(stdout);
      return -1;
    } else if (arg == "--out") {
      if (i + 1 >= argc) {
        std::fprintf(stderr, "error: --out needs a directory\n");
        return 2;
      }
      options->outDir = argv[++i];
      outGiven = true;
    } else if (arg.size() > 1 && arg[0] == '-') {
      std::fprintf(stderr, "error: unknown option %s\n", arg.c_str());
      PrintUsage(stderr);
      return 2;
    } else {
      positional.push_back(arg);
    }
  }
  if (positional.size() > 2 || (positional.size() == 2 && outGiven)) {
    std::fprintf(stderr, "error: too many arguments\n");
    PrintUsage(stderr);
    return 2;
  }
  if (!positional.empty()) options->input = positional[0];
  if (positional.size() == 2) options->outDir = positional[1];
  return 0;
}

// ---------------------------------------------------------------------------

// Runs one library call, timing it and printing its status.  Returns false
// on an error status; warnings are printed and the run goes on.
template <typename F>
bool RunStep(const char* name, const char* what, F call) {
  const auto start = std::chrono::steady_clock::now();
  const PxlStatus status = call();
  const auto stop = std::chrono::steady_clock::now();
  const double ms = std::chrono::duration<double, std::milli>(stop - start).count();
  std::printf("  %-28s %-40s status %d (%s)  %8.3f ms\n", name, what, status, StatusName(status),
              ms);
  if (status < 0) {
    std::fprintf(stderr, "error: %s failed with status %d (%s)\n", name, status,
                 StatusName(status));
    return false;
  }
  return true;
}

int Run(const Options& options) {
  // -- start-up ---------------------------------------------------------
  const PxlStatus initStatus = Init();
  Pxl64u features = 0;
  const PxlStatus featureStatus = GetCpuFeatures(&features);
  if (featureStatus != pxlStsNoErr) {
    std::fprintf(stderr, "error: GetCpuFeatures returned %d (%s)\n", featureStatus,
                 StatusName(featureStatus));
    return 1;
  }

  std::string names;
  for (const FeatureName& f : kFeatureNames) {
    if (features & f.bit) {
      if (!names.empty()) names += ' ';
      names += f.name;
    }
  }
  std::printf("processor features  0x%016llx\n", static_cast<unsigned long long>(features));
  std::printf("                    %s\n", names.empty() ? "(none)" : names.c_str());
  std::printf("processor level     %s\n", LevelName(LevelFromFeatures(features)));
  std::printf("Init status         %d (%s)\n", initStatus, StatusName(initStatus));
  std::printf(
      "  note: status %d (%s) is informational: it only says that the processor\n"
      "        is from another vendor; the level is chosen all the same.\n",
      pxlStsNonIntelCpu, StatusName(pxlStsNonIntelCpu));
  if (initStatus < 0) {
    std::fprintf(stderr, "error: Init failed\n");
    return 1;
  }

  // -- the picture, as float RGBA ---------------------------------------
  Rgba8Image file;
  int width = 1600, height = 1067;
  if (!options.input.empty()) {
    std::string error;
    if (!pxl_examples::ReadPngRgba8(options.input, &file, &error)) {
      std::fprintf(stderr, "error: cannot read %s: %s\n", options.input.c_str(), error.c_str());
      return 1;
    }
    width = file.width;
    height = file.height;
  }

  FloatImage image, map;
  if (!AllocateFloatImage(width, height, 4, &image) || !AllocateFloatImage(width, height, 1, &map))
    return 1;

  if (options.input.empty()) {
    GenerateLandscape(image);
    std::printf("\npicture             generated landscape, %d x %d\n", width, height);
  } else {
    FromRgba8(file, image);
    std::printf("\npicture             %s, %d x %d\n", options.input.c_str(), width, height);
  }
  std::printf("                    image step %d bytes, map step %d bytes\n", image.step, map.step);

  const std::filesystem::path outDir = options.outDir.empty() ? "." : options.outDir;
  std::error_code ec;
  std::filesystem::create_directories(outDir, ec);
  if (ec) {
    std::fprintf(stderr, "error: cannot create %s: %s\n", outDir.c_str(), ec.message().c_str());
    return 1;
  }
  if (!WriteRgbPng(image, (outDir / "before.png").string())) return 1;
  const LumaSummary before = MeasureLuma(image);

  // -- the adjustments, each over the whole picture -----------------------
  // The one map buffer is refilled before each step; filling is not timed.
  const PxliRect all{0, 0, width, height};
  std::printf("\nadjustments over %d x %d:\n", width, height);

  FillRadialMap(map, [](float r) { return 0.4f - 0.8f * SmoothStep(0.0f, 1.0f, r); });
  if (!RunStep("AdjustExposureLin_32f_C4IMR", "+0.3, map +0.4 centre .. -0.4 corners", [&] {
        return AdjustExposureLin_32f_C4IMR(image.data.get(), image.step, all, 0.3f, map.data.get(),
                                           map.step, -2.0f, 2.0f);
      }))
    return 1;

  FillConstantMap(map, 1.15f);
  if (!RunStep("AdjustContrast_32f_AC4IR", "map 1.15", [&] {
        return AdjustContrast_32f_AC4IR(image.data.get(), image.step, all, map.data.get(),
                                        map.step);
      }))
    return 1;

  FillConstantMap(map, 1.25f);
  if (!RunStep("AdjustSaturation_32f_AC4IR", "map 1.25", [&] {
        return AdjustSaturation_32f_AC4IR(image.data.get(), image.step, all, map.data.get(),
                                          map.step);
      }))
    return 1;

  FillRadialMap(map, [](float r) { return 1.0f - 0.15f * r * r; });
  if (!RunStep("AdjustBrightness_32f_AC4IR", "map 1.0 centre .. 0.85 corners", [&] {
        return AdjustBrightness_32f_AC4IR(image.data.get(), image.step, all, map.data.get(),
                                          map.step);
      }))
    return 1;

  const LumaSummary after = MeasureLuma(image);
  std::printf("\nmean luma           centre %.3f -> %.3f, corners %.3f -> %.3f\n\n", before.centre,
              after.centre, before.corners, after.corners);

  if (!WriteRgbPng(image, (outDir / "after.png").string())) return 1;
  return 0;
}

}  // namespace

int main(int argc, char** argv) {
  Options options;
  const int parsed = ParseArguments(argc, argv, &options);
  if (parsed != 0) return parsed < 0 ? 0 : parsed;
  return Run(options);
}
