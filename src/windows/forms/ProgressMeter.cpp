#include "windows/forms/ProgressMeter.h"

#include <algorithm>
#include <string>
#include <utility>

#include "windows/forms/Dialog.h"

namespace windows::forms {

/// One bar, and below it what is being done.
class ProgressForm final : public Forms::Form {
 public:
  explicit ProgressForm(std::string_view caption)
      : Form("frmProgress", std::string(caption)), bar(Add<Forms::ProgressBar>("prgSteps")) {
    bar.Text(" ");  // a line for what comes
    AddRow("", {&bar});
  }
  Forms::ProgressBar& bar;

 protected:
  void CatchError() override {}
};

ProgressMeter::ProgressMeter() = default;
ProgressMeter::~ProgressMeter() { Close(); }

void ProgressMeter::Show(std::string_view caption, std::int32_t maximum) {
  Close();
  step_ = 0;
  maximum_ = std::max(maximum, 0);
  form_ = std::make_shared<ProgressForm>(caption);
  form_->bar.Step(step_, maximum_);
  dialog_ = std::make_shared<Dialog>(form_, nullptr);
  dialog_->open(Dialog::Input::Shared);
  draw();
}

void ProgressMeter::Text(std::string_view text) {
  if (!dialog_) return;
  form_->bar.Text(text.empty() ? " " : text);
  draw();
}

void ProgressMeter::Step() {
  if (!dialog_) return;
  step_ = std::min(step_ + 1, maximum_);
  form_->bar.Step(step_, maximum_);
  draw();
}

void ProgressMeter::Close() {
  if (const auto dialog = std::exchange(dialog_, nullptr)) dialog->close(Forms::Result::OK);
  form_.reset();
}

void ProgressMeter::draw() {
  dialog_->changed({{form_->bar.Name(), {}}});
  ::RedrawWindow(dialog_->window(), nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW | RDW_ALLCHILDREN);
}

}  // namespace windows::forms
