#include "runtime/FrmRuntimeTimer.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "addin/support/modDebug.h"
#include "addin/support/modErrors.h"
#include "addin/support/modGlobalFunctions.h"
#include "basic/Conversion.h"
#include "basic/Error.h"
#include "basic/Format.h"
#include "model/clsShape.h"
#include "model/modGraph.h"
#include "model/modLinkedFiles.h"
#include "runtime/ScrollIndexes.h"

namespace LF2000 {

using modDebug::DebugKind;

namespace {

void Log(DebugKind kind, const std::string& text) { modDebug::WriteDebugLog(kind, "frmRuntimeTimer", text); }

void LogValue(const clsRTShapeInfo& shape, double row, const std::string& value) {
  if (!modDebug::DebugOn) return;
  Log(DebugKind::Variable, "Column:" + shape.ColumnName + ":Rownbr:" + basic::CStr(row) + ":Value:" + value);
}

std::string SlideSource(std::int32_t slide) { return "slide " + std::to_string(slide); }

}  // namespace

class FrmRuntimeTimer::Passing {
 public:
  Passing(FrmRuntimeTimer& form, bool& flag) : form_(form), flag_(flag) { flag_ = true; }
  ~Passing() {
    flag_ = false;
    form_.TakeUpEarlyLook();
  }
  Passing(const Passing&) = delete;
  Passing& operator=(const Passing&) = delete;

 private:
  FrmRuntimeTimer& form_;
  bool& flag_;
};

std::shared_ptr<FrmRuntimeTimer> FrmRuntimeTimer::Create() {
  std::shared_ptr<FrmRuntimeTimer> form(new FrmRuntimeTimer);
  form->CreateTimers();
  return form;
}

void FrmRuntimeTimer::CreateTimers() {
  tmrData_ = CreateTimer(&FrmRuntimeTimer::tmrData_Timer, 100);
  tmrClock_ = CreateTimer(&FrmRuntimeTimer::tmrClock_Timer, 50);
  tmrConnections_ = CreateTimer(&FrmRuntimeTimer::tmrConnections_Timer, 100);
  tmrRefreshLinkedObjects_ = CreateTimer(&FrmRuntimeTimer::tmrRefreshLinkedObjects_Timer, 2500);
  tmrChangedFiles_ = CreateTimer(&FrmRuntimeTimer::tmrChangedFiles_Timer, 0);
  tmrData_->Enabled(true);
  if (host::FileWatcher* const watcher = host::Current().fileWatcher) {
    watch_ = watcher->CreateWatch([form = weak_from_this()](const std::string& path) {
      if (const auto self = form.lock()) self->FileChanged(path);
    });
  }
}

std::unique_ptr<host::Timer> FrmRuntimeTimer::CreateTimer(void (FrmRuntimeTimer::*tick)(),
                                                          std::int32_t interval) {
  auto timer = host::Current().loop->CreateTimer([form = weak_from_this(), tick] {
    if (const auto self = form.lock()) ((*self).*tick)();
  });
  timer->Interval(interval);
  return timer;
}

void FrmRuntimeTimer::Unload() {
  unloaded_ = true;
  tmrData_->Enabled(false);
  tmrClock_->Enabled(false);
  tmrConnections_->Enabled(false);
  tmrRefreshLinkedObjects_->Enabled(false);
  tmrChangedFiles_->Enabled(false);
  watch_.reset();
}

void FrmRuntimeTimer::ActivePresentation(const std::shared_ptr<PowerPoint::Presentation>& presentation) {
  presentation_ = presentation;
  slides_ = presentation->Slides();
  slideCount_ = slides_->Count();
}

void FrmRuntimeTimer::SlideInfoConnections(const ConnectionFlags& flags) {
  slideInfoConnections_ = flags;
  connectionsToRequery_ = ~flags;
}

void FrmRuntimeTimer::EnableTimer() {
  tmrConnections_->Enabled(true);
  tmrData_->Enabled(true);
}

void FrmRuntimeTimer::DisableTimer() {
  tmrConnections_->Enabled(false);
  tmrData_->Enabled(false);
}

void FrmRuntimeTimer::CurrentSlide(std::int32_t /*position*/) {
  const bool connectionsEnabled = tmrConnections_->Enabled();
  const bool dataEnabled = tmrData_->Enabled();
  DisableTimer();
  try {
    const std::int32_t shown = ShownPosition();
    currentSlide_ = shown;
    if (shown <= slideCount_) {
      RefreshRange(shown);
      WatchFiles();
    }
  } catch (...) {
    Report("show", "CurrentSlide");
  }
  if (unloaded_) return;
  tmrConnections_->Enabled(connectionsEnabled);
  tmrData_->Enabled(dataEnabled);
}

std::int32_t FrmRuntimeTimer::ShownPosition() const { return window_->View()->CurrentShowPosition(); }

bool FrmRuntimeTimer::IsHidden(std::int32_t slide) const {
  return slides_->Item(slide)->SlideShowTransition()->Hidden();
}

std::int32_t FrmRuntimeTimer::NextSlide(std::int32_t slide) const {
  const std::int32_t next = window_->View()->SlidesAhead().Next.value_or(slide);
  return next <= slideCount_ ? next : slide;
}

std::vector<std::int32_t> FrmRuntimeTimer::PassedOverWithoutData() const {
  std::vector<std::int32_t> slides = window_->View()->SlidesAhead().PassedOver;
  std::erase_if(slides, [&](std::int32_t slide) {
    return slide > slideCount_ || !slideInfo_[static_cast<std::size_t>(slide)].HideWhenNoData;
  });
  return slides;
}

std::vector<std::int32_t> FrmRuntimeTimer::SlidesToRequery() const {
  std::vector<std::int32_t> slides;
  const auto take = [&](std::int32_t first, std::int32_t last) {
    for (std::int32_t slide = first; slide <= last; ++slide) slides.push_back(slide);
  };
  const auto current = static_cast<std::int32_t>(std::min(currentSlide_, slideCount_));
  const std::int32_t next = NextSlide(current);
  if (current < next) {
    take(current, next);
  } else {
    // The show wraps round at its end, or stays on its last slide.
    take(next, static_cast<std::int32_t>(slideCount_));
    take(1, current);
  }
  const std::vector<std::int32_t> more[] = {PassedOverWithoutData(), WatchedBesides(0, 0)};
  for (const auto& each : more) slides.insert(slides.end(), each.begin(), each.end());
  return slides;
}

std::vector<std::int32_t> FrmRuntimeTimer::WatchedBesides(std::int32_t current, std::int32_t next) const {
  std::vector<std::int32_t> slides;
  for (const std::int32_t slide : watchedSlides_) {
    if (slide != current && slide != next && slide <= slideCount_) slides.push_back(slide);
  }
  return slides;
}

double FrmRuntimeTimer::RequeryInterval(const clsConnection& connection) const {
  const host::Timer& paces = scrolling_ ? *tmrConnections_ : *tmrData_;
  const bool isDatabase = connection.ConnectionType() == static_cast<std::int32_t>(ConnectionKind::Database);
  const double own = isDatabase ? std::abs(connection.RecordsetRefreshRate()) : 0;
  return std::max<double>(paces.Interval(), own);
}

clsConnection& FrmRuntimeTimer::Connection(std::string_view key) const {
  const auto found = connections_.find(key);
  if (found == connections_.end()) {
    throw basic::Error(static_cast<std::int32_t>(basic::RuntimeError::InvalidProcedureCall),
                       basic::DefaultSource,
                       "Connection " + std::string(key) + " is not in this presentation.");
  }
  return *found->second;
}

void FrmRuntimeTimer::RequeryConnection(std::size_t number) {
  const std::string key = modGlobalFunctions::Format000(static_cast<std::int32_t>(number));
  try {
    if (Connection(key).Requery(false)) errors_.Clear(key);
  } catch (...) {
    // The end of the show breaks off what is being read.
    if (unloaded_) return;
    // One source that fails keeps no other from being read.
    Report(key, "RefreshData", modErrors::RequeryingData);
    const auto found = connections_.find(key);
    if (found != connections_.end()) found->second->NoteFailure(modErrors::LastError.Description);
  }
}

void FrmRuntimeTimer::RequeryConnections(const ConnectionFlags& flags) {
  if (requerying_) return;
  WatchFiles();
  if (unloaded_) return;
  const Passing requerying(*this, requerying_);
  for (const auto& [key, connection] : connections_) {
    const auto number = static_cast<std::size_t>(basic::CLng(key));
    if (flags[number]) RequeryConnection(number);
    if (unloaded_) break;
  }
  earlyLooks_.Looked(host::Current().clock->TickCount());
}

void FrmRuntimeTimer::RefreshData() {
  connectionsToRequery_.reset();
  for (const std::int32_t slide : SlidesToRequery()) {
    connectionsToRequery_ |= usedConnections_[static_cast<std::size_t>(slide)];
  }
  const std::vector<std::int32_t> passedOver = PassedOverWithoutData();
  RequeryConnections(connectionsToRequery_);
  for (const std::int32_t slide : passedOver) RefreshSlideAt(slide);
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

void FrmRuntimeTimer::RefreshNext(std::int32_t next) {
  if (slideCount_ <= 1 || next == currentSlide_) return;
  RefreshRange(next);
  RefreshSlideAt(next);
}

void FrmRuntimeTimer::tmrData_Timer() try {
  if (unloaded_ || refreshing_) return;
  const Passing refreshing(*this, refreshing_);
  currentSlide_ = ShownPosition();
  if (currentSlide_ > slideCount_) return;
  const std::int32_t next = NextSlide(static_cast<std::int32_t>(currentSlide_));
  if (!scrolling_) RefreshData();
  RefreshSlideAt(static_cast<std::int32_t>(currentSlide_));
  RefreshNext(next);
  for (const std::int32_t slide : WatchedBesides(static_cast<std::int32_t>(currentSlide_), next)) {
    RefreshSlideAt(slide);
  }
  errors_.Clear("tmrData");
  host::Current().loop->DoEvents();
} catch (...) {
  Report("tmrData", "tmrData_Timer");
}

void FrmRuntimeTimer::tmrClock_Timer() try {
  if (unloaded_) return;
  const basic::Date now = host::Current().clock->Now();
  if (now == lastClockUpdate_) return;
  const std::int32_t current = ShownPosition();
  if (current <= slideCount_) {
    RefreshClocks(*slides_->Item(current), current, now);
    const std::int32_t next = NextSlide(current);
    if (slideCount_ > 1 && next != current) RefreshClocks(*slides_->Item(next), next, now);
    for (const std::int32_t slide : WatchedBesides(current, next)) {
      RefreshClocks(*slides_->Item(slide), slide, now);
    }
  }
  lastClockUpdate_ = now;
  errors_.Clear("tmrClock");
} catch (...) {
  Report("tmrClock", "tmrClock_Timer");
}

void FrmRuntimeTimer::tmrConnections_Timer() try {
  if (unloaded_) return;
  if (modDebug::DebugOn) Log(DebugKind::Variable, "Refresh connections");
  RequeryConnections(slideInfoConnections_);
  if (unloaded_) return;
  connectionsToRequery_ |= slideInfoConnections_;
  for (std::int32_t slide = 1; slide <= static_cast<std::int32_t>(slideCount_); ++slide) {
    if (IsHidden(slide)) RefreshSlideAt(slide);
  }
  errors_.Clear("tmrConnections");
} catch (...) {
  Report("tmrConnections", "tmrConnections_Timer");
}

void FrmRuntimeTimer::Report(std::string_view what, std::string_view procedure,
                             std::optional<std::int32_t> code) {
  modErrors::SetLastError();
  if (unloaded_ || !errors_.Admits(what, modErrors::LastError.Description)) return;
  Log(DebugKind::Error, std::string(procedure) + ":" + modErrors::LastError.Description);
  if (code) {
    modErrors::ReportError(*code);
  } else {
    modErrors::ReportError();
  }
}

}  // namespace LF2000
