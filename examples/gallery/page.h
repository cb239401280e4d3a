// The gallery's HTML page: one self-contained file that refers only to the
// pictures beside it, with no script and nothing from the network.
#ifndef PXL_EXAMPLES_GALLERY_PAGE_H
#define PXL_EXAMPLES_GALLERY_PAGE_H

#include <string>
#include <vector>

#include "gallery/gallery.h"

namespace gallery {

struct PageInput {
  std::string name;    // shown as it is (escaped on the page)
  std::string origin;  // "generated", or the file's path
  int width = 0, height = 0;
  std::string before;  // picture path, relative to the page
  Summary summary;
};

// A call with its median time over the runs.
struct TimedCall {
  std::string exportName;
  PxlStatus status = pxlStsNoErr;
  double seconds = 0;
};

// One entry on one input.
struct PageCell {
  std::string after;          // picture path, relative to the page
  int width = 0, height = 0;  // of the output image, before any reduction for the page
  std::vector<TimedCall> calls;
  Summary summary;
  std::string error;  // set when the entry could not run
};

struct PageData {
  std::vector<std::string> about;  // lines on the library and the machine
  int repeat = 1;
  int maxSide = 0;
  std::vector<PageInput> inputs;
  std::vector<const Entry*> entries;
  std::vector<std::vector<PageCell>> cells;  // [entry][input]
};

std::string RenderPage(const PageData& page);

// Text for HTML: & < > " ' escaped.
std::string HtmlEscape(const std::string& text);

}  // namespace gallery

#endif  // PXL_EXAMPLES_GALLERY_PAGE_H
