#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "host/powerpoint.h"
#include "model/modFieldNames.h"
#include "model/modLinkable.h"

/// Links for many shapes at once, planned before anything is written: whoever plans shows the plan, and
/// writes it when nothing hinders.
namespace LF2000::modManyLinks {

struct PlannedLink {
  std::int32_t SlideIndex = 0;
  std::shared_ptr<PowerPoint::Shape> Shape;
  /// Text or File.
  modLinkable::Shows Shows = modLinkable::Shows::Text;
  std::string Connection;
  modFieldNames::Field Value;
};

struct Plan {
  std::vector<PlannedLink> Links;
  /// What cannot be done and why, each a sentence that names slide and shape.
  std::vector<std::string> Hindrances;
};

struct Source {
  /// The tag number.
  std::string Connection;
  /// Nothing while the source cannot be read: any column may be in it then.
  std::optional<modFieldNames::ColumnNames> Columns;
};

/// Shapes that stand as a table does (modShapeGrid).
struct GridWish {
  /// The shape at the upper left.
  std::string Start;
  /// From left to right; shapes under an empty name are left alone.
  std::vector<std::string> Columns;
  std::int32_t Rows = 0;
  /// Row of the data for the topmost shapes.
  std::int32_t FirstRow = 1;
};
void AddGrid(Plan& plan, PowerPoint::Slide& slide, const GridWish& wish, const Source& source);

/// Shapes whose names mean a column and a row of the source, whose columns must be known
/// (modFieldNames::FromShapeName). Others are left alone.
void AddNames(Plan& plan, PowerPoint::Slide& slide, const Source& source);

/// The source of a connection's tag number, or with the empty text the one for marks that name none; null
/// for none. It stays while the plan is made.
using FindSource = std::function<const Source*(std::string_view connection)>;
/// Shapes whose texts are marks (modFieldNames::FromText). Others are left alone, and those that are linked.
void AddTexts(Plan& plan, PowerPoint::Slide& slide, const FindSource& find);

/// Writes the links of a plan that nothing hinders. Pictures take their files from the folder, with the
/// extension behind their names; see clsShape.
void Write(const Plan& plan, const std::string& objectFolder, const std::string& objectExtension);

}  // namespace LF2000::modManyLinks
