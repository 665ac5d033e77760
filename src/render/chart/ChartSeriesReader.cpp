#include <algorithm>
#include <cmath>
#include <cstring>

#include "render/chart/ChartReader.h"
#include "render/geometry/XmlValues.h"

namespace render {

namespace {

struct KindName {
  std::string_view element;
  ChartKind kind;
};
constexpr KindName Kinds[] = {
    {"c:barChart", ChartKind::Bar},         {"c:bar3DChart", ChartKind::Bar},
    {"c:lineChart", ChartKind::Line},       {"c:line3DChart", ChartKind::Line},
    {"c:areaChart", ChartKind::Area},       {"c:area3DChart", ChartKind::Area},
    {"c:pieChart", ChartKind::Pie},         {"c:pie3DChart", ChartKind::Pie},
    {"c:ofPieChart", ChartKind::Pie},       {"c:doughnutChart", ChartKind::Doughnut},
    {"c:scatterChart", ChartKind::Scatter}, {"c:bubbleChart", ChartKind::Bubble},
    {"c:radarChart", ChartKind::Radar},     {"c:stockChart", ChartKind::Stock},
};

double shareIn(pugi::xml_node node, const char* child, double otherwise, double least, double most) {
  auto text = valueOf(node, child);
  if (text.ends_with('%')) text.remove_suffix(1);
  const auto percent = chartNumber(text);
  return percent ? std::clamp(*percent / 100, least, most) : otherwise;
}

bool isXy(ChartKind kind) { return kind == ChartKind::Scatter || kind == ChartKind::Bubble; }
bool isLinear(ChartKind kind) {
  return kind == ChartKind::Line || kind == ChartKind::Scatter || kind == ChartKind::Stock ||
         kind == ChartKind::Radar;
}

std::size_t placeOf(pugi::xml_node node) {
  const auto index = chartNumber(valueOf(node, "c:idx"));
  return index && *index >= 0 && *index < 1e7 ? static_cast<std::size_t>(*index) : SIZE_MAX;
}

}  // namespace

void ChartReader::groups(pugi::xml_node plotArea) {
  for (const auto child : plotArea.children()) {
    const std::string_view name = child.name();
    if (!name.ends_with("Chart")) continue;
    const bool isKnown = std::any_of(std::begin(Kinds), std::end(Kinds),
                                     [&](const KindName& kind) { return kind.element == name; });
    if (isKnown) {
      group(child);
    } else {
      model_.problems.push_back("charts of the kind " + std::string(name.substr(2)) + " are not drawn");
    }
  }
}

void ChartReader::group(pugi::xml_node node) {
  ChartGroup group;
  for (const auto& kind : Kinds) {
    if (kind.element == node.name()) group.kind = kind.kind;
  }
  const auto grouping = valueOf(node, "c:grouping");
  group.stacking = grouping == "stacked"          ? ChartStacking::Stacked
                   : grouping == "percentStacked" ? ChartStacking::Percent
                                                  : ChartStacking::None;
  group.isHorizontal = valueOf(node, "c:barDir") == "bar";
  group.variesColors = flagOf(node, "c:varyColors", false);
  group.gapWidth = shareIn(node, "c:gapWidth", 1.5, 0, 5);
  group.overlap = shareIn(node, "c:overlap", 0, -1, 1);
  group.firstAngle = std::clamp(chartNumber(valueOf(node, "c:firstSliceAng")).value_or(0), 0.0, 360.0);
  group.holeSize = shareIn(node, "c:holeSize", 0.5, 0.01, 0.9);
  group.bubbleScale = shareIn(node, "c:bubbleScale", 1, 0, 3);
  group.sizeIsWidth = valueOf(node, "c:sizeRepresents") == "w";
  group.showsNegativeBubbles = flagOf(node, "c:showNegBubbles", false);
  group.isFilledRadar = valueOf(node, "c:radarStyle") == "filled";
  const auto lineOf = [&](const char* name) {
    std::optional<Line> line;
    if (const auto lines = node.child(name)) {
      line = style_->axisLine();
      applyTo(line, lines.child("c:spPr"));
    }
    return line;
  };
  group.highLow = lineOf("c:hiLowLines");
  group.drops = lineOf("c:dropLines");
  if (const auto bars = node.child("c:upDownBars")) {
    const auto bar = [&](const char* name, const Color& color) {
      ChartLook look{color, style_->axisLine()};
      this->look(look, bars.child(name).child("c:spPr"));
      return look;
    };
    if (bars.child("c:upBars")) group.upBars = bar("c:upBars", {1, 1, 1, 1});
    if (bars.child("c:downBars")) group.downBars = bar("c:downBars", {0.25, 0.25, 0.25, 1});
  }
  for (const auto axId : node.children("c:axId")) {
    const std::string_view id = axId.attribute("val").value();
    for (std::size_t i = 0; i < model_.axes.size(); ++i) {
      if (model_.axes[i].id != id) continue;
      // Of two value axes the first named is the horizontal one.
      const bool isValue = model_.axes[i].kind == ChartAxis::Kind::Value;
      int& place =
          !isValue || (isXy(group.kind) && group.categoryAxis < 0) ? group.categoryAxis : group.valueAxis;
      if (place < 0) place = static_cast<int>(i);
    }
  }
  if (isXy(group.kind) && group.categoryAxis >= 0 && group.valueAxis >= 0) {
    const auto isVertical = [&](int axis) {
      const auto side = model_.axes[static_cast<std::size_t>(axis)].side;
      return side == ChartAxis::Side::Left || side == ChartAxis::Side::Right;
    };
    if (isVertical(group.categoryAxis) && !isVertical(group.valueAxis)) {
      std::swap(group.categoryAxis, group.valueAxis);
    }
  }
  for (const auto ser : node.children("c:ser")) {
    if (++seriesRead_ == MostSeries + 1) {
      model_.problems.push_back("it has more than " + std::to_string(MostSeries) + " series");
    }
    if (seriesRead_ > MostSeries) break;
    group.series.push_back(series(ser, node, group));
  }
  if (group.series.empty()) return;
  const bool isRound = group.kind == ChartKind::Pie || group.kind == ChartKind::Doughnut;
  if (!isRound && (group.categoryAxis < 0 || group.valueAxis < 0)) {
    model_.problems.push_back("the axes of its " + std::string(node.name()).substr(2) + " are missing");
    return;
  }
  std::stable_sort(group.series.begin(), group.series.end(),
                   [](const auto& a, const auto& b) { return a.order < b.order; });
  model_.groups.push_back(std::move(group));
}

ChartSeries ChartReader::series(pugi::xml_node ser, pugi::xml_node groupNode, const ChartGroup& group) {
  ChartSeries series;
  series.index = wholeOf(ser.child("c:idx").attribute("val"), 0, 0, 100000);
  series.order = wholeOf(ser.child("c:order").attribute("val"), 0, 0, 100000);
  series.name = shortened(ChartData::text(ser.child("c:tx")));
  if (series.name.empty()) series.name = "Series" + std::to_string(series.index + 1);
  series.values = data_.numbers(ser.child(isXy(group.kind) ? "c:yVal" : "c:val"));
  if (isXy(group.kind)) {
    series.x = data_.numbers(ser.child("c:xVal"));
    // Every point has both.
    series.x.values.resize(series.values.values.size(), NoValue);
    // Names instead of numbers count from one.
    const bool hasNumbers =
        std::any_of(series.x.values.begin(), series.x.values.end(), [](double x) { return !std::isnan(x); });
    if (!hasNumbers) {
      for (std::size_t i = 0; i < series.x.values.size(); ++i) {
        series.x.values[i] = static_cast<double>(i + 1);
      }
    }
    series.sizes = data_.numbers(ser.child("c:bubbleSize"));
  } else {
    series.categories = data_.categories(ser.child("c:cat"));
  }
  series.isSmooth = flagOf(ser, "c:smooth", false);
  series.invertsNegative = flagOf(ser, "c:invertIfNegative", false);
  series.explosion = shareIn(ser, "c:explosion", 0, 0, 4);

  // Colours go by the series' number among all that the part holds.
  std::size_t count = 0;
  for (const auto sibling : groupNode.parent().children()) {
    for (const auto other : sibling.children("c:ser")) {
      const auto place = placeOf(other);
      if (place != SIZE_MAX) count = std::max(count, place + 1);
    }
  }
  looksOf(series, ser, groupNode, group, count);
  readPoints(series, ser, group);
  readLabels(series, ser, groupNode);
  readTrends(series, ser);
  readErrors(series, ser);
  return series;
}

void ChartReader::looksOf(ChartSeries& series, pugi::xml_node ser, pugi::xml_node groupNode,
                          const ChartGroup& group, std::size_t seriesCount) {
  const auto spPr = ser.child("c:spPr");
  const auto index = static_cast<std::size_t>(series.index);
  const auto color = style_->color(index, seriesCount);
  const bool isLine = isLinear(group.kind) && !group.isFilledRadar;
  if (isLine) {
    series.look.line = style_->seriesLine(color);
    if (group.kind == ChartKind::Stock) series.look.line.reset();
    applyTo(series.look.line, spPr);
  } else {
    series.look.fill = style_->fill(color);
    look(series.look, spPr);
  }

  // A marker is as the series, unless it or its group says otherwise.
  ChartMarker automatic;
  const auto scatterStyle = valueOf(groupNode, "c:scatterStyle");
  const bool hasMarkers = group.kind == ChartKind::Line      ? flagOf(groupNode, "c:marker", false)
                          : group.kind == ChartKind::Scatter ? true
                          : group.kind == ChartKind::Radar   ? valueOf(groupNode, "c:radarStyle") == "marker"
                                                             : false;
  if (group.kind == ChartKind::Scatter && scatterStyle == "none") series.look.line.reset();
  if (!isLine) return;
  if (hasMarkers) automatic.symbol = automaticSymbol(index);
  automatic.size = style_->markerSize();
  // An automatic marker keeps the automatic colour, whatever the line has.
  automatic.look.fill = color;
  Line edge = style_->seriesLine(color);
  edge.width = 1;
  automatic.look.line = edge;
  series.marker = marker(ser.child("c:marker"), automatic);
}

ChartMarker ChartReader::marker(pugi::xml_node node, ChartMarker marker) const {
  if (!node) return marker;
  const auto symbol = valueOf(node, "c:symbol");
  if (symbol == "none") {
    marker.symbol.clear();
  } else if (!symbol.empty() && symbol != "auto") {
    marker.symbol = symbol;
  } else if (marker.symbol.empty()) {
    marker.symbol = "circle";
  }
  const auto size = chartNumber(valueOf(node, "c:size"));
  if (size) marker.size = std::clamp(*size, 2.0, 72.0) * PxPerPoint;
  look(marker.look, node.child("c:spPr"));
  return marker;
}

void ChartReader::readPoints(ChartSeries& series, pugi::xml_node ser, const ChartGroup& group) {
  const auto count = series.values.values.size();
  const bool isRound = group.kind == ChartKind::Pie || group.kind == ChartKind::Doughnut;
  std::size_t seriesInGroup = 0;
  for ([[maybe_unused]] const auto sibling : ser.parent().children("c:ser")) ++seriesInGroup;
  const bool varies = group.variesColors && (isRound || (seriesInGroup == 1 && !isLinear(group.kind)));
  // More colours than anyone can tell apart are not made.
  constexpr std::size_t MostColors = 1000;
  if (varies && group.kind != ChartKind::Area && (isRound || !readFill(ser.child("c:spPr"), context_))) {
    for (std::size_t i = 0; i < std::min(count, MostColors); ++i) {
      auto& point = series.points[i];
      point.look = series.look;
      if (!readFill(ser.child("c:spPr"), context_)) {
        point.look->fill = style_->fill(style_->color(i, std::min(count, MostColors)));
      }
    }
  }
  for (const auto dPt : ser.children("c:dPt")) {
    const auto place = placeOf(dPt);
    if (place >= count) continue;
    auto& point = series.points[place];
    if (const auto spPr = dPt.child("c:spPr")) {
      auto stated = point.look.value_or(series.look);
      look(stated, spPr);
      point.look = std::move(stated);
    }
    if (const auto node = dPt.child("c:marker")) point.marker = marker(node, series.marker);
    if (dPt.child("c:explosion")) point.explosion = shareIn(dPt, "c:explosion", 0, 0, 4);
  }
}

ChartLabel ChartReader::label(pugi::xml_node node, ChartLabel label) const {
  label.showsValue = flagOf(node, "c:showVal", label.showsValue);
  label.showsCategory = flagOf(node, "c:showCatName", label.showsCategory);
  label.showsSeries = flagOf(node, "c:showSerName", label.showsSeries);
  label.showsPercent = flagOf(node, "c:showPercent", label.showsPercent);
  label.showsSize = flagOf(node, "c:showBubbleSize", label.showsSize);
  if (const auto position = valueOf(node, "c:dLblPos"); !position.empty()) label.position = position;
  if (const auto separator = node.child("c:separator")) label.separator = shortened(separator.child_value());
  const auto numFmt = node.child("c:numFmt");
  if (numFmt) {
    label.format = boolOf(numFmt.attribute("sourceLinked")).value_or(false)
                       ? std::string()
                       : shortened(numFmt.attribute("formatCode").value());
  }
  const auto rich = node.child("c:tx").child("c:rich");
  label.font = font(rich ? rich : node.child("c:txPr"), label.font);
  const auto bodyPr = (rich ? rich : node.child("c:txPr")).child("a:bodyPr");
  const double rotation = numberOf(bodyPr.attribute("rot")).value_or(0);
  if (std::abs(rotation) <= 5400000) label.rotation = rotation / 60000;
  if (std::string_view(bodyPr.attribute("vert").value()) == "vert270") label.rotation = -90;
  look(label.look, node.child("c:spPr"));
  label.text.clear();
  for (const auto p : rich.children("a:p")) {
    if (!label.text.empty()) label.text += '\n';
    for (const auto run : p.children()) {
      if (!std::strcmp(run.name(), "a:br")) label.text += '\n';
      label.text += run.child_value("a:t");
      label.font.apply(run.child("a:rPr"), context_);
    }
  }
  label.place = readChartPlace(node.child("c:layout"));
  return label;
}

void ChartReader::readLabels(ChartSeries& series, pugi::xml_node ser, pugi::xml_node groupNode) {
  const auto own = ser.child("c:dLbls");
  const auto node = own ? own : groupNode.child("c:dLbls");
  if (!node || flagOf(node, "c:delete", false)) return;
  ChartLabel plain;
  plain.font = model_.font;
  auto all = label(node, plain);
  series.hasLeaderLines = flagOf(node, "c:showLeaderLines", false);
  for (const auto dLbl : own.children("c:dLbl")) {
    const auto place = placeOf(dLbl);
    if (place >= series.values.values.size()) continue;
    auto& point = series.pointLabels[place];
    if (!flagOf(dLbl, "c:delete", false)) point = label(dLbl, all);
  }
  if (all.isShown()) series.label = std::move(all);
}

void ChartReader::readTrends(ChartSeries& series, pugi::xml_node ser) const {
  static constexpr std::pair<std::string_view, ChartTrend::Kind> kinds[] = {
      {"linear", ChartTrend::Kind::Linear},   {"log", ChartTrend::Kind::Logarithmic},
      {"exp", ChartTrend::Kind::Exponential}, {"power", ChartTrend::Kind::Power},
      {"poly", ChartTrend::Kind::Polynomial}, {"movingAvg", ChartTrend::Kind::MovingAverage}};
  for (const auto node : ser.children("c:trendline")) {
    ChartTrend trend;
    for (const auto& [name, kind] : kinds) {
      if (name == valueOf(node, "c:trendlineType")) trend.kind = kind;
    }
    const char* order = trend.kind == ChartTrend::Kind::Polynomial ? "c:order" : "c:period";
    trend.order = wholeOf(node.child(order).attribute("val"), 2, 2, 255);
    const auto reach = [&](const char* name) {
      return std::clamp(chartNumber(valueOf(node, name)).value_or(0), 0.0, 1e6);
    };
    trend.forward = reach("c:forward");
    trend.backward = reach("c:backward");
    trend.intercept = chartNumber(valueOf(node, "c:intercept"));
    trend.name = node.child_value("c:name");
    std::optional<Line> line = Line{};
    line->fill = style_->text();
    line->width = 1.5;
    applyTo(line, node.child("c:spPr"));
    if (!line) continue;
    trend.line = std::move(*line);
    series.trends.push_back(std::move(trend));
  }
}

void ChartReader::readErrors(ChartSeries& series, pugi::xml_node ser) {
  const auto& values = series.values.values;
  for (const auto node : ser.children("c:errBars")) {
    ChartErrorBars bars;
    bars.isHorizontal = valueOf(node, "c:errDir") == "x";
    bars.hasCaps = !flagOf(node, "c:noEndCap", false);
    const auto& along = bars.isHorizontal ? series.x.values : values;
    const auto kind = valueOf(node, "c:errValType");
    const double amount = chartNumber(valueOf(node, "c:val")).value_or(0);
    double sum = 0;
    double squares = 0;
    double count = 0;
    for (const double v : along) {
      if (std::isnan(v)) continue;
      sum += v;
      squares += v * v;
      ++count;
    }
    const double mean = count > 0 ? sum / count : 0;
    const double deviation = count > 1 ? std::sqrt(std::max(0.0, (squares - sum * mean) / (count - 1))) : 0;
    for (const double v : along) {
      const double reach = kind == "percentage" ? std::abs(v) * amount / 100
                           : kind == "stdDev"   ? deviation * amount
                           : kind == "stdErr"   ? deviation / std::sqrt(std::max(1.0, count))
                                                : amount;
      bars.plus.push_back(std::isnan(reach) ? 0 : reach);
    }
    bars.minus = bars.plus;
    if (kind == "cust") {
      const auto custom = [&](const char* name) {
        auto read = data_.numbers(node.child(name)).values;
        // One value holds for all.
        if (read.size() == 1) read.assign(along.size(), read[0]);
        read.resize(along.size(), 0);
        std::replace_if(
            read.begin(), read.end(), [](double v) { return std::isnan(v); }, 0.0);
        return read;
      };
      bars.plus = custom("c:plus");
      bars.minus = custom("c:minus");
    }
    const auto type = valueOf(node, "c:errBarType");
    if (type == "plus") bars.minus.assign(along.size(), 0);
    if (type == "minus") bars.plus.assign(along.size(), 0);
    std::optional<Line> line = style_->axisLine();
    line->fill = style_->text();
    applyTo(line, node.child("c:spPr"));
    if (!line) continue;
    bars.line = std::move(*line);
    series.errors.push_back(std::move(bars));
  }
}

}  // namespace render
