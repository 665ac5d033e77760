#include "model/clsPresentation.h"

#include <algorithm>
#include <utility>

#include "addin/modDebug.h"
#include "addin/modErrors.h"
#include "addin/modGlobalFunctions.h"
#include "basic/Conversion.h"
#include "basic/Strings.h"
#include "host/services.h"
#include "model/modGraph.h"
#include "model/modLinkedFiles.h"
#include "model/modTags.h"

namespace LF2000 {

using modDebug::DebugKind;

namespace {

constexpr std::int32_t ShowsValues = 1;

void Log(DebugKind kind, const std::string& text) { modDebug::WriteDebugLog(kind, "clsPresentation", text); }

void CatchError(std::int32_t code) {
  modErrors::SetLastError();
  modErrors::ReportError(code);
}

template <typename Visit>
void ForEachSlide(PowerPoint::Presentation& presentation, Visit&& visit) {
  const auto slides = presentation.Slides();
  for (std::int32_t i = 1; i <= slides->Count(); ++i) visit(*slides->Item(i));
}

template <typename Visit>
void ForEachShape(PowerPoint::Slide& slide, Visit&& visit) {
  const auto shapes = slide.Shapes();
  for (std::int32_t i = 1; i <= shapes->Count(); ++i) visit(shapes->Item(i));
}

std::shared_ptr<clsConnection> DescribedConnection(const std::string& presentationName,
                                                   const std::string& number, const std::string& tagValue) {
  auto connection = std::make_shared<clsConnection>();
  connection->ActivePresentationName(presentationName);
  connection->ConnectionTagNumber(number);
  connection->TagString(tagValue);
  connection->DesignMode(true);
  return connection;
}

}  // namespace

void clsPresentation::ActivePresentation(const std::shared_ptr<PowerPoint::Presentation>& presentation) try {
  Log(DebugKind::Event, "Opening presentation");
  presentation_ = presentation;
  connections_.clear();
  if (!modTags::HasVersionTag(*presentation_)) return;

  const bool loaded = LoadConnections();
  LoadSettings();
  if (loaded) {
    Log(DebugKind::Event, "Start fill values");
    FillValues(false);
    Log(DebugKind::Event, "End fill values");
  }
  CloseMeter();
} catch (...) {
  CloseMeter();
  CatchError(modErrors::OpeningPresentation);
}

bool clsPresentation::LoadConnections() {
  const auto tags = presentation_->Tags();
  const std::int32_t connectionCount = modTags::CountTags(*tags, modTags::Connection);
  const std::int32_t slideCount = presentation_->Slides()->Count();
  if (slideCount >= 2 || connectionCount >= 2) {
    host::Current().progressMeter->Show("Opening presentation", slideCount + connectionCount);
    meterShown_ = true;
  }

  const std::string presentationName = presentation_->FullName();
  bool loaded = true;
  modTags::ForEachTag(*tags, modTags::Connection, [&](const std::string& number, const std::string& value) {
    try {
      auto connection = DescribedConnection(presentationName, number, value);
      connections_.push_back(connection);
      // After a failure nothing more is opened, but every description is taken
      // up, so that writing the connections back loses none.
      if (loaded) OpenConnection(*connection);
    } catch (...) {
      if (loaded) CatchError(modErrors::OpeningPresentation);
      loaded = false;
    }
  });
  return loaded;
}

void clsPresentation::OpenConnection(clsConnection& connection) {
  if (meterShown_) {
    host::Current().progressMeter->Text(
        basic::Replace("Opening connection %s", "%s", connection.ConnectionDescription()));
  }
  connection.OpenConnection();
  connection.OpenRecordset();
  connection.CloseConnection();
  if (meterShown_) host::Current().progressMeter->Step();
}

void clsPresentation::CloseMeter() {
  if (meterShown_) host::Current().progressMeter->Close();
  meterShown_ = false;
}

void clsPresentation::LoadSettings() {
  const auto tags = presentation_->Tags();
  modTags::ForEachTag(*tags, modTags::DisplayType,
                      [&](const std::string&, const std::string& value) { DisplayType(basic::CLng(value)); });
  modTags::ForEachTag(*tags, modTags::DistributionStart, [&](const std::string&, const std::string& value) {
    distributionStart_ = basic::CDate(value);
  });
  modTags::ForEachTag(*tags, modTags::DistributionStop, [&](const std::string&, const std::string& value) {
    distributionStop_ = basic::CDate(value);
  });
  modTags::ForEachTag(*tags, modTags::DistributionComputer,
                      [&](const std::string&, const std::string& value) {
                        distributionList_ = basic::Split(value, modTags::FieldSeparator);
                        if (!distributionList_.empty()) distributionList_.pop_back();
                      });
}

void clsPresentation::DisplayType(std::int32_t code) {
  displayType_ = code;
  modGlobalFunctions::CurrentDisplayType = code;
}

std::string clsPresentation::NewConnectionTagNumber() const {
  std::int32_t largest = 0;
  for (const auto& connection : connections_) {
    const std::string& number = connection->ConnectionTagNumber();
    const std::string last = number.size() > 3 ? number.substr(number.size() - 3) : number;
    largest = std::max(largest, basic::CLng(last));
  }
  return modGlobalFunctions::Format000(largest + 1);
}

std::shared_ptr<clsConnection> clsPresentation::FindConnection(std::string_view tagNumber) const {
  const auto found = std::find_if(connections_.begin(), connections_.end(), [&](const auto& connection) {
    return connection->ConnectionTagNumber() == tagNumber;
  });
  return found == connections_.end() ? nullptr : *found;
}

void clsPresentation::RemoveLumenfold() try {
  const auto tags = presentation_->Tags();
  for (const std::string_view key :
       {modTags::Version, modTags::DisplayType, modTags::Connection, modTags::Distribution}) {
    modTags::RemoveTags(*tags, key);
  }
  ForEachSlide(*presentation_, [](PowerPoint::Slide& slide) {
    const auto slideTags = slide.Tags();
    modTags::RemoveTags(*slideTags, modTags::SlideProperties);
    modTags::RemoveTags(*slideTags, modTags::ScrollStep);
    ForEachShape(slide, [](const std::shared_ptr<PowerPoint::Shape>& shape) {
      clsShape link;
      link.ShapeItem(shape);
      link.RemoveLumenfold();
    });
  });
} catch (...) {
  CatchError(modErrors::SavingConnectionTags);
}

std::string clsPresentation::LumenfoldVersion() const {
  const auto tags = presentation_->Tags();
  for (std::int32_t i = 1; i <= tags->Count(); ++i) {
    if (modTags::Matches(tags->Name(i), modTags::Version)) return tags->Value(i);
  }
  return {};
}

void clsPresentation::RequireVersionTag() {
  if (!modTags::HasVersionTag(*presentation_)) SetVersionTag();
}

void clsPresentation::SetVersionTag() try {
  const auto tags = presentation_->Tags();
  modTags::RemoveTags(*tags, modTags::Version);
  tags->Add(modTags::Version, "1");
} catch (...) {
  CatchError(modErrors::SavingConnectionTags);
}

void clsPresentation::SetDisplayType() try {
  const auto tags = presentation_->Tags();
  modTags::RemoveTags(*tags, modTags::DisplayType);
  tags->Add(modTags::DisplayType, basic::CStr(displayType_));
} catch (...) {
  CatchError(modErrors::SavingConnectionTags);
}

void clsPresentation::SetConnectionTags() try {
  RequireVersionTag();
  const auto tags = presentation_->Tags();
  modTags::RemoveTags(*tags, modTags::Connection);
  for (const auto& connection : connections_) {
    tags->Add(std::string(modTags::Connection) + connection->ConnectionTagNumber(), connection->TagString());
  }
  ForEachSlide(*presentation_, [&](PowerPoint::Slide& slide) {
    ForEachShape(slide, [&](const std::shared_ptr<PowerPoint::Shape>& shape) {
      clsShape link;
      link.ShapeItem(shape);
      if (!link.ConnectionTagNumber().empty() && !FindConnection(link.ConnectionTagNumber())) {
        link.RemoveLumenfold();
      }
    });
  });
} catch (...) {
  CatchError(modErrors::SavingConnectionTags);
}

void clsPresentation::SetSlideTags(const clsSlide& slide, std::int32_t slideIndex) try {
  RequireVersionTag();
  const auto tags = presentation_->Slides()->Item(slideIndex)->Tags();
  modTags::RemoveTags(*tags, modTags::SlideProperties);
  modTags::RemoveTags(*tags, modTags::ScrollStep);
  tags->Add(modTags::SlideProperties, slide.TagString());
  for (const std::int32_t number : slide.ScrollEntryNumbers()) {
    const std::string key = std::to_string(number);
    tags->Add(std::string(modTags::ScrollStep) + key,
              basic::CStr(slide.ScrollEnabled(key)) + modTags::FieldSeparator +
                  basic::CStr(slide.ScrollStep(key)) + modTags::FieldSeparator +
                  basic::CStr(slide.ScrollTime(key)));
  }
} catch (...) {
  CatchError(modErrors::SavingScrollStep);
}

void clsPresentation::SetDistributionListTags(basic::Date start, basic::Date stop,
                                              std::vector<std::string> computers) try {
  RequireVersionTag();
  const auto tags = presentation_->Tags();
  modTags::RemoveTags(*tags, modTags::Distribution);
  tags->Add(modTags::DistributionStart, basic::StoredDate(start));
  tags->Add(modTags::DistributionStop, basic::StoredDate(stop));
  std::string list;
  for (const std::string& computer : computers) list += computer + modTags::FieldSeparator;
  if (!list.empty()) tags->Add(modTags::DistributionComputer, list);
  distributionStart_ = start;
  distributionStop_ = stop;
  distributionList_ = std::move(computers);
} catch (...) {
  CatchError(modErrors::SavingDistributionList);
}

void clsPresentation::FillValues(bool requery) try {
  objectFailureTold_ = false;
  if (requery) {
    for (const auto& connection : connections_) connection->Requery(true);
  }
  ForEachSlide(*presentation_, [&](PowerPoint::Slide& slide) {
    const std::string slideNumber = std::to_string(slide.SlideIndex());
    Log(DebugKind::Information, slideNumber + "FillingValues:New slide:");
    if (meterShown_) {
      host::Current().progressMeter->Text(basic::Replace("\r\nPopulating slide %i", "%i", slideNumber));
    }
    clsShape link;
    link.ActivePresentation(this);
    ForEachShape(slide, [&](const std::shared_ptr<PowerPoint::Shape>& shape) {
      // A shape that scrolls shows its own row: nothing moves at design time.
      if (modDebug::DebugOn) Log(DebugKind::Event, "FillingValues:New shape:" + shape->Name());
      link.ShapeItem(shape);
      if (link.LumenfoldEnabled()) FillShape(link);
    });
    if (meterShown_) host::Current().progressMeter->Step();
  });
} catch (...) {
  CatchError(modErrors::FillingValues);
}

void clsPresentation::FillShape(const clsShape& link) {
  PowerPoint::Shape& shape = *link.ShapeItem();
  const std::int32_t displayType = modGlobalFunctions::CurrentDisplayType;
  switch (static_cast<SourceType>(link.SourceType())) {
    case SourceType::Clock:
      shape.TextFrame()->TextRange()->Text(modGlobalFunctions::PreviewValue(link.DateFormat(), displayType));
      return;
    case SourceType::DataField: {
      const auto connection = FindConnection(link.ConnectionTagNumber());
      if (!connection || !connection->ConnectionReady()) return;
      bool noValue = true;
      std::string text =
          connection->GetValueDatabase(link.Row(), link.ColumnName(), static_cast<std::int16_t>(displayType),
                                       /*ShowMarkers=*/true, noValue);
      if (text.empty()) text = " ";
      const auto range = shape.TextFrame()->TextRange();
      if (range->Text() != text) range->Text(text);
      return;
    }
    case SourceType::LinkedObject:
      FillObject(link, displayType);
      return;
    case SourceType::Graph:
      if (displayType == ShowsValues) FillGraph(link);
      return;
    case SourceType::NotLinked:
      return;
  }
}

/// A chart that cannot be refilled is reported and keeps no other shape from being filled.
void clsPresentation::FillGraph(const clsShape& link) try {
  const auto connection = FindConnection(link.ConnectionTagNumber());
  if (connection && connection->ConnectionReady()) modGraph::FillGraph(*link.ShapeItem(), *connection);
} catch (...) {
  CatchError(modErrors::FillingValues);
}

void clsPresentation::FillObject(const clsShape& link, std::int32_t displayType) try {
  PowerPoint::Shape& shape = *link.ShapeItem();
  if (displayType != ShowsValues) {
    // A picture has no way to show a link's name.
    modLinkedFiles::ShowOwnContent(shape);
    return;
  }
  const auto connection = FindConnection(link.ConnectionTagNumber());
  if (!connection || !connection->ConnectionReady()) return;
  bool noValue = true;
  const std::string name =
      connection->GetValueObject(link.Row(), link.ColumnName(), link.ObjectFolder(), link.ObjectExtension(),
                                 ShowsValues, /*showMarkers=*/false, noValue);
  if (noValue) return;
  modLinkedFiles::ShowFile(shape,
                           modLinkedFiles::FindFile(name, link.ObjectFolder(), presentation_->FullName()));
} catch (...) {
  // The picture stays, the other shapes are filled, and of many failures the first is told.
  modErrors::SetLastError();
  Log(DebugKind::Error, link.ShapeItem()->Name() + ":" + modErrors::LastError.Description);
  if (!std::exchange(objectFailureTold_, true)) modErrors::ReportError(modErrors::FillingValues);
}

void clsPresentation::PrepareSave() try {
  if (!modTags::HasVersionTag(*presentation_)) return;
  ForEachSlide(*presentation_, [](PowerPoint::Slide& slide) {
    clsShape link;
    ForEachShape(slide, [&](const std::shared_ptr<PowerPoint::Shape>& shape) {
      link.ShapeItem(shape);
      if (!link.LumenfoldEnabled()) return;
      if (link.SourceType() == static_cast<std::int32_t>(SourceType::Graph)) modGraph::RestoreGraph(*shape);
      bool isDone = false;
      if (link.SourceType() == static_cast<std::int32_t>(SourceType::LinkedObject)) {
        modGlobalFunctions::IgnoreErrors([&] {
          modLinkedFiles::ShowOwnContent(*shape);
          isDone = true;
        });
      }
      if (!isDone && shape->HasTextFrame() && shape->TextFrame()->HasText()) {
        shape->TextFrame()->TextRange()->Text(" ");
      }
    });
  });
} catch (...) {
  modErrors::SetLastError();
  modErrors::ReportError();
}

bool clsPresentation::SlideHasConnections(PowerPoint::Slide& slide) const {
  bool found = false;
  clsShape link;
  ForEachShape(slide, [&](const std::shared_ptr<PowerPoint::Shape>& shape) {
    if (found) return;
    link.ShapeItem(shape);
    found = link.LumenfoldEnabled() && link.SourceType() != 0;
  });
  return found;
}

}  // namespace LF2000
