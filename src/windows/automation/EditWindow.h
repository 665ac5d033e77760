#pragma once

#include <memory>
#include <vector>

#include "host/powerpoint.h"
#include "windows/automation/Presentation.h"
#include "windows/com/Object.h"

namespace windows::automation {

/// What is selected in a window.
class Selection final : public PowerPoint::Selection {
 public:
  Selection(com::Object selection, com::Object window, std::shared_ptr<AuthorsOwn> own)
      : selection_(std::move(selection)), window_(std::move(window)), own_(std::move(own)) {}
  [[nodiscard]] PowerPoint::SelectionType Type() const override;
  [[nodiscard]] std::vector<std::shared_ptr<PowerPoint::Shape>> ShapeRange() override;
  [[nodiscard]] std::vector<std::shared_ptr<PowerPoint::Slide>> SlideRange() override;

 private:
  com::Object selection_;
  com::Object window_;
  std::shared_ptr<AuthorsOwn> own_;
};

/// A window in which a presentation is edited.
class DocumentWindow final : public PowerPoint::DocumentWindow {
 public:
  DocumentWindow(com::Object window, std::shared_ptr<KnownPresentations> known)
      : window_(std::move(window)), known_(std::move(known)) {}
  [[nodiscard]] std::shared_ptr<PowerPoint::Presentation> Presentation() override;
  [[nodiscard]] std::shared_ptr<PowerPoint::Selection> Selection() override;

 private:
  com::Object window_;
  std::shared_ptr<KnownPresentations> known_;
};

}  // namespace windows::automation
