// How a presentation's linked shapes are filled, and blanked for a save.

#include <utility>

#include "addin/support/modErrors.h"
#include "addin/support/modGlobalFunctions.h"
#include "basic/Strings.h"
#include "host/services.h"
#include "model/clsPresentation.h"
#include "model/modGraph.h"
#include "model/modLinkedFiles.h"
#include "model/modSlides.h"
#include "model/modTable.h"
#include "model/modTags.h"

namespace LF2000 {

using modDebug::DebugKind;

namespace {

constexpr std::int32_t ShowsValues = 1;

}  // namespace

void clsPresentation::FillValues(bool requery) try {
  if (!modTags::HasVersionTag(*presentation_)) return;
  objectFailureTold_ = false;
  toldColumns_.clear();
  if (requery) {
    // The list may change while a source is waited for.
    const ConnectionList connections = connections_;
    for (const auto& connection : connections) connection->Requery(true);
  }
  const BlankedTexts blanked = std::exchange(blanked_, {});
  modSlides::ForEachSlide(*presentation_, [&](PowerPoint::Slide& slide) {
    const std::string slideNumber = std::to_string(slide.SlideIndex());
    Log(DebugKind::Information, slideNumber + "FillingValues:New slide:");
    if (meterShown_) {
      host::Current().progressMeter->Text(basic::Replace("\r\nPopulating slide %i", "%i", slideNumber));
    }
    clsShape link;
    link.ActivePresentation(this);
    modSlides::ForEachShape(slide, [&](const std::shared_ptr<PowerPoint::Shape>& shape) {
      if (modDebug::DebugOn) Log(DebugKind::Event, "FillingValues:New shape:" + shape->Name());
      link.ShapeItem(shape);
      if (!link.LumenfoldEnabled()) return;
      ShowAgain(blanked, slide, *shape);
      FillLink(slide, link);
    });
    if (meterShown_) host::Current().progressMeter->Step();
  });
} catch (...) {
  modErrors::CatchError(modErrors::FillingValues);
}

namespace {

/// A name that is no number, and an entry that cannot be read, mean that nothing scrolls.
bool Scrolls(PowerPoint::Slide& slide, PowerPoint::Shape& shape) {
  bool scrolls = false;
  modGlobalFunctions::IgnoreErrors([&] { scrolls = modTags::ShapeScrollEnabled(slide, shape.Name()); });
  return scrolls;
}

}  // namespace

void clsPresentation::FillShape(PowerPoint::Slide& slide, const std::shared_ptr<PowerPoint::Shape>& shape,
                                double scrolledBy) try {
  clsShape link;
  link.ShapeItem(shape);
  if (link.LumenfoldEnabled()) FillLink(slide, link, scrolledBy);
} catch (...) {
  modErrors::CatchError(modErrors::FillingValues);
}

void clsPresentation::FillConnection(std::string_view tagNumber) try {
  const bool saved = presentation_->Saved();
  modSlides::ForEachSlide(*presentation_, [&](PowerPoint::Slide& slide) {
    clsShape link;
    modSlides::ForEachShape(slide, [&](const std::shared_ptr<PowerPoint::Shape>& shape) {
      link.ShapeItem(shape);
      if (link.LumenfoldEnabled() && link.ConnectionTagNumber() == tagNumber) FillLink(slide, link);
    });
  });
  presentation_->Saved(saved);
} catch (...) {
  modErrors::CatchError(modErrors::FillingValues);
}

/// What a save has blanked shows what it did, also where no source answers now.
void clsPresentation::ShowAgain(const BlankedTexts& blanked, const PowerPoint::Slide& slide,
                                PowerPoint::Shape& shape) try {
  const auto text = blanked.find({slide.SlideIndex(), shape.Id()});
  if (text != blanked.end()) shape.TextFrame()->TextRange()->Text(text->second);
} catch (...) {
  modErrors::CatchError(modErrors::FillingValues);
}

/// A shape that cannot be filled is reported and keeps no other from being filled.
void clsPresentation::FillLink(PowerPoint::Slide& slide, const clsShape& link, double scrolledBy) try {
  PowerPoint::Shape& shape = *link.ShapeItem();
  const std::int32_t displayType = modGlobalFunctions::CurrentDisplayType;
  switch (static_cast<SourceType>(link.SourceType())) {
    case SourceType::Clock:
      FillClock(link, displayType);
      return;
    case SourceType::DataField:
      FillField(slide, link, displayType, scrolledBy);
      return;
    case SourceType::LinkedObject:
      FillObject(link, displayType, scrolledBy);
      return;
    case SourceType::Graph:
      if (shape.HasTable()) {
        FillTable(link, displayType, scrolledBy);
      } else if (displayType == ShowsValues) {
        FillGraph(link);
      }
      return;
    case SourceType::NotLinked:
      return;
  }
} catch (...) {
  modErrors::SetLastError();
  Log(DebugKind::Error, link.ShapeItem()->Name() + ":" + modErrors::LastError.Description);
  modErrors::ReportError(modErrors::FillingValues);
}

void clsPresentation::FillClock(const clsShape& link, std::int32_t displayType) {
  const auto range = link.ShapeItem()->TextFrame()->TextRange();
  const std::string text = modGlobalFunctions::PreviewValue(link.DateFormat(), displayType);
  if (range->Text() != text) range->Text(text);
}

/// What a clock cannot show was reported when it was filled first, and is not every second.
void clsPresentation::FillClocks(PowerPoint::Slide& slide) {
  const bool saved = presentation_->Saved();
  clsShape link;
  modSlides::ForEachShape(slide, [&](const std::shared_ptr<PowerPoint::Shape>& shape) {
    modGlobalFunctions::IgnoreErrors([&] {
      link.ShapeItem(shape);
      const bool isClock = link.SourceType() == static_cast<std::int32_t>(SourceType::Clock);
      if (link.LumenfoldEnabled() && isClock) FillClock(link, modGlobalFunctions::CurrentDisplayType);
    });
  });
  presentation_->Saved(saved);
}

std::shared_ptr<clsConnection> clsPresentation::ReadyConnection(std::string_view tagNumber) const {
  auto connection = FindConnection(tagNumber);
  if (!connection) return nullptr;
  // Where jobs read, nobody waits for one under way, and until there are data the shapes stay as they are.
  const bool isReady = host::Current().jobs ? connection->RecordsetReady() : connection->ConnectionReady();
  return isReady ? connection : nullptr;
}

void clsPresentation::FillField(PowerPoint::Slide& slide, const clsShape& link, std::int32_t displayType,
                                double scrolledBy) try {
  PowerPoint::Shape& shape = *link.ShapeItem();
  const auto connection = ReadyConnection(link.ConnectionTagNumber());
  if (!connection) return;
  bool noValue = true;
  // What scrolls shows its first row, and runs past the end of the data in every show: that is no news.
  std::string text = connection->GetValueDatabase(
      link.Row() + scrolledBy, link.ColumnName(), static_cast<std::int16_t>(displayType),
      /*showMarkers=*/scrolledBy == 0 && !Scrolls(slide, shape), noValue);
  if (text.empty()) text = " ";
  const auto range = shape.TextFrame()->TextRange();
  if (range->Text() != text) range->Text(text);
} catch (...) {
  modErrors::SetLastError();
  Log(DebugKind::Error, link.ShapeItem()->Name() + ":" + modErrors::LastError.Description);
  if (toldColumns_.emplace(link.ConnectionTagNumber(), link.ColumnName()).second) {
    modErrors::ReportError(modErrors::FillingValues);
  }
}

void clsPresentation::FillGraph(const clsShape& link) {
  const auto connection = ReadyConnection(link.ConnectionTagNumber());
  if (connection) modGraph::FillGraph(*link.ShapeItem(), *connection);
}

void clsPresentation::FillTable(const clsShape& link, std::int32_t displayType, double scrolledBy) {
  const auto connection = ReadyConnection(link.ConnectionTagNumber());
  if (!connection) return;
  PowerPoint::Shape& shape = *link.ShapeItem();
  modTable::WriteCells(
      shape, modTable::ReadCells(shape, *connection, 1 + scrolledBy, static_cast<std::int16_t>(displayType)));
}

void clsPresentation::FillObject(const clsShape& link, std::int32_t displayType, double scrolledBy) try {
  PowerPoint::Shape& shape = *link.ShapeItem();
  if (displayType != ShowsValues) {
    // A picture has no way to show a link's name.
    modLinkedFiles::ShowOwnContent(shape);
    return;
  }
  const auto connection = ReadyConnection(link.ConnectionTagNumber());
  if (!connection) return;
  bool noValue = true;
  const std::string name =
      connection->GetValueObject(link.Row() + scrolledBy, link.ColumnName(), link.ObjectFolder(),
                                 link.ObjectExtension(), ShowsValues, /*showMarkers=*/false, noValue);
  if (noValue) {
    // While editing, the last picture stays; previewed, the author's own comes back, as in a show.
    if (scrolledBy != 0 || connection->Preview() != DataPreview::AsTheyAre)
      modLinkedFiles::ShowOwnContent(shape);
    return;
  }
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
  modSlides::ForEachSlide(*presentation_, [this](PowerPoint::Slide& slide) {
    clsShape link;
    modSlides::ForEachShape(slide, [&](const std::shared_ptr<PowerPoint::Shape>& shape) {
      link.ShapeItem(shape);
      if (link.LumenfoldEnabled()) Blank(slide, link);
    });
  });
} catch (...) {
  modErrors::CatchError();
}

/// One that cannot be blanked is reported, and leaves no value in the others.
void clsPresentation::Blank(const PowerPoint::Slide& slide, const clsShape& link) try {
  PowerPoint::Shape& shape = *link.ShapeItem();
  if (link.SourceType() == static_cast<std::int32_t>(SourceType::Graph)) {
    modGraph::RestoreGraph(shape);
    modTable::RestoreTable(shape);
  }
  bool isDone = false;
  if (link.SourceType() == static_cast<std::int32_t>(SourceType::LinkedObject)) {
    modGlobalFunctions::IgnoreErrors([&] {
      modLinkedFiles::ShowOwnContent(shape);
      isDone = true;
    });
  }
  if (isDone || !shape.HasTextFrame() || !shape.TextFrame()->HasText()) return;
  const auto range = shape.TextFrame()->TextRange();
  // Of two saves in a row the first found what the shape showed.
  blanked_.try_emplace({slide.SlideIndex(), shape.Id()}, range->Text());
  range->Text(" ");
} catch (...) {
  modErrors::CatchError();
}

}  // namespace LF2000
