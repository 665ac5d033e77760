// A library that leaves a note when it is loaded: as a driver, or as an extension.

#include <cstdlib>

namespace {

[[maybe_unused]] const int noted = ::setenv("LUMENFOLD_TRAP_SPRUNG", "1", 1);

}  // namespace

extern "C" __attribute__((visibility("default"))) int sqlite3_extension_init(void*, char**, const void*) {
  return 0;
}
