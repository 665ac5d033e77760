#include "render/chart/ChartStyle.h"

#include <iterator>

namespace render {

namespace {

Line plainLine(double width, const Color& color) {
  Line line;
  line.width = width;
  line.fill = color;
  return line;
}

}  // namespace

ChartStyle::ChartStyle(int number, const PaintContext& context)
    : number_(number >= 1 && number <= 48 ? number : 2), context_(context) {}

Color ChartStyle::themed(std::string_view name) const {
  const auto slot = context_.colors.map->resolve(name);
  return slot ? (*context_.colors.scheme)[static_cast<std::size_t>(*slot)] : Color{};
}

Color ChartStyle::color(std::size_t index, std::size_t count) const {
  static constexpr std::string_view accents[] = {"accent1", "accent2", "accent3",
                                                 "accent4", "accent5", "accent6"};
  // From dark to light over as many rounds as there are.
  const auto varied = [](const Color& color, std::size_t round, std::size_t rounds) {
    return shaded(color, static_cast<double>(round + 1) / static_cast<double>(rounds + 1) * 1.4 - 0.7);
  };
  const int family = (number_ - 1) % 8;
  if (family == 1) {
    const std::size_t rounds = (std::max<std::size_t>(count, 1) - 1) / std::size(accents) + 1;
    return varied(themed(accents[index % std::size(accents)]), index / std::size(accents), rounds);
  }
  if (family == 0) {
    static constexpr double greys[] = {0.115, 0.45, 0.25, 0.015, 0.7, 0.4, 0.2};
    return shaded(themed("tx1"), greys[index % std::size(greys)]);
  }
  const auto accent = themed(accents[static_cast<std::size_t>(family - 2)]);
  return varied(accent, index, std::max<std::size_t>(count, 1));
}

Fill ChartStyle::fill(const Color& color) const {
  const bool isIntense = (number_ > 16 && number_ <= 32) || isDark();
  if (!isIntense || context_.theme == nullptr) return color;
  auto context = context_;
  context.colors.placeholder = color;
  return readFillElement(context_.theme->fill(3), context).value_or(Fill(color));
}

Line ChartStyle::seriesLine(const Color& color) const {
  const double width = number_ <= 8 ? 3 : number_ > 24 && number_ <= 32 ? 7 : 5;
  auto line = plainLine(width, color);
  line.cap = Cap::Round;
  return line;
}

double ChartStyle::markerSize() const {
  return (number_ <= 8 ? 7 : number_ > 24 && number_ <= 32 ? 11 : 9) * PxPerPoint;
}

Line ChartStyle::axisLine() const {
  return plainLine(1, shaded(themed(number_ <= 32 || isDark() ? "tx1" : "dk1"), isDark() ? -0.25 : 0.525));
}

Line ChartStyle::minorGridLine() const { return plainLine(1, shaded(themed("tx1"), isDark() ? -0.5 : 0.72)); }

Color ChartStyle::text() const { return themed(isDark() ? "bg1" : "tx1"); }

Fill ChartStyle::area() const { return isDark() ? Fill(themed("tx1")) : Fill(NoFill{}); }

const char* automaticSymbol(std::size_t index) {
  static constexpr const char* symbols[] = {"diamond", "square", "triangle", "x", "star", "circle", "plus"};
  return symbols[index % std::size(symbols)];
}

}  // namespace render
