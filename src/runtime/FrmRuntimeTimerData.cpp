// What the slides in sight and those that the show passes over need is requeried.

#include <algorithm>
#include <cmath>

#include "addin/support/modErrors.h"
#include "addin/support/modGlobalFunctions.h"
#include "basic/Conversion.h"
#include "basic/Error.h"
#include "runtime/FrmRuntimeTimer.h"

namespace LF2000 {

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

double FrmRuntimeTimer::RequeryInterval() const {
  return scrolling_ ? tmrConnections_->Interval() : tmrData_->Interval();
}

double FrmRuntimeTimer::RequeryInterval(const clsConnection& connection) const {
  const bool isDatabase = connection.ConnectionType() == static_cast<std::int32_t>(ConnectionKind::Database);
  const double own = isDatabase ? std::abs(connection.RecordsetRefreshRate()) : 0;
  return std::max(RequeryInterval(), own);
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
    clsConnection& connection = Connection(key);
    const bool wasFailing = connection.Readings().IsFailing;
    if (!connection.Requery(false)) return;
    static_cast<void>(errors_.Clear(key));
    if (wasFailing) {
      modErrors::WriteErrorLog("Recovered: connection " + key + " (" + connection.ConnectionDescription() +
                               ").");
    }
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

}  // namespace LF2000
