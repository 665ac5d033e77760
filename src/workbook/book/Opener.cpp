#include "workbook/book/Opener.h"

#include <utility>

#include "workbook/Failure.h"
#include "workbook/book/FileKind.h"
#include "workbook/book/SourceFile.h"

namespace workbook {

std::shared_ptr<Book> Opener::open(const std::string& path) {
  opc::FileContent source = readSourceFile(path, loop_);
  const Reader reader = readerOf(path);
  const std::string reason = reasonAgainst(source.bytes, reader);
  if (!reason.empty()) failOpening(path, reason);
  if (reader == Reader::LibreOffice) source.bytes = converter_.convert(path, source);
  return std::make_shared<Book>(std::move(source.bytes), path);
}

}  // namespace workbook
