// Sky gradient with a few soft clouds, a sun with its glow, three ranges of
// hills (the far one hazy) shaded by the slope of their ridge line, grass
// texture, a darker foreground and a touch of grain.  All randomness comes
// from an integer hash with a fixed seed, so every run gives the same image.
#include "gallery/landscape.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

namespace gallery {
namespace {

float SmoothStep(float edge0, float edge1, float x) {
  const float t = std::clamp((x - edge0) / (edge1 - edge0), 0.0f, 1.0f);
  return t * t * (3.0f - 2.0f * t);
}

float Mix(float a, float b, float t) { return a + (b - a) * t; }

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

}  // namespace

Image GenerateLandscape(int width, int height) {
  Image image = Image::Allocate(width, height, 4, Element::k32f);
  const int w = width, h = height;
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
    Pxl32f* row = image.RowF(y);
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
  return image;
}

}  // namespace gallery
