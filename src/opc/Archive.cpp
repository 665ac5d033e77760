// Reading and changing ZIP archives in memory by libzip.

#include "opc/Archive.h"

#include <zip.h>

#include <cstdlib>
#include <cstring>
#include <memory>
#include <new>

#include "basic/Quotes.h"
#include "opc/Failure.h"

namespace opc {
namespace {

class ZipError {
 public:
  ZipError() { zip_error_init(&error_); }
  ~ZipError() { zip_error_fini(&error_); }
  ZipError(const ZipError&) = delete;
  ZipError& operator=(const ZipError&) = delete;
  zip_error_t* get() { return &error_; }
  std::string text() { return zip_error_strerror(&error_); }

 private:
  zip_error_t error_{};
};

struct FreeSource {
  void operator()(zip_source_t* source) const { zip_source_free(source); }
};
using Source = std::unique_ptr<zip_source_t, FreeSource>;

zip_source_t* check(zip_source_t* source, ZipError& error) {
  if (source == nullptr) fail(error.text());
  return source;
}

/// Looks at the bytes where they are.
zip_source_t* sourceOver(std::string_view bytes) {
  ZipError error;
  return check(zip_source_buffer_create(bytes.data(), bytes.size(), 0, error.get()), error);
}

/// Owns a copy: a source that is written to must, for the library's in-memory
/// writer frees what it began with.
zip_source_t* sourceWith(std::string_view bytes) {
  void* copy = std::malloc(bytes.size());
  if (copy == nullptr) throw std::bad_alloc();
  std::memcpy(copy, bytes.data(), bytes.size());
  ZipError error;
  zip_source_t* source = zip_source_buffer_create(copy, bytes.size(), 1, error.get());
  if (source == nullptr) std::free(copy);
  return check(source, error);
}

/// Takes the source over, also when it fails.
zip_t* openZip(zip_source_t* source, int flags) {
  ZipError error;
  zip_t* zip = zip_open_from_source(source, flags, error.get());
  if (zip == nullptr) {
    zip_source_free(source);
    fail(error.text());
  }
  return zip;
}

// The level that PowerPoint's own files show: most of the gain, little of the time.
constexpr zip_uint32_t CompressionLevel = 3;
constexpr zip_uint16_t EarliestDosDate = (1U << 5U) | 1U;  // 1 January 1980

void check(zip_t* zip, bool succeeded, std::string_view entry) {
  if (!succeeded) fail("entry " + basic::InQuotes(entry) + ": " + zip_error_strerror(zip_get_error(zip)));
}

std::string readSource(zip_source_t* source) {
  if (zip_source_open(source) < 0) fail(zip_error_strerror(zip_source_error(source)));
  zip_source_seek(source, 0, SEEK_END);
  const zip_int64_t size = zip_source_tell(source);
  zip_source_seek(source, 0, SEEK_SET);
  std::string bytes(static_cast<std::size_t>(size), '\0');
  const zip_int64_t got = zip_source_read(source, bytes.data(), bytes.size());
  zip_source_close(source);
  if (got != size) fail("the new archive could not be read back");
  return bytes;
}

}  // namespace

bool Archive::hasEnd(std::string_view last) { return last.rfind("PK\x05\x06") != std::string_view::npos; }

void EntryStream::Close::operator()(zip_file* file) const { zip_fclose(file); }
void Archive::Discard::operator()(::zip* zip) const { zip_discard(zip); }

std::size_t EntryStream::read(char* to, std::size_t size) {
  std::size_t got = 0;
  while (got < size) {
    const zip_int64_t count = zip_fread(file_.get(), to + got, size - got);
    if (count < 0) fail(zip_file_strerror(file_.get()));
    if (count == 0) break;
    got += static_cast<std::size_t>(count);
  }
  return got;
}

Archive::Archive(std::string bytes)
    : bytes_(std::move(bytes)), zip_(openZip(sourceOver(bytes_), ZIP_RDONLY)) {
  const zip_int64_t count = zip_get_num_entries(zip_.get(), 0);
  entries_.reserve(static_cast<std::size_t>(count));
  for (zip_int64_t i = 0; i < count; ++i) {
    zip_stat_t stat;
    zip_stat_init(&stat);
    zip_stat_index(zip_.get(), static_cast<zip_uint64_t>(i), 0, &stat);
    entries_.push_back({(stat.valid & ZIP_STAT_NAME) != 0 ? stat.name : "", stat.size, stat.comp_size});
  }
}

std::optional<std::int64_t> Archive::find(const std::string& name) const {
  zip_int64_t index = zip_name_locate(zip_.get(), name.c_str(), 0);
  if (index < 0) index = zip_name_locate(zip_.get(), name.c_str(), ZIP_FL_NOCASE);
  return index < 0 ? std::nullopt : std::optional<std::int64_t>(index);
}

EntryStream Archive::open(std::int64_t index) const {
  zip_file_t* file = zip_fopen_index(zip_.get(), static_cast<zip_uint64_t>(index), 0);
  if (file == nullptr) fail(zip_error_strerror(zip_get_error(zip_.get())));
  return EntryStream(file);
}

std::string Archive::read(std::int64_t index) const {
  const Entry& entry = entries_.at(static_cast<std::size_t>(index));
  const std::string where = "entry " + basic::InQuotes(entry.name);
  std::string content(entry.size, '\0');
  std::size_t got = 0;
  try {
    EntryStream stream = open(index);
    got = stream.read(content.data(), content.size());
    char beyond = 0;
    got += stream.read(&beyond, 1);
  } catch (const basic::Error& error) {
    fail(where + ": " + error.description);
  }
  if (got != entry.size) fail(where + " has not the size that the archive's directory says");
  return content;
}

std::string Archive::with(const std::vector<Change>& changes) const {
  if (changes.empty()) return bytes_;
  zip_source_t* source = sourceWith(bytes_);
  zip_source_keep(source);
  const Source result(source);
  std::unique_ptr<::zip, Discard> zip(openZip(source, 0));
  for (const Change& change : changes) {
    if (change.remove) {
      check(zip.get(), zip_delete(zip.get(), static_cast<zip_uint64_t>(change.index)) == 0, change.name);
      continue;
    }
    zip_source_t* content = zip_source_buffer(zip.get(), change.content.data(), change.content.size(), 0);
    check(zip.get(), content != nullptr, change.name);
    auto index = static_cast<zip_uint64_t>(change.index);
    bool taken = false;
    if (change.index >= 0) {
      zip_stat_t stat;
      zip_stat_init(&stat);
      zip_stat_index(zip.get(), index, ZIP_FL_UNCHANGED, &stat);
      taken = zip_file_replace(zip.get(), index, content, 0) == 0;
      if (taken) zip_file_set_mtime(zip.get(), index, stat.mtime, 0);
    } else {
      const std::string name(change.name);
      const zip_int64_t added = zip_file_add(zip.get(), name.c_str(), content, ZIP_FL_ENC_UTF_8);
      taken = added >= 0;
      index = static_cast<zip_uint64_t>(added);
      if (taken) zip_file_set_dostime(zip.get(), index, 0, EarliestDosDate, 0);
    }
    if (!taken) zip_source_free(content);
    check(zip.get(), taken, change.name);
    zip_set_file_compression(zip.get(), index, ZIP_CM_DEFLATE, CompressionLevel);
  }
  if (zip_close(zip.get()) != 0) fail(zip_error_strerror(zip_get_error(zip.get())));
  static_cast<void>(zip.release());
  return readSource(result.get());
}

}  // namespace opc
