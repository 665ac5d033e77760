// The shapes of one slide take over what the data and the clock say, and the slide hides without data.

#include <algorithm>
#include <limits>

#include "addin/support/modErrors.h"
#include "basic/Conversion.h"
#include "basic/Error.h"
#include "basic/Format.h"
#include "model/clsShape.h"
#include "runtime/FrmRuntimeTimer.h"
#include "runtime/ScrollIndexes.h"

namespace LF2000 {

using modDebug::DebugKind;

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
  standing_.erase(slide);
  NoteSuccess(SlideSource(slide));
} catch (...) {
  Report(SlideSource(slide), "RefreshSlide", modErrors::RefreshingSlide);
  if (unloaded_) return;
  const auto [place, isNew] = standing_.try_emplace(slide);
  if (isNew) place->second.Since = host::Current().clock->TickCount();
  place->second.Error = modErrors::ForEverybody(modErrors::LastError.Description);
}

void FrmRuntimeTimer::RefreshShapes(std::int32_t slide) {
  const auto index = static_cast<std::size_t>(slide);
  clsRTSlideInfo& info = slideInfo_[index];
  const std::vector<clsRTScrollInfo> scrolls = info.Scrolls;
  if (!info.Scrolls.empty()) CalcScrollIndexes(slide);
  std::vector<Reading> readings;
  try {
    readings = ReadShapes(*slides_->Item(slide), shapes_[index]);
  } catch (...) {
    // The slide stands as it is, its rows as well.
    info.Scrolls = scrolls;
    throw;
  }
  bool noData = true;
  bool judged = true;
  for (const Reading& reading : readings) {
    if (unloaded_) return;
    if (!reading.IsJudged) judged = false;
    if (!reading.NoValue) noData = false;
    if (reading.Write) reading.Write();
  }
  if (!unloaded_ && judged && info.HideWhenNoData && noData != info.NoData) {
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

double FrmRuntimeTimer::RowOf(const PowerPoint::Slide& slide, const clsRTShapeInfo& shape) const {
  if (!shape.Scroll) return shape.Row;  // most do not, and a host may take its time for an answer
  return shape.Row +
         slideInfo_[static_cast<std::size_t>(slide.SlideIndex())].Scrolls[*shape.Scroll].RowOffset();
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
    NoteSuccess(source);
  } catch (...) {
    Report(source, "RefreshClocks");
  }
}

}  // namespace LF2000
