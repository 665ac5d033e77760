#pragma once

#include <string>

namespace app {

/// A sentence for who runs a show, where the environment names a language that is not known; otherwise empty.
std::string unknownLanguage();

}  // namespace app
