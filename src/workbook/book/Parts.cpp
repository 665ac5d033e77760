#include "workbook/book/Parts.h"

#include "basic/Error.h"
#include "basic/Quotes.h"
#include "workbook/Failure.h"

namespace workbook {
namespace {

constexpr std::size_t MaximumPartSize = std::size_t{64} << 20U;

std::string placeOf(std::string_view path, std::string_view part) {
  return "workbook " + basic::InQuotes(path) + ", part " + basic::InQuotes(part);
}

opc::Archive archiveOf(std::string bytes, const std::string& path) try {
  return opc::Archive(std::move(bytes));
} catch (const basic::Error& error) {
  failOpening(path, "its ZIP archive is damaged or not complete (" + error.description + ")");
}

}  // namespace

std::size_t PartStream::read(char* to, std::size_t size) try {
  return stream_.read(to, size);
} catch (const basic::Error& error) {
  fail(where_ + " cannot be read: " + error.description);
}

Parts::Parts(std::string bytes, std::string path)
    : path_(std::move(path)), archive_(archiveOf(std::move(bytes), path_)) {}

PartStream Parts::open(const std::string& part) const {
  const auto entry = archive_.find(part);
  if (!entry) failIn(part, "is missing");
  try {
    return {archive_.open(*entry), placeOf(path_, part)};
  } catch (const basic::Error& error) {
    failIn(part, "cannot be read: " + error.description);
  }
}

std::string Parts::read(const std::string& part) const {
  PartStream stream = open(part);
  std::string content;
  for (std::size_t block = 64U << 10U;; block *= 2) {
    const std::size_t before = content.size();
    content.resize(before + block);
    const std::size_t got = stream.read(content.data() + before, block);
    content.resize(before + got);
    if (content.size() > MaximumPartSize) failIn(part, "has more than 64 MB, which no such part needs");
    if (got < block) return content;
  }
}

void Parts::failIn(std::string_view part, std::string_view reason) const {
  fail(placeOf(path_, part) + " " + std::string(reason));
}

}  // namespace workbook
