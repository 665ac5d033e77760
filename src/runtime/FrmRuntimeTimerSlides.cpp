// The shapes of one slide take over what the data and the clock say, and the slide hides without data.

#include <algorithm>
#include <limits>

#include "addin/support/modErrors.h"
#include "basic/Conversion.h"
#include "basic/Error.h"
#include "basic/Format.h"
#include "model/clsShape.h"
#include "model/modGraph.h"
#include "model/modLinkedFiles.h"
#include "runtime/FrmRuntimeTimer.h"
#include "runtime/ScrollIndexes.h"

namespace LF2000 {

using modDebug::DebugKind;

namespace {

std::string SlideSource(std::int32_t slide) { return "slide " + std::to_string(slide); }

}  // namespace

void FrmRuntimeTimer::LogValue(const clsRTShapeInfo& shape, double row, const std::string& value) {
  if (!modDebug::DebugOn) return;
  Log(DebugKind::Variable, "Column:" + shape.ColumnName + ":Rownbr:" + basic::CStr(row) + ":Value:" + value);
}

void FrmRuntimeTimer::RefreshSlideAt(std::int32_t index) {
  constexpr std::int32_t Last = std::numeric_limits<std::int16_t>::max();
  if (index <= Last) return RefreshSlide(static_cast<std::int16_t>(index));
  try {
    throw basic::Error(static_cast<std::int32_t>(basic::RuntimeError::Overflow), basic::DefaultSource,
                       "Slides after number " + std::to_string(Last) + " are not refreshed.");
  } catch (...) {
    Report("slides after the last", "RefreshSlide", modErrors::RefreshingSlide);
  }
}

void FrmRuntimeTimer::RefreshSlide(std::int16_t slide) try {
  if (unloaded_) return;
  if (modDebug::DebugOn) Log(DebugKind::Information, "RefreshSlide:" + std::to_string(slide));
  RefreshShapes(slide);
  errors_.Clear(SlideSource(slide));
} catch (...) {
  Report(SlideSource(slide), "RefreshSlide", modErrors::RefreshingSlide);
}

void FrmRuntimeTimer::RefreshShapes(std::int32_t slide) {
  const auto index = static_cast<std::size_t>(slide);
  const auto slideObject = slides_->Item(slide);
  if (!slideInfo_[index].Scrolls.empty()) CalcScrollIndexes(slide);
  bool noData = true;
  bool judged = true;
  for (clsRTShapeInfo& shape : shapes_[index]) {
    clsConnection& connection = Connection(shape.ConnectionKey);
    switch (static_cast<SourceType>(shape.SourceType)) {
      case SourceType::DataField:
      case SourceType::LinkedObject:
      case SourceType::Graph:
        if (connection.RecordsetReady()) {
          if (RefreshValue(*slideObject, shape, connection)) noData = false;
        } else {
          // A source that fails leaves its last values standing, and its slide in the show.
          judged = false;
        }
        break;
      case SourceType::Clock:
      case SourceType::NotLinked:
        break;
    }
    if (unloaded_) return;
  }
  clsRTSlideInfo& info = slideInfo_[index];
  if (judged && info.HideWhenNoData && noData != info.NoData) {
    info.NoData = noData;
    HideUnhideSlides(slide);
  }
}

void FrmRuntimeTimer::CalcScrollIndexes(std::int32_t slide) {
  clsRTSlideInfo& info = slideInfo_[static_cast<std::size_t>(slide)];
  if (modDebug::DebugOn) Log(DebugKind::Information, "start calc indexes");
  const std::int64_t now = host::Current().clock->TickCount();
  // On slides that are not on show nothing moves.
  const double passed = slide == currentSlide_ ? static_cast<double>(now - info.ScrollClock) : 0;
  info.ScrollClock = now;
  const double tolerance = tmrData_->Interval() / 2.0;
  for (clsRTScrollInfo& scroll : info.Scrolls) {
    const clsConnection& connection = Connection(scroll.ConnectionKey);
    // What cannot be read now stands where it is.
    if (connection.RecordsetReady()) PassTime(scroll, passed, tolerance, connection.RecordCount());
  }
  if (modDebug::DebugOn) Log(DebugKind::Information, "end calc indexes");
}

const clsRTShapeInfo* FrmRuntimeTimer::Find(std::int32_t slide, std::string_view shapeName) const {
  const auto index = static_cast<std::size_t>(slide);
  if (index >= shapes_.size()) return nullptr;
  const auto found = std::find_if(shapes_[index].begin(), shapes_[index].end(),
                                  [&](const clsRTShapeInfo& shape) { return shape.Name == shapeName; });
  return found == shapes_[index].end() ? nullptr : &*found;
}

bool FrmRuntimeTimer::Scrolls(std::int32_t slide, std::string_view shapeName) const {
  const clsRTShapeInfo* shape = Find(slide, shapeName);
  return shape != nullptr && shape->Scroll.has_value();
}

bool FrmRuntimeTimer::HasValue(std::int32_t slide, std::string_view shapeName) const {
  const clsRTShapeInfo* shape = Find(slide, shapeName);
  return shape == nullptr || shape->HasValue;
}

double FrmRuntimeTimer::RowOf(std::int32_t slide, const clsRTShapeInfo& shape) const {
  if (!shape.Scroll) return shape.Row;
  return shape.Row + slideInfo_[static_cast<std::size_t>(slide)].Scrolls[*shape.Scroll].RowOffset();
}

bool FrmRuntimeTimer::RefreshValue(PowerPoint::Slide& slide, clsRTShapeInfo& shape,
                                   clsConnection& connection) {
  switch (static_cast<SourceType>(shape.SourceType)) {
    case SourceType::LinkedObject:
      return RefreshObject(slide, shape, connection);
    case SourceType::Graph:
      return RefreshGraph(slide, shape, connection);
    default:
      return RefreshText(slide, shape, connection);
  }
}

bool FrmRuntimeTimer::RefreshText(PowerPoint::Slide& slide, clsRTShapeInfo& shape,
                                  clsConnection& connection) {
  bool noValue = true;
  const double row = RowOf(slide.SlideIndex(), shape);
  std::string value = connection.GetValueDatabase(row, shape.ColumnName, /*displayType=*/1,
                                                  /*showMarkers=*/false, noValue);
  if (value.empty()) value = " ";
  if (value != shape.Text) {
    LogValue(shape, row, value);
    slide.Shapes()->Item(shape.Name)->TextFrame()->TextRange()->Text(value);
    shape.Text = std::move(value);
  }
  shape.HasValue = !noValue || !connection.IsNull(row, shape.ColumnName);
  return !noValue;
}

bool FrmRuntimeTimer::RefreshGraph(PowerPoint::Slide& slide, clsRTShapeInfo& shape,
                                   clsConnection& connection) {
  const std::int64_t version = connection.DataVersion();
  if (version != shape.DataVersion) {
    if (modDebug::DebugOn) {
      Log(DebugKind::Variable, "Graph:" + shape.Name + ":Rows:" + basic::CStr(connection.RecordCount()));
    }
    modGraph::FillGraph(*slide.Shapes()->Item(shape.Name), connection);
    shape.DataVersion = version;
  }
  return connection.RecordCount() > 0;
}

bool FrmRuntimeTimer::RefreshObject(PowerPoint::Slide& slide, clsRTShapeInfo& shape,
                                    clsConnection& connection) {
  bool noValue = true;
  const double row = RowOf(slide.SlideIndex(), shape);
  const std::string name =
      connection.GetValueObject(row, shape.ColumnName, shape.ObjectFolder, shape.ObjectExtension,
                                /*displayType=*/1, /*showMarkers=*/false, noValue);
  const std::string source = SlideSource(slide.SlideIndex()) + ", shape " + shape.Name;
  try {
    if (!noValue) {
      ShowObject(slide, shape, row, name);
    } else if (shape.Text != "") {
      // Beside texts that have gone blank, the picture of what is no more would lie.
      modLinkedFiles::ShowOwnContent(*slide.Shapes()->Item(shape.Name));
      shape.Text = "";
    }
    errors_.Clear(source);
  } catch (...) {
    // The last picture stands, and the other shapes are refreshed.
    Report(source, "RefreshSlide", modErrors::RefreshingSlide);
  }
  return !noValue;
}

void FrmRuntimeTimer::ShowObject(PowerPoint::Slide& slide, clsRTShapeInfo& shape, double row,
                                 const std::string& name) {
  std::string path = modLinkedFiles::FindFile(name, shape.ObjectFolder, presentation_->FullName());
  const basic::Date date = host::Current().files->FileDateTime(path);
  // Looking at the file may let the loop run, which may end the show.
  if (unloaded_ || (path == shape.Text && date == shape.FileDate)) return;
  LogValue(shape, row, path);
  modLinkedFiles::ShowFile(*slide.Shapes()->Item(shape.Name), path);
  shape.Text = std::move(path);
  shape.FileDate = date;
}

void FrmRuntimeTimer::OLD_RefreshCurrentScreen() { RefreshSlideAt(static_cast<std::int32_t>(currentSlide_)); }

void FrmRuntimeTimer::RefreshRange(std::int32_t slide) {
  clsRTSlideInfo& info = slideInfo_[static_cast<std::size_t>(slide)];
  for (clsRTScrollInfo& scroll : info.Scrolls) scroll.Elapsed = 0;
  info.ScrollClock = host::Current().clock->TickCount();
}

void FrmRuntimeTimer::HideUnhideSlides(std::int32_t slide) {
  const clsRTSlideInfo& info = slideInfo_[static_cast<std::size_t>(slide)];
  if (!info.HideWhenNoData) return;
  Log(DebugKind::Variable, "Set Hide of slide:" + std::to_string(slide) + ":" + basic::CStr(info.NoData));
  slides_->Item(slide)->SlideShowTransition()->Hidden(info.NoData);
}

void FrmRuntimeTimer::RefreshClocks(PowerPoint::Slide& slide, std::int32_t index, basic::Date now) {
  const std::string source = "clocks of slide " + std::to_string(index);
  try {
    for (const clsRTClockInfo& clock : clocks_[static_cast<std::size_t>(index)]) {
      const auto range = slide.Shapes()->Item(clock.Name)->TextFrame()->TextRange();
      std::string text = basic::Format(now, clock.Format);
      if (text == range->Text()) continue;
      if (modDebug::DebugOn) Log(DebugKind::Variable, "RefreshClocks:" + text);
      range->Text(text);
    }
    errors_.Clear(source);
  } catch (...) {
    Report(source, "RefreshClocks");
  }
}

}  // namespace LF2000
