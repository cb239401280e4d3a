// The gallery: every photo algorithm of the library, run on a set of
// pictures, shown before and after on one HTML page.
//
// An algorithm is one entry of the table in entries.cpp.  Its function gets
// a Job: the input picture as float RGBA 0..1 in library memory, an output
// that starts as a copy of it, and helpers that make parameter maps of the
// picture's size.  It calls exports through GALLERY_CALL, which times each
// call and records its name and status; anything else it does (filling maps,
// copying) is not timed.  The function runs several times on fresh copies
// and the page shows the median time of each call.
#ifndef PXL_EXAMPLES_GALLERY_GALLERY_H
#define PXL_EXAMPLES_GALLERY_GALLERY_H

#include <pxl/pxl.h>

#include <chrono>
#include <string>
#include <vector>

#include "gallery/images.h"

namespace gallery {

// One export call of an entry.
struct CallRecord {
  const char* exportName;
  PxlStatus status;
  double seconds;
};

class Job {
 public:
  explicit Job(const Image& input) : input_(input), output_(input.Clone()) {}

  // The picture, float RGBA 0..1.  Not to be changed.
  const Image& Input() const { return input_; }
  int Width() const { return input_.width(); }
  int Height() const { return input_.height(); }

  // What the page shows as the result: a copy of the input until an entry
  // replaces it (an export that writes an image of another shape or type).
  Image& Output() { return output_; }
  void SetOutput(Image image) { output_ = std::move(image); }

  // One-channel float maps of the picture's size.
  Image ConstantMap(float value) const { return gallery::ConstantMap(Width(), Height(), value); }
  Image HorizontalRamp(float left, float right) const {
    return gallery::HorizontalRamp(Width(), Height(), left, right);
  }
  Image RadialFalloff(float centre, float corners) const {
    return gallery::RadialFalloff(Width(), Height(), centre, corners);
  }

  // Runs and times one call; use GALLERY_CALL rather than this.
  template <typename F>
  PxlStatus Call(const char* exportName, F&& call) {
    const auto start = std::chrono::steady_clock::now();
    const PxlStatus status = call();
    const auto stop = std::chrono::steady_clock::now();
    calls_.push_back({exportName, status, std::chrono::duration<double>(stop - start).count()});
    return status;
  }

  const std::vector<CallRecord>& Calls() const { return calls_; }

 private:
  const Image& input_;
  Image output_;
  std::vector<CallRecord> calls_;
};

// Calls an export with the given arguments, timed and recorded under the
// export's own name: GALLERY_CALL(job, AdjustContrast_32f_AC4IR, p, step, roi, map, mapStep).
#define GALLERY_CALL(job, exportFunction, ...) \
  (job).Call(#exportFunction, [&]() -> PxlStatus { return exportFunction(__VA_ARGS__); })

// One algorithm of the gallery.
struct Entry {
  const char* family;      // section of the page, e.g. "Basic adjustments"
  const char* title;       // what it does, a few words
  const char* parameters;  // the arguments, as a reader should know them
  const char* lookFor;     // what to look for in the pictures
  void (*run)(Job& job);
};

// The table, in the order of the page.
const std::vector<Entry>& Entries();

}  // namespace gallery

#endif  // PXL_EXAMPLES_GALLERY_GALLERY_H
