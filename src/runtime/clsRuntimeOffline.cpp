// A copy of a presentation that stands alone: filled once as a show begins, then freed of what it was filled
// by.

#include <algorithm>
#include <map>

#include "addin/support/modErrors.h"
#include "addin/support/modGlobalFunctions.h"
#include "basic/Error.h"
#include "basic/Strings.h"
#include "host/services.h"
#include "model/OpenedPresentation.h"
#include "model/modClockFormat.h"
#include "model/modOfflineLinks.h"
#include "model/modSlides.h"
#include "model/modTags.h"
#include "runtime/OfflinePages.h"
#include "runtime/clsRuntime.h"

namespace LF2000 {

using modDebug::DebugKind;

namespace {

[[noreturn]] void Fail(const std::string& text) {
  throw basic::Error(basic::AdapterError, basic::DefaultSource, text);
}

/// What cannot be done is reported, and the copy made with the rest.
template <typename Step>
void KeepCopying(const Step& step) try {
  step();
} catch (...) {
  modErrors::CatchError(modErrors::CreatingOfflinePresentation);
}

/// Closes the progress meter, whoever opens it.
struct MeterEnd {
  MeterEnd() = default;
  ~MeterEnd() { host::Current().progressMeter->Close(); }
  MeterEnd(const MeterEnd&) = delete;
  MeterEnd& operator=(const MeterEnd&) = delete;
};

/// Calls `visit(std::shared_ptr<PowerPoint::Shape>)` for the shapes of a slide and those in groups. `visit`
/// may put another shape in the place of one.
template <typename Visit>
void ForEachShapeAndItem(PowerPoint::Slide& slide, const Visit& visit) {
  modSlides::ForEachShape(slide, [&](const std::shared_ptr<PowerPoint::Shape>& shape) {
    if (shape->Type() != PowerPoint::ShapeType::Group) return visit(shape);
    visit(shape);
    for (std::int32_t i = 1; i <= shape->GroupItems()->Count(); ++i) visit(shape->GroupItems()->Item(i));
  });
}

/// Empty when it is linked to nothing.
std::string SourceOf(PowerPoint::Shape& shape) {
  std::string source;
  modGlobalFunctions::IgnoreErrors([&] { source = shape.LinkFormat()->SourceFullName(); });
  return source;
}

bool IsFilm(PowerPoint::Shape& shape) { return shape.Type() == PowerPoint::ShapeType::Media; }

void BreakLink(PowerPoint::Shape& shape) {
  // A film plays from its file in any case.
  if (!IsFilm(shape) && !SourceOf(shape).empty()) shape.LinkFormat()->BreakLink();
  std::shared_ptr<MSGraph::Chart> chart;
  modGlobalFunctions::IgnoreErrors([&] { chart = shape.OLEFormat()->Object(); });
  if (chart && chart->IsLinked()) chart->BreakLink();
}

}  // namespace

std::vector<std::string> clsRuntime::CreateOfflinePPT(const modOfflineCopy::Files& files,
                                                      const modOfflineCopy::Options& options) {
  Log(DebugKind::Event, "CreateOfflinePPT:" + files.Copy);
  const OpenedPresentation copy(files.Saved);
  presentation_ = copy.Presentation();
  ended_ = false;
  const MeterEnd meterEnd;
  showMeter_ = true;
  BuildModel();
  // What they said is known; duplicates do without.
  RemoveAllTags();
  const std::vector<OfflineSlide> slides = MultiplySlides();
  SetOfflineTimes(slides);
  HandTablesOver();
  form_->DisableTimer();
  FillOffline(slides, options);
  TakeOutHidden(slides);
  BreakLinks();
  modOfflineLinks::TakePicturesIn(presentation_, modGlobalFunctions::OfflineGenerationBase);
  std::vector<std::string> outside = FilmsOutside();
  presentation_->SaveCopyAs(files.Copy);
  Release();
  return outside;
}

std::vector<clsRuntime::OfflineSlide> clsRuntime::MultiplySlides() {
  const auto slides = presentation_->Slides();
  std::vector<std::vector<OfflinePage>> pages(static_cast<std::size_t>(slideCount_) + 1);
  // From the last, so that those before keep their places.
  for (std::int32_t slide = slideCount_; slide >= 1; --slide) {
    auto& ofSlide = pages[static_cast<std::size_t>(slide)];
    ofSlide = PagesOfSlide(slide);
    for (std::size_t i = 1; i < ofSlide.size(); ++i) slides->Item(slide)->Duplicate();
  }
  std::vector<OfflineSlide> all(1);
  SlideInfoTable infos(1);
  SlideShapesTable shapes(1);
  SlideClocksTable clocks(1);
  UsedConnectionsTable used(1);
  for (std::int32_t slide = 1; slide <= slideCount_; ++slide) {
    const auto index = static_cast<std::size_t>(slide);
    for (std::size_t i = 0; i < pages[index].size(); ++i) {
      const OfflinePage& page = pages[index][i];
      all.push_back({slide, i, pages[index].size(), page.Milliseconds});
      infos.push_back(slideInfo_[index]);
      for (std::size_t entry = 0; entry < page.Steps.size(); ++entry) {
        infos.back().Scrolls[entry].Steps = page.Steps[entry];
      }
      shapes.push_back(shapes_[index]);
      clocks.push_back(clocks_[index]);
      used.push_back(usedConnections_[index]);
    }
  }
  slideInfo_ = std::move(infos);
  shapes_ = std::move(shapes);
  clocks_ = std::move(clocks);
  usedConnections_ = std::move(used);
  slideCount_ = static_cast<std::int32_t>(all.size()) - 1;
  NoteShows(all);
  return all;
}

std::vector<OfflinePage> clsRuntime::PagesOfSlide(std::int32_t slide) {
  const clsRTSlideInfo& info = slideInfo_[static_cast<std::size_t>(slide)];
  std::vector<double> recordCounts;
  for (const clsRTScrollInfo& scroll : info.Scrolls) {
    const auto found = connections_.find(scroll.ConnectionKey);
    const bool isRead = found != connections_.end() && found->second->RecordsetReady();
    recordCounts.push_back(isRead ? found->second->RecordCount() : 0);
  }
  std::vector<OfflinePage> pages = OfflinePagesOf(info.Scrolls, recordCounts);
  // A slide that makes way before its first step never takes one.
  const auto transition = presentation_->Slides()->Item(slide)->SlideShowTransition();
  const bool leavesBefore =
      transition->AdvanceOnTime() && transition->AdvanceTime() * 1000 <= pages.front().Milliseconds;
  if (leavesBefore) pages.resize(1);
  if (pages.size() == MostOfflinePages) {
    KeepCopying([&] {
      Fail("Slide " + std::to_string(slide) + " scrolls through more rows than " +
           std::to_string(MostOfflinePages) + " slides show; the copy ends there.");
    });
  }
  return pages;
}

void clsRuntime::NoteShows(const std::vector<OfflineSlide>& slides) {
  const auto present = presentation_->Slides();
  std::map<std::int32_t, std::vector<std::int32_t>> idsByFirst;
  for (std::int32_t slide = 1, first = 0; slide <= slideCount_; ++slide) {
    const std::int32_t id = present->Item(slide)->SlideID();
    if (slides[static_cast<std::size_t>(slide)].Page == 0) first = id;
    idsByFirst[first].push_back(id);
  }
  const auto shows = presentation_->SlideShowSettings()->NamedSlideShows();
  for (std::int32_t i = 1; i <= shows->Count(); ++i) {
    const auto show = shows->Item(i);
    std::vector<std::int32_t> ids;
    for (const std::int32_t id : show->SlideIDs()) {
      const std::vector<std::int32_t>& pages = idsByFirst[id];
      ids.insert(ids.end(), pages.begin(), pages.end());
    }
    if (ids != show->SlideIDs()) show->SlideIDs(ids);
  }
}

void clsRuntime::SetOfflineTimes(const std::vector<OfflineSlide>& slides) {
  constexpr double MillisecondsPerSecond = 1000;
  const auto present = presentation_->Slides();
  // A slide that is alone comes round to its first row again.
  const bool isAlone = slides.back().Source == 1;
  for (std::int32_t slide = 1; slide <= slideCount_; ++slide) {
    const OfflineSlide& page = slides[static_cast<std::size_t>(slide)];
    if (page.PageCount == 1) continue;
    const auto transition = present->Item(slide)->SlideShowTransition();
    // Where the author waits for a click after the slide, so does the last page.
    const bool isLast = page.Page + 1 == page.PageCount;
    if (!isLast || isAlone || transition->AdvanceOnTime()) {
      transition->AdvanceOnTime(true);
      transition->AdvanceTime(page.Milliseconds / MillisecondsPerSecond);
    }
    if (page.Page == 0) continue;
    // The next rows come as they do in a show: the slide stands.
    transition->EntryEffect(PowerPoint::EntryEffect::None);
    present->Item(slide)->TimeLine()->Delete();
  }
}

void clsRuntime::FillOffline(const std::vector<OfflineSlide>& slides,
                             const modOfflineCopy::Options& options) {
  constexpr std::int64_t Pause = 100;  // milliseconds between two looks at the loop
  const auto present = presentation_->Slides();
  const basic::Date now = host::Current().clock->Now();
  host::ProgressMeter& meter = *host::Current().progressMeter;
  meter.Show("Creating off-line presentation", slides.back().Source);
  std::int64_t looked = host::Current().clock->TickCount();
  for (std::int32_t slide = 1; slide <= slideCount_; ++slide) {
    form_->RefreshSlideAt(slide);
    form_->RefreshClocks(*present->Item(slide), slide, now);
    if (options.KeepClocks) MakeFields(*present->Item(slide), clocks_[static_cast<std::size_t>(slide)]);
    if (slides[static_cast<std::size_t>(slide)].Page == 0) meter.Step();
    if (host::Current().clock->TickCount() - looked >= Pause) {
      host::Current().loop->DoEvents();
      looked = host::Current().clock->TickCount();
    }
    if (options.IsCancelled && options.IsCancelled()) throw modOfflineCopy::Cancelled();
  }
}

void clsRuntime::MakeFields(PowerPoint::Slide& slide, const std::vector<clsRTClockInfo>& clocks) {
  for (const clsRTClockInfo& clock : clocks) {
    const auto field = modClockFormat::FieldFor(clock.Format);
    if (!field) continue;
    KeepCopying(
        [&] { slide.Shapes()->Item(clock.Name)->TextFrame()->TextRange()->InsertDateTime(*field, true); });
  }
}

void clsRuntime::TakeOutHidden(const std::vector<OfflineSlide>& slides) {
  const auto present = presentation_->Slides();
  const auto settings = presentation_->SlideShowSettings();
  const bool isRange = settings->RangeType() == PowerPoint::SlideShowRangeType::ShowSlideRange;
  const std::int32_t start = settings->StartingSlide();
  const std::int32_t end = settings->EndingSlide();
  std::int32_t kept = 0;
  std::int32_t first = 0;
  std::int32_t last = 0;
  for (std::int32_t slide = 1; slide <= slideCount_; ++slide) {
    if (form_->HidesWithoutData(slide)) continue;
    ++kept;
    const std::int32_t source = slides[static_cast<std::size_t>(slide)].Source;
    if (source < start || source > end) continue;
    if (first == 0) first = kept;
    last = kept;
  }
  if (kept == 0) Fail("No slide has data, and all hide without: there is nothing to show.");
  for (std::int32_t slide = slideCount_; slide >= 1; --slide) {
    if (form_->HidesWithoutData(slide)) present->Item(slide)->Delete();
  }
  if (!isRange) return;
  if (first == 0) return settings->RangeType(PowerPoint::SlideShowRangeType::ShowAll);
  settings->StartingSlide(first);
  settings->EndingSlide(last);
}

void clsRuntime::RemoveAllTags() {
  modTags::RemoveTags(*presentation_->Tags(), modTags::Prefix);
  modSlides::ForEachSlide(*presentation_, [](PowerPoint::Slide& slide) {
    modTags::RemoveTags(*slide.Tags(), modTags::Prefix);
    ForEachShapeAndItem(slide, [](const std::shared_ptr<PowerPoint::Shape>& shape) {
      modTags::RemoveTags(*shape->Tags(), modTags::Prefix);
    });
  });
}

void clsRuntime::BreakLinks() {
  modSlides::ForEachSlide(*presentation_, [](PowerPoint::Slide& slide) {
    ForEachShapeAndItem(slide, [](const std::shared_ptr<PowerPoint::Shape>& shape) {
      KeepCopying([&] { BreakLink(*shape); });
    });
  });
}

std::vector<std::string> clsRuntime::FilmsOutside() const {
  std::vector<std::string> films;
  modSlides::ForEachSlide(*presentation_, [&](PowerPoint::Slide& slide) {
    ForEachShapeAndItem(slide, [&](const std::shared_ptr<PowerPoint::Shape>& shape) {
      const std::string source = IsFilm(*shape) ? SourceOf(*shape) : std::string();
      if (source.empty()) return;
      films.push_back("Slide " + std::to_string(slide.SlideIndex()) + " plays " + source +
                      ", which stays outside of the copy.");
    });
  });
  return films;
}

}  // namespace LF2000
