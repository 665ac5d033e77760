#include "render/text/Text.h"

#include <algorithm>

#include "render/geometry/XmlValues.h"

namespace render {

const RunStyle& Paragraph::firstStyle() const {
  for (const auto& run : runs) {
    if (run.kind == Run::Kind::Text) return run.style;
  }
  return runs.empty() ? style.run : runs.front().style;
}

const RunStyle& Paragraph::largestStyle() const {
  const RunStyle* largest = &firstStyle();
  for (const auto& run : runs) {
    if (run.kind == Run::Kind::Text && run.style.size.value_or(18) > largest->size.value_or(18))
      largest = &run.style;
  }
  return *largest;
}

const RunStyle& Paragraph::smallestStyle() const {
  const RunStyle* smallest = &firstStyle();
  for (const auto& run : runs) {
    if (run.kind == Run::Kind::Text && run.style.size.value_or(18) < smallest->size.value_or(18))
      smallest = &run.style;
  }
  return *smallest;
}

double BodyProperties::lineShare(const ParagraphStyle& style) const {
  const auto spacing = style.lineSpacing.value_or(Spacing{});
  return spacing.isShare ? std::max(0.2, spacing.value - lineReduction) : 1;
}

double BodyProperties::lineHeight(const ParagraphStyle& style, double size) const {
  const bool isFixed = style.lineSpacing && !style.lineSpacing->isShare;
  return isFixed ? style.lineSpacing->value : SingleLine * lineShare(style) * size;
}

double BodyProperties::gap(const std::optional<Spacing>& spacing, const Paragraph& paragraph) const {
  if (!spacing || spacing->value <= 0) return 0;
  if (!spacing->isShare) return spacing->value * fontScale;
  const double share = spacing->value * (1 - lineReduction);
  return share * paragraph.firstStyle().size.value_or(18) * PxPerPoint * fontScale;
}

void BodyProperties::apply(pugi::xml_node bodyPr) {
  const auto setPx = [&](double& target, const char* name) {
    if (const auto emu = emuOf(bodyPr.attribute(name))) target = std::clamp(pxFromEmu(*emu), -1e5, 1e5);
  };
  setPx(left, "lIns");
  setPx(top, "tIns");
  setPx(right, "rIns");
  setPx(bottom, "bIns");
  setPx(columnGap, "spcCol");
  const std::string_view stated = bodyPr.attribute("anchor").value();
  if (!stated.empty())
    anchor = stated == "ctr" ? Anchor::Center : stated == "b" ? Anchor::Bottom : Anchor::Top;
  if (const auto flag = boolOf(bodyPr.attribute("anchorCtr"))) anchorCenter = *flag;
  if (const auto flag = boolOf(bodyPr.attribute("upright"))) upright = *flag;
  const std::string_view wrapping = bodyPr.attribute("wrap").value();
  if (!wrapping.empty()) wrap = wrapping != "none";
  const std::string_view vert = bodyPr.attribute("vert").value();
  if (!vert.empty()) {
    direction = vert == "vert"                ? TextDirection::Down
                : vert == "vert270"           ? TextDirection::Up
                : vert.starts_with("wordArt") ? TextDirection::Stacked
                : vert == "horz"              ? TextDirection::Horizontal
                                              : TextDirection::EastAsianDown;
  }
  if (const auto degrees = degreesOf(bodyPr.attribute("rot"))) rotation = *degrees;
  columns = wholeOf(bodyPr.attribute("numCol"), columns, 1, 16);
  for (const auto child : bodyPr.children()) {
    const std::string_view name = child.name();
    if (name == "a:prstTxWarp") {
      warp = child.attribute("prst").value();
      if (warp == "textNoShape") warp.clear();
    }
    const bool shrinking = name == "a:normAutofit";
    if (!shrinking && name != "a:noAutofit" && name != "a:spAutoFit") continue;
    shrinks = shrinking;
    fitsShape = name == "a:spAutoFit";
    fontScale = shrinking ? std::clamp(shareOf(child.attribute("fontScale")).value_or(1), 0.05, 1.0) : 1;
    lineReduction =
        shrinking ? std::clamp(shareOf(child.attribute("lnSpcReduction")).value_or(0), 0.0, 0.9) : 0;
  }
}

bool TextBody::isEmpty() const {
  return std::all_of(paragraphs.begin(), paragraphs.end(), [](const Paragraph& p) { return p.runs.empty(); });
}

}  // namespace render
