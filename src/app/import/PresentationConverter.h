#pragma once

#include <chrono>
#include <functional>
#include <string>
#include <string_view>

#include "host/services.h"

namespace app {

/// How LibreOffice makes a .pptx of an old presentation, in a child process with a profile of its own.
struct PresentationConversion {
  std::string program = "soffice";
  std::chrono::milliseconds timeout{180000};
  /// Asked while it runs; true ends it. Empty where nobody can.
  std::function<bool()> isCancelled = {};
};

/// The bytes of the .pptx. The loop runs until they are there. Throws a basic::Error with the reason alone,
/// to follow the presentation's name, when LibreOffice is not installed, fails, takes too long or is
/// cancelled.
std::string convertPresentation(std::string_view bytes, host::Loop& loop,
                                const PresentationConversion& conversion);

}  // namespace app
