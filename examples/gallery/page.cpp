#include "gallery/page.h"

#include <cstdio>
#include <sstream>

#include "gallery/processor.h"

namespace gallery {
namespace {

const char kStyle[] = R"(
body { font: 15px/1.45 system-ui, sans-serif; margin: 0 auto; padding: 1em 2em 4em; max-width: 1500px; color: #222; background: #fafafa; }
h1 { margin-bottom: 0.2em; }
h2 { margin-top: 2.5em; border-bottom: 2px solid #ccc; }
h3 { margin: 2em 0 0.2em; }
code { font: 13px ui-monospace, monospace; background: #eee; padding: 0 0.25em; border-radius: 3px; }
table { border-collapse: collapse; margin: 0.8em 0; }
th, td { border: 1px solid #ccc; padding: 0.25em 0.6em; text-align: left; vertical-align: top; }
td.num { text-align: right; white-space: nowrap; }
.about { color: #555; margin: 0; }
.params { margin: 0.2em 0; }
.look { margin: 0.2em 0 0.8em; color: #444; }
.row { display: grid; grid-template-columns: 1fr 1fr 17em; gap: 0.8em; margin: 0.8em 0 1.6em; align-items: start; }
.row figure { margin: 0; }
.row img { display: block; width: 100%; height: auto; border: 1px solid #bbb;
  background: repeating-conic-gradient(#c8c8c8 0% 25%, #f4f4f4 0% 50%) 0 0 / 16px 16px; }
.row figcaption { font-size: 13px; color: #555; }
.facts { font-size: 13px; }
.facts p { margin: 0 0 0.4em; }
.error { color: #b00; font-weight: bold; }
.warning { color: #a60; }
)";

std::string FormatTime(double seconds) {
  char text[32];
  const double ms = seconds * 1e3;
  std::snprintf(text, sizeof text, ms < 1 ? "%.3f ms" : ms < 10 ? "%.2f ms" : "%.1f ms", ms);
  return text;
}

std::string FormatRate(double pixels, double seconds) {
  char text[32];
  if (seconds <= 0) return "";
  std::snprintf(text, sizeof text, "%.0f Mpixel/s", pixels / seconds / 1e6);
  return text;
}

std::string Fixed(double value, int digits) {
  char text[32];
  std::snprintf(text, sizeof text, "%.*f", digits, value);
  return text;
}

double TotalSeconds(const PageCell& cell) {
  double total = 0;
  for (const TimedCall& call : cell.calls) total += call.seconds;
  return total;
}

// The exports an entry calls, in order, each once.
std::vector<std::string> ExportsOf(const std::vector<std::vector<PageCell>>& cells, size_t entry) {
  std::vector<std::string> names;
  for (const PageCell& cell : cells[entry])
    for (const TimedCall& call : cell.calls) {
      bool seen = false;
      for (const std::string& n : names) seen = seen || n == call.exportName;
      if (!seen) names.push_back(call.exportName);
    }
  return names;
}

void WriteSummary(std::ostringstream& html, const Summary& before, const Summary* after) {
  if (after) {
    html << "<p>mean luma " << Fixed(before.meanLuma, 3) << " &rarr; " << Fixed(after->meanLuma, 3)
         << "</p>";
    html << "<p>" << Fixed(after->outsideRange * 100, 1)
         << " % of colour values outside 0..1 (clipped in the picture)</p>";
    if (after->alphaMin != 1 || after->alphaMax != 1 || before.alphaMin != 1)
      html << "<p>alpha " << Fixed(after->alphaMin, 3) << " .. " << Fixed(after->alphaMax, 3)
           << "</p>";
  } else {
    html << "<p>mean luma " << Fixed(before.meanLuma, 3) << "</p>";
  }
}

}  // namespace

std::string HtmlEscape(const std::string& text) {
  std::string out;
  out.reserve(text.size());
  for (char c : text) {
    switch (c) {
      case '&':
        out += "&amp;";
        break;
      case '<':
        out += "&lt;";
        break;
      case '>':
        out += "&gt;";
        break;
      case '"':
        out += "&quot;";
        break;
      case '\'':
        out += "&#39;";
        break;
      default:
        out += c;
    }
  }
  return out;
}

std::string RenderPage(const PageData& page) {
  std::ostringstream html;
  html << "<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\">\n"
       << "<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\">\n"
       << "<link rel=\"icon\" href=\"data:,\">\n"
       << "<title>pxl gallery</title>\n<style>" << kStyle << "</style>\n</head>\n<body>\n";

  html << "<h1>pxl gallery</h1>\n";
  for (const std::string& line : page.about)
    html << "<p class=\"about\">" << HtmlEscape(line) << "</p>\n";
  html << "<p>Every photo algorithm of the library on every picture, before on the left and "
          "after on the right; a click opens a picture at full size. Times are the median of "
       << page.repeat << " run" << (page.repeat == 1 ? "" : "s")
       << " of each export call on one thread, on the whole picture; making parameter maps and "
          "copies is not timed. Float results are clamped to 0..1 for the pictures; a "
          "checkerboard shows through where alpha is below 1. Pictures larger than "
       << page.maxSide << " pixels a side are shown reduced.</p>\n";

  // -- the pictures --------------------------------------------------------
  html << "<h2>Pictures</h2>\n<table>\n<tr><th>picture</th><th>size</th><th>from</th></tr>\n";
  for (const PageInput& in : page.inputs)
    html << "<tr><td>" << HtmlEscape(in.name) << "</td><td class=\"num\">" << in.width
         << " &times; " << in.height << "</td><td>" << HtmlEscape(in.origin) << "</td></tr>\n";
  html << "</table>\n";

  // -- times at a glance ----------------------------------------------------
  html << "<h2>Times</h2>\n<table>\n<tr><th>algorithm</th><th>exports</th>";
  for (const PageInput& in : page.inputs) html << "<th>" << HtmlEscape(in.name) << "</th>";
  html << "</tr>\n";
  for (size_t e = 0; e < page.entries.size(); ++e) {
    html << "<tr><td><a href=\"#entry-" << e << "\">" << HtmlEscape(page.entries[e]->title)
         << "</a></td><td>";
    const std::vector<std::string> exports = ExportsOf(page.cells, e);
    for (size_t i = 0; i < exports.size(); ++i)
      html << (i ? "<br>" : "") << "<code>" << HtmlEscape(exports[i]) << "</code>";
    html << "</td>";
    for (size_t i = 0; i < page.inputs.size(); ++i) {
      const PageCell& cell = page.cells[e][i];
      const double pixels = static_cast<double>(page.inputs[i].width) * page.inputs[i].height;
      if (!cell.error.empty())
        html << "<td class=\"num error\">failed</td>";
      else
        html << "<td class=\"num\">" << FormatTime(TotalSeconds(cell)) << "<br><small>"
             << FormatRate(pixels, TotalSeconds(cell)) << "</small></td>";
    }
    html << "</tr>\n";
  }
  html << "</table>\n";

  // -- the algorithms, family by family ---------------------------------------
  std::string family;
  for (size_t e = 0; e < page.entries.size(); ++e) {
    const Entry& entry = *page.entries[e];
    if (family != entry.family) {
      family = entry.family;
      html << "<h2>" << HtmlEscape(family) << "</h2>\n";
    }
    html << "<h3 id=\"entry-" << e << "\">" << HtmlEscape(entry.title) << "</h3>\n";
    html << "<p class=\"params\">";
    const std::vector<std::string> exports = ExportsOf(page.cells, e);
    for (size_t i = 0; i < exports.size(); ++i)
      html << (i ? " + " : "") << "<code>" << HtmlEscape(exports[i]) << "</code>";
    html << " &mdash; " << HtmlEscape(entry.parameters) << "</p>\n";
    html << "<p class=\"look\">" << HtmlEscape(entry.lookFor) << "</p>\n";

    for (size_t i = 0; i < page.inputs.size(); ++i) {
      const PageInput& in = page.inputs[i];
      const PageCell& cell = page.cells[e][i];
      html << "<div class=\"row\">\n";
      html << "<figure><a href=\"" << HtmlEscape(in.before) << "\"><img src=\""
           << HtmlEscape(in.before) << "\" alt=\"" << HtmlEscape(in.name) << ", before\"></a>"
           << "<figcaption>" << HtmlEscape(in.name) << ", before</figcaption></figure>\n";
      if (cell.error.empty()) {
        html << "<figure><a href=\"" << HtmlEscape(cell.after) << "\"><img src=\""
             << HtmlEscape(cell.after) << "\" alt=\"" << HtmlEscape(in.name) << ", after "
             << HtmlEscape(entry.title) << "\"></a><figcaption>after</figcaption></figure>\n";
      } else {
        html << "<figure><p class=\"error\">" << HtmlEscape(cell.error) << "</p></figure>\n";
      }
      html << "<div class=\"facts\">\n";
      const double pixels = static_cast<double>(in.width) * in.height;
      for (const TimedCall& call : cell.calls) {
        html << "<p><code>" << HtmlEscape(call.exportName) << "</code><br>"
             << FormatTime(call.seconds) << ", " << FormatRate(pixels, call.seconds);
        if (call.status != pxlStsNoErr)
          html << "<br><span class=\"" << (call.status < 0 ? "error" : "warning") << "\">status "
               << call.status << " (" << StatusName(call.status) << ")</span>";
        html << "</p>\n";
      }
      if (cell.error.empty()) {
        if (cell.width != in.width || cell.height != in.height)
          html << "<p>output " << cell.width << " &times; " << cell.height << "</p>";
        WriteSummary(html, in.summary, &cell.summary);
      }
      html << "</div>\n</div>\n";
    }
  }
  html << "</body>\n</html>\n";
  return html.str();
}

}  // namespace gallery
