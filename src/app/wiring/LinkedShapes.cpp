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

std::string linkText(const LinkedShape& link) {
  switch (static_cast<LF2000::SourceType>(link.sourceType)) {
    case LF2000::SourceType::Clock:
      return "clock " + link.dateFormat;
    case LF2000::SourceType::Graph:
      return link.connection + ", all of it";
    case LF2000::SourceType::DataField:
    case LF2000::SourceType::LinkedObject:
      break;
    case LF2000::SourceType::NotLinked:
      return {};
  }
  return link.connection + " " + (link.objectFolder.empty() ? "" : link.objectFolder + "\\") + link.column +
         (link.objectExtension.empty() ? "" : "." + link.objectExtension) + " " + basic::CStr(link.row);
}

std::optional<LinkedShape> linkOf(const std::shared_ptr<PowerPoint::Shape>& shape) {
  LF2000::clsShape link;
  link.ShapeItem(shape);
  if (!link.LumenfoldEnabled()) return {};
  return LinkedShape{presentationml::shapeId(static_cast<const deck::Shape&>(*shape).node()),
                     shape->Name(),
                     link.SourceType(),
                     link.ConnectionTagNumber(),
                     link.ColumnName(),
                     link.Row(),
                     link.DateFormat(),
                     link.ObjectFolder(),
                     link.ObjectExtension(),
                     shape->HasTable()};
}

std::vector<LinkedShape> linkedShapes(deck::Presentation& presentation, std::int32_t slideIndex) {
  std::vector<LinkedShape> linked;
  const auto shapes = presentation.Slides()->Item(slideIndex)->Shapes();
  for (std::int32_t i = 1; i <= shapes->Count(); ++i) {
    if (auto link = linkOf(shapes->Item(i))) linked.push_back(*std::move(link));
  }
  return linked;
}

}  // namespace app
