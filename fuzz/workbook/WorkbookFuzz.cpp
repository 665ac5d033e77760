// Opens any bytes as a workbook, or a small workbook of which one part holds any
// bytes. What can be read is UTF-8, every cell of the range comes once, and a row
// alone shows what it shows among others.

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <vector>

#include "basic/Error.h"
#include "basic/Strings.h"
#include "support/BookBuilder.h"
#include "workbook/sheet/SheetRange.h"

namespace {

using Texts = std::vector<std::string>;

constexpr std::uint32_t Rows = 20;
constexpr std::uint32_t Columns = 6;

class NoLoop final : public host::Loop {
 public:
  std::unique_ptr<host::Timer> CreateTimer(std::function<void()>) override { return nullptr; }
  void DoEvents() override {}
};

// The first byte of the input chooses one of them, or none: then the rest is the
// whole file.
constexpr std::array<const char*, 5> Parts{"xl/worksheets/sheet1.xml", "xl/sharedStrings.xml",
                                           "xl/styles.xml", "xl/workbook.xml", "xl/_rels/workbook.xml.rels"};

std::string bookWith(char which, const std::string& rest) {
  const auto part = static_cast<std::size_t>(which - '0');
  if (part >= Parts.size()) return rest;
  support::BookBuilder book;
  book.rows =
      R"(<row r="1"><c r="A1" t="s"><v>0</v></c><c s="1"><v>2.5</v></c></row><row r="5"><c t="b"><v>1</v></c></row>)";
  book.strings = "<si><t>text</t></si>";
  book.styles = R"(<xf numFmtId="0"/><xf numFmtId="4"/>)";
  book.parts = {{.name = Parts[part], .content = rest, .deflated = false}};
  return book.bytes();
}

Texts read(const std::shared_ptr<workbook::Book>& book, std::size_t sheet, const basic::Area& area) {
  NoLoop loop;
  Texts texts;
  workbook::SheetRange(book, {sheet, area}, loop).ForEach([&](const Excel::Cell& cell) {
    texts.push_back(cell.Text());
    static_cast<void>(cell.Value());
    if (!basic::IsValidUtf8(texts.back())) std::abort();
    return true;
  });
  if (texts.size() != std::size_t{area.lastRow - area.firstRow + 1} * Columns) std::abort();
  return texts;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  const std::string bytes =
      bookWith(static_cast<char>(data[0]), std::string(reinterpret_cast<const char*>(data) + 1, size - 1));
  try {
    const auto book = std::make_shared<workbook::Book>(bytes, "fuzzed");
    const std::size_t sheet = book->find("Sheet1");
    for (const workbook::DefinedName& name : book->names()) {
      try {
        static_cast<void>(book->resolve(sheet, name.name));
      } catch (const basic::Error&) {
      }
    }
    const Texts all = read(book, sheet, {1, Rows, 1, Columns});
    for (std::uint32_t row = 1; row <= Rows; row += 4) {
      const Texts alone = read(book, sheet, {row, row, 1, Columns});
      if (!std::equal(alone.begin(), alone.end(), all.begin() + (row - 1) * Columns)) std::abort();
    }
  } catch (const basic::Error&) {
  }
  return 0;
}
