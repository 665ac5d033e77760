#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "host/powerpoint.h"
#include "model/modFieldNames.h"
#include "model/modLinkable.h"

/// Links for many shapes at once, planned before anything is written: whoever plans shows the plan, and
/// writes it when nothing hinders.
namespace LF2000::modManyLinks {

/// The last row that authors may ask for; more than a screen can show.
inline constexpr std::int32_t MostRows = 1'000'000;

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

/// Shapes with what each is to show.
void AddShapes(Plan& plan, PowerPoint::Slide& slide,
               const std::vector<std::pair<std::shared_ptr<PowerPoint::Shape>, modFieldNames::Field>>& values,
               const Source& source);

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
/// (modFieldNames::FromShapeName). Others are left alone, and where there are some in `among` all but those.
void AddNames(Plan& plan, PowerPoint::Slide& slide, const Source& source,
              const std::vector<std::shared_ptr<PowerPoint::Shape>>& among = {});

/// The source of a connection's tag number, or with the empty text the one for marks that name none; null
/// for none. It stays while the plan is made.
using FindSource = std::function<const Source*(std::string_view connection)>;
/// Shapes whose texts are marks (modFieldNames::FromText). Others are left alone, and those that are linked.
void AddTexts(Plan& plan, PowerPoint::Slide& slide, const FindSource& find);

/// Where pictures take their files from; see clsShape.
struct Files {
  std::string Folder;
  /// Put behind the names.
  std::string Extension;
};
/// Writes the links of a plan. Without `files` a picture keeps the ones that it has.
void Write(const Plan& plan, const std::optional<Files>& files = {});

}  // namespace LF2000::modManyLinks
