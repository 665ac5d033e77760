// How connections are added, changed, taken out and replaced, and who uses them.

#include "model/modConnections.h"

#include <algorithm>
#include <utility>

#include "basic/Counted.h"
#include "basic/Error.h"
#include "basic/Names.h"
#include "model/modLinkEdits.h"
#include "model/modRelink.h"
#include "model/modSample.h"

namespace LF2000::modConnections {

namespace {

Uses UsesOf(const std::vector<modRelink::Linked>& links) {
  Uses uses;
  std::int32_t lastSlide = 0;
  for (const modRelink::Linked& link : links) {
    ++uses.Shapes;
    if (std::exchange(lastSlide, link.SlideIndex) != link.SlideIndex) ++uses.Slides;
    if (!link.Column.empty()) ++uses.Columns[link.Column];
    uses.Places.push_back("slide " + std::to_string(link.SlideIndex) + ": " + link.Shape->Name());
  }
  return uses;
}

/// What hands the links of sample data on when the connection has been read.
clsPresentation::Opened SampleTaker(clsPresentation& presentation, const std::string& number,
                                    const std::string& label, const std::string& run) {
  return [weak = presentation.weak_from_this(), number, label, run](const host::JobEnd& end) {
    const auto taking = weak.lock();
    if (taking && end.How == host::JobEnd::Kind::Done) modSample::TakeOver(*taking, number, label, run);
  };
}

[[noreturn]] void FailUnknown(std::string_view number) {
  throw basic::Error(basic::AdapterError, basic::DefaultSource,
                     "The presentation has no connection " + std::string(number) + " any more.");
}

}  // namespace

std::string Uses::Text() const {
  return basic::Counted(Shapes, "shape") + " on " + basic::Counted(Slides, "slide");
}

Uses UsesOf(const clsPresentation& presentation, std::string_view number) {
  return UsesOf(modRelink::FindLinks(*presentation.ActivePresentation(), number));
}

std::map<std::string, Uses> AllUses(const clsPresentation& presentation) {
  std::map<std::string, Uses> all;
  for (const auto& [number, links] : modRelink::LinksByConnection(*presentation.ActivePresentation())) {
    all.emplace(number, UsesOf(links));
  }
  return all;
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
    if (!basic::HasName(columns, entry.first)) missing.push_back(entry.first);
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
  const std::string label = "Connect " + described->ConnectionDescription();
  const std::string run = modSample::Find(presentation) ? "connect " + number : std::string();
  modLinkEdits::Begin(presentation, label, run);
  presentation.Connections().push_back(described);
  presentation.SetConnectionTags();
  presentation.OpenInBackground(described, SampleTaker(presentation, number, label, run));
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
  const std::string chosen(number);
  presentation.OpenInBackground(described, SampleTaker(presentation, chosen, "Use " + chosen, {}));
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
  const auto links = modRelink::FindLinks(*presentation.ActivePresentation(), from);
  modLinkEdits::Begin(presentation,
                      "Use " + std::string(to) + " for " + basic::Counted(links.size(), "link"));
  modRelink::Relink(links, std::string(to));
  presentation.FillConnection(to);
  modSample::Follow(presentation);
}

}  // namespace LF2000::modConnections
