#include "pages/frmNotLinkable.h"

#include <utility>

#include "basic/Strings.h"
#include "model/modLinkEdits.h"
#include "model/modLinkable.h"
#include "model/modSlides.h"

namespace LF2000 {

namespace {

/// The name with the first number behind it that no shape of the slide has yet.
std::string FreeName(PowerPoint::Slide& slide, const std::string& name) {
  for (int number = 2;; ++number) {
    std::string candidate = name + " " + std::to_string(number);
    bool isTaken = false;
    modSlides::ForEachShape(slide, [&](const auto& shape) {
      isTaken = isTaken || basic::EqualsIgnoreCase(shape->Name(), candidate);
    });
    if (!isTaken) return candidate;
  }
}

}  // namespace

frmNotLinkable::frmNotLinkable(Forms::Placement where, std::shared_ptr<clsPresentation> presentation,
                               modSelected::Selected selected)
    : frmPage("frmNotLinkable", "Cannot be linked", where, std::move(presentation)),
      selected_(std::move(selected)),
      lblWhy_(Add<Forms::Label>("lblWhy")),
      txtName_(Add<Forms::TextBox>("txtName")),
      cmdRename_(Add<Forms::CommandButton>("cmdRename", "&Rename")) {
  Subject(modLinkEdits::NameOf(selected_.Shapes));
  cmdRename_.Click = [this] { Rename(); };
  AddRow("", {&lblWhy_});
  AddRow("&New name", {&txtName_, &cmdRename_});
  if (IsDocked()) return;
  auto& cmdClose = Add<Forms::CommandButton>("cmdClose", "Close");
  cmdClose.Click = [this] { Close(Forms::Result::OK); };
  AddButtons({&cmdClose});
  DefaultButton(cmdClose);
  CancelButton(cmdClose);
}

void frmNotLinkable::Reload() {
  const modLinkable::NameCounts names(*selected_.Slide);
  std::string reasons;
  for (const auto& shape : selected_.Shapes) {
    const std::string why = modSelected::WhyNot(names, *shape);
    const std::string kind = modLinkable::KindName(shape->Type());
    reasons += (reasons.empty() ? "'" : "\n'") + shape->Name() + "' (" + kind + ") " +
               (why.empty() ? "can be linked now" : why) + ".";
  }
  lblWhy_.Text(reasons, Forms::Severity::Warning);
  const PowerPoint::Shape& first = *selected_.Shapes.front();
  const bool isDouble = selected_.Shapes.size() == 1 && !names.WhyNotByName(first).empty();
  if (txtName_.Problem().empty()) {
    txtName_.Text(isDouble ? FreeName(*selected_.Slide, first.Name()) : std::string());
  }
  txtName_.Visible(isDouble);
  cmdRename_.Visible(isDouble);
}

void frmNotLinkable::Rename() {
  const std::string name(basic::Trim(txtName_.Text()));
  if (name.empty()) return Complain(txtName_, "Give the shape a name.");
  bool isTaken = false;
  modSlides::ForEachShape(*selected_.Slide, [&](const auto& shape) {
    isTaken = isTaken || basic::EqualsIgnoreCase(shape->Name(), name);
  });
  if (isTaken) return Complain(txtName_, "Another shape of the slide is called '" + name + "'.");
  PowerPoint::Shape& shape = *selected_.Shapes.front();
  modLinkEdits::Rename(shape, name);
  Subject(name);
  Reload();
}

}  // namespace LF2000
