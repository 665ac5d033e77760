#include "app/show/PlainGround.h"

#include "json/Json.h"

namespace app::plainGround {

web::ScreenState state(const web::View& view) {
  web::ScreenState state;
  state.deck = "none";
  state.title = "Lumenfold";
  state.kiosk = true;
  state.isTransparent = view.kind == web::View::Kind::Shape;
  if (view.kind == web::View::Kind::Show) {
    state.current = web::SlideView{0, "<section class=\"slide\" id=\"s0\"></section>"};
  }
  return state;
}

web::View view(std::optional<int> slide, std::string_view shape) {
  web::View view;
  if (slide) view.kind = web::View::Kind::Slide;
  if (!shape.empty()) view.kind = web::View::Kind::Shape;
  return view;
}

std::string stateJson() {
  const json::Json state = {{"deck", nullptr},
                            {"running", true},
                            {"position", 0},
                            {"slideCount", 0},
                            {"slides", json::Json::array()}};
  return json::textOf(state);
}

}  // namespace app::plainGround
