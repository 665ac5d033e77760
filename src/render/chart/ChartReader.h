#pragma once

#include <optional>
#include <pugixml.hpp>

#include "opc/Package.h"
#include "render/chart/ChartData.h"
#include "render/chart/ChartModel.h"
#include "render/chart/ChartStyle.h"
#include "render/paint/PaintReader.h"

namespace render {

/// Reads one chart part. An unknown kind of chart, a missing cache or a text where
/// a number belongs costs what it concerns and becomes a problem of the model.
class ChartReader {
 public:
  /// `slide` is how the slide resolves colours and fonts; both must outlive the reader.
  ChartReader(opc::Part& part, const PaintContext& slide);

  ChartModel read();

 private:
  // The chart as a whole (ChartReader.cpp).
  void title(pugi::xml_node chart);
  void legend(pugi::xml_node node);
  void axes(pugi::xml_node plotArea);
  ChartAxis axis(pugi::xml_node node);
  ChartTitle readTitle(pugi::xml_node node, double scale, const std::string& automatic);
  [[nodiscard]] RunStyle font(pugi::xml_node txPr, const RunStyle& inherited) const;
  void look(ChartLook& look, pugi::xml_node spPr) const;
  void applyTo(std::optional<Line>& line, pugi::xml_node spPr) const;

  // Its series (ChartSeriesReader.cpp).
  void groups(pugi::xml_node plotArea);
  void group(pugi::xml_node node);
  ChartSeries series(pugi::xml_node ser, pugi::xml_node groupNode, const ChartGroup& group);
  void looksOf(ChartSeries& series, pugi::xml_node ser, pugi::xml_node groupNode, const ChartGroup& group,
               std::size_t seriesCount);
  void readPoints(ChartSeries& series, pugi::xml_node ser, const ChartGroup& group);
  ChartMarker marker(pugi::xml_node node, ChartMarker marker) const;
  void readLabels(ChartSeries& series, pugi::xml_node ser, pugi::xml_node groupNode);
  ChartLabel label(pugi::xml_node node, ChartLabel label) const;
  void readTrends(ChartSeries& series, pugi::xml_node ser) const;
  void readErrors(ChartSeries& series, pugi::xml_node ser);

  opc::Part& part_;
  PaintContext context_;
  Theme ownTheme_;
  ColorMap ownMap_;
  std::optional<ChartStyle> style_;
  ChartData data_;
  std::size_t seriesRead_ = 0;
  ChartModel model_;
};

/// c:layout's rectangle.
ChartPlace readChartPlace(pugi::xml_node layout);

}  // namespace render
