#include <algorithm>
#include <charconv>
#include <cmath>

#include "render/chart/ChartModel.h"
#include "render/scene/DumpWords.h"

// Charts as lines: what the model says, before anything is laid out.

namespace render {

namespace {

/// Values, names of categories and formatted points of a series.
constexpr std::size_t MostShown = 12;

std::string value(double number) {
  if (std::isnan(number)) return "-";
  constexpr int Digits = 6;
  char text[32];
  const auto [end, error] =
      std::to_chars(text, text + sizeof text, number, std::chars_format::general, Digits);
  return {text, end};
}

/// The first of a list, each by `each`, and how many there are of a longer one.
template <typename List, typename Each>
std::string some(const char* name, const List& list, Each each) {
  if (list.empty()) return {};
  std::string text = name;
  for (std::size_t i = 0; i < std::min(list.size(), MostShown); ++i) text += " " + each(list[i]);
  if (list.size() > MostShown) text += " … " + std::to_string(list.size()) + " in all";
  return text;
}

std::string words(const ChartLook& look) {
  std::string text;
  if (isVisible(look.fill)) text += " fill " + words(look.fill);
  if (look.line) text += " line " + words(*look.line);
  return text;
}

std::string words(const ChartPlace& place) {
  if (!place.x && !place.y && !place.w && !place.h) return {};
  std::string text = place.isOffset ? " moved by" : " placed at";
  for (const auto& share : {place.x, place.y, place.w, place.h})
    text += " " + (share ? percent(*share) : "-");
  return text;
}

std::string words(const ChartTitle& title) {
  std::string text;
  for (const auto& paragraph : title.text.paragraphs) {
    for (const auto& run : paragraph.runs) text += run.text;
  }
  return inQuotes(text) + (title.overlays ? " overlays" : "") + words(title.place);
}

std::string words(const ChartLabel& label) {
  std::string text = " labels";
  if (label.showsSeries) text += " series";
  if (label.showsCategory) text += " category";
  if (label.showsValue) text += " value";
  if (label.showsPercent) text += " percent";
  if (label.showsSize) text += " size";
  if (!label.position.empty()) text += " " + inQuotes(label.position);
  if (!label.format.empty()) text += " as " + inQuotes(label.format);
  if (!label.text.empty()) text += " " + inQuotes(label.text);
  return text;
}

std::string words(const ChartGroup& group) {
  static constexpr std::string_view kinds[] = {"bars",    "lines",   "areas", "pie",  "doughnut",
                                               "scatter", "bubbles", "radar", "stock"};
  std::string text(kinds[static_cast<std::size_t>(group.kind)]);
  if (group.stacking != ChartStacking::None)
    text += group.stacking == ChartStacking::Stacked ? " stacked" : " stacked to 100%";
  if (group.kind == ChartKind::Bar) {
    if (group.isHorizontal) text += " horizontal";
    text += " gap " + percent(group.gapWidth) + " overlap " + percent(group.overlap);
  }
  if (group.variesColors) text += " in varied colours";
  if (group.categoryAxis >= 0 || group.valueAxis >= 0)
    text +=
        " on axes " + std::to_string(group.categoryAxis + 1) + " and " + std::to_string(group.valueAxis + 1);
  return text;
}

void dumpSeries(DumpLines& lines, int depth, const ChartSeries& series) {
  std::string text = "series " + inQuotes(series.name) + words(series.look);
  if (!series.marker.symbol.empty())
    text += " marker " + inQuotes(series.marker.symbol) + words(series.marker.look);
  if (series.isSmooth) text += " smooth";
  if (series.label && series.label->isShown()) text += words(*series.label);
  lines.add(depth++, text);
  const auto values = [&](const char* name, const ChartNumbers& numbers) {
    if (numbers.values.empty()) return;
    const std::string format = numbers.format.empty() ? "" : " as " + inQuotes(numbers.format);
    lines.add(depth, some(name, numbers.values, value) + format);
  };
  const std::string names = series.categories.isNumeric()
                                ? some("categories", series.categories.numbers, value)
                                : some("categories", series.categories.texts, inQuotes);
  if (!names.empty()) lines.add(depth, names);
  values("x", series.x);
  values("values", series.values);
  values("sizes", series.sizes);
  std::size_t shown = 0;
  for (const auto& [index, point] : series.points) {
    if (!point.look && !point.explosion) continue;
    if (++shown > MostShown) break;
    lines.add(depth, "point " + std::to_string(index + 1) + (point.look ? words(*point.look) : "") +
                         (point.explosion ? " exploded " + percent(*point.explosion) : ""));
  }
}

std::string words(const ChartAxis& axis) {
  static constexpr std::string_view kinds[] = {"categories", "dates", "values"};
  static constexpr std::string_view sides[] = {"left", "top", "right", "bottom"};
  std::string text(kinds[static_cast<std::size_t>(axis.kind)]);
  text += " " + std::string(sides[static_cast<std::size_t>(axis.side)]);
  if (axis.isDeleted) text += " deleted";
  if (axis.isReversed) text += " reversed";
  const auto stated = [&](const char* name, const std::optional<double>& number) {
    if (number) text += name + value(*number);
  };
  stated(" log ", axis.logBase);
  stated(" from ", axis.min);
  stated(" to ", axis.max);
  stated(" steps ", axis.major);
  if (axis.format) text += " as " + inQuotes(*axis.format);
  if (axis.line) text += " line " + words(*axis.line);
  if (axis.grid) text += " grid " + words(*axis.grid);
  if (axis.title) text += " title " + words(*axis.title);
  return text;
}

}  // namespace

void dumpChart(DumpLines& lines, int depth, const ChartModel& chart) {
  static constexpr std::string_view sides[] = {"right", "left", "top", "bottom", "top right"};
  if (chart.title) lines.add(depth, "title " + words(*chart.title));
  if (const std::string plot = words(chart.plot) + words(chart.plotPlace); !plot.empty())
    lines.add(depth, "plot" + plot);
  for (const auto& group : chart.groups) {
    lines.add(depth, words(group));
    for (const auto& series : group.series) dumpSeries(lines, depth + 1, series);
  }
  for (std::size_t i = 0; i < chart.axes.size(); ++i)
    lines.add(depth, "axis " + std::to_string(i + 1) + " " + words(chart.axes[i]));
  if (chart.legend) {
    lines.add(depth, "legend " + std::string(sides[static_cast<std::size_t>(chart.legend->side)]) +
                         (chart.legend->overlays ? " overlays" : "") + words(chart.legend->place));
  }
  for (const auto& problem : chart.problems) lines.add(depth, "problem " + inQuotes(problem));
}

}  // namespace render
