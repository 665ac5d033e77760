#pragma once

#include <memory>
#include <vector>

#include "host/forms.h"
#include "windows/com/WindowsApi.h"
#include "windows/platform/MessageLoop.h"

namespace windows::forms {

class Dialog;

/// Shows forms as dialogs of the system, owned by the window in which the user works. There is no panel. What
/// is shown when it goes is closed with Cancel.
class FormView final : public Forms::View {
 public:
  /// The loop outlives it.
  explicit FormView(platform::MessageLoop& loop) : loop_(loop) {}
  ~FormView() override;
  FormView(const FormView&) = delete;
  FormView& operator=(const FormView&) = delete;

  [[nodiscard]] bool Docks() const override { return false; }
  void Show(const std::shared_ptr<Forms::Form>& form, Forms::Placement placement,
            std::function<void(Forms::Result)> closed) override;
  void Changed(Forms::Form& form, const Forms::Changes& changes) override;
  void Complain(Forms::Form& form, const Forms::Control& control) override;
  void Focus(Forms::Form& form, const Forms::Control& control) override;
  void Close(Forms::Form& form, Forms::Result result) override;
  void ChooseFile(Forms::Form& form, std::string_view title, const std::vector<Forms::FileKind>& kinds,
                  std::function<void(std::optional<std::string>)> chosen) override;
  void ChooseFolder(Forms::Form& form, std::string_view title,
                    std::function<void(std::optional<std::string>)> chosen) override;

  /// Of the form, as long as it is shown; else null.
  [[nodiscard]] HWND windowOf(const Forms::Form& form) const;

 private:
  [[nodiscard]] std::shared_ptr<Dialog> dialogOf(const Forms::Form& form) const;

  platform::MessageLoop& loop_;
  std::vector<std::shared_ptr<Dialog>> dialogs_;
};

}  // namespace windows::forms
