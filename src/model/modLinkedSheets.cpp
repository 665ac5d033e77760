#include "model/modLinkedSheets.h"

#include <utility>

#include "addin/support/modErrors.h"
#include "basic/Error.h"

namespace LF2000::modLinkedSheets {

namespace {
Drawer drawer;
}

void DrawnBy(Drawer by) { drawer = std::move(by); }

void Draw(const std::shared_ptr<PowerPoint::Presentation>& presentation) {
  const Drawer draw = drawer;
  if (!draw) return;
  for (const std::string& problem : draw(presentation)) {
    try {
      throw basic::Error(basic::AdapterError, basic::DefaultSource, problem);
    } catch (...) {
      modErrors::CatchError(modErrors::CreatingOfflinePresentation);
    }
  }
}

}  // namespace LF2000::modLinkedSheets
