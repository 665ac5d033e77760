#include "opc/PackageFile.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <algorithm>

#include "basic/CompoundFile.h"
#include "opc/Archive.h"
#include "opc/Failure.h"
#include "opc/OldFormats.h"
#include "process/Descriptor.h"

namespace opc {
namespace {

/// So many bytes from there; fewer when there are not so many, or they cannot be read.
std::string piece(int file, off_t from, std::size_t size) {
  std::string bytes(size, '\0');
  const ssize_t got = ::pread(file, bytes.data(), size, from);
  bytes.resize(static_cast<std::size_t>(std::max<ssize_t>(got, 0)));
  return bytes;
}

/// What cannot be looked at is left to who reads it, and says why.
void requireEnd(const std::string& path) {
  const process::Descriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
  struct stat status {};
  if (!file.isOpen() || ::fstat(file.get(), &status) != 0 || !S_ISREG(status.st_mode)) return;
  constexpr auto End = static_cast<off_t>(Archive::LongestEnd);
  if (status.st_size <= End) return;
  const std::string beginning = piece(file.get(), 0, 8);
  const std::string end = piece(file.get(), status.st_size - End, Archive::LongestEnd);
  if (end.size() < Archive::LongestEnd || Archive::hasEnd(end) || basic::IsCompoundFile(beginning)) return;
  fail(basic::InQuotes(path) + " cannot be read: " + describeNoPackage(beginning, "its end is missing"));
}

}  // namespace

FileContent readPackageFile(const std::string& path, const std::function<void()>& gettingOn) {
  requireEnd(path);
  return readFile(path, MaximumPackageBytes, gettingOn);
}

}  // namespace opc
