// The verb connection: list, add, set, remove, test.

#include <CLI/CLI.hpp>
#include <algorithm>
#include <chrono>
#include <iostream>
#include <nlohmann/json.hpp>
#include <optional>

#include "app/AddInHost.h"
#include "app/Commands.h"
#include "app/Failure.h"
#include "app/Output.h"
#include "basic/Conversion.h"
#include "basic/Error.h"
#include "deck/Presentation.h"
#include "model/clsPresentation.h"
#include "model/modTags.h"

namespace app {

namespace {

using LF2000::clsConnection;
using LF2000::clsPresentation;
using Json = nlohmann::ordered_json;

struct ConnectionOptions {
  std::string deck;
  std::string number;
  std::optional<std::string> type;
  std::optional<std::string> description;
  std::optional<std::string> file;
  bool header = false;
  bool noHeader = false;
  std::int32_t rows = 10;
  bool json = false;
};

std::string typeName(std::int32_t type) {
  switch (static_cast<LF2000::ConnectionKind>(type)) {
    case LF2000::ConnectionKind::TextFile:
      return "text";
    case LF2000::ConnectionKind::Database:
      return "database";
    case LF2000::ConnectionKind::Excel:
      return "excel";
  }
  return std::to_string(type);
}

/// The connections as the tags describe them, none of them opened. One that
/// cannot be read comes with its failure.
struct Described {
  std::string number;
  std::shared_ptr<clsConnection> connection;
  std::string failure;
};

std::vector<Described> describe(deck::Presentation& deck) {
  std::vector<Described> all;
  LF2000::modTags::ForEachTag(*deck.Tags(), LF2000::modTags::Connection,
                              [&](const std::string& number, const std::string& value) {
                                Described described{number, std::make_shared<clsConnection>(), {}};
                                described.connection->ActivePresentationName(deck.FullName());
                                described.connection->ConnectionTagNumber(number);
                                try {
                                  described.connection->TagString(value);
                                } catch (const basic::Error& error) {
                                  described.failure = error.description;
                                }
                                all.push_back(std::move(described));
                              });
  return all;
}

/// Writing the connections back drops every one that was not understood.
void requireAllUnderstood(deck::Presentation& deck, const std::string& except) {
  for (const Described& described : describe(deck)) {
    if (described.failure.empty() || described.number == except) continue;
    fail(deck.FullName() + ": the stored description of connection " + described.number +
         " cannot be read, and this change would lose it. Remove it first: lumenfold connection " +
         deck.FullName() + " remove " + described.number);
  }
}

[[noreturn]] void failUnknown(const std::string& deck, const std::string& number) {
  fail(deck + ": there is no connection " + number + "; 'lumenfold connection " + deck +
       " list' shows those there are.");
}

void list(const ConnectionOptions& options) {
  const auto application = std::make_shared<deck::Application>();
  const auto deck = application->open(options.deck);
  Json json = Json::array();
  std::vector<std::vector<std::string>> rows;
  for (const Described& described : describe(*deck)) {
    const clsConnection& connection = *described.connection;
    const bool isDatabase = connection.ConnectionType() == 1;
    const std::string source = isDatabase ? connection.RecordsetSQL() : connection.ConnectionFileString();
    json.push_back({{"number", described.number},
                    {"type", typeName(connection.ConnectionType())},
                    {"description", connection.ConnectionDescription()},
                    {"source", source},
                    {"header", connection.ConnectionFirstRowFieldNames()},
                    {"error", described.failure}});
    rows.push_back({described.number, typeName(connection.ConnectionType()),
                    oneLine(connection.ConnectionDescription()),
                    described.failure.empty() ? oneLine(source) : described.failure});
  }
  if (options.json) {
    std::cout << json.dump(2) << '\n';
  } else {
    printTable(std::cout, {"No.", "Type", "Description", "Source"}, rows);
  }
}

void apply(const ConnectionOptions& options, clsConnection& connection) {
  if (options.type && *options.type != "text") {
    fail("Connections of type '" + *options.type + "' are not available in this version; 'text' is.");
  }
  if (options.description) connection.ConnectionDescription(*options.description);
  if (options.file) connection.ConnectionFileString(*options.file);
  if (options.header) connection.ConnectionFirstRowFieldNames(true);
  if (options.noHeader) connection.ConnectionFirstRowFieldNames(false);
  for (const std::string& field : {connection.ConnectionDescription(), connection.ConnectionFileString()}) {
    if (field.find('\t') != std::string::npos) {
      throw UsageError("connection: a description or file name cannot hold a TAB.");
    }
  }
}

void add(const ConnectionOptions& options) {
  if (!options.type || !options.description || !options.file) {
    throw UsageError("connection add: give --type text, --description and --file.");
  }
  AddInHost host;
  const auto deck = host.open(options.deck);
  clsPresentation& linked = host.linked(deck);
  requireAllUnderstood(*deck, "");
  auto connection = std::make_shared<clsConnection>();
  apply(options, *connection);
  const std::string number = linked.NewConnectionTagNumber();
  if (number.size() > 3) {
    fail(options.deck + ": connection numbers end at 999, and that one is taken. Renumber by removing 999.");
  }
  connection->ConnectionTagNumber(number);
  connection->ActivePresentationName(deck->FullName());
  connection->DesignMode(true);
  if (!LF2000::modTags::HasVersionTag(*deck)) linked.DisplayType(1);
  linked.Connections().push_back(std::move(connection));
  linked.SetConnectionTags();
  deck->Save();
  std::cout << number << '\n';
}

void set(const ConnectionOptions& options) {
  AddInHost host;
  const auto deck = host.open(options.deck);
  clsPresentation& linked = host.linked(deck);
  requireAllUnderstood(*deck, "");
  const auto connection = linked.FindConnection(options.number);
  if (!connection) failUnknown(options.deck, options.number);
  apply(options, *connection);
  linked.SetConnectionTags();
  deck->Save();
}

void remove(const ConnectionOptions& options) {
  AddInHost host;
  const auto deck = host.open(options.deck);
  clsPresentation& linked = host.linked(deck);
  requireAllUnderstood(*deck, options.number);
  const auto all = describe(*deck);
  if (std::none_of(all.begin(), all.end(), [&](const auto& each) { return each.number == options.number; })) {
    failUnknown(options.deck, options.number);
  }
  std::erase_if(linked.Connections(),
                [&](const auto& each) { return each->ConnectionTagNumber() == options.number; });
  linked.SetConnectionTags();
  deck->Save();
}

void test(const ConnectionOptions& options) {
  const auto application = std::make_shared<deck::Application>();
  const auto deck = application->open(options.deck);
  const auto all = describe(*deck);
  const auto found =
      std::find_if(all.begin(), all.end(), [&](const auto& each) { return each.number == options.number; });
  if (found == all.end()) failUnknown(options.deck, options.number);
  if (!found->failure.empty()) fail(options.deck + ": connection " + options.number + ": " + found->failure);
  clsConnection& connection = *found->connection;

  const auto start = std::chrono::steady_clock::now();
  connection.OpenConnection();
  connection.OpenRecordset();
  connection.CloseConnection();
  const std::chrono::duration<double, std::milli> took = std::chrono::steady_clock::now() - start;

  std::vector<std::string> columns = connection.Columns();
  columns.erase(columns.begin());
  const double count = connection.RecordCount();
  std::vector<std::vector<std::string>> rows;
  for (double row = 1; row <= std::min<double>(count, options.rows); ++row) {
    auto& line = rows.emplace_back();
    for (const std::string& column : columns) {
      bool noValue = false;
      line.push_back(connection.GetValueDatabase(row, column, 1, false, noValue));
    }
  }
  if (options.json) {
    std::cout << Json{{"number", options.number},
                      {"columns", columns},
                      {"rowCount", static_cast<std::int64_t>(count)},
                      {"milliseconds", took.count()},
                      {"rows", rows}}
                     .dump(2, ' ', false, Json::error_handler_t::replace)
              << '\n';
    return;
  }
  for (auto& row : rows) std::transform(row.begin(), row.end(), row.begin(), oneLine);
  std::transform(columns.begin(), columns.end(), columns.begin(), oneLine);
  printTable(std::cout, columns, rows);
  std::cout << static_cast<std::int64_t>(count) << " rows, " << columns.size() << " columns, read in "
            << static_cast<std::int64_t>(took.count() + 0.5) << " ms\n";
}

}  // namespace

void addConnectionCommand(CLI::App& program, Environment&) {
  auto options = std::make_shared<ConnectionOptions>();
  CLI::App* verb =
      program.add_subcommand("connection", "List, add, change, remove and test data connections");
  verb->add_option("DECK", options->deck, "The deck")->required();
  verb->require_subcommand(1);

  const auto describeWith = [&](CLI::App* action) {
    action->add_option("--description", options->description, "Name of the connection");
    action->add_option("--file", options->file, "Text file, relative to the deck's folder or absolute");
    action->add_flag("--header", options->header, "The first line holds the column names");
  };
  const auto number = [&](CLI::App* action) {
    action->add_option("NNN", options->number, "Number of the connection")->required();
  };

  CLI::App* action = verb->add_subcommand("list", "List the connections");
  action->add_flag("--json", options->json, "Print as JSON");
  action->callback([options] { list(*options); });

  action = verb->add_subcommand("add", "Add a connection and print its number");
  action->add_option("--type", options->type, "Kind of source: text");
  describeWith(action);
  action->callback([options] { add(*options); });

  action = verb->add_subcommand("set", "Change a connection");
  number(action);
  describeWith(action);
  action->add_flag("--no-header", options->noHeader, "The first line holds data");
  action->callback([options] { set(*options); });

  action = verb->add_subcommand("remove", "Remove a connection and the links to it");
  number(action);
  action->callback([options] { remove(*options); });

  action = verb->add_subcommand("test", "Open a connection; print its columns and first rows");
  number(action);
  action->add_option("--rows", options->rows, "Number of rows to print")->check(CLI::NonNegativeNumber);
  action->add_flag("--json", options->json, "Print as JSON");
  action->callback([options] { test(*options); });
}

}  // namespace app
