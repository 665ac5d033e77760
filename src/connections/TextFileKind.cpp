#include "connections/TextFileKind.h"

#include <algorithm>
#include <string>

#include "basic/Error.h"
#include "basic/Strings.h"

namespace LF2000 {
namespace {

using namespace std::string_view_literals;

struct Kind {
  std::string_view beginning;
  std::string_view name;
};

constexpr Kind Binary[] = {
    {"PK\x03\x04"sv, "a ZIP archive, as workbooks (.xlsx) are"},
    {"\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1"sv, "a document of an office program (.xls, .doc)"},
    {"SQLite format 3\0"sv, "an SQLite database"},
    {"\x89PNG\r\n"sv, "a picture (PNG)"},
    {"\xFF\xD8\xFF"sv, "a picture (JPEG)"},
    {"GIF8"sv, "a picture (GIF)"},
    {"II*\0"sv, "a picture (TIFF)"},
    {"MM\0*"sv, "a picture (TIFF)"},
    {"%PDF-"sv, "a PDF document"},
    {"\x1F\x8B\x08"sv, "a compressed file (gzip)"},
};

/// In capital letters.
constexpr Kind Markup[] = {
    {"<!DOCTYPE HTML"sv, "a web page (HTML)"},
    {"<HTML"sv, "a web page (HTML)"},
    {"<HEAD"sv, "a web page (HTML)"},
    {"<?XML"sv, "an XML file"},
};

[[noreturn]] void Refuse(const Kind& kind) {
  throw basic::Error(basic::AdapterError, basic::DefaultSource,
                     "It is no text with columns, but " + std::string(kind.name) + ".");
}

}  // namespace

void RequireText(std::string_view bytes) {
  for (const Kind& kind : Binary) {
    if (bytes.starts_with(kind.beginning)) Refuse(kind);
  }
  constexpr std::size_t LongestBeginning = 16;
  if (bytes.starts_with("\xEF\xBB\xBF"sv)) bytes.remove_prefix(3);
  bytes.remove_prefix(std::min(bytes.find_first_not_of(" \t\r\n"), bytes.size()));
  const std::string beginning = basic::UCase(bytes.substr(0, LongestBeginning));
  for (const Kind& kind : Markup) {
    if (beginning.starts_with(kind.beginning)) Refuse(kind);
  }
}

}  // namespace LF2000
