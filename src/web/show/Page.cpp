#include "web/show/Page.h"

#include <array>
#include <charconv>
#include <string_view>

#include "web/show/ClientFiles.h"
#include "web/show/Messages.h"

namespace web {
namespace {

std::string escaped(std::string_view text) {
  std::string html;
  html.reserve(text.size());
  for (const char c : text) {
    switch (c) {
      case '&':
        html += "&amp;";
        break;
      case '<':
        html += "&lt;";
        break;
      case '>':
        html += "&gt;";
        break;
      case '"':
        html += "&quot;";
        break;
      default:
        html += c;
    }
  }
  return html;
}

std::string number(double value) {
  std::array<char, 32> digits{};
  const auto [end, failed] = std::to_chars(digits.data(), digits.data() + digits.size(), value);
  return {digits.data(), end};
}

std::string valueOf(std::string_view name, const Picture& picture) {
  const auto frame = [](const std::optional<SlideView>& slide, std::string_view attributes) {
    if (!slide) return std::string();
    return "<div " + std::string(attributes) + ">" + slide->html + "</div>";
  };
  if (name == "version") return std::string(clientVersion());
  if (name == "deck") return escaped(picture.deck);
  if (name == "title") return escaped(picture.title);
  if (name == "kiosk") return picture.kiosk ? " data-kiosk" : "";
  if (name == "ended") return picture.ended ? " data-ended" : "";
  if (name == "blank") return std::string(blankName(picture.blank));
  if (name == "transparent") return picture.isTransparent ? " data-transparent" : "";
  if (name == "rules") return styleRules(picture);
  if (name == "left") return number(picture.left);
  if (name == "top") return number(picture.top);
  if (name == "width") return number(picture.width);
  if (name == "height") return number(picture.height);
  if (name == "current") return frame(picture.current, "class=\"frame current\"");
  if (name == "next") return frame(picture.next, "class=\"frame\" inert");
  if (name == "stylesheet" && !picture.stylesheet.empty()) {
    return "<link rel=\"stylesheet\" id=\"slide-styles\" href=\"/assets/" + escaped(picture.stylesheet) +
           "\">";
  }
  return "";
}

std::string filled(std::string_view file, const Picture& picture) {
  std::string page;
  std::string_view rest = clientFile(file)->bytes;
  while (true) {
    const std::size_t open = rest.find("{{");
    page += rest.substr(0, open);
    if (open == std::string_view::npos) return page;
    const std::size_t close = rest.find("}}", open);
    page += valueOf(rest.substr(open + 2, close - open - 2), picture);
    rest.remove_prefix(close + 2);
  }
}

}  // namespace

std::string screenPage(const Picture& picture) { return filled("screen.html", picture); }

std::string remotePage(const Picture& picture) { return filled("remote.html", picture); }

}  // namespace web
