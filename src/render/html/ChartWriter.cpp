#include "render/html/ChartWriter.h"

#include <algorithm>
#include <cmath>

#include "render/chart/ChartAxes.h"
#include "render/chart/ChartTrend.h"
#include "render/html/ChartJson.h"
#include "render/html/TextWriter.h"

namespace render {

namespace {

/// Texts of more points than these cannot be read anyway.
constexpr std::size_t MostLabels = 1000;
constexpr std::size_t MostSlices = 1000;

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

const char* nameOf(ChartAxis::Tick tick) {
  static constexpr const char* names[] = {"none", "in", "out", "cross"};
  return names[static_cast<int>(tick)];
}

bool isRound(const ChartGroup& group) {
  return group.kind == ChartKind::Pie || group.kind == ChartKind::Doughnut;
}
bool isXy(const ChartGroup& group) {
  return group.kind == ChartKind::Scatter || group.kind == ChartKind::Bubble;
}
/// Of the legend's keys: lines and markers, not boxes.
bool isDrawnAsLine(const ChartGroup& group) {
  return group.kind != ChartKind::Bar && group.kind != ChartKind::Area && !group.isFilledRadar;
}
bool hasAxes(const ChartGroup& group) { return group.categoryAxis >= 0 && group.valueAxis >= 0; }

ChartJson number(double value) { return std::isfinite(value) ? ChartJson(value) : ChartJson(nullptr); }

class Writer {
 public:
  Writer(const ChartModel& model, double width, double height, std::string_view assetPrefix)
      : model_(model),
        texts_(model.from1904),
        axes_(model, width, height, texts_),
        assetPrefix_(assetPrefix) {
    for (const auto& group : model.groups) seriesCount_ += group.series.size();
    kept_ = pointsKept(seriesCount_);
    keepSlots();
  }

  std::string write() {
    ChartJson json;
    if (model_.title) json["title"] = title(*model_.title);
    if (model_.legend) json["legend"] = legend(*model_.legend);
    json["plot"] = look(model_.plot);
    if (auto place = placeJson(model_.plotPlace); !place.is_null()) json["plot"]["place"] = std::move(place);
    json["axes"] = ChartJson::array();
    for (std::size_t i = 0; i < axes_.all().size(); ++i) json["axes"].push_back(axis(i));
    json["series"] = ChartJson::array();
    for (const auto& group : model_.groups) writeGroup(json["series"], group);
    return json.dump(-1, ' ', false, ChartJson::error_handler_t::replace);
  }

 private:
  // Looks.
  ChartJson look(const ChartLook& look) const {
    ChartJson json = ChartJson::object();
    if (auto fill = paintJson(look.fill, assetPrefix_); !fill.is_null()) json["fill"] = std::move(fill);
    if (auto line = lineJson(look.line); !line.is_null()) json["line"] = std::move(line);
    return json;
  }

  ChartJson marker(const ChartMarker& marker) const {
    if (marker.symbol.empty()) return nullptr;
    auto json = look(marker.look);
    json["symbol"] = marker.symbol;
    json["size"] = pixels(marker.size);
    return json;
  }

  ChartJson title(const ChartTitle& title) const {
    auto json = look(title.look);
    HtmlOut html;
    // The chart's script lays it out beside texts of its own.
    TextWriter(html, assetPrefix_, 1).paragraphs(title.text);
    json["html"] = html.take();
    if (title.rotation != 0) json["rotation"] = pixels(title.rotation);
    if (title.overlays) json["overlays"] = true;
    if (auto place = placeJson(title.place); !place.is_null()) json["place"] = std::move(place);
    return json;
  }

  // The legend.
  ChartJson legend(const ChartLegend& legend) {
    static constexpr const char* sides[] = {"right", "left", "top", "bottom", "corner"};
    auto json = look(legend.look);
    json["side"] = sides[static_cast<int>(legend.side)];
    if (legend.overlays) json["overlays"] = true;
    if (auto place = placeJson(legend.place); !place.is_null()) json["place"] = std::move(place);
    json["font"] = fontJson(legend.font);
    ChartJson entries = ChartJson::array();
    int entry = -1;
    const auto isDeleted = [&] {
      ++entry;
      return legend.deleted.contains(entry);
    };
    for (const auto& group : model_.groups) {
      const bool isBeside = legend.side != ChartLegend::Side::Top && legend.side != ChartLegend::Side::Bottom;
      // Beside the plot the entries stand as the series do there.
      if (isBeside && group.kind == ChartKind::Bar &&
          group.isHorizontal == (group.stacking == ChartStacking::None)) {
        json["reversed"] = true;
      }
      for (const auto& series : group.series) {
        if (isRound(group) || (group.variesColors && seriesCount_ == 1 && !series.points.empty())) {
          sliceEntries(entries, series, isDeleted);
          break;
        }
        if (!isDeleted()) entries.push_back(seriesEntry(group, series));
        for (const auto& trend : series.trends) {
          if (isDeleted()) continue;
          entries.push_back({{"text", trend.name.empty() ? trendName(trend, series) : trend.name},
                             {"isLine", true},
                             {"line", lineJson(trend.line)}});
        }
      }
    }
    json["entries"] = std::move(entries);
    return json;
  }

  static std::string trendName(const ChartTrend& trend, const ChartSeries& series) {
    static constexpr const char* names[] = {"Linear", "Log.", "Expon.", "Power", "Poly."};
    if (trend.kind == ChartTrend::Kind::MovingAverage) {
      return std::to_string(trend.order) + " per. Mov. Avg. (" + series.name + ")";
    }
    return std::string(names[static_cast<int>(trend.kind)]) + " (" + series.name + ")";
  }

  template <typename IsDeleted>
  void sliceEntries(ChartJson& entries, const ChartSeries& series, const IsDeleted& isDeleted) {
    const auto count = std::min({series.values.values.size(), MostSlices});
    for (std::size_t i = 0; i < count; ++i) {
      if (isDeleted()) continue;
      const auto point = series.points.find(i);
      auto json =
          look(point != series.points.end() && point->second.look ? *point->second.look : series.look);
      json["text"] = texts_.category(series.categories, i, {});
      entries.push_back(std::move(json));
    }
  }

  ChartJson seriesEntry(const ChartGroup& group, const ChartSeries& series) const {
    ChartJson json = ChartJson::object();
    if (group.kind == ChartKind::Bubble) {
      json["marker"] = marker({"circle", 8, series.look});
    } else {
      json = look(series.look);
      if (auto symbol = marker(series.marker); !symbol.is_null()) json["marker"] = std::move(symbol);
    }
    json["text"] = series.name;
    if (isDrawnAsLine(group)) json["isLine"] = true;
    return json;
  }

  // Axes.
  ChartJson axis(std::size_t index) {
    const auto& scaled = axes_.all()[index];
    if (scaled.axis == nullptr) return nullptr;
    const auto& axis = *scaled.axis;
    ChartJson json{{"kind", scaled.isCategory ? "category" : "value"}, {"isHorizontal", scaled.isHorizontal}};
    if (axis.isDeleted) json["isHidden"] = true;
    if (axis.isReversed) json["isReversed"] = true;
    json["font"] = fontJson(axis.font);
    if (auto line = lineJson(axis.line); !line.is_null()) json["line"] = std::move(line);
    if (auto grid = lineJson(axis.grid); !grid.is_null()) json["grid"] = std::move(grid);
    if (auto grid = lineJson(axis.minorGrid); !grid.is_null()) json["minorGrid"] = std::move(grid);
    json["tick"] = nameOf(axis.majorTick);
    json["minorTick"] = nameOf(axis.minorTick);
    if (axis.rotation) json["rotation"] = pixels(*axis.rotation);
    position(json, axis);
    if (axis.title && !axis.isDeleted) json["title"] = title(*axis.title);
    if (scaled.isCategory) {
      categoryScale(json, scaled, index);
    } else {
      valueScale(json, scaled);
    }
    return json;
  }

  /// Where the axis and its labels stand across the plot, as shares of it.
  void position(ChartJson& json, const ChartAxis& axis) const {
    const double at = axes_.crossingShare(axis);
    json["at"] = std::round(at * 1e5) / 1e5;
    if (axis.labels == ChartAxis::Labels::None) return;
    const bool isCrossedReversed =
        axis.crossed >= 0 && model_.axes[static_cast<std::size_t>(axis.crossed)].isReversed;
    const double low = isCrossedReversed ? 1 : 0;
    double side = low;
    if (axis.labels == ChartAxis::Labels::High || at == 1 - low) side = 1 - low;
    if (axis.labels == ChartAxis::Labels::Low) side = low;
    json["labelsAt"] = axis.labels == ChartAxis::Labels::NextTo ? json["at"] : ChartJson(side);
    json["outward"] = side > 0.5 ? 1 : -1;
  }

  void valueScale(ChartJson& json, const ScaledAxis& scaled) {
    const auto& scale = scaled.scale;
    json["min"] = scale.min;
    json["max"] = scale.max;
    if (scale.logBase) json["log"] = *scale.logBase;
    json["ticks"] = scaled.ticks;
    ChartJson labels = ChartJson::array();
    for (const double tick : scaled.ticks) labels.push_back(axes_.tickText(scaled, tick));
    json["labels"] = std::move(labels);
    if (scaled.axis->minorGrid || scaled.axis->minorTick != ChartAxis::Tick::None) {
      json["minorTicks"] = scale.minorTicks();
    }
  }

  void categoryScale(ChartJson& json, const ScaledAxis& scaled, std::size_t index) {
    const auto& slots = scaled.slots;
    const auto& kept = keptSlots_[index];
    ChartJson labels = ChartJson::array();
    for (const auto slot : kept) {
      if (!slots.dates.empty()) {
        labels.push_back(
            texts_.number(slots.dates[slot], scaled.axis->format.value_or(scaled.categories->format)));
      } else {
        labels.push_back(texts_.category(*scaled.categories, slots.categoryOf[slot], scaled.axis->format));
      }
    }
    json["labels"] = std::move(labels);
    json["isBetween"] = scaled.isBetween;
    const int every = slots.step > 0 ? slots.step : scaled.axis->labelSkip;
    if (every > 0) json["every"] = every;
    if (slots.step > 0 || scaled.axis->tickSkip > 1) {
      json["ticksEvery"] = slots.step > 0 ? slots.step : scaled.axis->tickSkip;
    }
    if (!slots.dates.empty()) json["isDates"] = true;
  }

  /// Of axes with very many categories those that are drawn.
  void keepSlots() {
    keptSlots_.resize(axes_.all().size());
    for (std::size_t i = 0; i < keptSlots_.size(); ++i) {
      const auto& scaled = axes_.all()[i];
      if (scaled.axis == nullptr || !scaled.isCategory) continue;
      std::vector<std::vector<double>> columns;
      for (const auto& group : model_.groups) {
        if (group.categoryAxis != static_cast<int>(i)) continue;
        for (const auto& series : group.series) columns.push_back(spread(series.values.values, scaled.slots));
      }
      std::vector<const std::vector<double>*> pointers;
      for (const auto& column : columns) pointers.push_back(&column);
      keptSlots_[i] = thinned(pointers, kept_);
    }
  }

  static std::vector<double> spread(const std::vector<double>& values, const ChartSlots& slots) {
    std::vector<double> column;
    column.reserve(slots.categoryOf.size());
    for (const auto category : slots.categoryOf) {
      column.push_back(category < values.size() ? values[category] : NoValue);
    }
    return column;
  }

  // Series.
  void writeGroup(ChartJson& list, const ChartGroup& group) {
    const auto number = static_cast<int>(&group - model_.groups.data());
    if (isRound(group)) {
      double ring = 0;
      for (const auto& series : group.series) {
        writePie(list, group, series, ring);
        // A pie has room for one.
        if (group.kind == ChartKind::Pie) break;
        ++ring;
      }
      return;
    }
    const auto shown = shownValues(group, model_.gaps);
    for (std::size_t i = 0; i < group.series.size(); ++i) {
      const auto& series = group.series[i];
      auto json = begin(group, series);
      json["axes"] = {group.categoryAxis, group.valueAxis};
      // The places of points in the series, in the order in which they are written.
      std::vector<std::size_t> places;
      if (isXy(group)) {
        places = thinned({&series.values.values}, kept_);
        xyData(json, group, series, places);
      } else {
        const auto& slots = axes_.at(group.categoryAxis).slots;
        const auto& kept = keptSlots_[static_cast<std::size_t>(group.categoryAxis)];
        ChartJson data = ChartJson::array();
        for (const auto slot : kept) {
          const auto category = slots.categoryOf[slot];
          places.push_back(category);
          data.push_back(category < shown[i].size() ? render::number(shown[i][category]) : nullptr);
        }
        json["data"] = std::move(data);
        if (group.stacking != ChartStacking::None) json["stack"] = number;
        if (!slots.dates.empty() || model_.gaps == ChartGaps::Span) json["connects"] = true;
      }
      if (group.kind == ChartKind::Bar) {
        json["gap"] = group.gapWidth;
        json["overlap"] = group.stacking == ChartStacking::None ? group.overlap : 1;
        json["group"] = number;
        if (series.invertsNegative) json["inverts"] = true;
        json["base"] = axes_.crossingValue(*axes_.at(group.categoryAxis).axis);
      }
      if (group.kind == ChartKind::Area)
        json["base"] = axes_.crossingValue(*axes_.at(group.categoryAxis).axis);
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

  ChartJson begin(const ChartGroup& group, const ChartSeries& series) const {
    auto json = look(series.look);
    json["kind"] = nameOf(group.kind);
    json["name"] = series.name;
    if (auto symbol = marker(series.marker); !symbol.is_null()) json["marker"] = std::move(symbol);
    if (series.isSmooth) json["isSmooth"] = true;
    return json;
  }

  void xyData(ChartJson& json, const ChartGroup& group, const ChartSeries& series,
              const std::vector<std::size_t>& places) const {
    double largest = 0;
    if (group.kind == ChartKind::Bubble) {
      for (const auto& each : group.series) {
        for (const double size : each.sizes.values) {
          if (size > 0 || group.showsNegativeBubbles) largest = std::max(largest, std::abs(size));
        }
      }
    }
    ChartJson data = ChartJson::array();
    for (const auto place : places) {
      const double x = place < series.x.values.size() ? series.x.values[place] : NoValue;
      ChartJson point{render::number(x), render::number(series.values.values[place])};
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

  void writePie(ChartJson& list, const ChartGroup& group, const ChartSeries& series, double ring) {
    auto json = begin(group, series);
    const auto count = std::min(series.values.values.size(), MostSlices);
    double whole = 0;
    for (const double v : series.values.values) whole += std::isnan(v) ? 0 : std::abs(v);
    ChartJson data = ChartJson::array();
    ChartJson names = ChartJson::array();
    std::vector<std::size_t> places;
    for (std::size_t i = 0; i < count; ++i) {
      const double v = series.values.values[i];
      data.push_back(std::isnan(v) ? 0 : std::abs(v));
      names.push_back(texts_.category(series.categories, i, {}));
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

  void points(ChartJson& json, const ChartSeries& series, const std::vector<std::size_t>& places) const {
    if (series.points.empty()) return;
    ChartJson list = ChartJson::object();
    for (std::size_t i = 0; i < places.size(); ++i) {
      const auto found = series.points.find(places[i]);
      if (found == series.points.end()) continue;
      const auto& point = found->second;
      auto entry = point.look ? look(*point.look) : ChartJson::object();
      if (point.look) entry["hasLook"] = true;
      if (point.marker) entry["marker"] = marker(*point.marker);
      if (point.explosion) entry["explosion"] = *point.explosion;
      list[std::to_string(i)] = std::move(entry);
    }
    json["points"] = std::move(list);
  }

  ChartJson labelLook(const ChartLabel& label) const {
    auto json = look(label.look);
    json["font"] = fontJson(label.font);
    if (!label.position.empty()) json["position"] = label.position;
    if (label.rotation != 0) json["rotation"] = pixels(label.rotation);
    if (label.place.x && label.place.isOffset) json["dx"] = *label.place.x;
    if (label.place.y && label.place.isOffset) json["dy"] = *label.place.y;
    return json;
  }

  void labels(ChartJson& json, const ChartGroup& group, const ChartSeries& series,
              const std::vector<std::size_t>& places, double whole) {
    if (places.size() > MostLabels || (!series.label && series.pointLabels.empty())) return;
    const ScaledAxis* axis = hasAxes(group) && !isXy(group) ? &axes_.at(group.categoryAxis) : nullptr;
    const auto& categories =
        axis != nullptr && series.categories.size() == 0 ? *axis->categories : series.categories;
    ChartJson texts = ChartJson::array();
    ChartJson own = ChartJson::object();
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
          isXy(group)
              ? texts_.number(place < series.x.values.size() ? series.x.values[place] : NoValue,
                              series.x.format)
              : texts_.category(categories, place, axis != nullptr ? axis->axis->format : std::nullopt);
      const double share = whole > 0 ? std::abs(series.values.values[place]) / whole : NoValue;
      texts.push_back(texts_.label(*label, series, place, category, share));
    }
    ChartLabel plain;
    plain.font = model_.font;
    auto entry = labelLook(series.label.value_or(plain));
    entry["texts"] = std::move(texts);
    if (!own.empty()) entry["own"] = std::move(own);
    if (series.hasLeaderLines) entry["hasLeaders"] = true;
    json["labels"] = std::move(entry);
  }

  // What goes with series.
  void trends(ChartJson& list, const ChartGroup& group, const ChartSeries& series) const {
    if (group.stacking != ChartStacking::None || group.isHorizontal || group.kind == ChartKind::Radar) return;
    std::vector<double> x = series.x.values;
    const auto& y = series.values.values;
    if (!isXy(group)) {
      // The first slot counts as one; dates are counted, too.
      if (keptSlots_[static_cast<std::size_t>(group.categoryAxis)].size() != y.size()) return;
      x.resize(y.size());
      for (std::size_t i = 0; i < x.size(); ++i) x[i] = static_cast<double>(i + 1);
    }
    if (x.size() > kept_) return;
    for (const auto& trend : series.trends) {
      const auto line = trendPoints(trend, x, y);
      if (line.empty()) continue;
      ChartJson data = ChartJson::array();
      for (const auto& [px, py] : line) {
        data.push_back({isXy(group) ? px : px - 1, py});
      }
      list.push_back({{"kind", "trend"},
                      {"axes", {group.categoryAxis, group.valueAxis}},
                      {"data", std::move(data)},
                      {"line", lineJson(trend.line)}});
    }
  }

  /// `own` is the series' place in the list: bars stand beside each other.
  void errors(ChartJson& list, const ChartGroup& group, const ChartSeries& series,
              const std::vector<std::size_t>& places, std::size_t own) const {
    if (group.stacking != ChartStacking::None || group.kind == ChartKind::Radar) return;
    for (const auto& bars : series.errors) {
      ChartJson data = ChartJson::array();
      for (std::size_t i = 0; i < places.size(); ++i) {
        const auto place = places[i];
        if (place >= bars.plus.size() || place >= bars.minus.size()) continue;
        const double y = place < series.values.values.size() ? series.values.values[place] : NoValue;
        const double x = isXy(group) ? series.x.values[place] : static_cast<double>(i);
        if (std::isnan(x) || std::isnan(y)) continue;
        const double middle = bars.isHorizontal ? x : y;
        data.push_back({x, y, middle - bars.minus[place], middle + bars.plus[place]});
      }
      ChartJson json{{"kind", "errors"},
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
  void ranges(ChartJson& list, const ChartGroup& group) const {
    const bool hasBars = group.upBars || group.downBars;
    if (!group.highLow && !hasBars && !group.drops) return;
    const auto& slots = axes_.at(group.categoryAxis).slots;
    const auto& kept = keptSlots_[static_cast<std::size_t>(group.categoryAxis)];
    ChartJson data = ChartJson::array();
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
          {i, low, high, render::number(of(group.series.front())), render::number(of(group.series.back()))});
    }
    ChartJson json{{"kind", "ranges"},
                   {"axes", {group.categoryAxis, group.valueAxis}},
                   {"data", std::move(data)},
                   {"gap", group.gapWidth},
                   {"base", axes_.crossingValue(*axes_.at(group.categoryAxis).axis)}};
    if (group.highLow) json["line"] = lineJson(group.highLow);
    if (group.drops) json["drops"] = lineJson(group.drops);
    if (group.upBars) json["up"] = look(*group.upBars);
    if (group.downBars) json["down"] = look(*group.downBars);
    list.push_back(std::move(json));
  }

  const ChartModel& model_;
  ChartTexts texts_;
  ChartAxes axes_;
  std::string_view assetPrefix_;
  std::size_t seriesCount_ = 0;
  std::size_t kept_ = 0;
  std::vector<std::vector<std::size_t>> keptSlots_;
};

}  // namespace

std::string chartDescription(const ChartModel& model, double width, double height,
                             std::string_view assetPrefix) {
  return Writer(model, width, height, assetPrefix).write();
}

}  // namespace render
