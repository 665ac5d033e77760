#pragma once

#include "host/forms.h"

namespace app {

/// The end of the errors log, for authors whose browser is on another machine than the log. What could hold a
/// password is left out.
class LogForm final : public Forms::Form {
 public:
  LogForm();

 private:
  void CatchError() override;
};

}  // namespace app
