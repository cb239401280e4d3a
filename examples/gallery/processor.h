// What the library says about itself and the processor, in words.
#ifndef PXL_EXAMPLES_GALLERY_PROCESSOR_H
#define PXL_EXAMPLES_GALLERY_PROCESSOR_H

#include <pxl/pxl.h>

#include <string>

namespace gallery {

// The name of a status code, or "error" / "warning" for one not listed here.
const char* StatusName(PxlStatus status);

// The feature bits of a GetCpuFeatures mask by name, separated by spaces.
std::string FeatureNames(Pxl64u mask);

// The processor level the library picks for a feature mask, with the
// instruction sets it stands for: "4 (AVX2/FMA/BMI)".
std::string LevelName(Pxl64u mask);

}  // namespace gallery

#endif  // PXL_EXAMPLES_GALLERY_PROCESSOR_H
