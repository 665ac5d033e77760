#include "web/show/ViewJson.h"

namespace web {

json::Json viewJson(const View& view) {
  switch (view.kind) {
    case View::Kind::Show:
      break;
    case View::Kind::Slide:
      return {{"kind", "slide"}, {"slide", view.slide}};
    case View::Kind::Shape:
      return {{"kind", "shape"}, {"slide", view.slide}, {"element", view.elementId}};
  }
  return {{"kind", "show"}};
}

std::string_view wordFor(DeckHealth::State state) {
  switch (state) {
    case DeckHealth::State::OnShow:
      return "on show";
    case DeckHealth::State::InTurn:
      return "in turn";
    case DeckHealth::State::NotNow:
      return "not now";
    case DeckHealth::State::Refused:
      break;
  }
  return "refused";
}

}  // namespace web
