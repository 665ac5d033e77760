#include "connections/TextFileGlance.h"

#include <utility>

#include "connections/HeaderRow.h"
#include "connections/TextFileDialect.h"
#include "connections/TextFileEncoding.h"
#include "connections/TextFileKind.h"
#include "connections/TextFileScanner.h"

namespace LF2000 {

namespace {

std::string NameOfDelimiter(char delimiter) {
  switch (delimiter) {
    case NoDelimiter:
      return {};
    case '\t':
      return "tab";
    case ';':
      return "semicolon";
    case ',':
      return "comma";
    case '|':
      return "bar";
    default:
      return std::string("'") + delimiter + "'";
  }
}

}  // namespace

TextFileGlance GlanceAt(host::Bytes bytes) {
  RequireText({bytes.data.get(), bytes.size});
  const TextFileContent content = DecodeTextFile(std::move(bytes));
  const std::string_view text(content.Bytes.data.get() + content.Begin, content.Bytes.size - content.Begin);
  const TextFileDialect dialect = FindDialect(text, true);
  return {std::string(content.Encoding), NameOfDelimiter(dialect.Delimiter),
          dialect.HasTitles || LooksLikeHeader(FirstRecords(text, dialect))};
}

}  // namespace LF2000
