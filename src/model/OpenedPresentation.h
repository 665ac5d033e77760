#pragma once

#include <memory>
#include <string>

#include "addin/support/modGlobalFunctions.h"
#include "basic/Error.h"
#include "host/powerpoint.h"

namespace LF2000 {

/// A presentation that nobody sees, open for the time that this object lives. What was not saved is gone
/// with it.
class OpenedPresentation {
 public:
  /// Raises basic::Error without a host, and for a file that the host cannot open.
  explicit OpenedPresentation(const std::string& file) {
    const auto& application = modGlobalFunctions::HostApplication;
    if (!application) {
      throw basic::Error(basic::AdapterError, basic::DefaultSource, "No host is there to open a copy.");
    }
    presentation_ = application->Presentations()->Open(file);
  }
  ~OpenedPresentation() {
    modGlobalFunctions::IgnoreErrors([this] { presentation_->Close(); });
  }
  OpenedPresentation(const OpenedPresentation&) = delete;
  OpenedPresentation& operator=(const OpenedPresentation&) = delete;
  [[nodiscard]] const std::shared_ptr<PowerPoint::Presentation>& Presentation() const {
    return presentation_;
  }

 private:
  std::shared_ptr<PowerPoint::Presentation> presentation_;
};

}  // namespace LF2000
