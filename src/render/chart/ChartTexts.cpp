#include "render/chart/ChartTexts.h"

#include <cmath>

namespace render {

std::string ChartTexts::number(double value, const std::string& format) {
  if (std::isnan(value)) return {};
  auto known = formats_.find(format);
  if (known == formats_.end()) known = formats_.emplace(format, basic::NumberFormat(format)).first;
  return basic::FormatNumber(known->second, value, basic::UserLocale(), system_);
}

std::string ChartTexts::category(const ChartCategories& categories, std::size_t at,
                                 const std::optional<std::string>& format) {
  if (at >= categories.size()) return std::to_string(at + 1);
  if (!categories.isNumeric()) return categories.texts[at];
  return number(categories.numbers[at], format.value_or(categories.format));
}

std::string ChartTexts::label(const ChartLabel& label, const ChartSeries& series, std::size_t at,
                              const std::string& category, double share) {
  if (!label.text.empty()) return label.text;
  std::string text;
  const auto add = [&](bool isShown, const auto& part) {
    if (!isShown) return;
    const std::string shown = part();
    if (shown.empty()) return;
    if (!text.empty()) text += label.separator;
    text += shown;
  };
  add(label.showsSeries, [&] { return series.name; });
  add(label.showsCategory, [&] { return category; });
  add(label.showsValue, [&] {
    return number(series.values.values[at], label.format.empty() ? series.values.format : label.format);
  });
  const bool hasPercentFormat = label.format.find('%') != std::string::npos;
  add(label.showsPercent, [&] {
    return number(share,
                  hasPercentFormat || (!label.showsValue && !label.format.empty()) ? label.format : "0%");
  });
  add(label.showsSize && at < series.sizes.values.size(), [&] {
    return number(series.sizes.values[at], label.format.empty() ? series.sizes.format : label.format);
  });
  return text;
}

}  // namespace render
