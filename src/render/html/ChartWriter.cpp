#include "render/html/ChartWriter.h"

#include <algorithm>
#include <cmath>

#include "render/chart/ChartPlot.h"
#include "render/html/ChartJson.h"
#include "render/html/ChartSeriesJson.h"
#include "render/html/TextWriter.h"

// A chart as a whole: its title, legend and axes around the series.

namespace render {

namespace {

const char* nameOf(ChartAxis::Tick tick) {
  static constexpr const char* names[] = {"none", "in", "out", "cross"};
  return names[static_cast<int>(tick)];
}

/// Of the legend's keys: lines and markers, not boxes.
bool isDrawnAsLine(const ChartGroup& group) {
  return group.kind != ChartKind::Bar && group.kind != ChartKind::Area && !group.isFilledRadar;
}

class Writer {
 public:
  Writer(const ChartModel& model, double width, double height, std::string_view assetPrefix)
      : plot_(model, width, height), assetPrefix_(assetPrefix) {}

  std::string write() {
    const ChartModel& model = plot_.model();
    json::Json json;
    if (model.title) json["title"] = title(*model.title);
    if (model.legend) json["legend"] = legend(*model.legend);
    json["plot"] = lookJson(model.plot, assetPrefix_);
    if (auto place = placeJson(model.plotPlace); !place.is_null()) json["plot"]["place"] = std::move(place);
    json["axes"] = json::Json::array();
    for (std::size_t i = 0; i < plot_.axes().all().size(); ++i) json["axes"].push_back(axis(i));
    json["series"] = seriesJson(plot_, assetPrefix_);
    return json::textOf(json);
  }

 private:
  json::Json title(const ChartTitle& title) const {
    auto json = lookJson(title.look, assetPrefix_);
    HtmlOut html;
    // The chart's script lays it out beside texts of its own.
    TextWriter(html, assetPrefix_, 1).paragraphs(title.text);
    json["html"] = html.take();
    if (title.rotation != 0) json["rotation"] = pixels(title.rotation);
    if (title.overlays) json["overlays"] = true;
    if (auto place = placeJson(title.place); !place.is_null()) json["place"] = std::move(place);
    return json;
  }

  json::Json legend(const ChartLegend& legend) {
    static constexpr const char* sides[] = {"right", "left", "top", "bottom", "corner"};
    auto json = lookJson(legend.look, assetPrefix_);
    json["side"] = sides[static_cast<int>(legend.side)];
    if (legend.overlays) json["overlays"] = true;
    if (auto place = placeJson(legend.place); !place.is_null()) json["place"] = std::move(place);
    json["font"] = fontJson(legend.font);
    json::Json entries = json::Json::array();
    int entry = -1;
    const auto isDeleted = [&] {
      ++entry;
      return legend.deleted.contains(entry);
    };
    for (const auto& group : plot_.model().groups) {
      const bool isBeside = legend.side != ChartLegend::Side::Top && legend.side != ChartLegend::Side::Bottom;
      // Beside the plot the entries stand as the series do there.
      if (isBeside && group.kind == ChartKind::Bar &&
          group.isHorizontal == (group.stacking == ChartStacking::None)) {
        json["reversed"] = true;
      }
      for (const auto& series : group.series) {
        if (group.isRound() || (group.variesColors && plot_.seriesCount() == 1 && !series.points.empty())) {
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
  void sliceEntries(json::Json& entries, const ChartSeries& series, const IsDeleted& isDeleted) {
    const auto count = std::min({series.values.values.size(), MostSlices});
    for (std::size_t i = 0; i < count; ++i) {
      if (isDeleted()) continue;
      const auto point = series.points.find(i);
      auto json =
          lookJson(point != series.points.end() && point->second.look ? *point->second.look : series.look,
                   assetPrefix_);
      json["text"] = plot_.texts().category(series.categories, i, {});
      entries.push_back(std::move(json));
    }
  }

  json::Json seriesEntry(const ChartGroup& group, const ChartSeries& series) const {
    json::Json json = json::Json::object();
    if (group.kind == ChartKind::Bubble) {
      json["marker"] = markerJson({"circle", 8, series.look}, assetPrefix_);
    } else {
      json = lookJson(series.look, assetPrefix_);
      if (auto symbol = markerJson(series.marker, assetPrefix_); !symbol.is_null())
        json["marker"] = std::move(symbol);
    }
    json["text"] = series.name;
    if (isDrawnAsLine(group)) json["isLine"] = true;
    return json;
  }

  json::Json axis(std::size_t index) {
    const auto& scaled = plot_.axes().all()[index];
    if (scaled.axis == nullptr) return nullptr;
    const auto& axis = *scaled.axis;
    json::Json json{{"kind", scaled.isCategory ? "category" : "value"},
                    {"isHorizontal", scaled.isHorizontal}};
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
  void position(json::Json& json, const ChartAxis& axis) {
    const double at = plot_.axes().crossingShare(axis);
    json["at"] = std::round(at * 1e5) / 1e5;
    if (axis.labels == ChartAxis::Labels::None) return;
    const bool isCrossedReversed =
        axis.crossed >= 0 && plot_.model().axes[static_cast<std::size_t>(axis.crossed)].isReversed;
    const double low = isCrossedReversed ? 1 : 0;
    double side = low;
    if (axis.labels == ChartAxis::Labels::High || at == 1 - low) side = 1 - low;
    if (axis.labels == ChartAxis::Labels::Low) side = low;
    json["labelsAt"] = axis.labels == ChartAxis::Labels::NextTo ? json["at"] : json::Json(side);
    json["outward"] = side > 0.5 ? 1 : -1;
  }

  void valueScale(json::Json& json, const ScaledAxis& scaled) {
    const auto& scale = scaled.scale;
    json["min"] = scale.min;
    json["max"] = scale.max;
    if (scale.logBase) json["log"] = *scale.logBase;
    json["ticks"] = scaled.ticks;
    json::Json labels = json::Json::array();
    for (const double tick : scaled.ticks) labels.push_back(plot_.axes().tickText(scaled, tick));
    json["labels"] = std::move(labels);
    if (scaled.axis->minorGrid || scaled.axis->minorTick != ChartAxis::Tick::None) {
      json["minorTicks"] = scale.minorTicks();
    }
  }

  void categoryScale(json::Json& json, const ScaledAxis& scaled, std::size_t index) {
    const auto& slots = scaled.slots;
    const auto& kept = plot_.keptSlots(static_cast<int>(index));
    json::Json labels = json::Json::array();
    for (const auto slot : kept) {
      if (!slots.dates.empty()) {
        labels.push_back(
            plot_.texts().number(slots.dates[slot], scaled.axis->format.value_or(scaled.categories->format)));
      } else {
        labels.push_back(
            plot_.texts().category(*scaled.categories, slots.categoryOf[slot], scaled.axis->format));
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

  ChartPlot plot_;
  std::string_view assetPrefix_;
};

}  // namespace

std::string chartDescription(const ChartModel& model, double width, double height,
                             std::string_view assetPrefix) {
  return Writer(model, width, height, assetPrefix).write();
}

}  // namespace render
