#include "render/html/ChartSeriesJson.h"

#include <algorithm>
#include <cmath>

#include "render/chart/ChartTrend.h"

// The series of a chart with their points and labels, and the trends, error bars and ranges that go with
// them.

namespace render {

namespace {

/// Texts of more points than these cannot be read anyway.
constexpr std::size_t MostLabels = 1000;

const char* nameOf(ChartKind kind) {
  switch (kind) {
    case ChartKind::Bar:
      return "bar";
    case ChartKind::Area:
      return "area";
    case ChartKind::Pie:
    case ChartKind::Doughnut:
      return "pie";
    case ChartKind::Scatter:
      return "scatter";
    case ChartKind::Bubble:
      return "bubble";
    case ChartKind::Radar:
      return "radar";
    default:
      return "line";
  }
}

json::Json numberJson(double value) { return std::isfinite(value) ? json::Json(value) : json::Json(nullptr); }

class SeriesWriter {
 public:
  SeriesWriter(ChartPlot& plot, std::string_view assetPrefix) : plot_(plot), assetPrefix_(assetPrefix) {}

  void write(json::Json& list, const ChartGroup& group) {
    const auto number = static_cast<int>(&group - plot_.model().groups.data());
    if (group.isRound()) {
      double ring = 0;
      for (const auto& series : group.series) {
        writePie(list, group, series, ring);
        // A pie has room for one.
        if (group.kind == ChartKind::Pie) break;
        ++ring;
      }
      return;
    }
    const auto shown = shownValues(group, plot_.model().gaps);
    for (std::size_t i = 0; i < group.series.size(); ++i) {
      const auto& series = group.series[i];
      auto json = begin(group, series);
      json["axes"] = {group.categoryAxis, group.valueAxis};
      // The places of points in the series, in the order in which they are written.
      std::vector<std::size_t> places;
      if (group.isXy()) {
        places = thinned({&series.values.values}, plot_.mostPoints());
        xyData(json, group, series, places);
      } else {
        const auto& slots = plot_.axes().at(group.categoryAxis).slots;
        const auto& kept = plot_.keptSlots(group.categoryAxis);
        json::Json data = json::Json::array();
        for (const auto slot : kept) {
          const auto category = slots.categoryOf[slot];
          places.push_back(category);
          data.push_back(category < shown[i].size() ? numberJson(shown[i][category]) : nullptr);
        }
        json["data"] = std::move(data);
        if (group.stacking != ChartStacking::None) json["stack"] = number;
        if (!slots.dates.empty() || plot_.model().gaps == ChartGaps::Span) json["connects"] = true;
      }
      if (group.kind == ChartKind::Bar) {
        json["gap"] = group.gapWidth;
        json["overlap"] = group.stacking == ChartStacking::None ? group.overlap : 1;
        json["group"] = number;
        if (series.invertsNegative) json["inverts"] = true;
        json["base"] = plot_.axes().crossingValue(*plot_.axes().at(group.categoryAxis).axis);
      }
      if (group.kind == ChartKind::Area)
        json["base"] = plot_.axes().crossingValue(*plot_.axes().at(group.categoryAxis).axis);
      if (group.isFilledRadar) json["isFilled"] = true;
      points(json, series, places);
      labels(json, group, series, places, 0);
      const auto own = list.size();
      list.push_back(std::move(json));
      trends(list, group, series);
      errors(list, group, series, places, own);
    }
    ranges(list, group);
  }

 private:
  json::Json begin(const ChartGroup& group, const ChartSeries& series) const {
    auto json = lookJson(series.look, assetPrefix_);
    json["kind"] = nameOf(group.kind);
    json["name"] = series.name;
    if (auto symbol = markerJson(series.marker, assetPrefix_); !symbol.is_null())
      json["marker"] = std::move(symbol);
    if (series.isSmooth) json["isSmooth"] = true;
    return json;
  }

  void xyData(json::Json& json, const ChartGroup& group, const ChartSeries& series,
              const std::vector<std::size_t>& places) const {
    double largest = 0;
    if (group.kind == ChartKind::Bubble) {
      for (const auto& each : group.series) {
        for (const double size : each.sizes.values) {
          if (size > 0 || group.showsNegativeBubbles) largest = std::max(largest, std::abs(size));
        }
      }
    }
    json::Json data = json::Json::array();
    for (const auto place : places) {
      const double x = place < series.x.values.size() ? series.x.values[place] : NoValue;
      json::Json point{numberJson(x), numberJson(series.values.values[place])};
      if (group.kind == ChartKind::Bubble) {
        const double size = place < series.sizes.values.size() ? series.sizes.values[place] : NoValue;
        const bool isShown = size > 0 || (size < 0 && group.showsNegativeBubbles);
        const double share = isShown && largest > 0 ? std::abs(size) / largest : 0;
        // Of the largest bubble, which measures a quarter of the plot.
        point.push_back(pixels(100 * group.bubbleScale * (group.sizeIsWidth ? share : std::sqrt(share))));
      }
      data.push_back(std::move(point));
    }
    json["data"] = std::move(data);
  }

  void writePie(json::Json& list, const ChartGroup& group, const ChartSeries& series, double ring) {
    auto json = begin(group, series);
    const auto count = std::min(series.values.values.size(), MostSlices);
    double whole = 0;
    for (const double v : series.values.values) whole += std::isnan(v) ? 0 : std::abs(v);
    json::Json data = json::Json::array();
    json::Json names = json::Json::array();
    std::vector<std::size_t> places;
    for (std::size_t i = 0; i < count; ++i) {
      const double v = series.values.values[i];
      data.push_back(std::isnan(v) ? 0 : std::abs(v));
      names.push_back(plot_.texts().category(series.categories, i, {}));
      places.push_back(i);
    }
    json["data"] = std::move(data);
    json["names"] = std::move(names);
    json["angle"] = group.firstAngle;
    if (series.explosion > 0) json["explosion"] = series.explosion;
    if (group.kind == ChartKind::Doughnut) {
      json["ring"] = ring;
      json["rings"] = group.series.size();
      json["hole"] = group.holeSize;
    }
    points(json, series, places);
    labels(json, group, series, places, whole);
    list.push_back(std::move(json));
  }

  void points(json::Json& json, const ChartSeries& series, const std::vector<std::size_t>& places) const {
    if (series.points.empty()) return;
    json::Json list = json::Json::object();
    for (std::size_t i = 0; i < places.size(); ++i) {
      const auto found = series.points.find(places[i]);
      if (found == series.points.end()) continue;
      const auto& point = found->second;
      auto entry = point.look ? lookJson(*point.look, assetPrefix_) : json::Json::object();
      if (point.look) entry["hasLook"] = true;
      if (point.marker) entry["marker"] = markerJson(*point.marker, assetPrefix_);
      if (point.explosion) entry["explosion"] = *point.explosion;
      list[std::to_string(i)] = std::move(entry);
    }
    json["points"] = std::move(list);
  }

  json::Json labelLook(const ChartLabel& label) const {
    auto json = lookJson(label.look, assetPrefix_);
    json["font"] = fontJson(label.font);
    if (!label.position.empty()) json["position"] = label.position;
    if (label.rotation != 0) json["rotation"] = pixels(label.rotation);
    if (label.place.x && label.place.isOffset) json["dx"] = *label.place.x;
    if (label.place.y && label.place.isOffset) json["dy"] = *label.place.y;
    return json;
  }

  void labels(json::Json& json, const ChartGroup& group, const ChartSeries& series,
              const std::vector<std::size_t>& places, double whole) {
    if (places.size() > MostLabels || (!series.label && series.pointLabels.empty())) return;
    const ScaledAxis* axis =
        group.hasAxes() && !group.isXy() ? &plot_.axes().at(group.categoryAxis) : nullptr;
    const auto& categories =
        axis != nullptr && series.categories.size() == 0 ? *axis->categories : series.categories;
    json::Json texts = json::Json::array();
    json::Json own = json::Json::object();
    for (std::size_t i = 0; i < places.size(); ++i) {
      const auto place = places[i];
      const ChartLabel* label = series.label ? &*series.label : nullptr;
      if (const auto found = series.pointLabels.find(place); found != series.pointLabels.end()) {
        label = found->second ? &*found->second : nullptr;
        if (label != nullptr) own[std::to_string(i)] = labelLook(*label);
      }
      if (label == nullptr || place >= series.values.values.size() ||
          std::isnan(series.values.values[place])) {
        texts.push_back("");
        continue;
      }
      const auto category =
          group.isXy()
              ? plot_.texts().number(place < series.x.values.size() ? series.x.values[place] : NoValue,
                                     series.x.format)
              : plot_.texts().category(categories, place,
                                       axis != nullptr ? axis->axis->format : std::nullopt);
      const double share = whole > 0 ? std::abs(series.values.values[place]) / whole : NoValue;
      texts.push_back(plot_.texts().label(*label, series, place, category, share));
    }
    ChartLabel plain;
    plain.font = plot_.model().font;
    auto entry = labelLook(series.label.value_or(plain));
    entry["texts"] = std::move(texts);
    if (!own.empty()) entry["own"] = std::move(own);
    if (series.hasLeaderLines) entry["hasLeaders"] = true;
    json["labels"] = std::move(entry);
  }

  void trends(json::Json& list, const ChartGroup& group, const ChartSeries& series) const {
    if (group.stacking != ChartStacking::None || group.isHorizontal || group.kind == ChartKind::Radar) return;
    std::vector<double> x = series.x.values;
    const auto& y = series.values.values;
    if (!group.isXy()) {
      // The first slot counts as one; dates are counted, too.
      if (plot_.keptSlots(group.categoryAxis).size() != y.size()) return;
      x.resize(y.size());
      for (std::size_t i = 0; i < x.size(); ++i) x[i] = static_cast<double>(i + 1);
    }
    if (x.size() > plot_.mostPoints()) return;
    for (const auto& trend : series.trends) {
      const auto line = trendPoints(trend, x, y);
      if (line.empty()) continue;
      json::Json data = json::Json::array();
      for (const auto& [px, py] : line) {
        data.push_back({group.isXy() ? px : px - 1, py});
      }
      list.push_back({{"kind", "trend"},
                      {"axes", {group.categoryAxis, group.valueAxis}},
                      {"data", std::move(data)},
                      {"line", lineJson(trend.line)}});
    }
  }

  /// `own` is the series' place in the list: bars stand beside each other.
  void errors(json::Json& list, const ChartGroup& group, const ChartSeries& series,
              const std::vector<std::size_t>& places, std::size_t own) const {
    if (group.stacking != ChartStacking::None || group.kind == ChartKind::Radar) return;
    for (const auto& bars : series.errors) {
      json::Json data = json::Json::array();
      for (std::size_t i = 0; i < places.size(); ++i) {
        const auto place = places[i];
        if (place >= bars.plus.size() || place >= bars.minus.size()) continue;
        const double y = place < series.values.values.size() ? series.values.values[place] : NoValue;
        const double x = group.isXy() ? series.x.values[place] : static_cast<double>(i);
        if (std::isnan(x) || std::isnan(y)) continue;
        const double middle = bars.isHorizontal ? x : y;
        data.push_back({x, y, middle - bars.minus[place], middle + bars.plus[place]});
      }
      json::Json json{{"kind", "errors"},
                      {"axes", {group.categoryAxis, group.valueAxis}},
                      {"data", std::move(data)},
                      {"line", lineJson(bars.line)},
                      {"isAlongX", bars.isHorizontal},
                      {"hasCaps", bars.hasCaps}};
      if (group.kind == ChartKind::Bar) json["of"] = own;
      list.push_back(std::move(json));
    }
  }

  /// Lines and bars between the series of a group: from the highest to the lowest,
  /// from the first to the last, from the highest to the axis.
  void ranges(json::Json& list, const ChartGroup& group) const {
    const bool hasBars = group.upBars || group.downBars;
    if (!group.highLow && !hasBars && !group.drops) return;
    const auto& slots = plot_.axes().at(group.categoryAxis).slots;
    const auto& kept = plot_.keptSlots(group.categoryAxis);
    json::Json data = json::Json::array();
    for (std::size_t i = 0; i < kept.size(); ++i) {
      const auto category = slots.categoryOf[kept[i]];
      double low = NoValue;
      double high = NoValue;
      for (const auto& series : group.series) {
        const double v = category < series.values.values.size() ? series.values.values[category] : NoValue;
        if (!(low <= v) && !std::isnan(v)) low = v;
        if (!(high >= v) && !std::isnan(v)) high = v;
      }
      const auto of = [&](const ChartSeries& series) {
        return category < series.values.values.size() ? series.values.values[category] : NoValue;
      };
      if (std::isnan(low)) continue;
      data.push_back(
          {i, low, high, numberJson(of(group.series.front())), numberJson(of(group.series.back()))});
    }
    json::Json json{{"kind", "ranges"},
                    {"axes", {group.categoryAxis, group.valueAxis}},
                    {"data", std::move(data)},
                    {"gap", group.gapWidth},
                    {"base", plot_.axes().crossingValue(*plot_.axes().at(group.categoryAxis).axis)}};
    if (group.highLow) json["line"] = lineJson(group.highLow);
    if (group.drops) json["drops"] = lineJson(group.drops);
    if (group.upBars) json["up"] = lookJson(*group.upBars, assetPrefix_);
    if (group.downBars) json["down"] = lookJson(*group.downBars, assetPrefix_);
    list.push_back(std::move(json));
  }

  ChartPlot& plot_;
  std::string_view assetPrefix_;
};

}  // namespace

json::Json seriesJson(ChartPlot& plot, std::string_view assetPrefix) {
  json::Json list = json::Json::array();
  SeriesWriter writer(plot, assetPrefix);
  for (const auto& group : plot.model().groups) writer.write(list, group);
  return list;
}

}  // namespace render
