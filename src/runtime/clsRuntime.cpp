#include "runtime/clsRuntime.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <unordered_set>

#include "addin/modDebug.h"
#include "addin/modErrors.h"
#include "addin/modGlobalFunctions.h"
#include "basic/Conversion.h"
#include "basic/Error.h"
#include "basic/Strings.h"
#include "host/services.h"
#include "model/clsSlide.h"
#include "model/modTags.h"

namespace LF2000 {

using modDebug::DebugKind;

namespace {

void Log(DebugKind kind, const std::string& text) { modDebug::WriteDebugLog(kind, "clsRuntime", text); }

/// A failing step is reported, and the show runs with what there is: one source
/// that is not there yet must not keep a screen dark.
template <typename Step>
void KeepGoing(const char* procedure, Step&& step) try {
  step();
} catch (...) {
  modErrors::SetLastError();
  Log(DebugKind::Error, procedure + (":" + modErrors::LastError.Description));
  modErrors::ReportError(modErrors::OpeningPresentation);
}

std::int32_t ToInterval(double milliseconds) {
  constexpr double Largest = std::numeric_limits<std::int32_t>::max();
  return basic::CLng(std::min(milliseconds, Largest));
}

}  // namespace

clsRuntime::~clsRuntime() {
  if (form_) form_->Unload();
}

void clsRuntime::StartTimers(const std::shared_ptr<PowerPoint::SlideShowWindow>& window) {
  try {
    if (!modTags::HasVersionTag(*presentation_)) return;
    BuildModel();
    HandOver(window);
    active_ = true;
  } catch (...) {
    modErrors::SetLastError();
    Log(DebugKind::Error, "StartTimers:" + modErrors::LastError.Description);
    modErrors::ReportError(modErrors::StartingTimers);
    if (form_) form_->Unload();
    form_.reset();
  }
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
  linkedObjects_.clear();
  for (std::int32_t slide = 1; slide <= slideCount_; ++slide) ReadSlide(slide);
  OpenConnections();
}

void clsRuntime::ReadSlide(std::int32_t slide) {
  const auto slideObject = presentation_->Slides()->Item(slide);
  ReadSlideProperties(*slideObject, slideInfo_[static_cast<std::size_t>(slide)]);
  const auto shapes = slideObject->Shapes();
  std::unordered_set<std::string> linkedNames;
  for (std::int32_t i = 1; i <= shapes->Count(); ++i) {
    const auto shape = shapes->Item(i);
    KeepGoing("ReadShape", [&] {
      if (shape->Type() == PowerPoint::ShapeType::LinkedOLEObject) AddLinkedObject(*shape);
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
}

void clsRuntime::ReadSlideProperties(PowerPoint::Slide& slide, clsRTSlideInfo& info) {
  const auto tags = slide.Tags();
  clsSlide properties;
  modTags::ForEachTag(*tags, modTags::SlideProperties,
                      [&](const std::string&, const std::string& value) { properties.TagString(value); });
  info.HideWhenNoData = properties.HideWhenNoData();
  info.RefreshLinkedObjects = properties.RefreshLinkedObjects();
  modTags::ForEachTag(*tags, modTags::ScrollStep, [&](const std::string& key, const std::string& value) {
    properties.AddScrollInfo(key, value);
    const std::int32_t time = properties.ScrollTime(key);
    if (!properties.ScrollEnabled(key) || time <= 0) return;
    info.ScrollEntries[basic::CLng(key)] = {properties.ScrollStep(key), time};
    scrollInterval_ = scrollInterval_ == NoScrollInterval ? time : std::min<double>(scrollInterval_, time);
  });
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
  const std::int32_t number = basic::CLng(link.ConnectionTagNumber());
  if (number < 1 || number >= static_cast<std::int32_t>(ConnectionPlaces)) return;

  const auto index = static_cast<std::size_t>(slide);
  clsRTShapeInfo info;
  info.Name = link.ShapeItem()->Name();
  info.SourceType = link.SourceType();
  info.ConnectionNumber = link.ConnectionTagNumber();
  info.ConnectionKey = modGlobalFunctions::Format000(number);
  info.ColumnName = link.ColumnName();
  info.Row = link.Row();
  info.DateFormat = link.DateFormat();
  info.ObjectFolder = link.ObjectFolder();
  info.ObjectExtension = link.ObjectExtension();
  shapes_[index].push_back(std::move(info));
  usedConnections_[index].set(static_cast<std::size_t>(number));
}

void clsRuntime::AddLinkedObject(PowerPoint::Shape& shape) {
  const std::string source = shape.LinkFormat()->SourceFullName();
  const std::size_t mark = source.find('!');
  if (mark == std::string::npos) return;
  const std::string path = source.substr(0, mark);
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
                        if (showMeter_) host::Current().progressMeter->Step();
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
  connections_[modGlobalFunctions::Format000(number)] = connection;
  connectionFlags_.set(static_cast<std::size_t>(number));
  if (showMeter_) {
    host::Current().progressMeter->Text(
        basic::Replace("Opening connection %s", "%s", connection->ConnectionDescription()));
  }
  try {
    connection->OpenConnection();
    connection->OpenRecordset();
    connection->CloseConnection();
  } catch (...) {
    modErrors::SetLastError();
    connection->NoteFailure(modErrors::LastError.Description);
    throw;
  }
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
  form_ = FrmRuntimeTimer::Create();
  form_->ActivePresentation(presentation_);
  form_->Window(window);
  form_->SlideInfo(slideInfo_);
  form_->SlideInfoShapes(shapes_);
  form_->SlideInfoClocks(clocks_);
  form_->SlideInfoUsedConnections(usedConnections_);
  form_->SlideInfoConnections(connectionFlags_);
  form_->Connections(connections_);

  const auto slides = presentation_->Slides();
  const basic::Date now = host::Current().clock->Now();
  for (std::int32_t slide = 1; slide <= slideCount_; ++slide) {
    form_->RefreshSlide(static_cast<std::int16_t>(slide));
    form_->RefreshRange(slide);
    form_->RefreshClocks(*slides->Item(slide), slide, now);
  }
  SetUpTimers();

  const std::int32_t first = window->View()->CurrentShowPosition();
  form_->CurrentSlide(first);
  if (first > slideCount_) return;
  form_->RefreshClocks(*slides->Item(first), first, host::Current().clock->Now());
  form_->RefreshSlide(static_cast<std::int16_t>(first));
  form_->RefreshRange(first);
}

void clsRuntime::SetUpTimers() {
  constexpr double DefaultRefresh = 1000;
  if (forcesDefaultRefresh_ || refreshInterval_ == NoRefreshInterval) {
    refreshInterval_ = DefaultRefresh;
  } else {
    refreshInterval_ = std::abs(refreshInterval_);
  }

  // Without scrolling the data timer paces the requery; with it, the data timer
  // paces the scroll steps and the connections timer the requery.
  if (scrollInterval_ != NoScrollInterval) {
    form_->Scrolling(true);
    form_->tmrConnections().Interval(ToInterval(refreshInterval_));
    form_->tmrConnections().Enabled(true);
    form_->tmrData().Interval(ToInterval(std::min(scrollInterval_, refreshInterval_)));
  } else {
    form_->Scrolling(false);
    form_->tmrData().Interval(ToInterval(refreshInterval_));
    form_->tmrConnections().Enabled(false);
  }
  if (form_->tmrData().Interval() == 0) form_->tmrData().Interval(static_cast<std::int32_t>(DefaultRefresh));
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
  form_->CurrentSlide(position);
} catch (...) {
  modErrors::SetLastError();
  modErrors::ReportError();
}

void clsRuntime::UnSetLinkedObjects() {
  active_ = false;
  if (form_) form_->Unload();
  form_.reset();
  // A tick may be waiting for one of them.
  for (const auto& [number, connection] : connections_) connection->CloseConnection();
  connections_.clear();
  slideInfo_.clear();
  shapes_.clear();
  clocks_.clear();
  usedConnections_.clear();
  linkedObjects_.clear();
}

}  // namespace LF2000
