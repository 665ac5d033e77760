// Pages depend a little on the fonts of the machine; in tests there are none, so
// that they are the same everywhere.

#include <cstdlib>

namespace {

const int hidden = setenv("FONTCONFIG_FILE", RENDER_TESTS "/no-fonts.conf", 1);

}  // namespace
