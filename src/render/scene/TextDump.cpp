#include <algorithm>

#include "render/scene/DumpWords.h"

// Text with its formatting as lines: the body, its paragraphs, their runs.

namespace render {

namespace {

constexpr double UsualSize = 18;  // points, where nothing is stated
constexpr double UsualTab = 96;   // px
constexpr std::size_t MostTabs = 16;

std::string words(const Spacing& spacing) {
  return spacing.isShare ? percent(spacing.value) : points(spacing.value);
}

std::string words(const RunStyle& style) {
  static constexpr std::string_view underlines[] = {"",        "single ", "double ", "heavy ",
                                                    "dotted ", "dashed ", "wavy "};
  std::string text = number(style.size.value_or(UsualSize)) + " " + inQuotes(style.latin);
  if (!style.eastAsian.empty()) text += " ea " + inQuotes(style.eastAsian);
  if (!style.complexScript.empty()) text += " cs " + inQuotes(style.complexScript);
  if (!style.symbol.empty()) text += " sym " + inQuotes(style.symbol);
  text += " " + words(style.fill.value_or(Color{}));
  if (style.bold.value_or(false)) text += " bold";
  if (style.italic.value_or(false)) text += " italic";
  if (const auto line = style.underline.value_or(Underline::None); line != Underline::None) {
    text += " " + std::string(underlines[static_cast<std::size_t>(line)]) + "underline";
    if (style.underlineColor) text += " " + words(*style.underlineColor);
  }
  if (const auto strike = style.strike.value_or(Strike::None); strike != Strike::None)
    text += strike == Strike::Single ? " struck" : " struck twice";
  if (const auto caps = style.caps.value_or(Caps::None); caps != Caps::None)
    text += caps == Caps::All ? " capitals" : " small capitals";
  if (style.baseline.value_or(0) != 0) text += " raised " + percent(*style.baseline);
  if (style.spacing.value_or(0) != 0) text += " spaced " + points(*style.spacing);
  if (style.highlight) text += " on " + words(*style.highlight);
  if (style.outline) text += " outline " + words(*style.outline);
  if (style.shadow)
    text += " shadow " + words(style.shadow->color) + " moved " + points(style.shadow->dx) + "," +
            points(style.shadow->dy) + " blur " + points(style.shadow->blur);
  if (style.glow) text += " glow " + words(style.glow->color) + " " + points(style.glow->radius);
  return text;
}

std::string alignment(Align align) {
  static constexpr std::string_view names[] = {"left", "centred", "right", "justified", "distributed"};
  return std::string(names[static_cast<std::size_t>(align)]);
}

std::string tabs(const std::vector<TabStop>& stops) {
  std::string text = " tabs";
  for (std::size_t i = 0; i < std::min(stops.size(), MostTabs); ++i) {
    text += " " + points(stops[i].position);
    if (stops[i].isDecimal) {
      text += " decimal";
    } else if (stops[i].align != Align::Left) {
      text += " " + alignment(stops[i].align);
    }
  }
  return text;
}

std::string bullet(const Paragraph& paragraph) {
  if (paragraph.bullet.empty() && paragraph.bulletPicture == nullptr) return {};
  const auto& style = paragraph.style.bullet;
  std::string text = " bullet ";
  text += paragraph.bulletPicture != nullptr ? paragraph.bulletPicture->name : inQuotes(paragraph.bullet);
  if (style.typeface) text += " " + inQuotes(*style.typeface);
  if (style.color) text += " " + words(*style.color);
  if (style.size) text += " " + words(*style.size);
  return text;
}

std::string words(const Paragraph& paragraph) {
  const auto& style = paragraph.style;
  std::string text = "p";
  if (const auto align = style.align.value_or(Align::Left); align != Align::Left)
    text += " " + alignment(align);
  if (style.rightToLeft.value_or(false)) text += " from right to left";
  const auto length = [&](const char* name, const std::optional<double>& px) {
    if (px.value_or(0) != 0) text += name + points(*px);
  };
  length(" margin ", style.marginLeft);
  length(" right margin ", style.marginRight);
  length(" indent ", style.indent);
  if (style.lineSpacing) text += " lines " + words(*style.lineSpacing);
  if (style.spaceBefore) text += " before " + words(*style.spaceBefore);
  if (style.spaceAfter) text += " after " + words(*style.spaceAfter);
  if (style.defaultTab.value_or(UsualTab) != UsualTab) text += " tab every " + points(*style.defaultTab);
  if (style.tabs) text += tabs(*style.tabs);
  text += bullet(paragraph);
  // An empty line is as high as its end.
  if (paragraph.runs.empty()) text += " end " + number(style.run.size.value_or(UsualSize));
  return text;
}

std::string words(const BodyProperties& body) {
  static constexpr std::string_view anchors[] = {"top", "middle", "bottom"};
  static constexpr std::string_view directions[] = {"", " downwards", " upwards", " stacked",
                                                    " in East Asian columns"};
  const BodyProperties usual;
  std::string text;
  if (body.left != usual.left || body.top != usual.top || body.right != usual.right ||
      body.bottom != usual.bottom) {
    text += " insets " + points(body.left) + " " + points(body.top) + " " + points(body.right) + " " +
            points(body.bottom);
  }
  if (body.anchor != Anchor::Top) text += " " + std::string(anchors[static_cast<std::size_t>(body.anchor)]);
  if (body.anchorCenter) text += " centred";
  if (!body.wrap) text += " unwrapped";
  text += directions[static_cast<std::size_t>(body.direction)];
  if (body.upright) text += " upright";
  if (body.columns > 1) text += " columns " + number(body.columns) + " gap " + points(body.columnGap);
  if (body.shrinks) text += " shrinks";
  if (body.fontScale != 1) text += " scale " + percent(body.fontScale);
  if (body.lineReduction != 0) text += " lines less " + percent(body.lineReduction);
  if (body.fitsShape) text += " fits the shape";
  if (!body.warp.empty()) text += " warp " + inQuotes(body.warp);
  return text;
}

}  // namespace

void dumpText(DumpLines& lines, int depth, const TextBody& body, const Rect* place, double rotation) {
  if (body.isEmpty()) return;
  std::string text = "text";
  if (place != nullptr) text += " at " + area(*place);
  text += words(body.properties);
  if (rotation != 0) text += " turned " + number(rotation) + "°";
  if (body.timeShown != TimeShown::None)
    text += body.timeShown == TimeShown::Date ? " shows the date" : " shows the time";
  lines.add(depth, text);
  for (const auto& paragraph : body.paragraphs) {
    lines.add(depth + 1, words(paragraph));
    for (const auto& run : paragraph.runs) {
      const std::string what = run.kind == Run::Kind::Break ? "break" : inQuotes(run.text);
      lines.add(depth + 2, what + " " + words(run.style));
    }
  }
}

}  // namespace render
