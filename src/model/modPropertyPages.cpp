#include "model/modPropertyPages.h"

#include <utility>

#include "basic/Error.h"

namespace LF2000::modPropertyPages {

namespace {
Opener openPage;
}

void OpenWith(Opener opener) { openPage = std::move(opener); }

void Open(Page page, const std::shared_ptr<clsPresentation>& presentation) {
  const Opener opener = openPage;
  if (!opener)
    throw basic::Error(basic::AdapterError, "modPropertyPages", "There are no property pages here.");
  opener(page, presentation);
}

}  // namespace LF2000::modPropertyPages
