#pragma once

#include <string>

#include "fakes/FormUser.h"
#include "windows/strict/Object.h"

namespace loaded {

/// The services in force in this program as the automation object that the door of the module takes. Calls of
/// it do not count as calls of the host, and are not made to fail.
[[nodiscard]] windows::com::Ptr<IDispatch> machineObject();

/// The forms that the module shows, where the machine has a view of forms.
class ModuleForms final : public fakes::FormUser {
 public:
  [[nodiscard]] std::string TopName() const override;
  std::string Raise(const Forms::Event& event) const override;
  /// Before the module may go.
  static void giveBack();
};

}  // namespace loaded
