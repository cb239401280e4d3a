#include "support/image.h"

#include <string>

namespace pxltest {

bool ChangesInsideRegion(const GuardedBuffer& before, const GuardedBuffer& after, int step,
                         int pixelBytes, PxliRect roi, std::string* where) {
  const std::vector<uint8_t>& a = before.raw();
  const std::vector<uint8_t>& b = after.raw();
  const long origin = static_cast<long>(before.payloadOffset());
  for (size_t i = 0; i < a.size(); ++i) {
    if (a[i] == b[i]) continue;
    const long off = static_cast<long>(i) - origin;
    bool inside = false;
    if (off >= 0 && step > 0) {
      const long y = off / step, xb = off % step;
      inside = y >= roi.y && y < roi.y + roi.height &&
               xb >= static_cast<long>(roi.x) * pixelBytes &&
               xb < static_cast<long>(roi.x + roi.width) * pixelBytes;
    }
    if (!inside) {
      if (where) *where = "byte " + std::to_string(off) + " relative to the image start";
      return false;
    }
  }
  return true;
}

}  // namespace pxltest
