#pragma once

#include <map>
#include <memory>
#include <string>
#include <string_view>

#include "host/powerpoint.h"
#include "windows/automation/OpenPresentation.h"
#include "windows/com/Object.h"

namespace windows::automation {

class Presentation final : public PowerPoint::Presentation {
 public:
  explicit Presentation(com::Object presentation) : presentation_(std::move(presentation)) {}

  [[nodiscard]] std::string FullName() const override { return presentation_.text(L"FullName"); }
  [[nodiscard]] bool Saved() const override { return presentation_.flag(L"Saved"); }
  void Saved(bool saved) override;
  void Save() override { presentation_.call(L"Save"); }
  void SaveCopyAs(std::string_view fileName) override;
  void Close() override;
  [[nodiscard]] std::shared_ptr<PowerPoint::Tags> Tags() override;
  [[nodiscard]] std::shared_ptr<PowerPoint::Slides> Slides() override;
  [[nodiscard]] std::shared_ptr<PowerPoint::SlideShowSettings> SlideShowSettings() override;
  void UpdateLinks() override { presentation_.call(L"UpdateLinks"); }

  [[nodiscard]] const com::Object& object() const { return presentation_; }
  [[nodiscard]] const std::shared_ptr<AuthorsOwn>& own() const { return own_; }

 private:
  com::Object presentation_;
  std::shared_ptr<AuthorsOwn> own_ = std::make_shared<AuthorsOwn>();
  bool isClosed_ = false;
};

/// The presentations that the system has to do with: one object for each, however often it is handed out.
class KnownPresentations {
 public:
  /// Raises 91 for Nothing.
  [[nodiscard]] std::shared_ptr<Presentation> of(const com::Ptr<IDispatch>& dispatch);

 private:
  /// What is held here keeps its identity.
  std::map<IUnknown*, std::weak_ptr<Presentation>> presentations_;
};

}  // namespace windows::automation
