#include "app/desk/BarsJson.h"

#include <memory>

namespace app {

using json::Json;

namespace {

Json controlsJson(Office::CommandBarControls& controls);

Json controlJson(const std::shared_ptr<Office::CommandBarControl>& control) {
  Json json = {{"id", control->Tag()},
               {"type", "button"},
               {"caption", control->Caption()},
               {"enabled", control->Enabled()}};
  if (const std::string tip = control->TooltipText(); !tip.empty()) json["tip"] = tip;
  if (control->BeginGroup()) json["group"] = true;
  if (const auto button = std::dynamic_pointer_cast<Office::CommandBarButton>(control)) {
    if (button->State() == Office::ButtonState::Down) json["pressed"] = true;
    if (const std::string keys = button->ShortcutText(); !keys.empty()) json["keys"] = keys;
  } else if (const auto list = std::dynamic_pointer_cast<Office::CommandBarComboBox>(control)) {
    json["type"] = "combo";
    Json items = Json::array();
    for (std::int32_t i = 1; i <= list->ListCount(); ++i) items.push_back(list->List(i));
    json["items"] = std::move(items);
    json["selected"] = list->ListIndex();
  } else if (const auto menu = std::dynamic_pointer_cast<Office::CommandBarPopup>(control)) {
    json["type"] = "popup";
    json["controls"] = controlsJson(*menu->Controls());
  }
  return json;
}

Json controlsJson(Office::CommandBarControls& controls) {
  Json json = Json::array();
  for (std::int32_t i = 1; i <= controls.Count(); ++i) json.push_back(controlJson(controls.Item(i)));
  return json;
}

const char* kindOf(const Office::CommandBar& bar) {
  if (bar.Position() == Office::BarPosition::Popup) return "context";
  return bar.Name() == "Menu Bar" ? "menu" : "bar";
}

}  // namespace

Json barsJson(deck::CommandBars& bars) {
  Json json = Json::array();
  for (std::int32_t i = 1; i <= bars.Count(); ++i) {
    const auto bar = bars.Item(i);
    const auto controls = bar->Controls();
    if (!bar->Visible() && bar->Position() != Office::BarPosition::Popup) continue;
    if (controls->Count() == 0) continue;
    json.push_back({{"name", bar->Name()}, {"kind", kindOf(*bar)}, {"controls", controlsJson(*controls)}});
  }
  return json;
}

}  // namespace app
