#pragma once

#include <memory>

#include "host/addin.h"
#include "host/adodb.h"
#include "host/excel.h"
#include "host/powerpoint.h"
#include "windows/strict/Object.h"

/// Ports as the automation objects that they stand for, with the names of the published object models. What a
/// class can do is what its table says.
namespace strict {

// Each target has one object as long as somebody refers to it; null is Nothing.
[[nodiscard]] Ptr<IDispatch> of(const std::shared_ptr<PowerPoint::Application>& target);
[[nodiscard]] Ptr<IDispatch> of(const std::shared_ptr<PowerPoint::Presentation>& target);
[[nodiscard]] Ptr<IDispatch> of(const std::shared_ptr<PowerPoint::Slide>& target);
[[nodiscard]] Ptr<IDispatch> of(const std::shared_ptr<PowerPoint::Shape>& target);
[[nodiscard]] Ptr<IDispatch> of(const std::shared_ptr<PowerPoint::Tags>& target);
[[nodiscard]] Ptr<IDispatch> of(const std::shared_ptr<PowerPoint::TextFrame>& target);
[[nodiscard]] Ptr<IDispatch> of(const std::shared_ptr<PowerPoint::Table>& target);
[[nodiscard]] Ptr<IDispatch> of(const std::shared_ptr<PowerPoint::OLEFormat>& target);
[[nodiscard]] Ptr<IDispatch> of(const std::shared_ptr<PowerPoint::SlideShowWindow>& target);
[[nodiscard]] Ptr<IDispatch> of(const std::shared_ptr<PowerPoint::DocumentWindow>& target);
[[nodiscard]] Ptr<IDispatch> of(const std::shared_ptr<PowerPoint::Selection>& target);
/// A presentation's settings, with the slides that they are about.
[[nodiscard]] Ptr<IDispatch> settingsOf(const std::shared_ptr<PowerPoint::Presentation>& presentation);
[[nodiscard]] Ptr<IDispatch> of(const std::shared_ptr<Office::CommandBars>& target);
[[nodiscard]] Ptr<IDispatch> of(const std::shared_ptr<AddInDesigner::AddIn>& target);
[[nodiscard]] Ptr<IDispatch> of(const std::shared_ptr<ADODB::Connection>& target);
[[nodiscard]] Ptr<IDispatch> of(const std::shared_ptr<ADODB::Recordset>& target);
[[nodiscard]] Ptr<IDispatch> of(const std::shared_ptr<Excel::Application>& target);

/// The same as what a call hands out.
template <typename Target>
Variant given(const std::shared_ptr<Target>& target) {
  return handedOut(of(target));
}

}  // namespace strict
