// Writes the declarations of the family tables into the public headers.
//
//   pxl_gen_header --write <header>...   rewrites every generated region
//   pxl_gen_header --check <header>...   exits 1, naming each region that is out of date
//
// A header marks a family's region with the lines
//   /* @generated-begin <Family> */
//   /* @generated-end <Family> */
// and everything between them belongs to this tool.  Each family of the
// tables must have exactly one region among the headers given, and each
// region a family.  The declarations are the tables' own signature macros,
// turned into text by the preprocessor, so they cannot differ from what the
// library defines.
#include <cstdio>
#include <cstring>
#include <fstream>
#include <map>
#include <sstream>
#include <string>
#include <vector>

#include "core/family.h"

namespace {

struct Row {
  enum Kind { kFamily, kDoc, kMember, kDirect } kind;
  const char* a;  // family, title or name
  const char* b;  // table file, text or parameter list
};

#define PXL_FAMILY(family) {Row::kFamily, #family, __FILE__},
#define PXL_DOC(title, text) {Row::kDoc, title, text},
#define PXL_MEMBER(unit, name, shape, a) {Row::kMember, #name, PXL_XSTR(PXL_SIG_##shape a)},
#define PXL_DIRECT(name, shape, a) {Row::kDirect, #name, PXL_XSTR(PXL_SIG_##shape a)},
const Row kRows[] = {
#include "core/families.def"
};
#undef PXL_FAMILY
#undef PXL_DOC
#undef PXL_MEMBER
#undef PXL_DIRECT

// What each parameter name means, for the @param lines of every group.  A
// parameter of a table that is not here stops the tool: describe it here.
const std::map<std::string, std::string> kParamDocs = {
    {"pSrc", "Source image at its base (planar: an array of plane pointers); the region moves it."},
    {"srcStep", "Bytes from one source row to the next (one step for all planes)."},
    {"pDst",
     "Destination image at its base (planar: an array of plane pointers); the region moves it."},
    {"dstStep", "Bytes from one destination row to the next (one step for all planes)."},
    {"pSrcDst", "Image read and written in place, at its base; the region moves it."},
    {"srcDstStep", "Bytes from one row of the image to the next."},
    {"roi",
     "Region of interest: x, y move every image by its own step and pixel size; width and "
     "height are the size worked on."},
    {"pMask",
     "Mask, one 8u channel at its base; the region moves it; pixels whose mask byte is 0 "
     "are left alone."},
    {"maskStep", "Bytes from one mask row to the next."},
    {"value", "The value: one for a single channel, one a channel written for several."},
    {"dstOrder", "For each destination channel, the source channel it takes."},
    {"order", "For each destination channel, the source channel it takes."},
    {"pTable",
     "The curve: levels float entries (levels + 1 with the extra entry), nominally 0 to 1, "
     "at even steps of the input from 0 to 1."},
    {"levels", "Table positions, at least 2."},
    {"hasExtraEntry",
     "Whether the table holds an entry past the last position; without it an input of 1.0 is "
     "kept below the last entry."},
    {"warmTable", "Whether to read the table once before the rows, to bring it into the cache."},
    {"rndMode",
     "Rounding: #pxlRndZero toward zero, #pxlRndNear to nearest with ties to even, "
     "#pxlRndFinancial to nearest with ties away from zero."},
    {"scaleFactor", "The result is the source times 2^-scaleFactor, rounded."},
    {"vMin", "The float that the integer type's smallest value stands for."},
    {"vMax", "The float that the integer type's largest value stands for; above vMin."},
    {"mVal", "The factor each element is multiplied by."},
    {"aVal", "The constant added after the multiplication."},
    {"srcRoiSize", "Width and height of the source, in pixels."},
    {"dstRoiSize", "Width and height of the destination, in pixels, border included."},
    {"topBorderHeight", "Rows of border above the source."},
    {"leftBorderWidth", "Columns of border left of the source."},
    {"flip", "The axes reversed: #pxlFlipTopBottom, #pxlFlipLeftRight or #pxlFlipBoth."},
};

constexpr size_t kWidth = 100;

// The last two components of a path: "primitives/copy.def".
std::string ShortPath(const char* path) {
  std::string p = path;
  size_t cut = p.rfind('/');
  if (cut != std::string::npos && cut > 0) cut = p.rfind('/', cut - 1);
  return cut == std::string::npos ? p : p.substr(cut + 1);
}

// Text as the lines of a comment, words wrapped at the page width; a line
// break in the text starts a new paragraph.
void Wrap(std::ostringstream& out, const std::string& text, const std::string& prefix) {
  std::istringstream paragraphs(text);
  std::string paragraph;
  bool first = true;
  while (std::getline(paragraphs, paragraph)) {
    if (!first) out << " *\n";
    first = false;
    std::istringstream words(paragraph);
    std::string word, line;
    while (words >> word) {
      if (!line.empty() && prefix.size() + line.size() + 1 + word.size() > kWidth) {
        out << prefix << line << "\n";
        line.clear();
      }
      line += (line.empty() ? "" : " ") + word;
    }
    if (!line.empty()) out << prefix << line << "\n";
  }
}

// Pointers written as `T* p` and `T* const p`, however the macros spaced them.
std::string Canonical(const std::string& text) {
  std::string s;
  for (size_t i = 0; i < text.size(); ++i) {
    if (text[i] == ' ' && i + 1 < text.size() && text[i + 1] == '*') continue;
    s += text[i];
    if (text[i] == '*' && i + 1 < text.size() && text[i + 1] != ' ' && text[i + 1] != '*' &&
        text[i + 1] != ',' && text[i + 1] != ')')
      s += ' ';
  }
  return s;
}

// The parameters of a parenthesised list, and the name each declares.
std::vector<std::string> Params(const std::string& list) {
  std::vector<std::string> parts;
  const std::string canonical = Canonical(list);
  const std::string inner = canonical.substr(1, canonical.size() - 2);
  for (size_t start = 0;;) {
    const size_t comma = inner.find(", ", start);
    parts.push_back(inner.substr(start, comma - start));
    if (comma == std::string::npos) break;
    start = comma + 2;
  }
  return parts;
}
std::string ParamName(std::string param) {
  const size_t bracket = param.find('[');
  if (bracket != std::string::npos) param.erase(bracket);
  const size_t space = param.find_last_of(" *");
  return param.substr(space + 1);
}

// One declaration, its parameters wrapped under the opening parenthesis.
void Declare(std::ostringstream& out, const std::string& name, const std::string& list) {
  const std::string head = "PXL_API PxlStatus " + name + "(";
  const std::vector<std::string> parts = Params(list);
  const std::string indent(head.size() <= 60 ? head.size() : 4, ' ');
  std::string line = head;
  for (size_t i = 0; i < parts.size(); ++i) {
    const std::string piece = parts[i] + (i + 1 < parts.size() ? "," : ");");
    const bool first = line.size() == head.size() || line == indent;
    if (!first && line.size() + 1 + piece.size() > kWidth) {
      out << line << "\n";
      line = indent;
    }
    line += (line.size() == head.size() || line == indent ? "" : " ") + piece;
  }
  out << line << "\n";
}

struct Failure {
  std::string message;
};

// One documented group: its title and text, then its members, whose
// parameter names must agree (one block of @param lines documents them all).
void Group(std::ostringstream& out, const Row& doc, const std::vector<const Row*>& members) {
  if (members.empty()) throw Failure{std::string("group \"") + doc.a + "\" has no members"};
  std::vector<std::string> names;
  for (const std::string& p : Params(members[0]->b)) names.push_back(ParamName(p));
  for (const Row* m : members) {
    std::vector<std::string> own;
    for (const std::string& p : Params(m->b)) own.push_back(ParamName(p));
    if (own != names)
      throw Failure{std::string(m->a) + " has other parameter names than " + members[0]->a +
                    " in the group \"" + doc.a + "\"; give it a group of its own"};
  }
  out << "\n/** @name " << doc.a << "\n * @{ */\n/**\n";
  Wrap(out, doc.b, " * ");
  out << " *\n";
  for (const std::string& n : names) {
    // A group whose text describes a parameter itself ("@param name ...")
    // keeps that description.
    if (std::string(doc.b).find("@param " + n + " ") != std::string::npos) continue;
    const auto it = kParamDocs.find(n);
    if (it == kParamDocs.end())
      throw Failure{"parameter " + n + " of " + members[0]->a +
                    " has no description in the tool's parameter table"};
    Wrap(out, "@param " + n + " " + it->second, " * ");
  }
  if (std::string(doc.b).find("@return") == std::string::npos)
    Wrap(out,
         members[0]->kind == Row::kDirect
             ? "@return #pxlStsNoErr always; nothing is checked."
             : "@return #pxlStsNoErr, or the status of the first check that fails (pointers, "
               "then sizes, then steps, then parameters), with nothing written.",
         " * ");
  out << " */\n";
  for (const Row* m : members) Declare(out, m->a, m->b);
  out << "/** @} */\n";
}

// The text of every family's region.
std::map<std::string, std::string> Regions() {
  std::map<std::string, std::string> regions;
  std::ostringstream out;
  std::string family;
  const Row* doc = nullptr;
  std::vector<const Row*> members;
  const auto flushGroup = [&] {
    if (!doc && !members.empty())
      throw Failure{std::string(members[0]->a) + " has no PXL_DOC group above it"};
    if (doc) Group(out, *doc, members);
    doc = nullptr;
    members.clear();
  };
  const auto finish = [&] {
    flushGroup();
    if (!family.empty()) regions[family] = out.str();
    out.str("");
  };
  for (const Row& row : kRows) {
    switch (row.kind) {
      case Row::kFamily:
        finish();
        family = row.a;
        out << "/* Generated by pxl_gen_header from " << ShortPath(row.b)
            << "; edit the table, not these lines. */\n";
        break;
      case Row::kDoc:
        flushGroup();
        doc = &row;
        break;
      case Row::kMember:
      case Row::kDirect:
        members.push_back(&row);
        break;
    }
  }
  finish();
  return regions;
}

bool ReadFile(const std::string& path, std::string* text) {
  std::ifstream in(path, std::ios::binary);
  if (!in) return false;
  std::ostringstream s;
  s << in.rdbuf();
  *text = s.str();
  return true;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc < 3 || (std::strcmp(argv[1], "--write") != 0 && std::strcmp(argv[1], "--check") != 0)) {
    std::fprintf(stderr, "usage: %s --write|--check <header>...\n", argv[0]);
    return 2;
  }
  const bool write = std::strcmp(argv[1], "--write") == 0;
  std::map<std::string, std::string> regions;
  try {
    regions = Regions();
  } catch (const Failure& f) {
    std::fprintf(stderr, "pxl_gen_header: %s\n", f.message.c_str());
    return 2;
  }
  std::map<std::string, int> placed;
  int status = 0;

  for (int i = 2; i < argc; ++i) {
    const std::string path = argv[i];
    std::string text;
    if (!ReadFile(path, &text)) {
      std::fprintf(stderr, "%s: cannot read\n", path.c_str());
      return 2;
    }
    std::string result;
    size_t pos = 0;
    const std::string beginTag = "/* @generated-begin ", endTag = "/* @generated-end ";
    for (;;) {
      const size_t begin = text.find(beginTag, pos);
      if (begin == std::string::npos) break;
      const size_t nameEnd = text.find(" */\n", begin);
      const std::string family =
          text.substr(begin + beginTag.size(), nameEnd - begin - beginTag.size());
      const std::string endLine = endTag + family + " */\n";
      const size_t end = text.find(endLine, nameEnd);
      if (nameEnd == std::string::npos || end == std::string::npos) {
        std::fprintf(stderr, "%s: region %s has no end line\n", path.c_str(), family.c_str());
        return 2;
      }
      const auto it = regions.find(family);
      if (it == regions.end()) {
        std::fprintf(stderr, "%s: region %s names no family of the tables\n", path.c_str(),
                     family.c_str());
        return 2;
      }
      ++placed[family];
      const size_t bodyStart = nameEnd + 4;
      if (text.compare(bodyStart, end - bodyStart, it->second) != 0) {
        if (!write)
          std::fprintf(stderr, "%s: region %s is out of date\n", path.c_str(), family.c_str());
        status = 1;
      }
      result += text.substr(pos, bodyStart - pos) + it->second + endLine;
      pos = end + endLine.size();
    }
    result += text.substr(pos);
    if (write && result != text) {
      std::ofstream out(path, std::ios::binary | std::ios::trunc);
      out << result;
      std::printf("updated %s\n", path.c_str());
    }
  }
  for (const auto& [family, text] : regions) {
    if (placed[family] != 1) {
      std::fprintf(stderr, "family %s has %d regions among the headers; it needs one\n",
                   family.c_str(), placed[family]);
      return 2;
    }
  }
  if (!write && status)
    std::fprintf(stderr, "run: cmake --build <build> --target pxl_update_headers\n");
  return write ? 0 : status;
}
