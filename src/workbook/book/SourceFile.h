#pragma once

#include <cstdint>
#include <string>

#include "host/bytes.h"
#include "host/services.h"

namespace workbook {

/// What tells whether a file is still the one that was read.
struct FileStamp {
  std::uint64_t inode = 0;
  std::uint64_t size = 0;
  std::int64_t seconds = 0;
  std::int64_t nanoseconds = 0;

  friend bool operator==(const FileStamp&, const FileStamp&) = default;
};

struct SourceFile {
  host::Bytes bytes;
  FileStamp stamp;
};

/// Reads a file at once, whether or not another program has it open. While it
/// looks as if it were just being written (it is empty, its ZIP archive has no
/// end, it changed during the read), it is read again for some 300 ms, in which
/// the loop runs; after that it is taken as it is. The loop also runs while a file
/// on another machine is read (host/drives.h). Throws basic::Error, also for
/// a file of more than 256 MiB.
SourceFile readSourceFile(const std::string& path, host::Loop& loop);

}  // namespace workbook
