// How a presentation is taken up from its tags and written back into them.

#include "model/clsPresentation.h"

#include <algorithm>
#include <utility>

#include "addin/support/modErrors.h"
#include "addin/support/modGlobalFunctions.h"
#include "basic/Conversion.h"
#include "basic/Error.h"
#include "basic/Strings.h"
#include "host/services.h"
#include "model/modCommandState.h"
#include "model/modSlides.h"
#include "model/modTags.h"

namespace LF2000 {

using modDebug::DebugKind;

void clsPresentation::ActivePresentation(const std::shared_ptr<PowerPoint::Presentation>& presentation) try {
  Log(DebugKind::Event, "Opening presentation");
  Attach(presentation);
  if (!modTags::HasVersionTag(*presentation_)) return;
  if (host::Current().jobs) return LoadInBackground(nullptr);

  const bool loaded = LoadConnections(/*opens=*/true);
  LoadSettings();
  if (loaded) {
    Log(DebugKind::Event, "Start fill values");
    FillValues(false);
    Log(DebugKind::Event, "End fill values");
  }
  CloseMeter();
} catch (...) {
  CloseMeter();
  modErrors::CatchError(modErrors::OpeningPresentation);
}

void clsPresentation::ActivePresentation(const std::shared_ptr<PowerPoint::Presentation>& presentation,
                                         const clsPresentation& former) try {
  Log(DebugKind::Event, "Opening presentation");
  Attach(presentation);
  if (modTags::HasVersionTag(*presentation_)) LoadInBackground(&former);
} catch (...) {
  modErrors::CatchError(modErrors::OpeningPresentation);
}

void clsPresentation::Describe(const std::shared_ptr<PowerPoint::Presentation>& presentation) try {
  Attach(presentation);
  if (!modTags::HasVersionTag(*presentation_)) return;
  LoadConnections(/*opens=*/false);
  LoadSettings();
} catch (...) {
  modErrors::CatchError(modErrors::OpeningPresentation);
}

void clsPresentation::Attach(const std::shared_ptr<PowerPoint::Presentation>& presentation) {
  presentation_ = presentation;
  blanked_.clear();
  DropReadings();
  connections_.clear();
  displayType_ = 0;
  audience_ = {};
}

bool clsPresentation::LoadConnections(bool opens) {
  const auto tags = presentation_->Tags();
  const std::int32_t connectionCount = modTags::CountTags(*tags, modTags::Connection);
  const std::int32_t slideCount = presentation_->Slides()->Count();
  if (opens && (slideCount >= 2 || connectionCount >= 2)) {
    host::Current().progressMeter->Show("Opening presentation", slideCount + connectionCount);
    meterShown_ = true;
  }

  bool loaded = true;
  modTags::ForEachTag(*tags, modTags::Connection, [&](const std::string& number, const std::string& value) {
    try {
      auto connection = DescribedConnection(number, value);
      connections_.push_back(connection);
      // After a failure nothing more is opened, but every description is taken
      // up, so that writing the connections back loses none.
      if (opens && loaded) OpenConnection(*connection);
    } catch (...) {
      if (opens && loaded) modErrors::CatchError(modErrors::OpeningPresentation);
      loaded = false;
    }
  });
  return loaded;
}

std::shared_ptr<clsConnection> clsPresentation::DescribedConnection(const std::string& number,
                                                                    const std::string& tagValue) const {
  auto connection = std::make_shared<clsConnection>();
  connection->ActivePresentationName(presentation_->FullName());
  connection->ConnectionTagNumber(number);
  connection->TagString(tagValue);
  connection->DesignMode(true);
  return connection;
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
  DisplayType(0);
  LoadDisplayType();
  audience_ = modDistributionTags::Read(*presentation_->Tags());
}

std::string clsPresentation::DisplayTypeTag() const {
  std::string tag;
  modTags::ForEachTag(*presentation_->Tags(), modTags::DisplayType,
                      [&](const std::string&, const std::string& value) { tag = value; });
  return tag;
}

void clsPresentation::LoadDisplayType() {
  displayTypeTag_ = DisplayTypeTag();
  if (!displayTypeTag_.empty()) DisplayType(basic::CLng(displayTypeTag_));
}

void clsPresentation::DisplayType(std::int32_t code) {
  displayType_ = code;
  modCommandState::TellDisplayType(code);
  modGlobalFunctions::CurrentDisplayType = code;
}

namespace {

std::int32_t NumberOf(const clsConnection& connection) try {
  const std::string& number = connection.ConnectionTagNumber();
  return basic::CLng(number.size() > 3 ? number.substr(number.size() - 3) : number);
} catch (const basic::Error& error) {
  throw basic::Error(error.number, error.source,
                     "The connection '" + connection.ConnectionTagNumber() + "' does not end in a number.");
}

}  // namespace

std::string clsPresentation::NewConnectionTagNumber() const try {
  std::int32_t largest = 0;
  for (const auto& connection : connections_) largest = std::max(largest, NumberOf(*connection));
  return modGlobalFunctions::Format000(largest + 1);
} catch (...) {
  modErrors::CatchError(modErrors::SavingConnectionTags);
  return {};
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
  modSlides::ForEachSlide(*presentation_, [](PowerPoint::Slide& slide) {
    const auto slideTags = slide.Tags();
    modTags::RemoveTags(*slideTags, modTags::SlideProperties);
    modTags::RemoveTags(*slideTags, modTags::ScrollStep);
    modSlides::ForEachShape(slide, [](const std::shared_ptr<PowerPoint::Shape>& shape) {
      clsShape link;
      link.ShapeItem(shape);
      link.RemoveLumenfold();
    });
  });
} catch (...) {
  modErrors::CatchError(modErrors::SavingConnectionTags);
}

std::string clsPresentation::LumenfoldVersion() const try {
  const auto tags = presentation_->Tags();
  for (std::int32_t i = 1; i <= tags->Count(); ++i) {
    if (modTags::Matches(tags->Name(i), modTags::Version)) return tags->Value(i);
  }
  return {};
} catch (...) {
  modErrors::CatchError();
  return {};
}

void clsPresentation::RequireVersionTag() {
  if (modTags::HasVersionTag(*presentation_)) return;
  SetVersionTag();
  RequireDisplayType();
}

void clsPresentation::RequireDisplayType() {
  constexpr std::int32_t ShowsValues = 1;
  if (displayType_ == 0) DisplayType(ShowsValues);
}

void clsPresentation::SetVersionTag() try {
  const auto tags = presentation_->Tags();
  modTags::RemoveTags(*tags, modTags::Version);
  tags->Add(modTags::Version, "1");
} catch (...) {
  modErrors::CatchError(modErrors::SavingConnectionTags);
}

void clsPresentation::SetDisplayType() try {
  const auto tags = presentation_->Tags();
  modTags::RemoveTags(*tags, modTags::DisplayType);
  displayTypeTag_ = basic::CStr(displayType_);
  tags->Add(modTags::DisplayType, displayTypeTag_);
} catch (...) {
  modErrors::CatchError(modErrors::SavingConnectionTags);
}

void clsPresentation::SetConnectionTags() try {
  RequireVersionTag();
  const auto tags = presentation_->Tags();
  modTags::RemoveTags(*tags, modTags::Connection);
  for (const auto& connection : connections_) {
    if (connection->IsSample()) continue;
    tags->Add(std::string(modTags::Connection) + connection->ConnectionTagNumber(), connection->TagString());
  }
  modSlides::ForEachSlide(*presentation_, [&](PowerPoint::Slide& slide) {
    modSlides::ForEachShape(slide, [&](const std::shared_ptr<PowerPoint::Shape>& shape) {
      clsShape link;
      link.ShapeItem(shape);
      if (!link.ConnectionTagNumber().empty() && !FindConnection(link.ConnectionTagNumber())) {
        link.RemoveLumenfold();
      }
    });
  });
  modCommandState::TellChanged();
} catch (...) {
  modErrors::CatchError(modErrors::SavingConnectionTags);
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
  modErrors::CatchError(modErrors::SavingScrollStep);
}

void clsPresentation::ShowPage(modPropertyPages::Page page) try {
  modPropertyPages::Open(page, shared_from_this());
} catch (...) {
  modErrors::CatchError();
}

void clsPresentation::ShowSlideShowProperties() { ShowPage(modPropertyPages::Page::SlideShow); }
void clsPresentation::ShowSlideProperties() { ShowPage(modPropertyPages::Page::Slide); }
void clsPresentation::ShowClockProperties() { ShowPage(modPropertyPages::Page::Clock); }
void clsPresentation::ShowDataFieldProperties() { ShowPage(modPropertyPages::Page::DataField); }
void clsPresentation::ShowDataObjectProperties() { ShowPage(modPropertyPages::Page::DataObject); }
void clsPresentation::ShowGraphProperties() { ShowPage(modPropertyPages::Page::Graph); }

bool clsPresentation::SlideHasConnections(PowerPoint::Slide& slide) const try {
  bool found = false;
  clsShape link;
  modSlides::ForEachShape(slide, [&](const std::shared_ptr<PowerPoint::Shape>& shape) {
    if (found) return;
    link.ShapeItem(shape);
    found = link.LumenfoldEnabled() && link.SourceType() != 0;
  });
  return found;
} catch (...) {
  modErrors::CatchError();
  return false;
}

void clsPresentation::Log(modDebug::DebugKind kind, std::string_view text) {
  modDebug::WriteDebugLog(kind, "clsPresentation", text);
}

}  // namespace LF2000
