#include "model/modOfflineLinks.h"

#include <utility>

#include "addin/support/modErrors.h"
#include "basic/Error.h"

namespace LF2000::modOfflineLinks {

namespace {

Keeper keeper;

void Report(const std::vector<std::string>& problems) {
  for (const std::string& problem : problems) {
    try {
      throw basic::Error(basic::AdapterError, basic::DefaultSource, problem);
    } catch (...) {
      modErrors::CatchError(modErrors::CreatingOfflinePresentation);
    }
  }
}

}  // namespace

void DoneBy(Keeper by) { keeper = std::move(by); }

void DrawSheets(const std::shared_ptr<PowerPoint::Presentation>& presentation) {
  const auto draw = keeper.DrawSheets;
  if (draw) Report(draw(presentation));
}

void TakePicturesIn(const std::shared_ptr<PowerPoint::Presentation>& copy, const std::string& original) {
  const auto take = keeper.TakePicturesIn;
  if (take) Report(take(copy, original));
}

}  // namespace LF2000::modOfflineLinks
