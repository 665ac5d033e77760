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

/// Picks the description of a target's class.
template <typename Target>
struct Tag {};
Class<PowerPoint::Application> describe(Tag<PowerPoint::Application>);
Class<PowerPoint::Presentation> describe(Tag<PowerPoint::Presentation>);
Class<PowerPoint::Slide> describe(Tag<PowerPoint::Slide>);
Class<PowerPoint::Shape> describe(Tag<PowerPoint::Shape>);
Class<PowerPoint::Tags> describe(Tag<PowerPoint::Tags>);
Class<PowerPoint::TextFrame> describe(Tag<PowerPoint::TextFrame>);
Class<PowerPoint::OLEFormat> describe(Tag<PowerPoint::OLEFormat>);
Class<PowerPoint::SlideShowWindow> describe(Tag<PowerPoint::SlideShowWindow>);
Class<PowerPoint::DocumentWindow> describe(Tag<PowerPoint::DocumentWindow>);
Class<PowerPoint::Selection> describe(Tag<PowerPoint::Selection>);
Class<Office::CommandBars> describe(Tag<Office::CommandBars>);
Class<AddInDesigner::AddIn> describe(Tag<AddInDesigner::AddIn>);
Class<ADODB::Connection> describe(Tag<ADODB::Connection>);
Class<ADODB::Recordset> describe(Tag<ADODB::Recordset>);
Class<Excel::Application> describe(Tag<Excel::Application>);

/// Each target has one object as long as somebody refers to it; null is Nothing.
template <typename Target>
[[nodiscard]] Ptr<IDispatch> of(const std::shared_ptr<Target>& target) {
  static const Class<Target> type = describe(Tag<Target>());
  return dispatchOf(target, type);
}
/// A control's object is of the class of its kind.
[[nodiscard]] Ptr<IDispatch> of(const std::shared_ptr<Office::CommandBarControl>& target);
/// A presentation's settings, with the slides that they are about.
[[nodiscard]] Ptr<IDispatch> settingsOf(const std::shared_ptr<PowerPoint::Presentation>& presentation);

/// The same as what a call hands out.
template <typename Target>
Variant given(const std::shared_ptr<Target>& target) {
  return handedOut(of(target));
}

}  // namespace strict
