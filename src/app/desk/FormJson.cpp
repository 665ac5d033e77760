// Forms, their controls and events as pages and the server write them to each other.

#include "app/desk/FormJson.h"

#include <algorithm>
#include <array>
#include <type_traits>
#include <utility>
#include <variant>

#include "web/desk/Desk.h"

namespace app {

using json::Json;

namespace {

const char* nameOf(Forms::Kind kind) {
  using Forms::Kind;
  switch (kind) {
    case Kind::Label:
      return "Label";
    case Kind::TextBox:
      return "TextBox";
    case Kind::UpDown:
      return "UpDown";
    case Kind::CheckBox:
      return "CheckBox";
    case Kind::OptionButton:
      return "OptionButton";
    case Kind::ComboBox:
      return "ComboBox";
    case Kind::ListBox:
      return "ListBox";
    case Kind::CommandButton:
      return "CommandButton";
    case Kind::Frame:
      return "Frame";
    case Kind::Grid:
      return "Grid";
    case Kind::Picture:
      return "Picture";
    case Kind::ProgressBar:
      break;
  }
  return "ProgressBar";
}

Json itemsJson(const Forms::Items& items) {
  Json json = Json::array();
  for (const Forms::Item& item : items) {
    json.push_back({{"text", item.Text}, {"note", item.Note}, {"enabled", item.Enabled}});
    if (!item.Cells.empty()) json.back()["cells"] = item.Cells;
  }
  return json;
}

Json valueJson(const Forms::Value& value) {
  return std::visit(
      [](const auto& held) -> Json {
        using Held = std::decay_t<decltype(held)>;
        if constexpr (std::is_same_v<Held, Forms::Items>) {
          return itemsJson(held);
        } else if constexpr (std::is_same_v<Held, Forms::Rows>) {
          return {{"first", held.First}, {"cells", held.Cells}};
        } else {
          return held;
        }
      },
      value);
}

Json controlJson(const Forms::Control& control, const AddressOf& addressOf) {
  Json json = {{"kind", nameOf(control.Kind())}};
  for (const auto& [name, value] : control.Properties()) json[name] = propertyJson(control, name, addressOf);
  return json;
}

std::optional<Forms::Value> valueOf(const Json& json) {
  if (json.is_boolean()) return json.get<bool>();
  if (const auto number = json::wholeOf<std::int64_t>(json)) return *number;
  if (json.is_string()) return json.get<std::string>();
  const auto isWhole = [](const Json& each) {
    return json::wholeOf<Forms::Places::value_type>(each).has_value();
  };
  if (json.is_array() && std::all_of(json.begin(), json.end(), isWhole)) return json.get<Forms::Places>();
  return std::nullopt;
}

}  // namespace

Json propertyJson(const Forms::Control& control, const std::string& property, const AddressOf& addressOf) {
  const auto found = control.Properties().find(property);
  if (found == control.Properties().end()) return nullptr;
  if (control.Kind() == Forms::Kind::Picture && property == "File") {
    return addressOf(std::get<std::string>(found->second));
  }
  return valueJson(found->second);
}

Json formJson(const Forms::Form& form, const AddressOf& addressOf) {
  Json rows = Json::array();
  for (const Forms::Row& row : form.Rows()) {
    Json names = Json::array();
    for (const Forms::Control* control : row.Controls) names.push_back(control->Name());
    rows.push_back({{"label", row.Label},
                    {"controls", std::move(names)},
                    {"group", row.Group == nullptr ? std::string() : row.Group->Name()},
                    {"isButtons", row.IsButtons}});
  }
  Json controls = Json::object();
  for (const auto& control : form.Controls()) controls[control->Name()] = controlJson(*control, addressOf);
  const auto nameOfButton = [](const Forms::CommandButton* button) {
    return button == nullptr ? std::string() : button->Name();
  };
  return {{"name", form.Name()},
          {"caption", form.Caption()},
          {"subject", form.Subject()},
          {"width", form.Width() == Forms::Width::Wide ? "wide" : "narrow"},
          {"placement", form.Placement() == Forms::Placement::Docked ? "docked" : "dialog"},
          {"keepsAtOnce", form.KeepsAtOnce()},
          {"rows", std::move(rows)},
          {"default", nameOfButton(form.DefaultButton())},
          {"cancel", nameOfButton(form.CancelButton())},
          {"controls", std::move(controls)}};
}

Forms::Event eventOf(const Json& json) {
  using Forms::EventKind;
  static constexpr std::array<std::pair<std::string_view, EventKind>, 6> kinds = {
      {{"change", EventKind::Change},
       {"click", EventKind::Click},
       {"dblclick", EventKind::DblClick},
       {"lostfocus", EventKind::LostFocus},
       {"dropdown", EventKind::DropDown},
       {"step", EventKind::Step}}};
  const auto name = json.at("event").get<std::string>();
  for (const auto& [known, kind] : kinds) {
    if (known != name) continue;
    return {json.at("control").get<std::string>(), kind, valueOf(json.value("value", Json()))};
  }
  throw web::Refusal(400, "Controls have no event '" + name + "'.");
}

}  // namespace app
