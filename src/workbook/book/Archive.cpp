#include "workbook/book/Archive.h"

#include <zip.h>

#include <utility>

#include "workbook/Failure.h"

namespace workbook {
namespace {

constexpr std::size_t MaximumPartSize = std::size_t{64} << 20U;

std::string placeOf(std::string_view path, std::string_view part) {
  return "workbook " + inQuotes(path) + ", part " + inQuotes(part);
}

zip_t* openZip(const host::Bytes& bytes, const std::string& path) {
  zip_error_t error;
  zip_error_init(&error);
  zip_source_t* source = zip_source_buffer_create(bytes.data.get(), bytes.size, 0, &error);
  zip_t* zip = source == nullptr ? nullptr : zip_open_from_source(source, ZIP_RDONLY, &error);
  const std::string reason = zip == nullptr ? zip_error_strerror(&error) : "";
  zip_error_fini(&error);
  if (zip == nullptr) {
    zip_source_free(source);
    failOpening(path, "its ZIP archive is damaged or not complete (" + reason + ")");
  }
  return zip;
}

}  // namespace

void PartStream::Close::operator()(zip_file* file) const { zip_fclose(file); }

std::size_t PartStream::read(char* to, std::size_t size) {
  std::size_t got = 0;
  while (got < size) {
    const zip_int64_t count = zip_fread(file_.get(), to + got, size - got);
    if (count < 0) fail(where_ + " cannot be read: " + zip_file_strerror(file_.get()));
    if (count == 0) break;
    got += static_cast<std::size_t>(count);
  }
  return got;
}

Archive::Archive(host::Bytes bytes, std::string path)
    : bytes_(std::move(bytes)), path_(std::move(path)), zip_(openZip(bytes_, path_)) {}

Archive::~Archive() { zip_discard(zip_); }

std::int64_t Archive::find(const std::string& part) const {
  const zip_int64_t exact = zip_name_locate(zip_, part.c_str(), 0);
  return exact >= 0 ? exact : zip_name_locate(zip_, part.c_str(), ZIP_FL_NOCASE);
}

bool Archive::has(const std::string& part) const { return find(part) >= 0; }

PartStream Archive::open(const std::string& part) const {
  const std::int64_t index = find(part);
  if (index < 0) failIn(part, "is missing");
  zip_file_t* file = zip_fopen_index(zip_, static_cast<zip_uint64_t>(index), 0);
  if (file == nullptr) failIn(part, std::string("cannot be read: ") + zip_strerror(zip_));
  return {file, placeOf(path_, part)};
}

std::string Archive::read(const std::string& part) const {
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

void Archive::failIn(std::string_view part, std::string_view reason) const {
  fail(placeOf(path_, part) + " " + std::string(reason));
}

}  // namespace workbook
