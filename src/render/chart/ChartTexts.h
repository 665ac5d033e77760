#pragma once

#include <map>
#include <string>
#include <string_view>

#include "basic/numberformat/NumberFormat.h"
#include "render/chart/ChartModel.h"

namespace render {

/// Writes numbers as the worksheet would: by its number formats (ECMA-376 part 1, 18.8.31), in the user's
/// locale. Formats are read once each.
class ChartTexts {
 public:
  explicit ChartTexts(bool from1904)
      : system_(from1904 ? basic::DateSystem::From1904 : basic::DateSystem::From1900) {}

  /// Nothing for NoValue. An empty format is General.
  std::string number(double value, const std::string& format);
  /// Of one category under the axis' format or its own.
  std::string category(const ChartCategories& categories, std::size_t at,
                       const std::optional<std::string>& format);
  /// What a label of a point says; `share` is its share of all, NoValue outside of pies.
  std::string label(const ChartLabel& label, const ChartSeries& series, std::size_t at,
                    const std::string& category, double share);

 private:
  basic::DateSystem system_;
  std::map<std::string, basic::NumberFormat, std::less<>> formats_;
};

}  // namespace render
