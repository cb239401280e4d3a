// The gallery's table: one entry an algorithm, in the order of the page.
//
// To add an algorithm, add an entry: its family (the section it appears
// in), a title, the parameters as a reader should know them, what to look
// for, and a function that calls the export on job.Output() (in place) or
// sets a new output with job.SetOutput.  Call exports through GALLERY_CALL
// so that they are timed and named on the page.  A test checks that every
// export of the photo headers (PXL_GALLERY_HEADERS in examples/CMakeLists.txt,
// where a new header of photo algorithms is added) is called by some entry,
// and that every entry changes the picture with no error status.
#include "gallery/gallery.h"

namespace gallery {

const std::vector<Entry>& Entries() {
  static const std::vector<Entry> kEntries = {
      // ---- basic adjustments ------------------------------------------------
      {"Basic adjustments", "Exposure along a map",
       "value 0; map from -1.5 at the left edge to +1.5 at the right; bounds -1 .. 1",
       "Darker to the left, brighter to the right, flat over the outer sixths where the bounds "
       "hold the exposure at -1 and +1 (1.666 stops each). Blacks and whites stay put: the curve "
       "maps 0 to 0 and 1 to 1.",
       [](Job& j) {
         const Image map = j.HorizontalRamp(-1.5f, 1.5f);
         Image& out = j.Output();
         GALLERY_CALL(j, AdjustExposureLin_32f_C4IMR, out.f32(), out.step(), out.whole(), 0.0f,
                      map.f32(), map.step(), -1.0f, 1.0f);
       }},
      {"Basic adjustments", "Exposure along a map, bounds the wrong way round",
       "value 0; the same map; minValue 0.5 above maxValue -0.5",
       "A hard step where the map reaches 0.5 (two thirds across): to its left every exposure "
       "falls below minValue and becomes +0.5, from it on every exposure becomes maxValue, -0.5.",
       [](Job& j) {
         const Image map = j.HorizontalRamp(-1.5f, 1.5f);
         Image& out = j.Output();
         GALLERY_CALL(j, AdjustExposureLin_32f_C4IMR, out.f32(), out.step(), out.whole(), 0.0f,
                      map.f32(), map.step(), 0.5f, -0.5f);
       }},
      {"Basic adjustments", "Uniform exposure, region starting on a 16-byte boundary",
       "value +0.7; the region's first pixel is 16-byte aligned (rows from Malloc)",
       "The rational curve: m = 2^(0.7 * 1.666), midtones lifted, whites held at 1. Compare with "
       "the next entry, which differs only in the address of the first pixel.",
       [](Job& j) {
         Image& out = j.Output();
         GALLERY_CALL(j, AdjustExposureLin_32f_C4IR, out.f32(), out.step(), out.whole(), 0.7f);
       }},
      {"Basic adjustments", "Uniform exposure, region starting off a 16-byte boundary",
       "value +0.7; the same pixels, every row starting 4 bytes past a 64-byte boundary",
       "The luma-driven curve: every lane scaled by one factor from the Rec. 709 luma, m = 2^0.7. "
       "A gentler lift than the aligned case, and saturated colours clip sooner.",
       [](Job& j) {
         Image shifted = j.Input().CloneWithOffset(4);
         GALLERY_CALL(j, AdjustExposureLin_32f_C4IR, shifted.f32(), shifted.step(), shifted.whole(),
                      0.7f);
         j.Output().CopyPixelsFrom(shifted);
       }},
      {"Basic adjustments", "Contrast", "map 1.4 everywhere",
       "Tones spread away from mid-grey (0.5): shadows deeper, highlights brighter, some values "
       "pushed past 0 and 1 (the result is not clamped). Alpha kept.",
       [](Job& j) {
         const Image map = j.ConstantMap(1.4f);
         Image& out = j.Output();
         GALLERY_CALL(j, AdjustContrast_32f_AC4IR, out.f32(), out.step(), out.whole(), map.f32(),
                      map.step());
       }},
      {"Basic adjustments", "Saturation along a map",
       "map from 0 at the left edge to 2 at the right",
       "Gray at the left edge (each pixel at its own luma), the picture unchanged in the middle, "
       "colours twice as far from gray at the right. Brightness stays even across.",
       [](Job& j) {
         const Image map = j.HorizontalRamp(0.0f, 2.0f);
         Image& out = j.Output();
         GALLERY_CALL(j, AdjustSaturation_32f_AC4IR, out.f32(), out.step(), out.whole(), map.f32(),
                      map.step());
       }},
      {"Basic adjustments", "Brightness, alpha kept",
       "map 1.0 in the centre falling to 0.45 at the corners (a vignette)",
       "Corners darkened to 45 %, the centre untouched; the picture stays opaque.",
       [](Job& j) {
         const Image map = j.RadialFalloff(1.0f, 0.45f);
         Image& out = j.Output();
         GALLERY_CALL(j, AdjustBrightness_32f_AC4IR, out.f32(), out.step(), out.whole(), map.f32(),
                      map.step());
       }},
      {"Basic adjustments", "Brightness on all four lanes",
       "the same vignette map, applied to alpha as well",
       "The same darkening, and the corners turn partly transparent: the checkerboard behind the "
       "picture shows through, since alpha is multiplied too.",
       [](Job& j) {
         const Image map = j.RadialFalloff(1.0f, 0.45f);
         Image& out = j.Output();
         GALLERY_CALL(j, AdjustBrightness_32f_C4IR, out.f32(), out.step(), out.whole(), map.f32(),
                      map.step());
       }},
      {"Basic adjustments", "Four adjustments in a row",
       "exposure +0.3 plus a map from +0.4 (centre) to -0.4 (corners), bounds -2 .. 2; "
       "contrast 1.15; saturation 1.25; brightness 1.0 (centre) to 0.85 (corners)",
       "A finished look: a brighter centre, a little more punch and colour, softly darkened "
       "corners.",
       [](Job& j) {
         Image& out = j.Output();
         const Image exposure = j.RadialFalloff(0.4f, -0.4f);
         GALLERY_CALL(j, AdjustExposureLin_32f_C4IMR, out.f32(), out.step(), out.whole(), 0.3f,
                      exposure.f32(), exposure.step(), -2.0f, 2.0f);
         const Image contrast = j.ConstantMap(1.15f);
         GALLERY_CALL(j, AdjustContrast_32f_AC4IR, out.f32(), out.step(), out.whole(),
                      contrast.f32(), contrast.step());
         const Image saturation = j.ConstantMap(1.25f);
         GALLERY_CALL(j, AdjustSaturation_32f_AC4IR, out.f32(), out.step(), out.whole(),
                      saturation.f32(), saturation.step());
         const Image vignette = j.RadialFalloff(1.0f, 0.85f);
         GALLERY_CALL(j, AdjustBrightness_32f_AC4IR, out.f32(), out.step(), out.whole(),
                      vignette.f32(), vignette.step());
       }},
      // ---- transfer curves ---------------------------------------------------
      {"Transfer curves", "sRGB to linear", "the picture's values read as sRGB, alpha kept",
       "Linear light shown as if it were sRGB: midtones and shadows much darker (0.5 becomes "
       "about 0.21), black and white unchanged.",
       [](Job& j) {
         Image& out = j.Output();
         GALLERY_CALL(j, SRGBToRGB_32f_AC4IR, out.f32(), out.step(), out.whole());
       }},
      {"Transfer curves", "sRGB to linear and back", "SRGBToRGB, then RGBToSRGB, alpha kept",
       "Indistinguishable from the input: both directions are tables of 256 steps, so the round "
       "trip is off by at most a few thousandths, most in the deepest shadows.",
       [](Job& j) {
         Image& out = j.Output();
         GALLERY_CALL(j, SRGBToRGB_32f_AC4IR, out.f32(), out.step(), out.whole());
         GALLERY_CALL(j, RGBToSRGB_32f_AC4IR, out.f32(), out.step(), out.whole());
       }},
      {"Transfer curves", "Rational tone curve in linear light",
       "linearise; the tone curve (A -2517.09, B 529.711, C 0.69, D 2586.37, E 921.068); "
       "re-encode; alpha kept",
       "A filmic shoulder: white comes down to about 0.87 in linear light (0.94 encoded), "
       "midtones barely move, highlights roll off instead of clipping.",
       [](Job& j) {
         Image& out = j.Output();
         GALLERY_CALL(j, SRGBToRGB_32f_AC4IR, out.f32(), out.step(), out.whole());
         GALLERY_CALL(j, Uncharted2Tonemap_32f_AC4IR, out.f32(), out.step(), out.whole());
         GALLERY_CALL(j, RGBToSRGB_32f_AC4IR, out.f32(), out.step(), out.whole());
       }},
  };
  return kEntries;
}

}  // namespace gallery
