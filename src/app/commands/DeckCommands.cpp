// The verbs that change a deck: link, unlink, slide, display, fill.

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <nlohmann/json.hpp>
#include <optional>

#include "addin/support/modGlobalFunctions.h"
#include "app/commands/Commands.h"
#include "app/wiring/AddInHost.h"
#include "app/wiring/Environment.h"
#include "app/wiring/Failure.h"
#include "app/wiring/LinkedShapes.h"
#include "app/wiring/ScrollInfo.h"
#include "basic/Error.h"
#include "basic/Strings.h"
#include "deck/objects/Presentation.h"
#include "model/clsPresentation.h"
#include "model/modGraph.h"
#include "model/modTags.h"

namespace app {

namespace {

constexpr std::int32_t DisplayTypes = 7;
constexpr std::int32_t ShowsValues = 1;

/// A deck opened for a change, with the add-in's object for it.
struct Editing {
  explicit Editing(const std::string& path) : deck(host.open(path)), linked(host.linked(deck)) {}

  /// Marks the deck as linked, with the values on display, if it is not yet.
  void becomeLinked() {
    if (LF2000::modTags::HasVersionTag(*deck)) return;
    linked.SetVersionTag();
    linked.DisplayType(ShowsValues);
  }
  void save() { deck->Save(); }

  AddInHost host;
  std::shared_ptr<deck::Presentation> deck;
  LF2000::clsPresentation& linked;
};

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

struct LinkOptions {
  std::string deck;
  std::int32_t slide = 0;
  std::string shape;
  std::string column;
  std::optional<std::int32_t> row;
  std::string connection;
  std::optional<std::string> clock;
  bool chart = false;
  std::optional<std::string> folder;
  std::optional<std::string> extension;
};

/// Element 0 is empty; none at all when the source cannot be read now.
std::vector<std::string> columnsOf(const LF2000::clsConnection& connection) {
  if (connection.RecordsetReady()) return connection.Columns();
  // Loading stops at the first source that fails; this may be one behind it.
  try {
    LF2000::clsConnection own;
    own.ActivePresentationName(connection.ActivePresentationName());
    own.TagString(connection.TagString());
    own.OpenConnection();
    own.OpenRecordset();
    return own.RecordsetReady() ? own.Columns() : std::vector<std::string>();
  } catch (const basic::Error&) {
    return {};
  }
}

void requireColumn(const deck::Presentation& deck, const LF2000::clsConnection& connection,
                   const std::string& column) {
  // A source that is not there today says nothing about its columns.
  const std::vector<std::string> columns = columnsOf(connection);
  if (columns.empty()) return;
  std::string names;
  for (std::size_t i = 1; i < columns.size(); ++i) {
    if (basic::EqualsIgnoreCase(columns[i], column)) return;
    names += (names.empty() ? "" : ", ") + columns[i];
  }
  fail(deck.FullName() + ": connection " + connection.ConnectionTagNumber() + " (" +
       connection.ConnectionDescription() + ") has no column '" + column + "'. It has: " + names + ".");
}

bool isComplete(const LinkOptions& options) {
  const bool hasField = !options.column.empty() || options.row;
  if (options.clock) {
    return !options.clock->empty() && options.connection.empty() && !hasField && !options.chart;
  }
  if (options.connection.empty()) return false;
  return options.chart ? !hasField : !options.column.empty() && options.row;
}

/// "jpg", however it was given: the dot comes of itself.
std::string withoutDot(const std::string& extension) {
  return extension.substr(std::min(extension.find_first_not_of('.'), extension.size()));
}

/// Whether the link is to show a file: in a picture or a linked object, or where
/// a folder or an extension asks for it.
bool isFileLink(const LinkOptions& options, PowerPoint::Shape& shape) {
  const bool isAsked = options.folder || options.extension;
  if (shape.HasTextFrame() && !isAsked) return false;
  const std::string which =
      options.deck + ": shape '" + options.shape + "' on slide " + std::to_string(options.slide);
  if (options.clock) fail(which + " holds no text, so it cannot show the time.");
  try {
    static_cast<void>(shape.LinkFormat());
  } catch (const basic::Error&) {
    fail(which + (isAsked ? " is neither a picture nor a linked object, so it cannot show a file."
                          : " holds no text and no picture, so it cannot show a value."));
  }
  return true;
}

void link(const LinkOptions& options) {
  if (!isComplete(options)) {
    throw UsageError(
        "link: give --clock FORMAT, or --connection with --column and --row, or --connection with --chart.");
  }
  if ((options.clock || options.chart) && (options.folder || options.extension)) {
    throw UsageError("link: --folder and --extension are for pictures.");
  }
  if (options.row && *options.row < 1) throw UsageError("link: --row counts from 1.");
  Editing editing(options.deck);
  const auto shape = shapeOf(*editing.deck, options.slide, options.shape);
  if (options.chart && !LF2000::modGraph::IsGraph(*shape)) {
    fail(options.deck + ": shape '" + options.shape + "' on slide " + std::to_string(options.slide) +
         " is no chart.");
  }
  const bool showsFile = !options.chart && isFileLink(options, *shape);
  LF2000::clsShape target;
  target.ShapeItem(shape);
  if (options.clock) {
    target.SourceType(static_cast<std::int32_t>(LF2000::SourceType::Clock));
    target.NewDateFormat(*options.clock);
  } else {
    const auto connection = editing.linked.FindConnection(options.connection);
    if (!connection) {
      fail(options.deck + ": there is no connection " + options.connection + "; 'lumenfold connection " +
           options.deck + " list' shows those there are.");
    }
    target.NewConnectionTagNumber(options.connection);
    if (options.chart) {
      target.SourceType(static_cast<std::int32_t>(LF2000::SourceType::Graph));
    } else {
      requireColumn(*editing.deck, *connection, options.column);
      target.SourceType(static_cast<std::int32_t>(showsFile ? LF2000::SourceType::LinkedObject
                                                            : LF2000::SourceType::DataField));
      if (showsFile) {
        target.NewObjectFolder(options.folder.value_or(""));
        target.NewObjectExtension(withoutDot(options.extension.value_or("")));
      }
      target.NewColumnName(options.column);
      target.NewRow(*options.row);
    }
  }
  editing.becomeLinked();
  target.SetShapeTags();
  editing.save();
}

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
    std::cout << nlohmann::json{{"slide", options.slide},
                                {"hideWhenNoData", properties.HideWhenNoData()},
                                {"refreshLinkedObjects", properties.RefreshLinkedObjects()},
                                {"scroll", scrollInfo(properties)}}
                     .dump(2)
              << '\n';
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
  constexpr std::int32_t MaximumStep = 1'000'000;
  constexpr std::int32_t MinimumTime = 20;
  constexpr std::int32_t MaximumTime = 86'400'000;
  if (!options.scroll) {
    if (options.step || options.time || options.off) {
      throw UsageError("slide: --step, --time and --off go with --scroll ENTRY.");
    }
    return;
  }
  if (*options.scroll < 1 || *options.scroll >= static_cast<std::int32_t>(LF2000::clsSlide::ScrollEntries)) {
    throw UsageError("slide: --scroll takes an entry from 1 to 999, not " + std::to_string(*options.scroll) +
                     ".");
  }
  if (options.off && (options.step || options.time)) {
    throw UsageError("slide: --off takes no --step and no --time; the entry keeps those it has.");
  }
  if (options.step && (*options.step == 0 || std::abs(std::int64_t{*options.step}) > MaximumStep)) {
    throw UsageError("slide: --step is a number of rows up to 1000000, or below 0 to go backwards, not " +
                     std::to_string(*options.step) + ".");
  }
  if (options.time && (*options.time < MinimumTime || *options.time > MaximumTime)) {
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

void addLinkCommand(CLI::App& program, Environment&) {
  auto options = std::make_shared<LinkOptions>();
  CLI::App* verb = program.add_subcommand("link", "Link a shape to a connection, or make it a clock");
  verb->add_option("DECK", options->deck, "The deck")->required();
  verb->add_option("--slide", options->slide, "Number of the slide")->required();
  verb->add_option("--shape", options->shape, "Name of the shape")->required();
  verb->add_option("--connection", options->connection, "Number of the connection (001)");
  verb->add_option("--column", options->column, "Column of the data");
  verb->add_option("--row", options->row, "Row of the data, from 1");
  verb->add_flag("--chart", options->chart,
                 "Fill the chart with all rows: categories in the first column, a series in each other");
  verb->add_option("--folder", options->folder,
                   "Of a picture: the folder of the files that the column names (else the deck's)");
  verb->add_option("--extension", options->extension, "Of a picture: what is put behind the names (jpg)");
  verb->add_option("--clock", options->clock,
                   "Show date or time in this format (\"hh:nn:ss\", \"dddd d mmmm\")");
  verb->callback([options] { link(*options); });
}

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

void addFillCommand(CLI::App& program, Environment& environment) {
  struct FillOptions {
    std::string deck;
    std::string out;
  };
  auto options = std::make_shared<FillOptions>();
  CLI::App* verb =
      program.add_subcommand("fill", "Write the deck as its author sees it: filled with today's data");
  verb->add_option("DECK", options->deck, "The deck")->required();
  verb->add_option("-o,--output", options->out, "The filled copy")->required();
  verb->callback([options, &environment] {
    std::error_code notThere;
    if (std::filesystem::equivalent(options->deck, options->out, notThere)) {
      fail(options->out + ": this is the deck " + options->deck +
           " itself; write the filled copy under another name.");
    }
    AddInHost host;
    const auto deck = host.open(options->deck);
    if (environment.errorsShown() > 0) {
      fail(options->deck + ": the deck could not be filled (see above); " + options->out +
           " was not written.");
    }
    deck->SaveCopyAs(options->out);
  });
}

}  // namespace app
