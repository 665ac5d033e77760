// A show's model is built from its deck's tags and handed to the form that drives it.

#include "runtime/clsRuntime.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "addin/support/modErrors.h"
#include "addin/support/modGlobalFunctions.h"
#include "basic/Conversion.h"
#include "basic/Error.h"
#include "basic/Strings.h"
#include "host/services.h"
#include "model/clsSlide.h"
#include "model/modTable.h"
#include "model/modTags.h"
#include "runtime/SlideScrolling.h"

namespace LF2000 {

using modDebug::DebugKind;

namespace {

std::int32_t ToInterval(double milliseconds) {
  constexpr double Largest = std::numeric_limits<std::int32_t>::max();
  return basic::CLng(std::min(milliseconds, Largest));
}

}  // namespace

clsRuntime::~clsRuntime() {
  if (form_) form_->Unload();
}

/// A failing step is reported, and the show runs with what there is: one source
/// that is not there yet must not keep a screen dark.
template <typename Step>
void clsRuntime::KeepGoing(const char* procedure, Step&& step) try {
  if (!ended_) step();
} catch (...) {
  if (ended_) return;
  modErrors::SetLastError();
  Log(DebugKind::Error, procedure + (":" + modErrors::LastError.Description));
  modErrors::ReportError(modErrors::OpeningPresentation);
}

void clsRuntime::StartTimers(const std::shared_ptr<PowerPoint::SlideShowWindow>& window) {
  starting_ = true;
  ended_ = false;
  try {
    if (modTags::HasVersionTag(*presentation_)) {
      BuildModel();
      if (!ended_) HandOver(window);
      active_ = !ended_;
    }
  } catch (...) {
    if (!ended_) {
      modErrors::SetLastError();
      Log(DebugKind::Error, "StartTimers:" + modErrors::LastError.Description);
      modErrors::ReportError(modErrors::StartingTimers);
    }
    if (form_) form_->Unload();
    form_.reset();
  }
  starting_ = false;
  if (ended_) Release();
  if (showMeter_) host::Current().progressMeter->Close();
}

void clsRuntime::BuildModel() {
  const std::int32_t connectionCount = modTags::CountTags(*presentation_->Tags(), modTags::Connection);
  if (showMeter_) host::Current().progressMeter->Show("Opening presentation", connectionCount);

  slideCount_ = presentation_->Slides()->Count();
  const auto places = static_cast<std::size_t>(slideCount_) + 1;
  slideInfo_.assign(places, {});
  shapes_.assign(places, {});
  clocks_.assign(places, {});
  usedConnections_.assign(places, {});
  usedColumns_.clear();
  linkedObjects_.clear();
  linkedFiles_.clear();
  for (std::int32_t slide = 1; slide <= slideCount_ && !ended_; ++slide) ReadSlide(slide);
  OpenConnections();
}

void clsRuntime::ReadSlide(std::int32_t slide) {
  const auto slideObject = presentation_->Slides()->Item(slide);
  const clsSlide properties = ReadSlideProperties(*slideObject);
  clsRTSlideInfo& info = slideInfo_[static_cast<std::size_t>(slide)];
  info.HideWhenNoData = properties.HideWhenNoData();
  info.RefreshLinkedObjects = properties.RefreshLinkedObjects();
  const auto shapes = slideObject->Shapes();
  std::unordered_set<std::string> linkedNames;
  for (std::int32_t i = 1; i <= shapes->Count(); ++i) {
    const auto shape = shapes->Item(i);
    KeepGoing("ReadLinkedObject", [&] { AddLinkedObject(*shape, info.RefreshLinkedObjects); });
    KeepGoing("ReadShape", [&] {
      clsShape link;
      link.ShapeItem(shape);
      if (!link.LumenfoldEnabled()) return;
      // The show finds shapes by name, so a second one of that name is out of its reach.
      const std::string name = shape->Name();
      if (!linkedNames.insert(name).second) {
        throw basic::Error(basic::AdapterError, basic::DefaultSource,
                           "Slide " + std::to_string(slide) + " has two linked shapes named '" + name +
                               "'. Only the first is kept current; give the other one a name of its own.");
      }
      AddShape(slide, link);
    });
  }
  NoteScrolling(slide, properties);
}

clsSlide clsRuntime::ReadSlideProperties(PowerPoint::Slide& slide) {
  clsSlide properties;
  std::vector<std::string> problems;
  KeepGoing("ReadSlideProperties", [&] { problems = properties.ReadTags(*slide.Tags()); });
  for (const std::string& problem : problems) {
    KeepGoing("ReadSlideProperties", [&] {
      throw basic::Error(basic::AdapterError, basic::DefaultSource,
                         "Slide " + std::to_string(slide.SlideIndex()) + ": " + problem);
    });
  }
  return properties;
}

void clsRuntime::NoteScrolling(std::int32_t slide, const clsSlide& properties) {
  const auto index = static_cast<std::size_t>(slide);
  slideInfo_[index].Scrolls = JoinScrolling(properties, shapes_[index]);
  for (const std::int32_t number : ScrollingEntries(properties)) {
    // Faster than screens follow, several steps are taken at once.
    constexpr double ShortestTick = 20;
    const double tick = std::max<double>(properties.ScrollTime(std::to_string(number)), ShortestTick);
    scrollInterval_ = scrollInterval_ == NoScrollInterval ? tick : std::min(scrollInterval_, tick);
  }
}

void clsRuntime::AddShape(std::int32_t slide, const clsShape& link) {
  switch (static_cast<SourceType>(link.SourceType())) {
    case SourceType::Clock:
      clocks_[static_cast<std::size_t>(slide)].push_back({link.ShapeItem()->Name(), link.DateFormat()});
      clocksPresent_ = true;
      break;
    case SourceType::DataField:
    case SourceType::LinkedObject:
    case SourceType::Graph:
      AddDataShape(slide, link);
      break;
    case SourceType::NotLinked:
      break;
  }
}

void clsRuntime::AddDataShape(std::int32_t slide, const clsShape& link) {
  auto info = DataShapeOf(link);
  if (!info) return;
  if (static_cast<SourceType>(info->SourceType) != SourceType::Graph) {
    usedColumns_[info->ConnectionKey].insert(info->ColumnName);
  } else if (info->TableRows) {
    for (std::string& column : modTable::HeaderTexts(*link.ShapeItem()->Table())) {
      if (!column.empty()) usedColumns_[info->ConnectionKey].insert(std::move(column));
    }
  }
  const auto index = static_cast<std::size_t>(slide);
  usedConnections_[index].set(static_cast<std::size_t>(basic::CLng(info->ConnectionNumber)));
  shapes_[index].push_back(std::move(*info));
}

void clsRuntime::AddLinkedObject(PowerPoint::Shape& shape, bool everyFile) {
  const bool isObject = shape.Type() == PowerPoint::ShapeType::LinkedOLEObject;
  if (!isObject && !(everyFile && shape.Type() == PowerPoint::ShapeType::LinkedPicture)) return;
  const std::string source = shape.LinkFormat()->SourceFullName();
  const std::size_t mark = isObject ? source.find('!') : std::string::npos;
  if (mark == std::string::npos && !everyFile) return;
  const std::string path = source.substr(0, mark);
  if (!linkedFiles_.insert(path).second) return;
  // An entry without a date counts as changed as soon as its file can be seen.
  std::string entry = path;
  modGlobalFunctions::IgnoreErrors(
      [&] { entry += "\t" + basic::CStr(host::Current().files->FileDateTime(path)); });
  linkedObjects_.push_back(std::move(entry));
}

void clsRuntime::OpenConnections() {
  modTags::ForEachTag(*presentation_->Tags(), modTags::Connection,
                      [&](const std::string& suffix, const std::string& value) {
                        KeepGoing("OpenConnection", [&] { OpenConnection(suffix, value); });
                        if (showMeter_ && !ended_) host::Current().progressMeter->Step();
                      });
}

void clsRuntime::OpenConnection(const std::string& suffix, const std::string& value) {
  const std::int32_t number = basic::CLng(suffix);
  if (number < 1 || number >= static_cast<std::int32_t>(ConnectionPlaces)) return;
  auto connection = std::make_shared<clsConnection>();
  connection->ActivePresentationName(presentation_->FullName());
  connection->ConnectionTagNumber(suffix);
  connection->TagString(value);
  NoteRefreshInterval(*connection);
  const std::string key = modGlobalFunctions::Format000(number);
  const auto& used = usedColumns_[key];
  connection->UsedColumns({used.begin(), used.end()});
  connections_[key] = connection;
  connectionFlags_.set(static_cast<std::size_t>(number));
  if (LeaveToReader(*connection)) return;
  if (showMeter_) {
    host::Current().progressMeter->Text(
        basic::Replace("Opening connection %s", "%s", connection->ConnectionDescription()));
  }
  try {
    connection->OpenConnection();
    connection->OpenRecordset();
    connection->CloseConnection();
    connection->RequireUsedColumns();
  } catch (...) {
    modErrors::SetLastError();
    connection->NoteFailure(modErrors::LastError.Description);
    throw;
  }
}

bool clsRuntime::LeaveToReader(clsConnection& connection) const {
  if (!reader_ || static_cast<ConnectionKind>(connection.ConnectionType()) != ConnectionKind::Database) {
    return false;
  }
  const auto reading = reader_->FindConnection(connection.ConnectionTagNumber());
  if (!reading || reading->TagString() != connection.TagString()) return false;
  connection.ReadBy(reading, [reader = std::weak_ptr(reader_), of = std::weak_ptr(reading)] {
    const auto presentation = reader.lock();
    const auto each = of.lock();
    return presentation && each && presentation->IsReading(*each);
  });
  if (connection.TakeReading()) connection.RequireUsedColumns();
  return true;
}

void clsRuntime::NoteRefreshInterval(const clsConnection& connection) {
  switch (static_cast<ConnectionKind>(connection.ConnectionType())) {
    case ConnectionKind::TextFile:
    case ConnectionKind::Excel:
      forcesDefaultRefresh_ = true;
      break;
    case ConnectionKind::Database:
      refreshInterval_ = std::min(refreshInterval_, connection.RecordsetRefreshRate());
      break;
  }
}

void clsRuntime::HandOver(const std::shared_ptr<PowerPoint::SlideShowWindow>& window) {
  HandTablesOver();
  form_->Window(window);

  const auto slides = presentation_->Slides();
  const basic::Date now = host::Current().clock->Now();
  for (std::int32_t slide = 1; slide <= slideCount_; ++slide) {
    form_->RefreshSlideAt(slide);
    if (ended_) return;
    form_->RefreshRange(slide);
    form_->RefreshClocks(*slides->Item(slide), slide, now);
  }
  SetUpTimers();

  const std::int32_t first = window->View()->CurrentShowPosition();
  form_->CurrentSlide(first);
  if (ended_ || first > slideCount_) return;
  form_->RefreshClocks(*slides->Item(first), first, host::Current().clock->Now());
  form_->RefreshSlideAt(first);
  form_->RefreshRange(first);
}

void clsRuntime::HandTablesOver() {
  form_ = FrmRuntimeTimer::Create();
  form_->ActivePresentation(presentation_);
  form_->SlideInfo(slideInfo_);
  form_->SlideInfoShapes(shapes_);
  form_->SlideInfoClocks(clocks_);
  form_->SlideInfoUsedConnections(usedConnections_);
  form_->SlideInfoConnections(connectionFlags_);
  form_->Connections(connections_);
}

void clsRuntime::SetUpTimers() {
  constexpr std::int32_t DefaultRefresh = 1000;
  if (forcesDefaultRefresh_ || refreshInterval_ == NoRefreshInterval) {
    refreshInterval_ = DefaultRefresh;
  } else {
    refreshInterval_ = std::abs(refreshInterval_);
  }
  const std::int32_t refresh = ToInterval(refreshInterval_);

  // Without scrolling the data timer paces the requery; with it, the data timer
  // paces the scroll steps and the connections timer the requery.
  if (scrollInterval_ != NoScrollInterval) {
    form_->Scrolling(true);
    // A timer without an interval never fires, and the data would stand still.
    form_->tmrConnections().Interval(refresh == 0 ? DefaultRefresh : refresh);
    form_->tmrConnections().Enabled(true);
    form_->tmrData().Interval(ToInterval(std::min(scrollInterval_, refreshInterval_)));
  } else {
    form_->Scrolling(false);
    form_->tmrData().Interval(refresh);
    form_->tmrConnections().Enabled(false);
  }
  if (form_->tmrData().Interval() == 0) form_->tmrData().Interval(DefaultRefresh);
  if (clocksPresent_) {
    form_->tmrClock().Interval(50);
    form_->tmrClock().Enabled(true);
  }
  if (!linkedObjects_.empty()) {
    form_->LinkedOLEObjects(linkedObjects_);
    form_->tmrRefreshLinkedObjects().Enabled(true);
  }
}

void clsRuntime::SlideShowNextSlide(const std::shared_ptr<PowerPoint::SlideShowWindow>& window) try {
  if (!active_) return;
  const std::int32_t position = window->View()->CurrentShowPosition();
  Log(DebugKind::Information, "Next slide: " + std::to_string(position));
  // The show may end in there.
  const std::shared_ptr<FrmRuntimeTimer> form = form_;
  form->CurrentSlide(position);
} catch (...) {
  modErrors::CatchError();
}

void clsRuntime::UnSetLinkedObjects() {
  active_ = false;
  ended_ = true;
  if (form_) form_->Unload();
  // A tick may be waiting for one of them.
  for (const auto& [number, connection] : connections_) connection->CloseConnection();
  if (!starting_) Release();
}

void clsRuntime::Release() {
  form_.reset();
  connections_.clear();
  slideInfo_.clear();
  shapes_.clear();
  clocks_.clear();
  usedConnections_.clear();
  linkedObjects_.clear();
}

void clsRuntime::Log(modDebug::DebugKind kind, std::string_view text) {
  modDebug::WriteDebugLog(kind, "clsRuntime", text);
}

}  // namespace LF2000
