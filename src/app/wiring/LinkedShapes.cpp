#include "app/wiring/LinkedShapes.h"

#include "addin/support/modGlobalFunctions.h"
#include "basic/Conversion.h"
#include "basic/Error.h"
#include "deck/objects/Shape.h"
#include "model/clsShape.h"

namespace app {

std::string LinkedShape::connectionKey() const try {
  return LF2000::modGlobalFunctions::Format000(basic::CLng(connection));
} catch (const basic::Error&) {
  return {};
}

std::vector<LinkedShape> linkedShapes(deck::Presentation& presentation, std::int32_t slideIndex) {
  std::vector<LinkedShape> linked;
  const auto shapes = presentation.Slides()->Item(slideIndex)->Shapes();
  LF2000::clsShape link;
  for (std::int32_t i = 1; i <= shapes->Count(); ++i) {
    const auto shape = shapes->Item(i);
    link.ShapeItem(shape);
    if (!link.LumenfoldEnabled()) continue;
    linked.push_back({presentationml::shapeId(static_cast<const deck::Shape&>(*shape).node()), shape->Name(),
                      link.SourceType(), link.ConnectionTagNumber(), link.ColumnName(), link.Row(),
                      link.DateFormat(), link.ObjectFolder(), link.ObjectExtension(), shape->HasTable()});
  }
  return linked;
}

}  // namespace app
