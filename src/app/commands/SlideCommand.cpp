// The verb slide: shows and changes how a slide behaves in a show.

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cstdlib>
#include <iostream>
#include <memory>
#include <optional>

#include "addin/support/modGlobalFunctions.h"
#include "app/commands/Commands.h"
#include "app/commands/Editing.h"
#include "app/wiring/Failure.h"
#include "app/wiring/LinkedShapes.h"
#include "app/wiring/Output.h"
#include "app/wiring/ScrollInfo.h"
#include "json/Json.h"
#include "model/clsShape.h"
#include "model/clsSlide.h"

namespace app {

namespace {

bool onOff(const std::string& word) { return word == "on"; }

struct SlideOptions {
  std::string deck;
  std::int32_t slide = 0;
  std::optional<std::string> hide;
  std::optional<std::string> refresh;
  std::optional<std::int32_t> scroll;
  std::optional<std::int32_t> step;
  std::optional<std::int32_t> time;
  bool off = false;
  bool json = false;
};

void printSlide(const SlideOptions& options, const LF2000::clsSlide& properties) {
  if (options.json) {
    printJson(std::cout, {{"slide", options.slide},
                          {"hideWhenNoData", properties.HideWhenNoData()},
                          {"refreshLinkedObjects", properties.RefreshLinkedObjects()},
                          {"scroll", scrollInfo(properties)}});
    return;
  }
  std::cout << "hide when no data: " << (properties.HideWhenNoData() ? "on" : "off")
            << "\nrefresh linked objects: " << (properties.RefreshLinkedObjects() ? "on" : "off") << '\n';
  for (const auto& entry : scrollInfo(properties)) {
    std::cout << "scroll entry " << entry["entry"] << ": " << (entry["enabled"] == true ? "on" : "off")
              << ", " << entry["step"] << " rows every " << entry["time"] << " ms\n";
  }
}

/// Whether a shape of the slide would use the scroll entry.
bool isScrollUsed(deck::Presentation& deck, const SlideOptions& options) {
  const std::string connection = LF2000::modGlobalFunctions::Format000(*options.scroll);
  const std::vector<LinkedShape> shapes = linkedShapes(deck, options.slide);
  return std::any_of(shapes.begin(), shapes.end(), [&](const LinkedShape& shape) {
    const bool hasRow = shape.sourceType == static_cast<std::int32_t>(LF2000::SourceType::DataField) ||
                        shape.sourceType == static_cast<std::int32_t>(LF2000::SourceType::LinkedObject);
    return hasRow && (shape.connection == connection || shape.name == std::to_string(*options.scroll));
  });
}

void checkScroll(const SlideOptions& options) {
  using LF2000::clsSlide;
  if (!options.scroll) {
    if (options.step || options.time || options.off) {
      throw UsageError("slide: --step, --time and --off go with --scroll ENTRY.");
    }
    return;
  }
  if (*options.scroll < 1 || *options.scroll >= static_cast<std::int32_t>(clsSlide::ScrollEntries)) {
    throw UsageError("slide: --scroll takes an entry from 1 to 999, not " + std::to_string(*options.scroll) +
                     ".");
  }
  if (options.off && (options.step || options.time)) {
    throw UsageError("slide: --off takes no --step and no --time; the entry keeps those it has.");
  }
  if (options.step &&
      (*options.step == 0 || std::abs(std::int64_t{*options.step}) > clsSlide::MostScrollRows)) {
    throw UsageError("slide: --step is a number of rows up to 1000000, or below 0 to go backwards, not " +
                     std::to_string(*options.step) + ".");
  }
  if (options.time &&
      (*options.time < clsSlide::LeastScrollTime || *options.time > clsSlide::MostScrollTime)) {
    throw UsageError("slide: --time is from 20 to 86400000 milliseconds (a day), not " +
                     std::to_string(*options.time) + ".");
  }
}

void setScroll(deck::Presentation& deck, const SlideOptions& options, LF2000::clsSlide& properties) {
  const std::string key = std::to_string(*options.scroll);
  const bool isThere = properties.ScrollTime(key) > 0;
  if (!isThere && (options.off || !options.step || !options.time)) {
    fail(options.deck + ": slide " + std::to_string(options.slide) + " has no scroll entry " + key +
         (options.off ? "." : "; give --step ROWS and --time MILLISECONDS to make it."));
  }
  properties.SetScrollEnabled(key, !options.off);
  if (options.step) properties.SetScrollStep(key, *options.step);
  if (options.time) properties.SetScrollTime(key, *options.time);
  if (!options.off && !isScrollUsed(deck, options)) {
    std::cerr << "lumenfold: nothing on slide " << options.slide
              << " scrolls by this entry yet: no linked shape is named '" << key
              << "' or takes its rows from connection "
              << LF2000::modGlobalFunctions::Format000(*options.scroll) << ".\n";
  }
}

void slide(const SlideOptions& options) {
  checkScroll(options);
  Editing editing(options.deck);
  LF2000::clsSlide properties;
  const auto tags = slideOf(*editing.deck, options.slide)->Tags();
  for (const std::string& problem : properties.ReadTags(*tags)) {
    std::cerr << "lumenfold: slide " << options.slide << ": " << problem << '\n';
  }
  if (!options.hide && !options.refresh && !options.scroll) {
    printSlide(options, properties);
    return;
  }
  if (options.hide) properties.HideWhenNoData(onOff(*options.hide));
  if (options.refresh) properties.RefreshLinkedObjects(onOff(*options.refresh));
  if (options.scroll) setScroll(*editing.deck, options, properties);
  editing.becomeLinked();
  editing.linked.SetSlideTags(properties, options.slide);
  editing.save();
}

}  // namespace

void addSlideCommand(CLI::App& program, Environment&) {
  auto options = std::make_shared<SlideOptions>();
  CLI::App* verb = program.add_subcommand("slide", "Show or change the properties of a slide");
  verb->add_option("DECK", options->deck, "The deck")->required();
  verb->add_option("N", options->slide, "Number of the slide")->required();
  verb->add_option("--hide-when-no-data", options->hide, "Hide the slide in a show while it has no data")
      ->check(CLI::IsMember({"on", "off"}));
  verb->add_option("--refresh-linked-objects", options->refresh,
                   "Refresh the slide's linked objects in a show")
      ->check(CLI::IsMember({"on", "off"}));
  verb->add_option("--scroll", options->scroll,
                   "Scroll entry, 1 to 999: of the shape of that name, or else of the shapes linked to the "
                   "connection of that number");
  verb->add_option("--step", options->step, "Rows that the entry moves on by");
  verb->add_option("--time", options->time, "Milliseconds between two steps");
  verb->add_flag("--off", options->off, "Switch the entry off; it keeps its step and time");
  verb->add_flag("--json", options->json, "Print as JSON");
  verb->callback([options] { slide(*options); });
}

}  // namespace app
