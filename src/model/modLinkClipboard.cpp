// Which shapes take a copied link, and what it becomes on them.

#include "model/modLinkClipboard.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "basic/Conversion.h"
#include "model/clsPresentation.h"
#include "model/modLinkEdits.h"
#include "model/modLinkable.h"
#include "model/modPlaces.h"

namespace LF2000::modLinkClipboard {

namespace {

using modLinkable::Shows;

struct Link {
  SourceType Type = SourceType::NotLinked;
  std::string Connection;
  std::string Column;
  double Row = 0;
  std::string DateFormat;
  std::string Folder;
  std::string Extension;
};
std::optional<Link> copied;

bool ShowsRow(const Link& link) {
  return link.Type == SourceType::DataField || link.Type == SourceType::LinkedObject;
}

/// Why a shape does not take the link, to follow its name; empty when it does.
std::string WhyNotOnto(PowerPoint::Shape& shape, const modLinkable::NameCounts& names) {
  const modLinkable::Answer answer = modLinkable::Examine(shape);
  if (answer.What == Shows::Nothing) return answer.Why;
  if (std::string why = names.WhyNotByName(shape); !why.empty()) return why;
  switch (copied->Type) {
    case SourceType::Clock:
    case SourceType::DataField:
      return shape.HasTextFrame() ? "" : "holds no text";
    case SourceType::LinkedObject:
      return modLinkable::HasPicture(shape) ? "" : "shows no picture";
    default:
      return answer.What == Shows::Graph || answer.What == Shows::Table ? "" : "is no chart and no table";
  }
}

/// Why the link is of no use in the presentation.
std::string WhyNotIn(const clsPresentation& presentation, Way way) {
  if (!copied) return "Copy a link first.";
  if (way == Way::NextRow && !ShowsRow(*copied)) return "The link that was copied has no row.";
  if (copied->Connection.empty() || presentation.FindConnection(copied->Connection)) return {};
  return "Connection " + copied->Connection + " is not there.";
}

void Write(const std::shared_ptr<PowerPoint::Shape>& shape, double row) {
  clsShape target;
  target.ShapeItem(shape);
  target.SourceType(static_cast<std::int32_t>(copied->Type));
  target.NewConnectionTagNumber(copied->Connection);
  target.NewColumnName(copied->Column);
  target.NewRow(row);
  target.NewDateFormat(copied->DateFormat);
  target.NewObjectFolder(copied->Folder);
  target.NewObjectExtension(copied->Extension);
  target.SetShapeTags();
}

}  // namespace

void Copy(const std::shared_ptr<PowerPoint::Shape>& shape) {
  clsShape link;
  link.ShapeItem(shape);
  if (link.SourceType() == 0) return;
  copied = Link{static_cast<SourceType>(link.SourceType()),
                link.ConnectionTagNumber(),
                link.ColumnName(),
                link.Row(),
                link.DateFormat(),
                link.ObjectFolder(),
                link.ObjectExtension()};
}

bool HasLink() { return copied.has_value(); }

Pasted Paste(clsPresentation& presentation, PowerPoint::Slide& slide, const Shapes& shapes, Way way) {
  Pasted pasted;
  if (std::string why = WhyNotIn(presentation, way); !why.empty()) {
    pasted.LeftOut.push_back(std::move(why));
    return pasted;
  }
  const modLinkable::NameCounts names(slide);
  std::vector<modPlaces::Placed> places;
  for (const auto& shape : shapes) {
    if (const std::string why = WhyNotOnto(*shape, names); !why.empty()) {
      pasted.LeftOut.push_back("'" + shape->Name() + "' " + why + ".");
    } else {
      places.push_back(modPlaces::PlaceOf(shape));
    }
  }
  if (places.empty()) return pasted;
  Shapes targets;
  for (modPlaces::Placed& each : modPlaces::InReadingOrder(std::move(places))) {
    targets.push_back(std::move(each.Shape));
  }
  modLinkEdits::Begin(presentation, "Link " + modLinkEdits::NameOf(targets));
  double row = copied->Row;
  for (const auto& shape : targets) {
    if (way == Way::NextRow) ++row;
    Write(shape, row);
  }
  // Pasted again, the rows go on where these end.
  copied->Row = row;
  modLinkEdits::Show(presentation, slide, targets);
  pasted.Count = targets.size();
  return pasted;
}

std::string WhyNot(const clsPresentation& presentation, PowerPoint::Slide& slide, const Shapes& shapes,
                   Way way) {
  if (std::string why = WhyNotIn(presentation, way); !why.empty()) return why;
  if (shapes.empty()) return "Select a shape first.";
  const modLinkable::NameCounts names(slide);
  std::string first;
  for (const auto& shape : shapes) {
    const std::string why = WhyNotOnto(*shape, names);
    if (why.empty()) return {};
    if (first.empty()) first = "'" + shape->Name() + "' " + why + ".";
  }
  return first;
}

void Reset() { copied.reset(); }

}  // namespace LF2000::modLinkClipboard
