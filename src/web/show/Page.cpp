#include "web/show/Page.h"

#include <array>
#include <charconv>
#include <map>
#include <string_view>

#include "basic/Markup.h"
#include "web/show/ClientFiles.h"
#include "web/show/Messages.h"

namespace web {
namespace {

std::string number(double value) {
  std::array<char, 32> digits{};
  const auto [end, failed] = std::to_chars(digits.data(), digits.data() + digits.size(), value);
  return {digits.data(), end};
}

std::string valueOf(std::string_view name, const ScreenState& state) {
  const auto frame = [](const std::optional<SlideView>& slide, std::string_view attributes) {
    if (!slide) return std::string();
    return "<div " + std::string(attributes) + ">" + slide->html + "</div>";
  };
  if (name == "version") return std::string(clientVersion());
  if (name == "deck") return basic::Escaped(state.deck);
  if (name == "title") return basic::Escaped(state.title);
  if (name == "kiosk") return state.kiosk ? " data-kiosk" : "";
  if (name == "ended") return state.ended ? " data-ended" : "";
  if (name == "blank") return std::string(blankName(state.blank));
  if (name == "transparent") return state.isTransparent ? " data-transparent" : "";
  if (name == "rules") return styleRules(state);
  if (name == "left") return number(state.left);
  if (name == "top") return number(state.top);
  if (name == "width") return number(state.width);
  if (name == "height") return number(state.height);
  if (name == "current") return frame(state.current, "class=\"frame current\"");
  if (name == "next") return frame(state.next, "class=\"frame\" inert");
  if (name == "stylesheet" && !state.stylesheet.empty()) {
    return "<link rel=\"stylesheet\" id=\"slide-styles\" href=\"/assets/" + basic::Escaped(state.stylesheet) +
           "\">";
  }
  return "";
}

/// Where of a wall the screen stands, for screen.css.
std::string wallStyle(const WallPart& part) {
  return "; --columns: " + std::to_string(part.columns) + "; --rows: " + std::to_string(part.rows) +
         "; --column: " + std::to_string(part.column) + "; --row: " + std::to_string(part.row);
}

/// What a page needs beside the state, by name.
using Further = std::map<std::string_view, std::string>;

std::string filled(std::string_view file, const ScreenState& state, const Further& further = {}) {
  std::string page;
  std::string_view rest = clientFile(file)->bytes;
  while (true) {
    const std::size_t open = rest.find("{{");
    page += rest.substr(0, open);
    if (open == std::string_view::npos) return page;
    const std::size_t close = rest.find("}}", open);
    const std::string_view name = rest.substr(open + 2, close - open - 2);
    const auto own = further.find(name);
    page += own == further.end() ? valueOf(name, state) : own->second;
    rest.remove_prefix(close + 2);
  }
}

}  // namespace

std::string screenPage(const ScreenState& state, const std::string& view, const std::optional<WallPart>& part,
                       bool isKnown) {
  return filled(
      "screen/screen.html", state,
      {{"view", view}, {"wall", part ? wallStyle(*part) : ""}, {"known", isKnown ? " data-known" : ""}});
}

std::string enterPage() { return filled("screen/enter.html", {}); }

std::string wrongPartPage(const ScreenState& state, std::string_view part) {
  return filled("screen/wrong_part.html", state, {{"part", basic::Escaped(part)}});
}

std::string statusPage(const ScreenState& state) { return filled("status/status.html", state); }

std::string remotePage(const ScreenState& state) { return filled("remote/remote.html", state); }

}  // namespace web
