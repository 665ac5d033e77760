// The verb display: what linked shapes show while the deck is edited.

#include <CLI/CLI.hpp>
#include <memory>
#include <string>

#include "app/commands/Commands.h"
#include "app/commands/Editing.h"
#include "app/wiring/Failure.h"
#include "basic/Strings.h"

namespace app {

namespace {

constexpr std::int32_t DisplayTypes = 7;

/// A code 1 to 7, or one of the labels.
std::int32_t displayCode(const std::string& text) {
  static constexpr const char* Labels[] = {"value",          "connection",          "column", "index",
                                           "column - index", "connection - column", "nothing"};
  for (std::int32_t code = 1; code <= DisplayTypes; ++code) {
    if (text == std::to_string(code) || basic::EqualsIgnoreCase(text, Labels[code - 1])) return code;
  }
  throw UsageError(
      "display: CODE is 1 Value, 2 Connection, 3 Column, 4 Index, 5 Column - Index, "
      "6 Connection - Column or 7 Nothing, not '" +
      text + "'.");
}

}  // namespace

void addDisplayCommand(CLI::App& program, Environment&) {
  struct DisplayOptions {
    std::string deck;
    std::string code;
  };
  auto options = std::make_shared<DisplayOptions>();
  CLI::App* verb = program.add_subcommand("display", "Set what linked shapes show while the deck is edited");
  verb->add_option("DECK", options->deck, "The deck")->required();
  verb->add_option(
          "CODE", options->code,
          "1 Value, 2 Connection, 3 Column, 4 Index, 5 Column - Index, 6 Connection - Column, 7 Nothing")
      ->required();
  verb->callback([options] {
    const std::int32_t code = displayCode(options->code);
    Editing editing(options->deck);
    editing.becomeLinked();
    editing.linked.DisplayType(code);
    editing.linked.SetDisplayType();
    editing.save();
  });
}

}  // namespace app
