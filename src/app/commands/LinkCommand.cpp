// The verb link: a shape shows a value, a picture, a chart, a table or the time.

#include <CLI/CLI.hpp>
#include <algorithm>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "app/commands/ClockFormat.h"
#include "app/commands/Commands.h"
#include "app/commands/DeckBackup.h"
#include "app/commands/Editing.h"
#include "app/commands/LinkMany.h"
#include "app/commands/NumberChecks.h"
#include "app/inspect/SourceLook.h"
#include "app/wiring/Failure.h"
#include "app/wiring/StoredConnections.h"
#include "basic/Names.h"
#include "connections/clsConnection.h"
#include "model/clsShape.h"
#include "model/modGraph.h"
#include "model/modLinkable.h"
#include "model/modTable.h"

namespace app {

namespace {

struct LinkOptions {
  std::string deck;
  std::int32_t slide = 0;
  std::string shape;
  std::string column;
  std::optional<std::int32_t> row;
  std::string connection;
  std::optional<std::string> clock;
  bool chart = false;
  bool table = false;
  std::optional<std::string> folder;
  std::optional<std::string> extension;
  bool backup = false;
  LinkManyOptions many;

  /// Whether the shape takes the connection as a whole.
  [[nodiscard]] bool takesAll() const { return chart || table; }
};

void requireColumns(const deck::Presentation& deck, LF2000::clsConnection& connection,
                    PowerPoint::Shape& shape) {
  SourceLook look = lookInto(connection);
  if (!look.isReadable()) return;
  const auto table = shape.Table();
  for (std::int32_t column = 1; !table->FirstRow() && column <= table->ColumnCount(); ++column) {
    const std::string first = table->Text(1, column);
    if (!basic::HasName(look.columns, first)) continue;
    fail(deck.FullName() + ": the first row of the table names columns ('" + first +
         "'), but is no header row and would show data; switch it on in PowerPoint (Table Design, Header "
         "Row).");
  }
  look.columns.insert(look.columns.begin(), "");
  static_cast<void>(LF2000::modTable::ColumnsOf(*table, look.columns,
                                                deck.FullName() + ": connection " +
                                                    connection.ConnectionTagNumber() + " (" +
                                                    connection.ConnectionDescription() + ")"));
}

void requireColumn(const deck::Presentation& deck, LF2000::clsConnection& connection,
                   const std::string& column) {
  const SourceLook look = lookInto(connection);
  // A source that is not there today says nothing about its columns.
  if (!look.isReadable() || basic::HasName(look.columns, column)) return;
  std::string names;
  for (const std::string& each : look.offered) names += (names.empty() ? "" : ", ") + each;
  fail(deck.FullName() + ": connection " + connection.ConnectionTagNumber() + " (" +
       connection.ConnectionDescription() + ") has no column '" + column + "'. It has: " + names + ".");
}

bool isComplete(const LinkOptions& options) {
  const bool hasField = !options.column.empty() || options.row;
  if (options.clock) {
    return !options.clock->empty() && options.connection.empty() && !hasField && !options.takesAll();
  }
  if (options.connection.empty()) return false;
  if (options.chart && options.table) return false;
  return options.takesAll() ? !hasField : !options.column.empty() && options.row;
}

/// "jpg", however it was given: the dot comes of itself.
std::string withoutDot(const std::string& extension) {
  return extension.substr(std::min(extension.find_first_not_of('.'), extension.size()));
}

/// Whether the link is to show a file: in a picture or a linked object, or where
/// a folder or an extension asks for it.
bool isFileLink(const LinkOptions& options, PowerPoint::Shape& shape) {
  using LF2000::modLinkable::Shows;
  const bool isAsked = options.folder || options.extension;
  const auto [what, why] = LF2000::modLinkable::Examine(shape);
  if (what == Shows::Text && !isAsked) return false;
  const std::string which =
      options.deck + ": shape '" + options.shape + "' on slide " + std::to_string(options.slide);
  if (options.clock) fail(which + " holds no text, so it cannot show the time.");
  if (what == Shows::Table) fail(which + " is a table, which takes a connection as a whole: --table.");
  if (what == Shows::Graph) fail(which + " is a chart, which takes a connection as a whole: --chart.");
  if (what == Shows::Nothing) fail(which + " " + why + ".");
  if (!LF2000::modLinkable::HasPicture(shape)) {
    fail(which + " is neither a picture nor a linked object, so it cannot show a file.");
  }
  return true;
}

void link(const LinkOptions& options) {
  if (!isComplete(options)) {
    throw UsageError(
        "link: give --clock FORMAT, or --connection with --column and --row, or --connection with --chart or "
        "--table.");
  }
  if ((options.clock || options.takesAll()) && (options.folder || options.extension)) {
    throw UsageError("link: --folder and --extension are for pictures.");
  }
  if (options.row && *options.row < 1) throw UsageError("link: --row counts from 1.");
  if (options.clock) requireClockFormat(*options.clock);
  Editing editing(options.deck);
  editing.keepsBackup = options.backup;
  const auto shape = shapeOf(*editing.deck, options.slide, options.shape);
  if (options.chart && !LF2000::modGraph::IsGraph(*shape)) {
    fail(options.deck + ": shape '" + options.shape + "' on slide " + std::to_string(options.slide) +
         " is no chart.");
  }
  if (options.table && !shape->HasTable()) {
    fail(options.deck + ": shape '" + options.shape + "' on slide " + std::to_string(options.slide) +
         " is no table.");
  }
  const bool showsFile = !options.takesAll() && isFileLink(options, *shape);
  LF2000::clsShape target;
  target.ShapeItem(shape);
  if (options.clock) {
    target.SourceType(static_cast<std::int32_t>(LF2000::SourceType::Clock));
    target.NewDateFormat(*options.clock);
  } else {
    const std::string number = connectionNumber(*editing.deck, options.connection);
    const auto connection = editing.linked.FindConnection(number);
    if (!connection) failUnknownConnection(options.deck, number);
    target.NewConnectionTagNumber(number);
    if (options.table) requireColumns(*editing.deck, *connection, *shape);
    if (options.takesAll()) {
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

/// What is asked for many shapes shares its options with one.
LinkManyOptions manyOf(const LinkOptions& options, bool isOneSlide) {
  if (options.row && *options.row < 1) throw UsageError("link: --row counts from 1.");
  LinkManyOptions many = options.many;
  many.deck = options.deck;
  if (isOneSlide) many.slide = options.slide;
  many.connection = options.connection;
  many.firstRow = options.row.value_or(1);
  many.backup = options.backup;
  many.folder = options.folder.value_or("");
  many.extension = withoutDot(options.extension.value_or(""));
  return many;
}

}  // namespace

void addLinkCommand(CLI::App& program, Environment&) {
  auto options = std::make_shared<LinkOptions>();
  CLI::App* verb = program.add_subcommand("link", "Link shapes to a connection, or make one a clock");
  verb->add_option("DECK", options->deck, "The deck")->required();
  CLI::Option* slide = verb->add_option("--slide", options->slide, "Number of the slide");
  CLI::Option_group* which = verb->add_option_group("Which shapes");
  CLI::Option* shape = which->add_option("--shape", options->shape, "Name of the shape")->needs(slide);
  CLI::Option* grid =
      which
          ->add_option("--grid", options->many.grid,
                       "Those that stand as a table does; the name of the one at the upper left")
          ->needs(slide);
  CLI::Option* names = which->add_flag(
      "--names", options->many.byNames,
      "Those whose names are a column and a row (\"p1 Price\", \"Price 1\"), on all slides without --slide");
  CLI::Option* texts =
      which->add_flag("--from-texts", options->many.byTexts,
                      "Those that hold {{Price.1}} or {{001.Price.1}}, on all slides without --slide");
  which->require_option(1);
  verb->add_option("--connection", options->connection, "Number of the connection, or its description");
  verb->add_option("--column", options->column, "Column of the data")->needs(shape);
  verb->add_option("--row", options->row, "Row of the data, from 1; of a grid the first")
      ->excludes(names)
      ->excludes(texts);
  verb->add_flag("--chart", options->chart,
                 "Fill the chart with all rows: categories in the first column, a series in each other")
      ->needs(shape);
  verb->add_flag("--table", options->table,
                 "Fill the table with the rows: columns by the texts of its header row, else by position")
      ->needs(shape);
  verb->add_option("--folder", options->folder,
                   "Of pictures: the folder of the files that the column names (else the deck's)")
      ->excludes(grid);
  verb->add_option("--extension", options->extension, "Of pictures: what is put behind the names (jpg)")
      ->excludes(grid);
  verb->add_option("--clock", options->clock,
                   "Show date or time in this format (\"hh:nn:ss\", \"dddd d mmmm\")")
      ->needs(shape);
  CLI::Option* columns =
      verb->add_option("--columns", options->many.columns,
                       "Of a grid: its columns from left to right (Time,Train,To); shapes under an empty "
                       "one are left alone (Time,,To)")
          ->needs(grid);
  CLI::Option* rows = verb->add_option("--rows", options->many.rows, "Of a grid: how many rows it has")
                          ->needs(grid)
                          ->check(wholeNumber(1));
  grid->needs(columns)->needs(rows);
  verb->add_flag("--dry-run", options->many.isDryRun, "Of many shapes: print what would be linked to what")
      ->excludes(shape);
  verb->add_flag("--backup", options->backup, BackupHelp);
  verb->callback([options, slide] {
    if (options->many.isAsked()) {
      linkMany(manyOf(*options, slide->count() > 0));
    } else {
      link(*options);
    }
  });
}

}  // namespace app
