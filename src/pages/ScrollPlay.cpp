#include "pages/ScrollPlay.h"

#include <algorithm>
#include <set>
#include <string>

#include "addin/support/modErrors.h"
#include "addin/support/modGlobalFunctions.h"
#include "model/modSlides.h"
#include "runtime/SlideScrolling.h"

namespace LF2000 {

ScrollPlay::ScrollPlay(std::shared_ptr<clsPresentation> presentation,
                       std::shared_ptr<PowerPoint::Slide> slide)
    : presentation_(std::move(presentation)), slide_(std::move(slide)) {}

void ScrollPlay::TakeUp(const clsSlide& properties) {
  // What scrolls no longer stands where its link says.
  if (IsPlaying()) ShowPage(0);
  std::vector<std::shared_ptr<PowerPoint::Shape>> shapes;
  std::vector<clsRTShapeInfo> infos;
  std::set<std::string> names;
  clsShape link;
  modSlides::ForEachShape(*slide_, [&](const std::shared_ptr<PowerPoint::Shape>& shape) {
    // What a show cannot read it leaves out, as it does the second shape of a name.
    modGlobalFunctions::IgnoreErrors([&] {
      link.ShapeItem(shape);
      if (link.ConnectionTagNumber().empty() || !names.insert(shape->Name()).second) return;
      auto info = DataShapeOf(link);
      if (!info) return;
      infos.push_back(std::move(*info));
      shapes.push_back(shape);
    });
  });
  scrolls_ = JoinScrolling(properties, infos);
  shapes_.clear();
  for (std::size_t i = 0; i < shapes.size(); ++i) {
    if (infos[i].Scroll) shapes_.emplace_back(shapes[i], *infos[i].Scroll);
  }
  std::vector<double> recordCounts;
  for (const clsRTScrollInfo& scroll : scrolls_) {
    const auto connection = presentation_->FindConnection(scroll.ConnectionKey);
    const bool isRead = connection && connection->RecordsetReady();
    recordCounts.push_back(isRead ? connection->RecordCount() : 0);
  }
  pages_ = OfflinePagesOf(scrolls_, recordCounts);
  if (pages_.size() < 2) EndTimer();
  if (!IsPlaying()) return;
  page_ %= pages_.size();
  ShowPage(page_);
}

void ScrollPlay::Start() {
  if (IsPlaying() || pages_.size() < 2) return;
  const auto other = std::find_if(playing_.begin(), playing_.end(),
                                  [this](const ScrollPlay* each) { return PlaysWith(*each); });
  if (other != playing_.end()) {
    ScrollPlay& before = **other;
    before.Stop();
    if (before.Ended) before.Ended();
  }
  playing_.push_back(this);
  page_ = 0;
  timer_ = host::Current().loop->CreateTimer([weak = weak_from_this()] {
    // A page's pictures are waited for, and the form may be closed meanwhile.
    if (const auto self = weak.lock()) self->NextPage();
  });
  NextPage();
  if (timer_) timer_->Enabled(true);
}

bool ScrollPlay::PlaysWith(const ScrollPlay& other) const {
  return presentation_ == other.presentation_ && slide_->SlideID() == other.slide_->SlideID();
}

void ScrollPlay::EndTimer() {
  timer_.reset();
  std::erase(playing_, this);
}

void ScrollPlay::Stop() {
  if (!IsPlaying()) return;
  EndTimer();
  modGlobalFunctions::IgnoreErrors([this] { ShowPage(0); });
}

void ScrollPlay::NextPage() try {
  page_ = (page_ + 1) % pages_.size();
  const double stands = std::clamp(pages_[page_].Milliseconds, ShortestPage, LongestPage);
  timer_->Interval(static_cast<std::int32_t>(stands));
  ShowPage(page_);
} catch (...) {
  modErrors::CatchError();
  EndTimer();
  if (Ended) Ended();
}

void ScrollPlay::ShowPage(std::size_t page) {
  const auto deck = presentation_->ActivePresentation();
  const bool saved = deck->Saved();
  const auto shapes = shapes_;
  std::vector<double> scrolledBy;
  scrolledBy.reserve(shapes.size());
  for (const auto& [shape, entry] : shapes) {
    scrolledBy.push_back(static_cast<double>(pages_[page].Steps[entry]) * scrolls_[entry].Step);
  }
  for (std::size_t i = 0; i < shapes.size(); ++i) {
    presentation_->FillShape(*slide_, shapes[i].first, scrolledBy[i]);
  }
  deck->Saved(saved);
}

}  // namespace LF2000
