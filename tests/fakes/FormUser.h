#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <utility>

#include "host/forms.h"

namespace fakes {

/// Does what a user would with the form that was shown last, by the names of its controls. Each act answers
/// the form's refusal, the empty text for none.
class FormUser {
 public:
  virtual ~FormUser() = default;
  /// The form's name, "(none)" without one.
  [[nodiscard]] virtual std::string TopName() const = 0;
  virtual std::string Raise(const Forms::Event& event) const = 0;

  std::string Set(std::string name, std::string text) const {
    return Raise({std::move(name), Forms::EventKind::Change, std::move(text)});
  }
  /// As a list offers it.
  std::string Choose(std::string name, std::string text) const {
    return Set(std::move(name), std::move(text));
  }
  std::string Check(std::string name, bool value) const {
    return Raise({std::move(name), Forms::EventKind::Change, value});
  }
  std::string Select(std::string name, Forms::Places places) const {
    return Raise({std::move(name), Forms::EventKind::Change, std::move(places)});
  }
  std::string Click(std::string name) const {
    return Raise({std::move(name), Forms::EventKind::Click, std::nullopt});
  }
  std::string Leave(std::string name) const {
    return Raise({std::move(name), Forms::EventKind::LostFocus, std::nullopt});
  }
  std::string DropDown(std::string name) const {
    return Raise({std::move(name), Forms::EventKind::DropDown, std::nullopt});
  }
  std::string Step(std::string name, std::int64_t steps) const {
    return Raise({std::move(name), Forms::EventKind::Step, steps});
  }
};

}  // namespace fakes
