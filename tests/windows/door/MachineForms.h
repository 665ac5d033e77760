#pragma once

#include "fakes/FakeFormView.h"
#include "windows/com/Object.h"

namespace door {

/// The forms that the module shows, which a test uses by way of its machine (`fakes::FormUser`). Called with
/// nothing, what the machine is given answers the name of the form that was shown last; called with a
/// control, a kind of event and a value or nothing, what the form answers.
class Forms {
 public:
  explicit Forms(const windows::com::Object& machine);
  [[nodiscard]] ::Forms::View& view() { return view_; }

 private:
  fakes::FormView view_;
};

}  // namespace door
