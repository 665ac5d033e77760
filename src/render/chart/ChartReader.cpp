#include "render/chart/ChartReader.h"

#include <algorithm>
#include <limits>

#include "render/geometry/XmlValues.h"
#include "render/text/TextReader.h"

// A chart part as a model: titles, legend and axes. Its series are read in ChartSeriesReader.cpp.

namespace render {

namespace {

constexpr int LargestStyle = 1000;
constexpr int MostSkipped = 1000000;
/// A chart has four at most.
constexpr std::size_t MostAxes = 16;

/// c:style, or the newer c14:style, which counts from 101, in the choice before it.
int styleNumber(pugi::xml_node chartSpace) {
  for (const auto child : chartSpace.children()) {
    const std::string_view name = child.name();
    if (name == "c:style") return wholeOf(child.attribute("val"), 2, 0, LargestStyle);
    if (name != "mc:AlternateContent") continue;
    const auto fallback = child.child("mc:Fallback").child("c:style").attribute("val");
    if (fallback) return wholeOf(fallback, 2, 0, LargestStyle);
    for (const auto choice : child.child("mc:Choice").children()) {
      if (choice.attribute("val")) return wholeOf(choice.attribute("val"), 2, 0, LargestStyle) - 100;
    }
  }
  return 2;
}

ChartAxis::Tick tickNamed(std::string_view name, ChartAxis::Tick otherwise) {
  if (name == "none") return ChartAxis::Tick::None;
  if (name == "in") return ChartAxis::Tick::Inside;
  if (name == "out") return ChartAxis::Tick::Outside;
  if (name == "cross") return ChartAxis::Tick::Cross;
  return otherwise;
}

double displayUnit(pugi::xml_node dispUnits) {
  static constexpr struct {
    std::string_view name;
    double value;
  } units[] = {{"hundreds", 1e2},         {"thousands", 1e3}, {"tenThousands", 1e4},
               {"hundredThousands", 1e5}, {"millions", 1e6},  {"tenMillions", 1e7},
               {"hundredMillions", 1e8},  {"billions", 1e9},  {"trillions", 1e12}};
  const auto custom = chartNumber(valueOf(dispUnits, "c:custUnit"));
  if (custom && *custom > 0) return *custom;
  const auto name = valueOf(dispUnits, "c:builtInUnit");
  for (const auto& [known, value] : units) {
    if (known == name) return value;
  }
  return 1;
}

ChartAxis::Unit unitNamed(std::string_view name) {
  return name == "years"    ? ChartAxis::Unit::Years
         : name == "months" ? ChartAxis::Unit::Months
                            : ChartAxis::Unit::Days;
}

}  // namespace

ChartPlace readChartPlace(pugi::xml_node layout) {
  ChartPlace place;
  const auto manual = layout.child("c:manualLayout");
  if (!manual) return place;
  const auto share = [&](const char* name) {
    const auto value = chartNumber(valueOf(manual, name));
    return value ? std::optional(std::clamp(*value, -2.0, 2.0)) : std::nullopt;
  };
  place.x = share("c:x");
  place.y = share("c:y");
  place.w = share("c:w");
  place.h = share("c:h");
  // Sizes may be stated as the far edges instead.
  if (place.w && valueOf(manual, "c:wMode") == "edge") place.w = *place.w - place.x.value_or(0);
  if (place.h && valueOf(manual, "c:hMode") == "edge") place.h = *place.h - place.y.value_or(0);
  if (place.w && *place.w <= 0) place.w.reset();
  if (place.h && *place.h <= 0) place.h.reset();
  place.isOffset = valueOf(manual, "c:xMode") != "edge";
  place.isInner = valueOf(manual, "c:layoutTarget") == "inner";
  return place;
}

ChartReader::ChartReader(opc::Part& part, const PaintContext& slide) : part_(part), context_(slide) {
  context_.part = &part;
  if (opc::Part* changed = part.related(opc::relationship::ThemeOverride)) {
    ownTheme_ = Theme(changed->xml().document_element(), slide.theme);
    context_.theme = &ownTheme_;
    context_.colors.scheme = &ownTheme_.colors();
  }
}

ChartModel ChartReader::read() {
  const auto space = part_.xml().document_element();
  if (const auto own = space.child("c:clrMapOvr")) {
    ownMap_ = ColorMap(own);
    context_.colors.map = &ownMap_;
  }
  style_.emplace(styleNumber(space), context_);
  model_.from1904 = flagOf(space, "c:date1904", false);
  model_.hasRoundedCorners = flagOf(space, "c:roundedCorners", false);
  model_.area.fill = style_->area();
  look(model_.area, space.child("c:spPr"));
  model_.font.size = 10;
  model_.font.latin = context_.theme->typeface("+mn-lt");
  model_.font.fill = style_->text();
  model_.font = font(space.child("c:txPr"), model_.font);

  const auto chart = space.child("c:chart");
  const auto plotArea = chart.child("c:plotArea");
  const auto gaps = valueOf(chart, "c:dispBlanksAs");
  model_.gaps = gaps == "zero" ? ChartGaps::Zero : gaps == "span" ? ChartGaps::Span : ChartGaps::Gap;
  look(model_.plot, plotArea.child("c:spPr"));
  model_.plotPlace = readChartPlace(plotArea.child("c:layout"));
  axes(plotArea);
  groups(plotArea);
  title(chart);
  if (const auto node = chart.child("c:legend")) legend(node);
  if (model_.groups.empty() && model_.problems.empty()) model_.problems.emplace_back("it has no series");
  if (const int misfits = data_.misfits()) {
    model_.problems.push_back(std::to_string(misfits) + " of its values are no numbers or out of place");
  }
  return std::move(model_);
}

RunStyle ChartReader::font(pugi::xml_node txPr, const RunStyle& inherited) const {
  RunStyle style = inherited;
  style.apply(txPr.child("a:p").child("a:pPr").child("a:defRPr"), context_);
  return style;
}

void ChartReader::look(ChartLook& look, pugi::xml_node spPr) const {
  if (auto fill = readFill(spPr, context_)) look.fill = std::move(*fill);
  applyTo(look.line, spPr);
}

void ChartReader::applyTo(std::optional<Line>& line, pugi::xml_node spPr) const {
  const auto ln = spPr.child("a:ln");
  if (!ln) return;
  Line stated = line.value_or(Line{});
  applyLine(stated, ln, context_);
  line = std::move(stated);
  if (!isVisible(line->fill)) line.reset();
}

ChartTitle ChartReader::readTitle(pugi::xml_node node, double scale, const std::string& automatic) {
  ChartTitle title;
  ListStyle list;
  RunStyle base = model_.font;
  base.size = *base.size * scale;
  base.bold = true;
  base = font(node.child("c:txPr"), base);
  for (auto& level : list.levels) {
    level.run = base;
    level.align = Align::Center;
  }
  const auto rich = node.child("c:tx").child("c:rich");
  const auto bodyPr = (rich ? rich : node.child("c:txPr")).child("a:bodyPr");
  BodyProperties properties;
  title.rotation = degreesOf(bodyPr.attribute("rot")).value_or(0);
  const std::string_view direction = bodyPr.attribute("vert").value();
  if (direction == "vert270") title.rotation -= 90;
  if (direction == "vert" || direction == "eaVert") title.rotation += 90;
  if (rich) {
    title.text = readText(rich, list, properties, {context_, {}});
  } else {
    const auto stated = ChartData::text(node.child("c:tx"));
    Paragraph paragraph;
    paragraph.style = list.levels[0];
    paragraph.runs.push_back({Run::Kind::Text, stated.empty() ? automatic : stated, base});
    title.text.paragraphs.push_back(std::move(paragraph));
  }
  title.overlays = flagOf(node, "c:overlay", false);
  title.place = readChartPlace(node.child("c:layout"));
  look(title.look, node.child("c:spPr"));
  return title;
}

void ChartReader::title(pugi::xml_node chart) {
  std::size_t count = 0;
  std::string only;
  for (const auto& group : model_.groups) {
    for (const auto& series : group.series) {
      ++count;
      only = series.name;
    }
  }
  const auto node = chart.child("c:title");
  if (!node && (count != 1 || only.empty() || flagOf(chart, "c:autoTitleDeleted", false))) return;
  auto title = readTitle(node, 1.2, count == 1 && !only.empty() ? only : "Chart Title");
  if (!title.text.isEmpty()) model_.title = std::move(title);
}

void ChartReader::legend(pugi::xml_node node) {
  ChartLegend legend;
  const auto side = valueOf(node, "c:legendPos");
  legend.side = side == "l"    ? ChartLegend::Side::Left
                : side == "t"  ? ChartLegend::Side::Top
                : side == "b"  ? ChartLegend::Side::Bottom
                : side == "tr" ? ChartLegend::Side::TopRight
                               : ChartLegend::Side::Right;
  legend.overlays = flagOf(node, "c:overlay", false);
  legend.place = readChartPlace(node.child("c:layout"));
  legend.font = font(node.child("c:txPr"), model_.font);
  look(legend.look, node.child("c:spPr"));
  for (const auto entry : node.children("c:legendEntry")) {
    if (!flagOf(entry, "c:delete", false)) continue;
    legend.deleted.insert(
        wholeOf(entry.child("c:idx").attribute("val"), -1, -1, std::numeric_limits<int>::max()));
  }
  model_.legend = std::move(legend);
}

void ChartReader::axes(pugi::xml_node plotArea) {
  std::vector<pugi::xml_node> nodes;
  for (const auto child : plotArea.children()) {
    const std::string_view name = child.name();
    // The axis of depth has no place in a flat chart.
    if (name != "c:catAx" && name != "c:valAx" && name != "c:dateAx") continue;
    if (nodes.size() == MostAxes) break;
    nodes.push_back(child);
    model_.axes.push_back(axis(child));
  }
  auto& axes = model_.axes;
  for (std::size_t i = 0; i < axes.size(); ++i) {
    const auto id = valueOf(nodes[i], "c:crossAx");
    for (std::size_t k = 0; k < axes.size(); ++k) {
      if (k != i && axes[k].id == id) axes[i].crossed = static_cast<int>(k);
    }
  }
}

ChartAxis ChartReader::axis(pugi::xml_node node) {
  ChartAxis axis;
  const std::string_view name = node.name();
  axis.kind = name == "c:valAx"    ? ChartAxis::Kind::Value
              : name == "c:dateAx" ? ChartAxis::Kind::Date
                                   : ChartAxis::Kind::Category;
  axis.id = valueOf(node, "c:axId");
  const auto side = valueOf(node, "c:axPos");
  axis.side = side == "l"   ? ChartAxis::Side::Left
              : side == "r" ? ChartAxis::Side::Right
              : side == "t" ? ChartAxis::Side::Top
                            : ChartAxis::Side::Bottom;
  axis.isDeleted = flagOf(node, "c:delete", false);
  const auto scaling = node.child("c:scaling");
  axis.isReversed = valueOf(scaling, "c:orientation") == "maxMin";
  axis.min = chartNumber(valueOf(scaling, "c:min"));
  axis.max = chartNumber(valueOf(scaling, "c:max"));
  const auto base = chartNumber(valueOf(scaling, "c:logBase"));
  if (base && *base >= 2 && *base <= 1000) axis.logBase = base;
  axis.major = chartNumber(valueOf(node, "c:majorUnit"));
  axis.minor = chartNumber(valueOf(node, "c:minorUnit"));
  const auto crosses = valueOf(node, "c:crosses");
  if (const auto at = chartNumber(valueOf(node, "c:crossesAt"))) {
    axis.crossing = ChartAxis::Crossing::At;
    axis.crossingAt = *at;
  } else if (crosses == "min" || crosses == "max") {
    axis.crossing = crosses == "min" ? ChartAxis::Crossing::Min : ChartAxis::Crossing::Max;
  }
  axis.crossesBetween = valueOf(node, "c:crossBetween") != "midCat";
  axis.majorTick = tickNamed(valueOf(node, "c:majorTickMark"), ChartAxis::Tick::Outside);
  axis.minorTick = tickNamed(valueOf(node, "c:minorTickMark"), ChartAxis::Tick::None);
  const auto labels = valueOf(node, "c:tickLblPos");
  axis.labels = labels == "none"   ? ChartAxis::Labels::None
                : labels == "low"  ? ChartAxis::Labels::Low
                : labels == "high" ? ChartAxis::Labels::High
                                   : ChartAxis::Labels::NextTo;
  const auto numFmt = node.child("c:numFmt");
  if (numFmt && !boolOf(numFmt.attribute("sourceLinked")).value_or(false)) {
    axis.format = shortened(numFmt.attribute("formatCode").value());
  }
  axis.displayUnit = displayUnit(node.child("c:dispUnits"));
  const auto txPr = node.child("c:txPr");
  axis.font = font(txPr, model_.font);
  const auto bodyPr = txPr.child("a:bodyPr");
  // A thousand degrees mean: as it fits.
  const auto rotation = numberOf(bodyPr.attribute("rot"));
  if (rotation && *rotation >= -5400000 && *rotation <= 5400000) axis.rotation = *rotation / 60000;
  const std::string_view direction = bodyPr.attribute("vert").value();
  if (direction == "vert270") axis.rotation = -90;
  if (direction == "vert") axis.rotation = 90;
  axis.line = style_->axisLine();
  applyTo(axis.line, node.child("c:spPr"));
  if (const auto grid = node.child("c:majorGridlines")) {
    axis.grid = style_->axisLine();
    applyTo(axis.grid, grid.child("c:spPr"));
  }
  if (const auto grid = node.child("c:minorGridlines")) {
    axis.minorGrid = style_->minorGridLine();
    applyTo(axis.minorGrid, grid.child("c:spPr"));
  }
  if (const auto title = node.child("c:title")) {
    auto read = readTitle(title, 1, "Axis Title");
    const bool isVertical = axis.side == ChartAxis::Side::Left || axis.side == ChartAxis::Side::Right;
    const auto text =
        title.child("c:tx").child("c:rich") ? title.child("c:tx").child("c:rich") : title.child("c:txPr");
    const auto stated = text.child("a:bodyPr");
    if (isVertical && !stated.attribute("rot") && !stated.attribute("vert")) read.rotation = -90;
    if (!read.text.isEmpty()) axis.title = std::move(read);
  }
  axis.labelSkip = wholeOf(node.child("c:tickLblSkip").attribute("val"), 0, 1, MostSkipped);
  axis.tickSkip = wholeOf(node.child("c:tickMarkSkip").attribute("val"), 1, 1, MostSkipped);
  if (const auto unit = valueOf(node, "c:baseTimeUnit"); !unit.empty()) axis.baseUnit = unitNamed(unit);
  axis.majorUnit = unitNamed(valueOf(node, "c:majorTimeUnit"));
  return axis;
}

}  // namespace render
