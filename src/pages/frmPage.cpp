#include "pages/frmPage.h"

#include <charconv>
#include <utility>

#include "addin/support/modErrors.h"
#include "basic/Strings.h"

namespace LF2000 {

frmPage::frmPage(std::string name, std::string caption, Forms::Placement placement,
                 std::shared_ptr<clsPresentation> presentation, Forms::Width width)
    : Form(std::move(name), std::move(caption), width),
      where_(placement),
      presentation_(std::move(presentation)) {}

void frmPage::Open() {
  Reload();
  Show(where_, [this](Forms::Result) { Closed(); });
}

void frmPage::AddOKCancel() {
  if (IsDocked()) return;
  auto& cmdOK = Add<Forms::CommandButton>("cmdOK", "OK");
  auto& cmdCancel = Add<Forms::CommandButton>("cmdCancel", "Cancel");
  cmdOK.Click = [this] {
    if (Apply()) Close(Forms::Result::OK);
  };
  cmdCancel.Click = [this] { Close(Forms::Result::Cancel); };
  AddButtons({&cmdOK, &cmdCancel});
  DefaultButton(cmdOK);
  CancelButton(cmdCancel);
}

std::optional<std::int64_t> frmPage::WholeNumber(std::string_view text) {
  text = basic::Trim(text);
  std::int64_t number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (error != std::errc{} || end != text.data() + text.size()) return {};
  return number;
}

void frmPage::CatchError() { modErrors::CatchError(); }

}  // namespace LF2000
