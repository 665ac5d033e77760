// The verb connection: list, add, set, remove; what reads the data is in
// ConnectionDataCommand.cpp.

#include <CLI/CLI.hpp>
#include <iostream>
#include <optional>

#include "app/commands/Commands.h"
#include "app/commands/ConnectionSource.h"
#include "app/commands/DeckBackup.h"
#include "app/commands/Editing.h"
#include "app/commands/NumberChecks.h"
#include "app/inspect/SourceLook.h"
#include "app/wiring/Failure.h"
#include "app/wiring/Output.h"
#include "app/wiring/StoredConnections.h"
#include "basic/Error.h"
#include "basic/Strings.h"
#include "connections/SourceKind.h"
#include "json/Json.h"
#include "model/modConnections.h"
#include "model/modTags.h"
#include "platform/Console.h"

namespace app {

namespace {

using json::Json;
using LF2000::clsConnection;
using LF2000::ConnectionKind;

struct ConnectionOptions {
  std::string deck;
  std::string number;
  std::optional<std::string> type;
  std::optional<std::string> description;
  std::optional<std::string> file;
  std::optional<std::string> sheet;
  std::optional<std::string> range;
  std::optional<std::string> connectionString;
  std::optional<std::string> sql;
  std::optional<std::string> columns;
  std::optional<double> refresh;
  bool isStrict = false;
  bool header = false;
  bool noHeader = false;
  bool json = false;
  bool backup = false;
};

/// Writing the connections back drops every one that was not understood.
void requireAllUnderstood(deck::Presentation& deck, const std::string& except) {
  for (const StoredConnection& stored : storedConnections(deck)) {
    if (stored.failure.empty() || stored.number == except) continue;
    fail(deck.FullName() + ": the stored description of connection " + stored.number +
         " cannot be read, and this change would lose it. Remove it first: lumenfold connection " +
         deck.FullName() + " remove " + stored.number);
  }
}

void list(const ConnectionOptions& options) {
  const auto application = std::make_shared<deck::Application>();
  const auto deck = application->open(options.deck);
  Json json = Json::array();
  std::vector<std::vector<std::string>> rows;
  for (const StoredConnection& stored : storedConnections(*deck)) {
    const clsConnection& connection = *stored.connection;
    const std::string type = connectionTypeName(connection.ConnectionType());
    const std::string source = LF2000::SourceText(connection);
    json.push_back({{"number", stored.number},
                    {"type", type},
                    {"description", connection.ConnectionDescription()},
                    {"source", source},
                    {"header", connection.ConnectionFirstRowFieldNames()},
                    {"error", stored.failure}});
    rows.push_back({stored.number, type, oneLine(connection.ConnectionDescription()),
                    stored.failure.empty() ? oneLine(source) : stored.failure});
  }
  if (options.json) {
    printJson(std::cout, json);
  } else {
    printTable(std::cout, {"No.", "Type", "Description", "Source"}, rows);
  }
}

/// What the options say of the kind; `before` is that of a connection that is changed.
ConnectionKind kindOf(const ConnectionOptions& options, std::optional<ConnectionKind> before) {
  if (options.type) return sourceTypes().at(*options.type);
  if (before) return *before;
  if (options.connectionString || options.sql) return ConnectionKind::Database;
  if (!options.file) throw UsageError("connection add: give the data with --file or --connection-string.");
  const auto told = LF2000::KindOfFile(*options.file);
  if (!told) {
    throw UsageError("connection add: the name '" + *options.file +
                     "' does not tell what it is; give --type text, database or excel.");
  }
  return *told;
}

/// The file of a database is its connection string.
void settleDatabase(ConnectionOptions& options) {
  if (options.file) {
    if (options.connectionString) {
      throw UsageError("connection: a database takes --file or --connection-string, not both.");
    }
    const bool isSqlite = options.type == "sqlite";
    options.connectionString =
        isSqlite ? LF2000::SqliteString(*options.file) : LF2000::DatabaseString(*options.file);
    if (*options.connectionString == *options.file) {
      throw UsageError(
          "connection: the name '" + *options.file +
          "' does not tell the kind of the database; give --type sqlite or --connection-string.");
    }
    options.file.reset();
  } else if (options.connectionString) {
    options.connectionString = LF2000::DatabaseString(*options.connectionString);
  }
}

/// What each type of connection takes, and what one that becomes of this type
/// cannot do without.
void requireFitting(const ConnectionOptions& options, ConnectionKind kind, bool becomes) {
  const bool isDatabase = kind == ConnectionKind::Database;
  const bool isExcel = kind == ConnectionKind::Excel;
  const auto refuse = [&](bool isGiven, const char* option, const char* type) {
    if (isGiven) throw UsageError(std::string("connection: ") + option + " goes with --type " + type + ".");
  };
  refuse(!isDatabase && options.connectionString, "--connection-string", "database");
  refuse(!isDatabase && options.sql, "--sql", "database");
  refuse(!isDatabase && options.columns, "--columns", "database");
  refuse(!isDatabase && options.refresh, "--refresh", "database");
  refuse(!isExcel && options.sheet, "--sheet", "excel");
  refuse(!isExcel && options.range, "--range", "excel");
  refuse(isDatabase && (options.header || options.noHeader), "--header", "text or excel");
  const auto refuseEmpty = [](const std::optional<std::string>& value, const char* option) {
    if (value && value->find_first_not_of(" \r\n") == std::string::npos) {
      throw UsageError(std::string("connection: ") + option + " is empty.");
    }
  };
  refuseEmpty(options.file, "--file");
  refuseEmpty(options.range, "--range");
  refuseEmpty(options.connectionString, "--connection-string");
  refuseEmpty(options.sql, "--sql");
  if (!becomes) return;
  if (isDatabase && options.connectionString && !options.sql) {
    throw UsageError(
        "connection: say what to read of the database with --sql: a SELECT statement, or the name of a "
        "table.");
  }
  if (isDatabase && (!options.connectionString || !options.sql)) {
    throw UsageError("connection: a database takes --connection-string and --sql (or --file, for SQLite).");
  }
  if (!isDatabase && !options.file) throw UsageError("connection: give the data with --file.");
}

void become(ConnectionKind kind, clsConnection& connection) {
  constexpr const char* DefaultRange = "A1:I10";
  constexpr double DefaultRefresh = 1000;
  connection.ConnectionType(static_cast<std::int32_t>(kind));
  if (kind == ConnectionKind::Excel) connection.ConnectionRange(DefaultRange);
  if (kind == ConnectionKind::Database) connection.RecordsetRefreshRate(DefaultRefresh);
}

void apply(const ConnectionOptions& options, clsConnection& connection) {
  if (options.description) connection.ConnectionDescription(*options.description);
  if (options.file) connection.ConnectionFileString(*options.file);
  if (options.sheet) connection.ConnectionSheet(*options.sheet);
  if (options.range) connection.ConnectionRange(*options.range);
  if (options.connectionString) connection.ConnectionString(*options.connectionString);
  if (options.sql) connection.RecordsetSQL(LF2000::StatementOrTable(*options.sql));
  if (options.columns) connection.RecordsetColumns(*options.columns);
  if (options.refresh) connection.RecordsetRefreshRate(*options.refresh);
  if (options.header) connection.ConnectionFirstRowFieldNames(true);
  if (options.noHeader) connection.ConnectionFirstRowFieldNames(false);
  for (const auto& field : {options.description, options.file, options.sheet, options.range,
                            options.connectionString, options.sql, options.columns}) {
    if (field && field->find('\t') != std::string::npos) {
      throw UsageError("connection: what is stored in a deck cannot hold a TAB.");
    }
  }
}

/// A range is the author's word; without it the sheet says what there is.
void tellRange(clsConnection& connection) {
  std::cerr << platform::forTerminal(joinedLines(takeWholeSheet(connection))) << '\n';
}

/// What the connection finds now. Standard output is the number's alone, for scripts.
void tellSource(const ConnectionOptions& options, clsConnection& connection) {
  const SourceLook look = lookInto(connection);
  const std::string which = options.deck + ": connection " + connection.ConnectionTagNumber() + ": ";
  if (look.isReadable()) {
    std::cerr << platform::forTerminal(sizeOf(look)) << '\n';
    for (const std::string& remark : look.remarks) std::cerr << platform::forTerminal(remark) << '\n';
    return;
  }
  if (options.isStrict) fail(which + look.failure + " Nothing was stored.");
  std::cerr << "lumenfold: " << platform::forTerminal(which + look.failure)
            << " It is stored all the same.\n";
}

void add(ConnectionOptions options) {
  if (!options.description) throw UsageError("connection add: give it a name with --description.");
  const ConnectionKind kind = kindOf(options, std::nullopt);
  if (kind == ConnectionKind::Database) settleDatabase(options);
  requireFitting(options, kind, /*becomes=*/true);
  auto connection = std::make_shared<clsConnection>();
  become(kind, *connection);
  apply(options, *connection);

  Editing editing(options.deck);
  editing.keepsBackup = options.backup;
  requireAllUnderstood(*editing.deck, "");
  const std::string number = [&] {
    try {
      return LF2000::modConnections::NewNumber(editing.linked);
    } catch (const basic::Error& error) {
      fail(options.deck + ": " + error.description);
    }
  }();
  connection->ConnectionTagNumber(number);
  connection->ActivePresentationName(editing.deck->FullName());
  connection->DesignMode(true);
  if (kind == ConnectionKind::Excel && !options.range) tellRange(*connection);
  tellSource(options, *connection);
  editing.becomeLinked();
  editing.linked.Connections().push_back(std::move(connection));
  editing.linked.SetConnectionTags();
  editing.save();
  std::cout << number << '\n';
}

void set(ConnectionOptions options) {
  Editing editing(options.deck);
  requireAllUnderstood(*editing.deck, "");
  const std::string number = connectionNumber(*editing.deck, options.number);
  const auto connection = editing.linked.FindConnection(number);
  if (!connection) failUnknownConnection(options.deck, number);
  const auto before = static_cast<ConnectionKind>(connection->ConnectionType());
  const ConnectionKind kind = kindOf(options, before);
  if (kind == ConnectionKind::Database) settleDatabase(options);
  requireFitting(options, kind, kind != before);
  if (kind != before) become(kind, *connection);
  apply(options, *connection);
  if (kind == ConnectionKind::Excel && !options.range && (kind != before || options.file || options.sheet)) {
    tellRange(*connection);
  }
  tellSource(options, *connection);
  editing.linked.SetConnectionTags();
  editing.save();
}

void remove(const ConnectionOptions& options) {
  Editing editing(options.deck);
  const std::string number = connectionNumber(*editing.deck, options.number);
  requireAllUnderstood(*editing.deck, number);
  std::erase_if(editing.linked.Connections(),
                [&](const auto& each) { return each->ConnectionTagNumber() == number; });
  editing.linked.SetConnectionTags();
  editing.save();
}

}  // namespace

void addConnectionCommand(CLI::App& program, Environment& environment) {
  auto options = std::make_shared<ConnectionOptions>();
  CLI::App* verb =
      program.add_subcommand("connection", "List, add, change, remove and test data connections");
  verb->add_option("DECK", options->deck, "The deck")->required();
  verb->require_subcommand(1);

  const auto describeWith = [&](CLI::App* action) {
    action->add_option("--type", options->type, "Kind of source; mostly the file's name tells it")
        ->check(CLI::IsMember(sourceTypes()));
    action->add_option("--description", options->description, "Name of the connection");
    action->add_option("--file", options->file,
                       "Text file, workbook or SQLite file, relative to the deck's folder or absolute");
    action->add_flag("--header", options->header, "The first line or row holds the column names");
    action->add_option("--sheet", options->sheet, "Worksheet; the first one when none is named");
    action->add_option("--range", options->range,
                       "Cells: A1:I10, A:C or a defined name; all that the sheet holds when none are given");
    action->add_option("--connection-string", options->connectionString,
                       "Driver, server and account of a database; or an SQLite file alone");
    action->add_option("--sql", options->sql, "SELECT statement, or name of a table");
    action->add_option("--columns", options->columns, "Choice of columns, kept with the statement");
    action->add_option("--refresh", options->refresh, "Milliseconds between two requeries of a database")
        ->check(notNegative());
    action->add_flag("--strict", options->isStrict, "Store nothing when the source cannot be read now");
  };
  const auto number = [&](CLI::App* action) {
    action->add_option("NNN", options->number, "Number of the connection, or its description")->required();
  };

  CLI::App* action = verb->add_subcommand("list", "List the connections");
  action->add_flag("--json", options->json, "Print as JSON");
  action->callback([options] { list(*options); });

  action = verb->add_subcommand("add", "Add a connection and print its number");
  describeWith(action);
  action->add_flag("--backup", options->backup, BackupHelp);
  action->callback([options] { add(*options); });

  action = verb->add_subcommand("set", "Change a connection");
  number(action);
  describeWith(action);
  action->add_flag("--no-header", options->noHeader, "The first line or row holds data");
  action->callback([options] { set(*options); });

  action = verb->add_subcommand("remove", "Remove a connection and the links to it");
  number(action);
  action->callback([options] { remove(*options); });

  addConnectionDataActions(*verb, options->deck, environment);
}

}  // namespace app
