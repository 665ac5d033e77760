#include "app/commands/Editing.h"

#include "app/commands/DeckBackup.h"
#include "app/inspect/CollectedErrors.h"
#include "app/inspect/SourceLook.h"
#include "app/wiring/Failure.h"
#include "basic/Strings.h"
#include "model/modTags.h"

namespace app {

Editing::Editing(const std::string& path) : deck(application->open(path)) { linked.Describe(deck); }

void Editing::fill(const std::optional<std::string>& connection) {
  const CollectedErrors passedOver;
  for (const auto& each : linked.Connections()) {
    if (!connection || each->ConnectionTagNumber() == *connection) static_cast<void>(lookInto(*each));
  }
  linked.FillValues(false);
}

void Editing::becomeLinked() {
  constexpr std::int32_t ShowsValues = 1;
  if (LF2000::modTags::HasVersionTag(*deck)) return;
  linked.SetVersionTag();
  linked.DisplayType(ShowsValues);
}

void Editing::save() {
  if (LF2000::modTags::HasVersionTag(*deck)) {
    linked.SetDisplayType();
    // The file holds no live values.
    linked.PrepareSave();
  }
  if (keepsBackup) keepBackup(deck->FullName());
  deck->Save();
}

std::shared_ptr<PowerPoint::Slide> slideOf(deck::Presentation& deck, std::int32_t number) {
  const auto slides = deck.Slides();
  if (number < 1 || number > slides->Count()) {
    fail(deck.FullName() + ": there is no slide " + std::to_string(number) + "; the deck has " +
         std::to_string(slides->Count()) + ".");
  }
  return slides->Item(number);
}

std::shared_ptr<PowerPoint::Shape> shapeOf(deck::Presentation& deck, std::int32_t slideNumber,
                                           const std::string& name) {
  const auto shapes = slideOf(deck, slideNumber)->Shapes();
  std::shared_ptr<PowerPoint::Shape> found;
  std::string names;
  for (std::int32_t i = 1; i <= shapes->Count(); ++i) {
    const auto shape = shapes->Item(i);
    names += (names.empty() ? "" : ", ") + shape->Name();
    if (!basic::EqualsIgnoreCase(shape->Name(), name)) continue;
    if (found) {
      fail(deck.FullName() + ": slide " + std::to_string(slideNumber) + " has several shapes named '" + name +
           "'; give each a name of its own (in PowerPoint: Selection Pane).");
    }
    found = shape;
  }
  if (!found) {
    fail(deck.FullName() + ": slide " + std::to_string(slideNumber) + " has no shape named '" + name +
         "'. It has: " + names + ".");
  }
  return found;
}

}  // namespace app
