#include "render/text/TextStyle.h"

#include <algorithm>
#include <cstring>

#include "basic/Strings.h"
#include "render/geometry/Units.h"
#include "render/geometry/XmlValues.h"
#include "render/paint/EffectReader.h"

// What one place of the cascade states of runs, paragraphs and levels.

namespace render {

namespace {

// Every paragraph has its own copy of what it inherits, so that has to be bounded.
/// Bytes; names of typefaces have at most 31 characters.
constexpr std::size_t LongestName = 255;
constexpr std::size_t LongestBullet = 8;
constexpr std::size_t MostTabs = 100;

std::optional<double> pxOf(pugi::xml_attribute attribute) {
  const auto emu = emuOf(attribute);
  return emu ? std::optional(pxFromEmu(*emu)) : std::nullopt;
}

std::optional<Underline> underlineNamed(std::string_view name) {
  if (name == "none") return Underline::None;
  if (name == "sng" || name == "words") return Underline::Single;
  if (name == "dbl") return Underline::Double;
  if (name.starts_with("wavy")) return Underline::Wavy;
  if (name.starts_with("dotted")) return Underline::Dotted;
  if (name.starts_with("dash") || name.starts_with("dotD")) return Underline::Dashed;
  if (name == "heavy") return Underline::Heavy;
  return {};
}

std::optional<Spacing> readSpacing(pugi::xml_node node) {
  if (const auto pct = node.child("a:spcPct")) {
    const auto share = shareOf(pct.attribute("val"));
    if (share && *share >= 0 && *share <= 132) return Spacing{true, *share};
  } else if (const auto pts = node.child("a:spcPts")) {
    const auto points = numberOf(pts.attribute("val"));
    if (points) return Spacing{false, std::clamp(*points, 0.0, 158400.0) / 100 * PxPerPoint};
  }
  return {};
}

void setTypeface(std::string& target, pugi::xml_node font, const PaintContext& context) {
  const std::string_view written = font.attribute("typeface").value();
  if (written.empty() || written.size() > LongestName) return;
  const auto typeface = context.theme != nullptr ? context.theme->typeface(written) : written;
  if (!typeface.empty() || written.front() == '+') target = typeface;
}

std::optional<Align> alignNamed(std::string_view name) {
  if (name == "l") return Align::Left;
  if (name == "ctr") return Align::Center;
  if (name == "r") return Align::Right;
  if (name == "just" || name == "justLow" || name == "thaiDist") return Align::Justify;
  if (name == "dist") return Align::Distribute;
  return {};
}

}  // namespace

std::string_view RunStyle::typeface(Script script) const {
  const auto& own = script == Script::EastAsian ? eastAsian
                    : script == Script::Complex ? complexScript
                                                : latin;
  return own.empty() ? latin : own;
}

void RunStyle::apply(pugi::xml_node rPr, const PaintContext& context) {
  for (const auto attribute : rPr.attributes()) {
    const std::string_view name = attribute.name();
    const std::string_view value = attribute.value();
    if (name == "sz") {
      const auto hundredths = numberOf(attribute);
      if (hundredths && *hundredths >= 100 && *hundredths <= 400000) size = *hundredths / 100;
    } else if (name == "b") {
      if (const auto flag = boolOf(attribute)) bold = flag;
    } else if (name == "i") {
      if (const auto flag = boolOf(attribute)) italic = flag;
    } else if (name == "u") {
      if (const auto named = underlineNamed(value)) underline = named;
    } else if (name == "strike") {
      strike = value == "sngStrike" ? Strike::Single : value == "dblStrike" ? Strike::Double : Strike::None;
    } else if (name == "cap") {
      caps = value == "all" ? Caps::All : value == "small" ? Caps::Small : Caps::None;
    } else if (name == "baseline") {
      if (const auto share = shareOf(attribute)) baseline = std::clamp(*share, -2.0, 2.0);
    } else if (name == "spc") {
      if (const auto hundredths = numberOf(attribute)) spacing = *hundredths / 100 * PxPerPoint;
    }
  }
  for (const auto child : rPr.children()) {
    const char* name = child.name();
    if (!std::strcmp(name, "a:latin")) {
      setTypeface(latin, child, context);
    } else if (!std::strcmp(name, "a:ea")) {
      setTypeface(eastAsian, child, context);
    } else if (!std::strcmp(name, "a:cs")) {
      setTypeface(complexScript, child, context);
    } else if (!std::strcmp(name, "a:sym")) {
      setTypeface(symbol, child, context);
    } else if (!std::strcmp(name, "a:highlight")) {
      if (const auto color = readChildColor(child, context.colors)) highlight = color;
    } else if (!std::strcmp(name, "a:uFill")) {
      if (const auto color = readChildColor(child.child("a:solidFill"), context.colors))
        underlineColor = color;
    } else if (!std::strcmp(name, "a:ln")) {
      Line line;
      applyLine(line, child, context);
      outline = std::move(line);
    } else if (!std::strcmp(name, "a:effectLst")) {
      const auto effects = readEffects(child, context, 0);
      shadow = effects.shadow;
      glow = effects.glow;
    } else if (auto stated = readFillElement(child, context)) {
      fill = std::move(stated);
    }
  }
}

void ParagraphStyle::apply(pugi::xml_node pPr, const PaintContext& context) {
  for (const auto attribute : pPr.attributes()) {
    const std::string_view name = attribute.name();
    if (name == "marL") {
      if (const auto px = pxOf(attribute)) marginLeft = px;
    } else if (name == "marR") {
      if (const auto px = pxOf(attribute)) marginRight = px;
    } else if (name == "indent") {
      if (const auto px = pxOf(attribute)) indent = px;
    } else if (name == "algn") {
      if (const auto named = alignNamed(attribute.value())) align = named;
    } else if (name == "rtl") {
      if (const auto flag = boolOf(attribute)) rightToLeft = flag;
    } else if (name == "defTabSz") {
      if (const auto px = pxOf(attribute)) defaultTab = px;
    }
  }
  for (const auto child : pPr.children()) {
    const std::string_view name = child.name();
    if (name == "a:lnSpc") {
      if (const auto stated = readSpacing(child)) lineSpacing = stated;
    } else if (name == "a:spcBef") {
      if (const auto stated = readSpacing(child)) spaceBefore = stated;
    } else if (name == "a:spcAft") {
      if (const auto stated = readSpacing(child)) spaceAfter = stated;
    } else if (name == "a:buNone") {
      bullet.kind = Bullet::Kind::None;
    } else if (name == "a:buChar") {
      bullet.kind = Bullet::Kind::Character;
      bullet.character = basic::Left(child.attribute("char").value(), LongestBullet);
    } else if (name == "a:buAutoNum") {
      bullet.kind = Bullet::Kind::Number;
      bullet.numbering = std::string_view(child.attribute("type").value()).substr(0, LongestName);
      bullet.startAt = wholeOf(child.attribute("startAt"), 1, 1, 32767);
    } else if (name == "a:buBlip") {
      bullet.kind = Bullet::Kind::Picture;
      const auto* relationship = child.child("a:blip").attribute("r:embed").value();
      bullet.picture = context.part != nullptr ? context.part->target(relationship) : nullptr;
    } else if (name == "a:buFont") {
      std::string typeface;
      setTypeface(typeface, child, context);
      if (!typeface.empty()) bullet.typeface = std::move(typeface);
    } else if (name == "a:buFontTx") {
      bullet.typeface.reset();
    } else if (name == "a:buClr") {
      if (const auto color = readChildColor(child, context.colors)) bullet.color = color;
    } else if (name == "a:buClrTx") {
      bullet.color.reset();
    } else if (name == "a:buSzPct") {
      if (const auto share = shareOf(child.attribute("val")))
        bullet.size = Spacing{true, std::clamp(*share, 0.25, 4.0)};
    } else if (name == "a:buSzPts") {
      if (const auto hundredths = numberOf(child.attribute("val"))) {
        bullet.size = Spacing{false, std::clamp(*hundredths / 100, 1.0, 4000.0) * PxPerPoint};
      }
    } else if (name == "a:buSzTx") {
      bullet.size.reset();
    } else if (name == "a:tabLst") {
      tabs.emplace();
      for (const auto tab : child.children("a:tab")) {
        if (tabs->size() == MostTabs) break;
        if (const auto px = pxOf(tab.attribute("pos"))) {
          const std::string_view kind = tab.attribute("algn").value();
          const bool isDecimal = kind == "dec";
          tabs->push_back(
              {*px, isDecimal ? Align::Right : alignNamed(kind).value_or(Align::Left), isDecimal});
        }
      }
      std::stable_sort(tabs->begin(), tabs->end(),
                       [](const TabStop& a, const TabStop& b) { return a.position < b.position; });
    } else if (name == "a:defRPr") {
      run.apply(child, context);
    }
  }
}

void ListStyle::apply(pugi::xml_node lstStyle, const PaintContext& context) {
  static constexpr const char* names[] = {"a:lvl1pPr", "a:lvl2pPr", "a:lvl3pPr", "a:lvl4pPr", "a:lvl5pPr",
                                          "a:lvl6pPr", "a:lvl7pPr", "a:lvl8pPr", "a:lvl9pPr"};
  for (std::size_t i = 0; i < levels.size(); ++i) {
    if (const auto level = lstStyle.child(names[i])) levels[i].apply(level, context);
  }
}

}  // namespace render
