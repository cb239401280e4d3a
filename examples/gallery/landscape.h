// The gallery's default picture, generated: no file is needed to run it.
#ifndef PXL_EXAMPLES_GALLERY_LANDSCAPE_H
#define PXL_EXAMPLES_GALLERY_LANDSCAPE_H

#include "gallery/images.h"

namespace gallery {

// A landscape as float RGBA 0..1, alpha 1: sky with clouds, the sun, three
// ranges of hills and a darker foreground.  The same every run.
Image GenerateLandscape(int width, int height);

}  // namespace gallery

#endif  // PXL_EXAMPLES_GALLERY_LANDSCAPE_H
