// How connections are added, changed, taken out and replaced, and who uses them.

#include "model/modConnections.h"

#include <algorithm>
#include <utility>

#include "basic/Counted.h"
#include "basic/Error.h"
#include "basic/Strings.h"
#include "model/clsShape.h"
#include "model/modLinkEdits.h"
#include "model/modSlides.h"

namespace LF2000::modConnections {

namespace {

/// Calls `visit(slide, link)` for every shape that is linked to a connection.
template <typename Visit>
void ForEachLink(const clsPresentation& presentation, Visit visit) {
  modSlides::ForEachSlide(*presentation.ActivePresentation(), [&](PowerPoint::Slide& slide) {
    modSlides::ForEachShape(slide, [&](const std::shared_ptr<PowerPoint::Shape>& shape) {
      clsShape link;
      link.ShapeItem(shape);
      if (link.LumenfoldEnabled() && !link.ConnectionTagNumber().empty()) visit(slide, link);
    });
  });
}

[[noreturn]] void FailUnknown(std::string_view number) {
  throw basic::Error(basic::AdapterError, basic::DefaultSource,
                     "The presentation has no connection " + std::string(number) + " any more.");
}

}  // namespace

std::string Uses::Text() const {
  return basic::Counted(Shapes, "shape") + " on " + basic::Counted(Slides, "slide");
}

std::map<std::string, Uses> AllUses(const clsPresentation& presentation) {
  std::map<std::string, Uses> all;
  std::map<std::string, std::int32_t> lastSlides;
  ForEachLink(presentation, [&](PowerPoint::Slide& slide, const clsShape& link) {
    Uses& uses = all[link.ConnectionTagNumber()];
    const std::int32_t index = slide.SlideIndex();
    ++uses.Shapes;
    if (std::exchange(lastSlides[link.ConnectionTagNumber()], index) != index) ++uses.Slides;
    if (link.SourceType() != static_cast<std::int32_t>(SourceType::Graph)) ++uses.Columns[link.ColumnName()];
    uses.Places.push_back("slide " + std::to_string(index) + ": " + link.ShapeItem()->Name());
  });
  return all;
}

Uses UsesOf(const clsPresentation& presentation, std::string_view number) {
  return AllUses(presentation)[std::string(number)];
}

std::shared_ptr<clsConnection> CopyOf(const clsConnection& connection) {
  auto copy = std::make_shared<clsConnection>();
  copy->ActivePresentationName(connection.ActivePresentationName());
  copy->TagString(connection.TagString());
  return copy;
}

std::vector<std::string> MissingColumns(const Uses& uses, const clsConnection& connection) {
  const std::vector<std::string> columns = connection.Columns();
  std::vector<std::string> missing;
  for (const auto& entry : uses.Columns) {
    const bool isThere = std::any_of(columns.begin() + 1, columns.end(), [&](const std::string& column) {
      return basic::EqualsIgnoreCase(column, entry.first);
    });
    if (!isThere) missing.push_back(entry.first);
  }
  return missing;
}

std::string NewNumber(const clsPresentation& presentation) {
  std::string number = presentation.NewConnectionTagNumber();
  if (number.empty()) {
    throw basic::Error(basic::AdapterError, basic::DefaultSource,
                       "There is no number for the connection; it was not added.");
  }
  constexpr std::size_t Digits = 3;
  if (number.size() > Digits) {
    throw basic::Error(
        basic::AdapterError, basic::DefaultSource,
        "Connection numbers end at 999, and that one is taken; new numbers follow the largest.");
  }
  return number;
}

std::string Add(clsPresentation& presentation, const std::shared_ptr<clsConnection>& described) {
  std::string number = NewNumber(presentation);
  described->ConnectionTagNumber(number);
  described->ActivePresentationName(presentation.ActivePresentation()->FullName());
  described->DesignMode(true);
  modLinkEdits::Begin(presentation, "Connect " + described->ConnectionDescription());
  presentation.Connections().push_back(described);
  presentation.SetConnectionTags();
  presentation.OpenInBackground(described);
  return number;
}

void Change(clsPresentation& presentation, std::string_view number,
            const std::shared_ptr<clsConnection>& described) {
  auto& connections = presentation.Connections();
  const auto place = std::find(connections.begin(), connections.end(), presentation.FindConnection(number));
  if (place == connections.end()) FailUnknown(number);
  const std::shared_ptr<clsConnection> before = *place;
  if (before->TagString() == described->TagString()) return;
  modLinkEdits::Begin(presentation, "Change connection " + std::string(number));
  const std::string name = described->ConnectionDescription();
  described->ConnectionDescription(before->ConnectionDescription());
  const bool isRenamed = before->TagString() == described->TagString();
  described->ConnectionDescription(name);
  if (isRenamed) {
    before->ConnectionDescription(name);
    presentation.SetConnectionTags();
    presentation.FillConnection(number);
    return;
  }
  described->ConnectionTagNumber(std::string(number));
  described->ActivePresentationName(presentation.ActivePresentation()->FullName());
  described->DesignMode(true);
  *place = described;
  presentation.SetConnectionTags();
  presentation.OpenInBackground(described);
}

void Remove(clsPresentation& presentation, std::string_view number) {
  const auto connection = presentation.FindConnection(number);
  if (!connection) FailUnknown(number);
  modLinkEdits::Begin(presentation, "Remove connection " + std::string(number));
  std::erase(presentation.Connections(), connection);
  presentation.SetConnectionTags();
}

void MoveLinks(clsPresentation& presentation, std::string_view from, std::string_view to) {
  if (!presentation.FindConnection(to)) FailUnknown(to);
  modLinkEdits::Begin(presentation, "Use " + std::string(to) + " for " +
                                        basic::Counted(UsesOf(presentation, from).Shapes, "link"));
  ForEachLink(presentation, [&](PowerPoint::Slide&, clsShape& link) {
    if (link.ConnectionTagNumber() != from) return;
    link.KeepCurrent();
    link.NewConnectionTagNumber(std::string(to));
    link.SetShapeTags();
  });
  presentation.FillConnection(to);
}

}  // namespace LF2000::modConnections
