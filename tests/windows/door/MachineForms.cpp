#include "windows/door/MachineForms.h"

#include <cstdint>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "windows/door/Callee.h"

namespace door {
namespace {

namespace com = windows::com;

com::Class usedClass{"Forms"};

/// Lives no longer than the view: the machine gives it back before it lets the module go.
class Used final : public Callee {
 public:
  explicit Used(const fakes::FormView& view) : view_(view) {}

 private:
  com::Variant called(const std::vector<com::Variant>& arguments) override {
    if (arguments.empty()) return view_.TopName();
    return view_.Raise({arguments[0].text(), static_cast<::Forms::EventKind>(arguments[1].number()),
                        valueOf(arguments[2].value())});
  }
  static std::optional<::Forms::Value> valueOf(const basic::Variant& value) {
    if (const auto* text = std::get_if<std::string>(&value)) return *text;
    if (const auto* flag = std::get_if<bool>(&value)) return *flag;
    return {};
  }

  const fakes::FormView& view_;
};

}  // namespace

Forms::Forms(const windows::com::Object& machine) {
  view_.docks = false;
  machine.call(L"UseForms", com::Object(com::Ptr<IDispatch>::taking(new Used(view_)), usedClass));
}

}  // namespace door
