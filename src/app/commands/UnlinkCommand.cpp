// The verb unlink: takes a link off a shape, or everything off a deck.

#include <CLI/CLI.hpp>
#include <iostream>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "app/commands/Commands.h"
#include "app/commands/Editing.h"
#include "app/wiring/Failure.h"
#include "app/wiring/LinkedShapes.h"
#include "app/wiring/Output.h"
#include "basic/Strings.h"
#include "model/clsShape.h"

namespace app {

namespace {

/// A shape keeps what it shows when its link goes.
void tellUnlinked(deck::Presentation& deck, std::int32_t slide, const std::string& name) {
  const auto shape = deck.Slides()->Item(slide)->Shapes()->Item(std::string_view(name));
  std::cout << "slide " << slide << ", " << oneLine(name) << ": no longer linked";
  if (shape->HasTextFrame()) {
    const std::string text(basic::Trim(shape->TextFrame()->TextRange()->Text()));
    std::cout << (text.empty() ? "; it is empty now" : "; its text is now \"" + oneLine(text) + '"');
  }
  std::cout << '\n';
}

void unlinkAll(Editing& editing) {
  std::vector<std::pair<std::int32_t, std::string>> shapes;
  for (std::int32_t slide = 1; slide <= editing.deck->slideCount(); ++slide) {
    for (const LinkedShape& shape : linkedShapes(*editing.deck, slide))
      shapes.emplace_back(slide, shape.name);
  }
  editing.fill();
  editing.linked.RemoveLumenfold();
  editing.save();
  for (const auto& [slide, name] : shapes) tellUnlinked(*editing.deck, slide, name);
}

void unlinkShape(Editing& editing, std::int32_t slide, const std::string& name) {
  LF2000::clsShape target;
  target.ShapeItem(shapeOf(*editing.deck, slide, name));
  if (!target.LumenfoldEnabled()) {
    fail(editing.deck->FullName() + ": shape '" + name + "' on slide " + std::to_string(slide) +
         " is not linked.");
  }
  editing.fill(target.ConnectionTagNumber());
  target.RemoveLumenfold();
  editing.save();
  tellUnlinked(*editing.deck, slide, name);
}

}  // namespace

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
      unlinkAll(editing);
    } else {
      unlinkShape(editing, *options->slide, options->shape);
    }
  });
}

}  // namespace app
