// The verb unlink: takes a link off a shape, or everything off a deck.

#include <CLI/CLI.hpp>
#include <memory>
#include <optional>
#include <string>

#include "app/commands/Commands.h"
#include "app/commands/Editing.h"
#include "app/wiring/Failure.h"
#include "model/clsShape.h"

namespace app {

void addUnlinkCommand(CLI::App& program, Environment&) {
  struct UnlinkOptions {
    std::string deck;
    std::optional<std::int32_t> slide;
    std::string shape;
    bool all = false;
  };
  auto options = std::make_shared<UnlinkOptions>();
  CLI::App* verb = program.add_subcommand("unlink", "Take the link off a shape, or everything off the deck");
  verb->add_option("DECK", options->deck, "The deck")->required();
  verb->add_option("--slide", options->slide, "Number of the slide");
  verb->add_option("--shape", options->shape, "Name of the shape");
  verb->add_flag("--all", options->all, "All links, connections and settings of the deck");
  verb->callback([options] {
    const bool isShape = options->slide && !options->shape.empty();
    if (options->all ? options->slide || !options->shape.empty() : !isShape) {
      throw UsageError("unlink: give either --all, or --slide and --shape.");
    }
    Editing editing(options->deck);
    if (options->all) {
      editing.linked.RemoveLumenfold();
      // The add-in would put the display type back as the deck is saved.
      editing.host.unload();
    } else {
      LF2000::clsShape target;
      target.ShapeItem(shapeOf(*editing.deck, *options->slide, options->shape));
      if (!target.LumenfoldEnabled()) {
        fail(options->deck + ": shape '" + options->shape + "' on slide " + std::to_string(*options->slide) +
             " is not linked.");
      }
      target.RemoveLumenfold();
    }
    editing.save();
  });
}

}  // namespace app
