// The form's life and its timers.

#include "runtime/FrmRuntimeTimer.h"

#include "addin/support/modErrors.h"

namespace LF2000 {

using modDebug::DebugKind;

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
  NoteSuccess("tmrData");
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
  NoteSuccess("tmrClock");
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
  NoteSuccess("tmrConnections");
} catch (...) {
  Report("tmrConnections", "tmrConnections_Timer");
}

void FrmRuntimeTimer::NoteSuccess(std::string_view what) {
  if (errors_.Clear(what)) modErrors::WriteErrorLog("Recovered: " + std::string(what) + ".");
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

void FrmRuntimeTimer::Log(modDebug::DebugKind kind, std::string_view text) {
  modDebug::WriteDebugLog(kind, "frmRuntimeTimer", text);
}

}  // namespace LF2000
