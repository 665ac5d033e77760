#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "host/forms.h"
#include "model/clsPresentation.h"

namespace LF2000 {

/// What all pages have in common. Docked beside the document a page writes each change at once; by itself, as
/// a dialog, it writes on OK. Errors of its handlers are reported by the system's rule.
class frmPage : public Forms::Form {
 public:
  /// Shows it in the active window, filled in.
  void Open();

  /// The presentation, or its data, have changed behind the page: it shows what there is now. A control whose
  /// content is complained about keeps it.
  virtual void Reload() {}

  [[nodiscard]] const std::shared_ptr<clsPresentation>& Presentation() const { return presentation_; }

 protected:
  frmPage(std::string name, std::string caption, Forms::Placement placement,
          std::shared_ptr<clsPresentation> presentation, Forms::Width width = Forms::Width::Narrow);

  [[nodiscard]] bool IsDocked() const { return where_ == Forms::Placement::Docked; }

  /// Called last by the constructor of a page: OK and Cancel at its end, where it is a dialog.
  void AddOKCancel();
  /// OK was clicked: writes what stands in the controls and answers true, or complains and answers false.
  virtual bool Apply() { return true; }

  /// A whole number and nothing else but blanks around it.
  [[nodiscard]] static std::optional<std::int64_t> WholeNumber(std::string_view text);

  /// The page has been closed, however.
  virtual void Closed() {}

  void CatchError() override;

 private:
  Forms::Placement where_;
  std::shared_ptr<clsPresentation> presentation_;
};

}  // namespace LF2000
