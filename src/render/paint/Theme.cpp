#include "render/paint/Theme.h"

namespace render {

namespace {

pugi::xml_node nth(pugi::xml_node list, int index) {
  for (const auto child : list.children()) {
    if (child.type() == pugi::node_element && --index == 0) return child;
  }
  return {};
}

}  // namespace

Theme::Theme(pugi::xml_node theme, const Theme* base) {
  if (base != nullptr) *this = *base;
  // An override holds the schemes directly.
  const auto elements = theme.child("a:themeElements") ? theme.child("a:themeElements") : theme;
  for (const auto entry : elements.child("a:clrScheme").children()) {
    std::string_view name = entry.name();
    if (!name.starts_with("a:")) continue;
    const auto slot = themeColorNamed(name.substr(2));
    if (!slot) continue;
    if (const auto color = readChildColor(entry, {})) colors_[static_cast<std::size_t>(*slot)] = *color;
  }
  if (const auto fonts = elements.child("a:fontScheme")) {
    static constexpr const char* scripts[] = {"a:latin", "a:ea", "a:cs"};
    for (int i = 0; i < 3; ++i) {
      major_[i] = fonts.child("a:majorFont").child(scripts[i]).attribute("typeface").value();
      minor_[i] = fonts.child("a:minorFont").child(scripts[i]).attribute("typeface").value();
    }
  }
  if (const auto formats = elements.child("a:fmtScheme")) formats_ = formats;
}

std::string_view Theme::typeface(std::string_view written) const {
  if (written.size() != 6 || written.front() != '+') return written;
  const auto& fonts = written.substr(1, 2) == "mj" ? major_ : minor_;
  const auto script = written.substr(4);
  return fonts[script == "ea" ? 1 : script == "cs" ? 2 : 0];
}

pugi::xml_node Theme::fill(int index) const {
  return index > 1000 ? nth(formats_.child("a:bgFillStyleLst"), index - 1000)
                      : nth(formats_.child("a:fillStyleLst"), index);
}

pugi::xml_node Theme::line(int index) const { return nth(formats_.child("a:lnStyleLst"), index); }

pugi::xml_node Theme::effect(int index) const { return nth(formats_.child("a:effectStyleLst"), index); }

}  // namespace render
