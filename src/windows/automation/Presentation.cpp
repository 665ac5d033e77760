#include "windows/automation/Presentation.h"

#include <utility>

#include "basic/Error.h"
#include "windows/automation/Classes.h"
#include "windows/automation/SlideShow.h"
#include "windows/automation/Slides.h"
#include "windows/automation/Tags.h"
#include "windows/automation/TriState.h"
#include "windows/com/Failure.h"

namespace windows::automation {

void Presentation::Saved(bool saved) { presentation_.put(L"Saved", triState(saved)); }

void Presentation::SaveCopyAs(std::string_view fileName) { presentation_.call(L"SaveCopyAs", fileName); }

void Presentation::Close() {
  if (isClosed_) return;
  Saved(true);  // or the user would be asked
  presentation_.call(L"Close");
  isClosed_ = true;
}

std::shared_ptr<PowerPoint::Tags> Presentation::Tags() {
  return std::make_shared<automation::Tags>(presentation_.object(classes::Tags, L"Tags"));
}

std::shared_ptr<PowerPoint::Slides> Presentation::Slides() {
  return std::make_shared<automation::Slides>(presentation_.object(classes::Slides, L"Slides"), own_);
}

std::shared_ptr<PowerPoint::SlideShowSettings> Presentation::SlideShowSettings() {
  return std::make_shared<automation::SlideShowSettings>(
      presentation_.object(classes::SlideShowSettings, L"SlideShowSettings"));
}

std::shared_ptr<Presentation> KnownPresentations::of(const com::Ptr<IDispatch>& dispatch) {
  if (!dispatch) basic::Raise(basic::RuntimeError::ObjectVariableNotSet);
  std::erase_if(presentations_, [](const auto& each) { return each.second.expired(); });
  const com::Ptr<IUnknown> identity = com::identity(dispatch);
  if (!identity) com::raise(RPC_E_DISCONNECTED, classes::Presentation.name());
  std::weak_ptr<Presentation>& known = presentations_[identity.get()];
  std::shared_ptr<Presentation> presentation = known.lock();
  if (!presentation) {
    presentation = std::make_shared<Presentation>(com::Object(dispatch, classes::Presentation));
    known = presentation;
  }
  return presentation;
}

}  // namespace windows::automation
