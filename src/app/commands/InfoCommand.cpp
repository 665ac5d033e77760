// The verb info: what a deck is linked to.

#include <CLI/CLI.hpp>
#include <iostream>

#include "app/commands/Commands.h"
#include "app/inspect/SourceLook.h"
#include "app/wiring/LinkedShapes.h"
#include "app/wiring/Output.h"
#include "app/wiring/ScrollInfo.h"
#include "app/wiring/StoredConnections.h"
#include "basic/Conversion.h"
#include "basic/Counted.h"
#include "connections/SourceKind.h"
#include "deck/objects/Application.h"
#include "json/Json.h"
#include "model/clsSlide.h"
#include "model/modTags.h"
#include "platform/Console.h"

namespace app {

namespace {

using json::Json;

std::string tagValue(deck::Presentation& deck, std::string_view key) {
  std::string found;
  LF2000::modTags::ForEachTag(*deck.Tags(), key,
                              [&](const std::string&, const std::string& v) { found = v; });
  return found;
}

/// Opens the connection to say how it stands; a failure is its state.
Json connectionInfo(const StoredConnection& stored) {
  LF2000::clsConnection& connection = *stored.connection;
  Json info = {{"number", stored.number},
               {"type", connectionTypeName(connection.ConnectionType())},
               {"description", connection.ConnectionDescription()},
               {"source", LF2000::SourceText(connection)}};
  if (!stored.failure.empty()) {
    info["state"] = stored.failure;
    return info;
  }
  const SourceLook look = lookInto(connection);
  info["state"] = look.isReadable() ? "ready" : look.failure;
  if (look.isReadable()) {
    info["rowCount"] = look.rowCount;
    info["columns"] = look.offered;
  }
  return info;
}

Json linkInfo(const LinkedShape& shape) {
  return {{"shape", shape.name},
          {"sourceType", shape.sourceType},
          {"isTable", shape.isTable},
          {"connection", shape.connection},
          {"column", shape.column},
          {"row", shape.row},
          {"format", shape.dateFormat},
          {"folder", shape.objectFolder},
          {"extension", shape.objectExtension}};
}

Json slideInfo(deck::Presentation& deck, std::int32_t index) {
  const auto slide = deck.Slides()->Item(index);
  LF2000::clsSlide properties;
  Json problems = properties.ReadTags(*slide->Tags());
  Json links = Json::array();
  for (const LinkedShape& shape : linkedShapes(deck, index)) links.push_back(linkInfo(shape));
  return {{"index", index},
          {"hidden", slide->SlideShowTransition()->Hidden()},
          {"hideWhenNoData", properties.HideWhenNoData()},
          {"refreshLinkedObjects", properties.RefreshLinkedObjects()},
          {"scroll", scrollInfo(properties)},
          {"problems", std::move(problems)},
          {"links", links}};
}

Json deckInfo(deck::Presentation& deck) {
  Json connections = Json::array();
  for (const StoredConnection& stored : storedConnections(deck)) {
    connections.push_back(connectionInfo(stored));
  }
  Json slides = Json::array();
  for (std::int32_t i = 1; i <= deck.slideCount(); ++i) slides.push_back(slideInfo(deck, i));
  return {{"deck", deck.FullName()},
          {"linked", LF2000::modTags::HasVersionTag(deck)},
          {"version", tagValue(deck, LF2000::modTags::Version)},
          {"displayType", tagValue(deck, LF2000::modTags::DisplayType)},
          {"slideCount", deck.slideCount()},
          {"connections", connections},
          {"slides", slides}};
}

std::string text(const Json& value) { return oneLine(value.get<std::string>()); }

/// Of a picture with the folder and the extension around it.
std::string columnText(const Json& link) {
  const std::string folder = text(link["folder"]);
  const std::string extension = text(link["extension"]);
  return (folder.empty() ? "" : folder + "\\") + text(link["column"]) +
         (extension.empty() ? "" : "." + extension);
}

void printLinks(const Json& slides) {
  std::vector<std::vector<std::string>> rows;
  for (const Json& slide : slides) {
    for (const Json& link : slide["links"]) {
      const bool isClock = link["sourceType"] == 1;
      const bool takesAll = link["sourceType"] == 4;
      rows.push_back({slide["index"].dump(), text(link["shape"]),
                      isClock ? "clock" : text(link["connection"]),
                      isClock    ? text(link["format"])
                      : takesAll ? (link["isTable"] == true ? "table, all its columns" : "chart, all columns")
                                 : columnText(link),
                      isClock    ? ""
                      : takesAll ? "all"
                                 : basic::CStr(link["row"].get<double>())});
    }
  }
  if (rows.empty()) return;
  std::cout << '\n';
  printTable(std::cout, {"Slide", "Shape", "Connection", "Column or format", "Row"}, rows);
}

void printSlides(const Json& slides) {
  for (const Json& slide : slides) {
    std::string remarks;
    if (slide["hidden"] == true) remarks += " hidden,";
    if (slide["hideWhenNoData"] == true) remarks += " hides when it has no data,";
    if (slide["refreshLinkedObjects"] == true) remarks += " refreshes its linked objects,";
    for (const Json& entry : slide["scroll"]) {
      if (entry["enabled"] == true) remarks += " scrolls by entry " + entry["entry"].dump() + ",";
    }
    if (!remarks.empty()) {
      remarks.pop_back();
      std::cout << "Slide " << slide["index"] << ":" << remarks << '\n';
    }
    for (const Json& problem : slide["problems"]) {
      std::cout << "Slide " << slide["index"] << ": " << text(problem) << '\n';
    }
  }
}

void print(const Json& info) {
  std::cout << info["deck"].get<std::string>() << ": " << info["slideCount"] << " slides, ";
  if (info["linked"] != true) {
    std::cout << "not linked to any data\n";
    return;
  }
  std::cout << "linked (version " << info["version"].get<std::string>() << ", display type "
            << info["displayType"].get<std::string>() << ")\n";
  for (const Json& connection : info["connections"]) {
    std::cout << "\nConnection " << text(connection["number"]) << "  " << text(connection["type"]) << "  "
              << text(connection["description"]) << "  " << text(connection["source"]) << "\n  ";
    if (connection["state"] != "ready") {
      std::cout << "not ready: " << platform::forTerminal(connection["state"].get<std::string>()) << '\n';
      continue;
    }
    std::cout << "ready, " << basic::Counted(connection["rowCount"].get<std::int64_t>(), "row") << ": ";
    std::string columns;
    for (const Json& column : connection["columns"]) columns += (columns.empty() ? "" : ", ") + text(column);
    std::cout << columns << '\n';
  }
  std::cout << '\n';
  printSlides(info["slides"]);
  printLinks(info["slides"]);
}

}  // namespace

void addInfoCommand(CLI::App& program, Environment&) {
  struct InfoOptions {
    std::string deck;
    bool json = false;
  };
  auto options = std::make_shared<InfoOptions>();
  CLI::App* verb = program.add_subcommand("info", "Print what a deck is linked to");
  verb->add_option("DECK", options->deck, "The deck")->required();
  verb->add_flag("--json", options->json, "Print as JSON");
  verb->callback([options] {
    const auto application = std::make_shared<deck::Application>();
    const Json info = deckInfo(*application->open(options->deck));
    if (options->json) {
      printJson(std::cout, info);
    } else {
      print(info);
    }
  });
}

}  // namespace app
