#include "process/TemporaryFolder.h"

#include <stdlib.h>

#include <cerrno>
#include <string>

namespace process {

namespace fs = std::filesystem;

TemporaryFolder::TemporaryFolder() {
  std::string name = (fs::temp_directory_path() / "lumenfold.XXXXXX").string();
  if (::mkdtemp(name.data()) == nullptr) {
    throw fs::filesystem_error("no temporary folder can be made", name,
                               std::error_code(errno, std::generic_category()));
  }
  path_ = name;
}

TemporaryFolder::~TemporaryFolder() {
  std::error_code ignored;
  fs::remove_all(path_, ignored);
}

}  // namespace process
