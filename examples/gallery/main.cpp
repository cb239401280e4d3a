// pxl_gallery: runs every photo algorithm of the library on a set of
// pictures and writes a page that shows each one before and after, with the
// exports called, their parameters and their times.
//
// The pictures are a generated landscape, the PNG and JPEG files of a
// samples folder, and any PNG or JPEG files named on the command line.  See
// PrintUsage for the options; the algorithms are the table in entries.cpp.

#include <pxl/pxl.h>

#include <algorithm>
#include <cctype>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <new>
#include <string>
#include <vector>

#include "gallery/gallery.h"
#include "gallery/images.h"
#include "gallery/landscape.h"
#include "gallery/page.h"
#include "gallery/processor.h"
#include "image_io.h"

namespace fs = std::filesystem;

namespace gallery {
namespace {

// ---------------------------------------------------------------------------
// Command line
// ---------------------------------------------------------------------------

void PrintUsage(std::FILE* out) {
  std::fprintf(out,
               "usage: pxl_gallery [options] [IMAGE ...]\n"
               "\n"
               "Runs every photo algorithm of pxl on a generated landscape, on the PNG and\n"
               "JPEG files of the samples folder and on each IMAGE (PNG or JPEG), and writes\n"
               "index.html with the pictures before and after into the output folder.\n"
               "\n"
               "  --out DIR          output folder, created if missing (default: out)\n"
               "  --samples DIR      add every .png, .jpg and .jpeg file of DIR (skipped if\n"
               "                     DIR does not exist)\n"
               "  --landscape WxH    size of the generated landscape (default: 1600x1067)\n"
               "  --no-landscape     leave the generated landscape out\n"
               "  --repeat N         runs of each algorithm on each picture; the page shows\n"
               "                     the median time (default: 5)\n"
               "  --max-side N       pictures on the page are reduced to at most N pixels a\n"
               "                     side (default: 1600); algorithms always run at full size\n"
               "  --list             print each algorithm's exports and title, and stop\n"
               "  --help             this text\n");
}

struct Options {
  std::string outDir = "out";
  std::string samplesDir;
  std::vector<std::string> files;
  int landscapeWidth = 1600, landscapeHeight = 1067;
  bool landscape = true;
  int repeat = 5;
  int maxSide = 1600;
  bool list = false;
};

bool ParseInt(const std::string& text, int low, int high, int* value) {
  char* end = nullptr;
  const long v = std::strtol(text.c_str(), &end, 10);
  if (text.empty() || *end != '\0' || v < low || v > high) return false;
  *value = static_cast<int>(v);
  return true;
}

// Returns -1 to go on, otherwise the exit code.
int ParseArguments(int argc, char** argv, Options* options) {
  for (int i = 1; i < argc; ++i) {
    const std::string arg = argv[i];
    auto value = [&](std::string* out) {
      if (i + 1 >= argc) {
        std::fprintf(stderr, "error: %s needs a value\n", arg.c_str());
        return false;
      }
      *out = argv[++i];
      return true;
    };
    std::string v;
    if (arg == "--help" || arg == "-h") {
      PrintUsage(stdout);
      return 0;
    } else if (arg == "--out") {
      if (!value(&options->outDir)) return 2;
    } else if (arg == "--samples") {
      if (!value(&options->samplesDir)) return 2;
    } else if (arg == "--landscape") {
      if (!value(&v)) return 2;
      const size_t x = v.find('x');
      if (x == std::string::npos || !ParseInt(v.substr(0, x), 1, 16384, &options->landscapeWidth) ||
          !ParseInt(v.substr(x + 1), 1, 16384, &options->landscapeHeight)) {
        std::fprintf(stderr, "error: --landscape wants WIDTHxHEIGHT, 1 to 16384 each\n");
        return 2;
      }
      options->landscape = true;
    } else if (arg == "--no-landscape") {
      options->landscape = false;
    } else if (arg == "--repeat") {
      if (!value(&v) || !ParseInt(v, 1, 1000, &options->repeat)) {
        std::fprintf(stderr, "error: --repeat wants a count from 1 to 1000\n");
        return 2;
      }
    } else if (arg == "--max-side") {
      if (!value(&v) || !ParseInt(v, 16, 65536, &options->maxSide)) {
        std::fprintf(stderr, "error: --max-side wants a size from 16 to 65536\n");
        return 2;
      }
    } else if (arg == "--list") {
      options->list = true;
    } else if (arg.size() > 1 && arg[0] == '-') {
      std::fprintf(stderr, "error: unknown option %s\n\n", arg.c_str());
      PrintUsage(stderr);
      return 2;
    } else {
      options->files.push_back(arg);
    }
  }
  return -1;
}

// ---------------------------------------------------------------------------
// Pictures
// ---------------------------------------------------------------------------

struct Input {
  std::string name;
  std::string origin;
  std::string slug;  // its folder under img/
  Image image;
};

bool IsPictureFile(const fs::path& path) {
  std::string ext = path.extension().string();
  std::transform(ext.begin(), ext.end(), ext.begin(),
                 [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
  return ext == ".png" || ext == ".jpg" || ext == ".jpeg";
}

bool LoadFile(const std::string& path, std::vector<Input>* inputs, std::string* error) {
  pxl_examples::Rgba8Image picture;
  if (!pxl_examples::ReadImageRgba8(path, &picture, error)) return false;
  inputs->push_back({fs::path(path).filename().string(), path, "", FromRgba8(picture)});
  return true;
}

// Lower-case letters, digits and dashes from the name, unique among the
// inputs, so that picture paths need no escaping in a URL.
void AssignSlugs(std::vector<Input>* inputs) {
  std::vector<std::string> used;
  for (Input& in : *inputs) {
    std::string base;
    for (unsigned char c : fs::path(in.name).stem().string()) {
      if (std::isalnum(c))
        base += static_cast<char>(std::tolower(c));
      else if (!base.empty() && base.back() != '-')
        base += '-';
    }
    while (!base.empty() && base.back() == '-') base.pop_back();
    if (base.empty()) base = "picture";
    std::string slug = base;
    for (int n = 2; std::find(used.begin(), used.end(), slug) != used.end(); ++n)
      slug = base + "-" + std::to_string(n);
    used.push_back(slug);
    in.slug = slug;
  }
}

// Returns false (after printing why) when a named file cannot be read.
bool CollectInputs(const Options& options, std::vector<Input>* inputs) {
  if (options.landscape) {
    inputs->push_back({"landscape", "generated", "",
                       GenerateLandscape(options.landscapeWidth, options.landscapeHeight)});
  }
  if (!options.samplesDir.empty()) {
    std::error_code ec;
    std::vector<fs::path> files;
    for (const auto& item : fs::directory_iterator(options.samplesDir, ec))
      if (item.is_regular_file() && IsPictureFile(item.path())) files.push_back(item.path());
    if (ec)
      std::printf("note: no samples in %s (%s); scripts/fetch-samples.sh fetches some\n",
                  options.samplesDir.c_str(), ec.message().c_str());
    std::sort(files.begin(), files.end());
    for (const fs::path& file : files) {
      std::string error;
      if (!LoadFile(file.string(), inputs, &error))
        std::printf("note: skipping %s: %s\n", file.c_str(), error.c_str());
    }
  }
  for (const std::string& file : options.files) {
    std::string error;
    if (!LoadFile(file, inputs, &error)) {
      std::fprintf(stderr, "error: cannot read %s: %s\n", file.c_str(), error.c_str());
      return false;
    }
  }
  AssignSlugs(inputs);
  return true;
}

bool WritePicture(const Image& image, int maxSide, const fs::path& path) {
  const Picture picture = ToPicture(image, maxSide);
  std::string error;
  if (!pxl_examples::WritePng8(path.string(), picture.width, picture.height, picture.channels,
                               picture.pixels.data(), &error)) {
    std::fprintf(stderr, "error: cannot write %s: %s\n", path.c_str(), error.c_str());
    return false;
  }
  return true;
}

// ---------------------------------------------------------------------------
// Running the entries
// ---------------------------------------------------------------------------

double Median(std::vector<double> values) {
  std::sort(values.begin(), values.end());
  const size_t n = values.size();
  return n % 2 ? values[n / 2] : 0.5 * (values[n / 2 - 1] + values[n / 2]);
}

// Runs an entry `repeat` times, each on a fresh copy of the picture; the
// output of the last run is kept.  Returns false when a call failed.
bool RunEntry(const Entry& entry, const Image& input, int repeat, PageCell* cell, Image* output) {
  std::vector<std::vector<double>> times;
  std::vector<CallRecord> calls;
  for (int r = 0; r < repeat; ++r) {
    Job job(input);
    entry.run(job);
    calls = job.Calls();
    if (times.size() < calls.size()) times.resize(calls.size());
    for (size_t i = 0; i < calls.size(); ++i) times[i].push_back(calls[i].seconds);
    if (r + 1 == repeat) *output = std::move(job.Output());
  }
  bool ok = true;
  for (size_t i = 0; i < calls.size(); ++i) {
    cell->calls.push_back({calls[i].exportName, calls[i].status, Median(times[i])});
    ok = ok && calls[i].status >= 0;
  }
  return ok;
}

int ListEntries() {
  const Image tiny = GenerateLandscape(16, 12);
  for (const Entry& entry : Entries()) {
    Job job(tiny);
    entry.run(job);
    std::vector<std::string> seen;
    for (const CallRecord& call : job.Calls()) {
      if (std::find(seen.begin(), seen.end(), call.exportName) != seen.end()) continue;
      seen.push_back(call.exportName);
      std::printf("%s\t%s: %s\n", call.exportName, entry.family, entry.title);
    }
  }
  return 0;
}

int Run(const Options& options) {
  const auto started = std::chrono::steady_clock::now();

  const PxlStatus initStatus = Init();
  Pxl64u features = 0;
  GetCpuFeatures(&features);
  PageData page;
  page.repeat = options.repeat;
  page.maxSide = options.maxSide;
  page.about.push_back("processor level " + LevelName(features) + "; Init status " +
                       std::to_string(initStatus) + " (" + StatusName(initStatus) + ")");
  page.about.push_back("processor features: " + FeatureNames(features));
  for (const std::string& line : page.about) std::printf("%s\n", line.c_str());

  std::vector<Input> inputs;
  if (!CollectInputs(options, &inputs)) return 1;
  if (inputs.empty()) {
    std::fprintf(stderr, "error: no pictures (the landscape is left out and none was found)\n");
    return 1;
  }

  const fs::path outDir = options.outDir;
  std::error_code ec;
  for (const Input& in : inputs) fs::create_directories(outDir / "img" / in.slug, ec);
  if (ec) {
    std::fprintf(stderr, "error: cannot create %s: %s\n", outDir.c_str(), ec.message().c_str());
    return 1;
  }

  for (const Input& in : inputs) {
    const std::string before = "img/" + in.slug + "/before.png";
    if (!WritePicture(in.image, options.maxSide, outDir / before)) return 1;
    page.inputs.push_back(
        {in.name, in.origin, in.image.width(), in.image.height(), before, Summarise(in.image)});
  }

  bool allOk = true;
  const std::vector<Entry>& entries = Entries();
  for (size_t e = 0; e < entries.size(); ++e) {
    const Entry& entry = entries[e];
    page.entries.push_back(&entry);
    page.cells.emplace_back();
    std::printf("\n%s: %s\n", entry.family, entry.title);
    for (const Input& in : inputs) {
      PageCell cell;
      Image output;
      bool ok = false;
      try {
        ok = RunEntry(entry, in.image, options.repeat, &cell, &output);
        if (!ok) cell.error = "an export returned an error status";
      } catch (const std::bad_alloc&) {
        cell.error = "out of memory";
      }
      double total = 0;
      for (const TimedCall& call : cell.calls) total += call.seconds;
      std::printf("  %-24s %5d x %-5d %10.3f ms%s%s\n", in.name.c_str(), in.image.width(),
                  in.image.height(), total * 1e3, ok ? "" : "  FAILED: ", cell.error.c_str());
      if (ok) {
        cell.after = "img/" + in.slug + "/" + std::to_string(e + 1) + ".png";
        cell.width = output.width();
        cell.height = output.height();
        cell.summary = Summarise(output);
        if (!WritePicture(output, options.maxSide, outDir / cell.after)) return 1;
      }
      allOk = allOk && ok;
      page.cells.back().push_back(std::move(cell));
    }
  }

  const fs::path index = outDir / "index.html";
  const fs::path partial = outDir / "index.html.part";
  {
    std::ofstream file(partial, std::ios::binary | std::ios::trunc);
    file << RenderPage(page);
    if (!file.flush()) {
      std::fprintf(stderr, "error: cannot write %s\n", partial.c_str());
      return 1;
    }
  }
  fs::rename(partial, index, ec);
  if (ec) {
    std::fprintf(stderr, "error: cannot write %s: %s\n", index.c_str(), ec.message().c_str());
    return 1;
  }

  const double seconds =
      std::chrono::duration<double>(std::chrono::steady_clock::now() - started).count();
  std::printf("\n%zu algorithms on %zu pictures in %.1f s; wrote %s\n", entries.size(),
              inputs.size(), seconds, index.c_str());
  return allOk ? 0 : 1;
}

}  // namespace
}  // namespace gallery

int main(int argc, char** argv) {
  gallery::Options options;
  const int parsed = gallery::ParseArguments(argc, argv, &options);
  if (parsed >= 0) return parsed;
  try {
    return options.list ? gallery::ListEntries() : gallery::Run(options);
  } catch (const std::bad_alloc&) {
    std::fprintf(stderr, "error: out of memory\n");
    return 1;
  }
}
