// Which page is shown for what is selected, and which pages stand docked in which window.

#include "pages/modPages.h"

#include <map>
#include <string>
#include <utility>

#include "addin/support/modGlobalFunctions.h"
#include "basic/Error.h"
#include "host/services.h"
#include "pages/frmClock.h"
#include "pages/frmDataField.h"
#include "pages/frmDataObject.h"
#include "pages/frmDistribution.h"
#include "pages/frmFillWithRows.h"
#include "pages/frmGraph.h"
#include "pages/frmLinkByNames.h"
#include "pages/frmNotLinkable.h"
#include "pages/frmSlide.h"
#include "pages/frmSlideShow.h"
#include "pages/modSelected.h"

namespace LF2000::modPages {

namespace {

using modPropertyPages::Page;
using modSelected::Kind;
using modSelected::Selected;

struct Docked {
  std::string Key;
  /// Which version of the presentation the page's shapes are of; named by its address alone.
  const PowerPoint::Presentation* Deck = nullptr;
  std::weak_ptr<frmPage> Form;
};
/// By window, which is named by its address alone.
std::map<const PowerPoint::DocumentWindow*, Docked> docked;
std::function<void(const std::string&)> showUses;

std::shared_ptr<frmPage> PageFor(Forms::Placement where, const std::shared_ptr<clsPresentation>& presentation,
                                 const Selected& selected) {
  switch (selected.Page) {
    case Kind::Field:
      return std::make_shared<frmDataField>(where, presentation, selected);
    case Kind::Clock:
      return std::make_shared<frmClock>(where, presentation, selected);
    case Kind::Object:
      return std::make_shared<frmDataObject>(where, presentation, selected);
    case Kind::Graph:
      return std::make_shared<frmGraph>(where, presentation, selected);
    case Kind::Slide:
      return std::make_shared<frmSlide>(where, presentation, selected.Slide);
    case Kind::NotLinkable:
      break;
  }
  return std::make_shared<frmNotLinkable>(where, presentation, selected);
}

[[noreturn]] void Fail(const std::string& why) { throw basic::Error(basic::AdapterError, "modPages", why); }

void BringUpToDate(frmPage& page) {
  page.Update([&page] { page.Reload(); });
}

}  // namespace

void Install() { modPropertyPages::OpenWith(Open); }

void Open(Page page, const std::shared_ptr<clsPresentation>& presentation) {
  if (page == Page::SlideShow) return std::make_shared<frmSlideShow>(presentation)->OpenAndWatch();
  if (page == Page::Distribution) return std::make_shared<frmDistribution>(presentation)->Open();
  const Selected selected = modSelected::LookFor(page, presentation->ActivePresentation());
  if (!selected.Slide) Fail("There is no slide.");
  if (page != Page::Slide && selected.Shapes.empty()) {
    Fail(selected.LeftOut.empty() ? "Select a shape first." : selected.LeftOut + ".");
  }
  PageFor(Forms::Placement::Dialog, presentation, selected)->Open();
}

void OpenFillWithRows(const std::shared_ptr<clsPresentation>& presentation) {
  if (presentation->Connections().empty()) Fail("Connect data first.");
  const Selected selected = modSelected::LookForAll(presentation->ActivePresentation());
  if (selected.Shapes.size() < 2) Fail("Select the shapes that are to show rows, at least two.");
  std::make_shared<frmFillWithRows>(presentation, selected)->Open();
}

void OpenLinkByNames(const std::shared_ptr<clsPresentation>& presentation) {
  if (presentation->Connections().empty()) Fail("Connect data first.");
  const Selected selected = modSelected::LookForAll(presentation->ActivePresentation());
  if (!selected.Slide) Fail("There is no slide.");
  std::make_shared<frmLinkByNames>(presentation, selected)->Open();
}

void OpenNotLinkable(const std::shared_ptr<clsPresentation>& presentation) {
  const Selected selected = modSelected::LookForNotLinkable(presentation->ActivePresentation());
  if (selected.Shapes.empty()) Fail("What is selected can be linked.");
  PageFor(Forms::Placement::Dialog, presentation, selected)->Open();
}

void Dock(const std::shared_ptr<clsPresentation>& presentation) {
  const auto& application = modGlobalFunctions::HostApplication;
  const auto window = application ? application->ActiveWindow() : nullptr;
  const Forms::View* view = host::Current().forms;
  if (!window || view == nullptr || !view->Docks()) return;
  const Selected selected = modSelected::Look(presentation->ActivePresentation());
  if (!selected.Slide) return;
  std::erase_if(docked, [](const auto& entry) { return entry.second.Form.expired(); });
  Docked& place = docked[window.get()];
  const std::string key = selected.Key();
  const PowerPoint::Presentation* deck = presentation->ActivePresentation().get();
  const auto standing = place.Form.lock();
  if (standing && standing->IsShown() && standing->Presentation() == presentation && place.Deck == deck &&
      place.Key == key) {
    return BringUpToDate(*standing);
  }
  const auto page = PageFor(Forms::Placement::Docked, presentation, selected);
  place = {key, deck, page};
  page->Open();
}

void Refresh(const std::shared_ptr<clsPresentation>& presentation) {
  // A page that is brought up to date may run the loop.
  const auto all = docked;
  for (const auto& entry : all) {
    const auto page = entry.second.Form.lock();
    if (page && page->IsShown() && page->Presentation() == presentation) BringUpToDate(*page);
  }
}

void ShowUsesWith(std::function<void(const std::string& connection)> show) { showUses = std::move(show); }

void ShowUses(const std::string& connection) {
  if (showUses) showUses(connection);
}

void Reset() {
  docked.clear();
  showUses = {};
}

}  // namespace LF2000::modPages
