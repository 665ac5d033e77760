#pragma once

#include <cstdint>
#include <limits>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "render/text/Text.h"

// What a chart part says (ECMA-376 part 1, 21.2), with colours, fonts and automatic
// formatting resolved; nothing of it is laid out. Lengths are px, shares are of the
// chart's width or height.

namespace render {

/// Stands where a series has no number.
inline constexpr double NoValue = std::numeric_limits<double>::quiet_NaN();

/// What a worksheet's chart can have; more are not read.
inline constexpr std::size_t MostSeries = 255;

/// 3-D kinds count as their flat ones.
enum class ChartKind : std::uint8_t { Bar, Line, Area, Pie, Doughnut, Scatter, Bubble, Radar, Stock };
enum class ChartStacking : std::uint8_t { None, Stacked, Percent };

/// What an element is painted with; without a line none is drawn.
struct ChartLook {
  Fill fill;
  std::optional<Line> line;
};

/// A series' numbers by point; NoValue where there is none.
struct ChartNumbers {
  std::vector<double> values;
  /// Of the worksheet's cells; empty is General.
  std::string format;
};

/// Names or, where the worksheet has numbers or dates, those.
struct ChartCategories {
  std::vector<std::string> texts;
  std::vector<double> numbers;
  std::string format;
  [[nodiscard]] bool isNumeric() const { return !numbers.empty(); }
  [[nodiscard]] std::size_t size() const { return isNumeric() ? numbers.size() : texts.size(); }
};

/// Where an element was put by hand (c:manualLayout).
struct ChartPlace {
  std::optional<double> x, y, w, h;
  /// x and y count from where the element would stand by itself.
  bool isOffset = false;
  /// The plot area's inner rectangle, without tick labels.
  bool isInner = false;
};

struct ChartMarker {
  /// ST_MarkerStyle ("diamond"); empty is none.
  std::string symbol;
  double size = 0;  // px
  ChartLook look;
};

/// What stands at a point (c:dLbl, 21.2.2.47).
struct ChartLabel {
  bool showsValue = false;
  bool showsCategory = false;
  bool showsSeries = false;
  bool showsPercent = false;
  bool showsSize = false;
  /// ST_DLblPos ("outEnd"); empty is the kind's own.
  std::string position;
  std::string separator = ", ";
  /// Empty is that of the values.
  std::string format;
  RunStyle font;
  double rotation = 0;  // degrees clockwise
  ChartLook look;
  /// Instead of what it would show.
  std::string text;
  ChartPlace place;

  [[nodiscard]] bool isShown() const {
    return showsValue || showsCategory || showsSeries || showsPercent || showsSize || !text.empty();
  }
};

/// What a single point has of its own (c:dPt); unset is the series'.
struct ChartPoint {
  std::optional<ChartLook> look;
  std::optional<ChartMarker> marker;
  std::optional<double> explosion;
};

struct ChartTrend {
  enum class Kind : std::uint8_t { Linear, Logarithmic, Exponential, Power, Polynomial, MovingAverage };
  Kind kind = Kind::Linear;
  /// Of a polynomial, or the period of a moving average.
  int order = 2;
  /// How far it goes on beyond the points, in units of X.
  double forward = 0;
  double backward = 0;
  std::optional<double> intercept;
  std::string name;
  Line line;
};

struct ChartErrorBars {
  bool isHorizontal = false;
  bool hasCaps = true;
  /// How far the bars reach at each point.
  std::vector<double> plus;
  std::vector<double> minus;
  Line line;
};

/// c:ser. Points count from 0; all that is stated by point has its place as key.
struct ChartSeries {
  int index = 0;  // c:idx, which automatic colours go by
  int order = 0;  // c:order
  std::string name;
  ChartCategories categories;
  ChartNumbers values;
  ChartNumbers x;
  ChartNumbers sizes;
  ChartLook look;
  ChartMarker marker;
  bool isSmooth = false;
  bool invertsNegative = false;
  double explosion = 0;  // share of the radius
  std::map<std::size_t, ChartPoint> points;
  std::optional<ChartLabel> label;
  /// Nothing where a point's label was deleted.
  std::map<std::size_t, std::optional<ChartLabel>> pointLabels;
  bool hasLeaderLines = false;
  std::vector<ChartTrend> trends;
  std::vector<ChartErrorBars> errors;
};

/// Series of one kind on one pair of axes (c:barChart and its like).
struct ChartGroup {
  ChartKind kind = ChartKind::Bar;
  ChartStacking stacking = ChartStacking::None;
  bool isHorizontal = false;
  bool variesColors = false;
  double gapWidth = 1.5;   // share of a bar's width
  double overlap = 0;      // -1 to 1
  double firstAngle = 0;   // degrees clockwise from the top
  double holeSize = 0.5;   // share of the outer radius
  double bubbleScale = 1;  // the largest bubble measures a quarter of the plot times this
  bool sizeIsWidth = false;
  bool showsNegativeBubbles = false;
  bool isFilledRadar = false;
  std::optional<Line> highLow;
  std::optional<Line> drops;
  std::optional<ChartLook> upBars, downBars;
  /// Places in ChartModel::axes; -1 without.
  int categoryAxis = -1;
  int valueAxis = -1;
  std::vector<ChartSeries> series;

  [[nodiscard]] bool isRound() const { return kind == ChartKind::Pie || kind == ChartKind::Doughnut; }
  /// Its points have an X of their own.
  [[nodiscard]] bool isXy() const { return kind == ChartKind::Scatter || kind == ChartKind::Bubble; }
  [[nodiscard]] bool hasAxes() const { return categoryAxis >= 0 && valueAxis >= 0; }
};

struct ChartTitle {
  TextBody text;
  double rotation = 0;  // degrees clockwise
  bool overlays = false;
  ChartPlace place;
  ChartLook look;
};

struct ChartAxis {
  enum class Kind : std::uint8_t { Category, Date, Value };
  enum class Side : std::uint8_t { Left, Top, Right, Bottom };
  enum class Tick : std::uint8_t { None, Inside, Outside, Cross };
  enum class Labels : std::uint8_t { None, NextTo, Low, High };
  enum class Unit : std::uint8_t { Days, Months, Years };
  Kind kind = Kind::Category;
  Side side = Side::Bottom;
  std::string id;
  /// Place of the axis that it crosses; -1 without.
  int crossed = -1;
  bool isDeleted = false;
  bool isReversed = false;
  std::optional<double> logBase;
  std::optional<double> min, max, major, minor;
  /// Where it crosses the other axis: nothing is zero or the nearest to it.
  enum class Crossing : std::uint8_t { Zero, Min, Max, At };
  Crossing crossing = Crossing::Zero;
  double crossingAt = 0;
  /// Of a value axis: the other's categories lie between its tick marks.
  bool crossesBetween = true;
  Tick majorTick = Tick::Outside;
  Tick minorTick = Tick::None;
  Labels labels = Labels::NextTo;
  /// Of tick labels; nothing is that of the source.
  std::optional<std::string> format;
  double displayUnit = 1;
  RunStyle font;
  std::optional<double> rotation;  // of tick labels; unset is automatic
  std::optional<Line> line;
  std::optional<Line> grid;
  std::optional<Line> minorGrid;
  std::optional<ChartTitle> title;
  int labelSkip = 0;  // 0 is automatic
  int tickSkip = 1;
  std::optional<Unit> baseUnit;
  Unit majorUnit = Unit::Days;
};

struct ChartLegend {
  enum class Side : std::uint8_t { Right, Left, Top, Bottom, TopRight };
  Side side = Side::Right;
  bool overlays = false;
  ChartPlace place;
  RunStyle font;
  ChartLook look;
  std::set<int> deleted;  // numbers of entries
};

enum class ChartGaps : std::uint8_t { Gap, Zero, Span };

/// A chart (c:chartSpace, 21.2.2.29). Everything in it is its own.
struct ChartModel {
  /// Of the whole; also of a chart that shows nothing else.
  ChartLook area;
  bool hasRoundedCorners = false;
  ChartLook plot;
  ChartPlace plotPlace;
  std::optional<ChartTitle> title;
  std::optional<ChartLegend> legend;
  std::vector<ChartAxis> axes;
  std::vector<ChartGroup> groups;
  ChartGaps gaps = ChartGaps::Gap;
  /// Day serials count from 1904.
  bool from1904 = false;
  /// What labels are written in where nothing is stated.
  RunStyle font;
  /// What was left out, one sentence each.
  std::vector<std::string> problems;
};

}  // namespace render
