// How the commands stand on the host's bars, follow the selection and are clicked.

#include "addin/CommandBars.h"

#include <utility>

#include "addin/support/modDebug.h"
#include "addin/support/modErrors.h"
#include "addin/support/modGlobalFunctions.h"
#include "model/modCommandState.h"

namespace LF2000 {

using modGlobalFunctions::IgnoreErrors;

namespace {

constexpr std::string_view MenuCaption = "&Lumenfold";
constexpr std::string_view BarName = "Lumenfold";

void LogClick(const std::string& line) {
  modDebug::WriteDebugLog(modDebug::DebugKind::Event, "Application", line);
}

std::shared_ptr<Office::CommandBar> OwnBar(Office::CommandBars& bars) {
  std::shared_ptr<Office::CommandBar> bar;
  // One may have been left by a session that was broken off.
  IgnoreErrors([&] { bar = bars.Item(BarName); });
  return bar ? bar : bars.Add(BarName, Office::BarPosition::Top);
}

void Enable(Office::CommandBarControl& control, const std::string& whyNot) {
  control.Enabled(whyNot.empty());
  control.TooltipText(whyNot);
}

}  // namespace

CommandBars::~CommandBars() {
  IgnoreErrors([this] { Unsubscribe(); });
}

void CommandBars::Build(Office::CommandBars& bars) {
  const auto menu = bars.Item("Menu Bar")->Controls()->AddPopup();
  controls_.push_back(menu);
  menu->Caption(MenuCaption);
  Add(*menu->Controls(), OnMenu);
  bar_ = OwnBar(bars);
  Add(*bar_->Controls(), OnBar);
  bar_->Visible(true);
  // Versions of a host differ in their context menus; what stands there stands in the menu as well.
  IgnoreErrors([&] { Add(*bars.Item("Shapes")->Controls(), OnShapes, /*beginsGroup=*/true); });
  IgnoreErrors([&] { Add(*bars.Item("Slides")->Controls(), OnSlides, /*beginsGroup=*/true); });
}

void CommandBars::Add(Office::CommandBarControls& controls, std::uint32_t place, bool beginsGroup) {
  bool isFirst = true;
  bool hasDisplayTypes = false;
  for (const Command& command : AllCommands()) {
    if (command.DisplayType != 0 && !std::exchange(hasDisplayTypes, true)) {
      if (place == OnMenu) AddDisplayTypes(controls);
      if (place == OnBar) AddDisplayTypeList(controls);
    }
    if ((command.Places & place) == 0) continue;
    const auto button = controls.AddButton();
    controls_.push_back(button);
    buttons_.push_back({&command, button});
    button->Tag(command.Tag);
    button->Caption(command.Caption);
    button->ShortcutText(command.Keys);
    button->BeginGroup(isFirst ? beginsGroup : (command.Places & NewGroup) != 0);
    button->OnClick([this, &command] { Click(command); });
    isFirst = false;
  }
}

void CommandBars::AddDisplayTypes(Office::CommandBarControls& controls) {
  const auto popup = controls.AddPopup();
  controls_.push_back(popup);
  popup->Caption("Displa&y type");
  popup->BeginGroup(true);
  Add(*popup->Controls(), OnDisplayMenu);
}

void CommandBars::AddDisplayTypeList(Office::CommandBarControls& controls) {
  displayTypes_ = controls.AddComboBox();
  controls_.push_back(displayTypes_);
  displayTypes_->Tag(DisplayTypeList);
  displayTypes_->Caption("Displa&y type");
  displayTypes_->BeginGroup(true);
  for (const std::string_view label : modCommandState::DisplayTypeLabels) displayTypes_->AddItem(label);
  displayTypes_->OnChange([this] { DisplayTypeList_Change(); });
}

void CommandBars::Unsubscribe() {
  for (const Button& button : buttons_) button.Control->OnClick({});
  if (displayTypes_) displayTypes_->OnChange({});
}

void CommandBars::Delete() {
  IgnoreErrors([this] { Unsubscribe(); });
  for (const auto& control : controls_) {
    IgnoreErrors([&] { control->Delete(); });
  }
  IgnoreErrors([this] {
    if (bar_) bar_->Delete();
  });
  controls_.clear();
  buttons_.clear();
  displayTypes_.reset();
  bar_.reset();
}

void CommandBars::Update() {
  if (buttons_.empty()) return;
  const CommandSelection selection = look_();
  for (const Command& command : AllCommands()) {
    const std::string whyNot = command.WhyNot(selection);  // once, wherever it stands
    for (const Button& button : buttons_) {
      if (button.Command == &command) Enable(*button.Control, whyNot);
    }
  }
  if (displayTypes_) Enable(*displayTypes_, WhyNoDisplayType(selection));
}

void CommandBars::DisplayType(std::int32_t code) {
  using Office::ButtonState;
  for (const Button& button : buttons_) {
    if (button.Command->DisplayType == 0) continue;
    button.Control->State(button.Command->DisplayType == code ? ButtonState::Down : ButtonState::Up);
  }
  const bool isListed = displayTypes_ && code >= 0 && code <= displayTypes_->ListCount();
  if (displayTypes_) displayTypes_->ListIndex(isListed ? code : 0);
}

void CommandBars::Click(const Command& command) try {
  LogClick(std::string(command.Tag) + "_Click" + (command.Detail ? ":" + command.Detail() : ""));
  const CommandSelection selection = look_();
  // The selection may have changed since it was drawn.
  if (const std::string whyNot = command.WhyNot(selection); whyNot.empty()) {
    command.Run(selection);
  } else {
    host::Current().messageBox->MsgBox(whyNot, host::vbOKOnly + host::vbInformation, ProductTitle);
  }
  Update();
} catch (...) {
  modErrors::CatchError();
}

void CommandBars::DisplayTypeList_Change() try {
  LogClick(std::string(DisplayTypeList) + "_Change");
  const CommandSelection selection = look_();
  if (selection.Presentation()) ShowDisplayType(selection, displayTypes_->ListIndex());
} catch (...) {
  modErrors::CatchError();
}

}  // namespace LF2000
