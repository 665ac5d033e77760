#include "model/modRelink.h"

#include <algorithm>
#include <numeric>
#include <utility>

#include "basic/Strings.h"
#include "model/clsShape.h"
#include "model/modSlides.h"

namespace LF2000::modRelink {

std::map<std::string, std::vector<Linked>> LinksByConnection(PowerPoint::Presentation& presentation) {
  std::map<std::string, std::vector<Linked>> links;
  modSlides::ForEachSlide(presentation, [&](PowerPoint::Slide& slide) {
    modSlides::ForEachShape(slide, [&](const std::shared_ptr<PowerPoint::Shape>& shape) {
      clsShape link;
      link.ShapeItem(shape);
      if (!link.LumenfoldEnabled() || link.ConnectionTagNumber().empty()) return;
      const bool isWhole = link.SourceType() == static_cast<std::int32_t>(SourceType::Graph);
      links[link.ConnectionTagNumber()].push_back(
          {slide.SlideIndex(), shape, isWhole ? std::string() : link.ColumnName()});
    });
  });
  return links;
}

std::vector<Linked> FindLinks(PowerPoint::Presentation& presentation, std::string_view connection,
                              std::string_view column) {
  std::vector<Linked> links = std::move(LinksByConnection(presentation)[std::string(connection)]);
  if (!column.empty()) {
    std::erase_if(links, [&](const Linked& link) { return !basic::EqualsIgnoreCase(link.Column, column); });
  }
  return links;
}

void Relink(const std::vector<Linked>& links, const std::string& connection, const std::string& column) {
  clsShape link;
  for (const Linked& each : links) {
    link.ShapeItem(each.Shape);
    link.KeepCurrent();
    link.NewConnectionTagNumber(connection);
    if (!column.empty() && !link.ColumnName().empty()) link.NewColumnName(column);
    link.SetShapeTags();
  }
}

namespace {

/// How many bytes are put in, taken out or replaced on the way from one text to the other (Levenshtein).
std::size_t Distance(std::string_view a, std::string_view b) {
  std::vector<std::size_t> row(b.size() + 1);
  std::iota(row.begin(), row.end(), std::size_t{0});
  for (std::size_t i = 0; i < a.size(); ++i) {
    std::size_t corner = std::exchange(row[0], i + 1);
    for (std::size_t j = 0; j < b.size(); ++j) {
      const std::size_t replaced = corner + (a[i] == b[j] ? 0 : 1);
      corner = row[j + 1];
      row[j + 1] = std::min({replaced, row[j] + 1, corner + 1});
    }
  }
  return row.back();
}

std::pair<bool, std::size_t> Unlikeness(const std::string& name, std::string_view column) {
  constexpr std::size_t LongestCompared = 200;  // a name may have any length
  const std::string other = basic::UCase(column.substr(0, LongestCompared));
  const std::string own = name.substr(0, LongestCompared);
  const bool contains = !own.empty() && !other.empty() &&
                        (other.find(own) != std::string::npos || own.find(other) != std::string::npos);
  return {!contains, Distance(own, other)};
}

}  // namespace

std::vector<std::string> ByLikeness(std::string_view name, const std::vector<std::string>& columns) {
  const std::string own = basic::UCase(name);
  std::vector<std::pair<std::pair<bool, std::size_t>, std::string>> ranked;
  for (std::size_t i = 1; i < columns.size(); ++i) {
    if (!columns[i].empty()) ranked.emplace_back(Unlikeness(own, columns[i]), columns[i]);
  }
  std::stable_sort(ranked.begin(), ranked.end(),
                   [](const auto& a, const auto& b) { return a.first < b.first; });
  std::vector<std::string> sorted;
  sorted.reserve(ranked.size());
  for (auto& [rank, column] : ranked) sorted.push_back(std::move(column));
  return sorted;
}

}  // namespace LF2000::modRelink
