// What the verb connection reads: test, preview, tables, sheets.

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cmath>
#include <iostream>
#include <optional>
#include <unordered_set>

#include "addin/support/modGlobalFunctions.h"
#include "app/commands/Commands.h"
#include "app/commands/NumberChecks.h"
#include "app/inspect/SourceLook.h"
#include "app/wiring/Environment.h"
#include "app/wiring/Failure.h"
#include "app/wiring/Output.h"
#include "app/wiring/StoredConnections.h"
#include "basic/Counted.h"
#include "basic/Strings.h"
#include "connections/DatabaseCatalog.h"
#include "deck/objects/Application.h"
#include "json/Json.h"
#include "platform/Console.h"
#include "workbook/sheet/Describe.h"

namespace app {

namespace {

using json::Json;
using LF2000::clsConnection;
using LF2000::ConnectionKind;

struct DataOptions {
  const std::string* deck = nullptr;
  std::string number;
  std::int32_t rows = 10;
  bool json = false;
};

/// The deck stays open as long as its connection is used.
struct OpenedDeck {
  explicit OpenedDeck(const DataOptions& options)
      : deck(application->open(*options.deck)),
        connection(storedConnection(*deck, connectionNumber(*deck, options.number))) {}

  std::shared_ptr<deck::Application> application = std::make_shared<deck::Application>();
  std::shared_ptr<deck::Presentation> deck;
  std::shared_ptr<clsConnection> connection;

  void require(ConnectionKind kind, const char* what) const {
    if (static_cast<ConnectionKind>(connection->ConnectionType()) == kind) return;
    fail(deck->FullName() + ": connection " + connection->ConnectionTagNumber() + " is of type " +
         connectionTypeName(connection->ConnectionType()) + "; only " + what);
  }
};

struct Reading {
  std::string number;
  SourceLook look;
  /// Nothing where the data hold Null.
  std::vector<std::vector<std::optional<std::string>>> rows;
};

Reading read(const DataOptions& options) {
  const OpenedDeck opened(options);
  clsConnection& connection = *opened.connection;
  Reading reading{connection.ConnectionTagNumber(), lookInto(connection), {}};
  if (!reading.look.isReadable()) {
    fail(opened.deck->FullName() + ": connection " + reading.number + ": " + reading.look.failure);
  }
  const auto shown = std::min<std::int64_t>(reading.look.rowCount, options.rows);
  for (std::int64_t row = 1; row <= shown; ++row) {
    auto& line = reading.rows.emplace_back();
    for (const std::string& column : reading.look.offered) {
      bool noValue = false;
      std::string text = connection.GetValueDatabase(static_cast<double>(row), column, 1, false, noValue);
      if (noValue && connection.IsNull(static_cast<double>(row), column)) {
        line.emplace_back();
      } else {
        line.emplace_back(std::move(text));
      }
    }
  }
  return reading;
}

/// Links find a column by its name, in any case of letters: of two that have the same the
/// second is out of their reach.
void printDoubled(const std::vector<std::string>& columns) {
  std::unordered_set<std::string> names;
  for (const std::string& column : columns) {
    if (names.insert(basic::UCase(column)).second) continue;
    std::cout << "Several columns are named '" << oneLine(column)
              << "'; links reach the first. Give the others a name of their own (AS ...).\n";
    return;
  }
}

void printRows(Reading reading) {
  std::vector<std::string>& columns = reading.look.offered;
  printDoubled(columns);
  std::vector<std::vector<std::string>> rows;
  for (const auto& row : reading.rows) {
    auto& line = rows.emplace_back();
    for (const auto& value : row) line.push_back(oneLine(value.value_or("")));
  }
  std::transform(columns.begin(), columns.end(), columns.begin(), oneLine);
  printTable(std::cout, columns, rows);
}

Json rowsOf(const Reading& reading) {
  Json rows = Json::array();
  for (const auto& row : reading.rows) {
    Json& line = rows.emplace_back(Json::array());
    for (const auto& value : row) line.push_back(value ? Json(*value) : Json());
  }
  return rows;
}

void test(const DataOptions& options) {
  const Reading reading = read(options);
  const SourceLook& look = reading.look;
  if (options.json) {
    printJson(std::cout, {{"number", reading.number},
                          {"columns", look.offered},
                          {"rowCount", look.rowCount},
                          {"milliseconds", look.milliseconds},
                          {"remarks", look.remarks},
                          {"rows", rowsOf(reading)}});
    return;
  }
  printRows(reading);
  for (const std::string& remark : look.remarks) {
    std::cout << platform::forTerminal(joinedLines(remark)) << '\n';
  }
  std::cout << basic::Counted(look.rowCount, "row") << ", " << basic::Counted(look.offered.size(), "column")
            << ", read in " << std::llround(look.milliseconds) << " ms\n";
}

void preview(const DataOptions& options) {
  const Reading reading = read(options);
  if (options.json) {
    printJson(std::cout, {{"columns", reading.look.offered}, {"rows", rowsOf(reading)}});
  } else {
    printRows(reading);
  }
}

void tables(const DataOptions& options) {
  const OpenedDeck opened(options);
  opened.require(ConnectionKind::Database, "databases have tables.");
  const std::string resolved = LF2000::modGlobalFunctions::ResolveConnectionString(
      opened.connection->ConnectionString(), opened.deck->FullName());
  Json json = Json::array();
  std::vector<std::vector<std::string>> rows;
  for (const LF2000::DatabaseTable& table : LF2000::DatabaseCatalog(resolved).Tables()) {
    json.push_back({{"schema", table.Schema}, {"name", table.Name}, {"type", table.Type}});
    rows.push_back({oneLine(table.Schema), oneLine(table.Name), oneLine(table.Type)});
  }
  if (options.json) {
    printJson(std::cout, json);
  } else {
    printTable(std::cout, {"Schema", "Name", "Type"}, rows);
  }
}

void sheets(const DataOptions& options, Environment& environment) {
  const OpenedDeck opened(options);
  opened.require(ConnectionKind::Excel, "workbooks have sheets.");
  const std::string path = environment.localPath(LF2000::modGlobalFunctions::ResolvePath(
      opened.connection->ConnectionFileString(), opened.deck->FullName()));
  const workbook::Description described = workbook::describe(path, environment.loop());
  Json json = {{"sheets", Json::array()}, {"names", Json::array()}};
  std::vector<std::vector<std::string>> rows;
  for (const auto& sheet : described.sheets) {
    json["sheets"].push_back(
        {{"name", sheet.name}, {"visible", sheet.isVisible}, {"dimension", sheet.dimension}});
    rows.push_back(
        {sheet.isVisible ? "sheet" : "hidden sheet", oneLine(sheet.name), oneLine(sheet.dimension)});
  }
  for (const auto& name : described.names) {
    json["names"].push_back({{"name", name.name}, {"refersTo", name.refersTo}, {"sheet", name.sheet}});
    rows.push_back({"name", oneLine(name.name), oneLine(name.refersTo)});
  }
  if (options.json) {
    printJson(std::cout, json);
  } else {
    printTable(std::cout, {"Kind", "Name", "Cells"}, rows);
  }
}

}  // namespace

void addConnectionDataActions(CLI::App& verb, const std::string& deck, Environment& environment) {
  auto options = std::make_shared<DataOptions>();
  options->deck = &deck;
  const auto action = [&](const char* name, const char* description) {
    CLI::App* each = verb.add_subcommand(name, description);
    each->add_option("NNN", options->number, "Number of the connection, or its description")->required();
    each->add_flag("--json", options->json, "Print as JSON");
    return each;
  };
  const auto rows = [&](CLI::App* each) {
    each->add_option("--rows", options->rows, "Number of rows to print")->check(wholeNumber(0));
  };

  CLI::App* each = action("test", "Open a connection; print its columns, first rows, row count and time");
  rows(each);
  each->callback([options] { test(*options); });
  each = action("preview", "Print the first rows");
  rows(each);
  each->callback([options] { preview(*options); });
  each = action("tables", "List the tables and views of a database");
  each->callback([options] { tables(*options); });
  each = action("sheets", "List the sheets and defined names of a workbook");
  each->callback([options, &environment] { sheets(*options, environment); });
}

}  // namespace app
