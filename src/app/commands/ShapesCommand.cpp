// The verb shapes: what stands on the slides, and what can be linked of it.

#include <CLI/CLI.hpp>
#include <cmath>
#include <filesystem>
#include <iostream>
#include <memory>
#include <sstream>

#include "app/commands/Commands.h"
#include "app/commands/Editing.h"
#include "app/commands/NumberChecks.h"
#include "app/inspect/DeckPage.h"
#include "app/inspect/HeadlessBrowser.h"
#include "app/inspect/ShapeList.h"
#include "app/inspect/SlideFiles.h"
#include "app/wiring/Output.h"
#include "basic/Markup.h"
#include "deck/objects/Application.h"
#include "json/Json.h"
#include "process/TemporaryFolder.h"

namespace app {

namespace {

using json::Json;

struct ShapesOptions {
  std::string deck;
  std::int32_t slide = 0;  // 0 is every one
  bool json = false;
  std::string folder;
  int width = 1280;
};

struct SlideShapes {
  std::int32_t slide;
  std::vector<ListedShape> shapes;
};

Json linkJson(const LinkedShape& link) {
  return {{"sourceType", link.sourceType},
          {"connection", link.connection},
          {"column", link.column},
          {"row", link.row},
          {"format", link.dateFormat},
          {"folder", link.objectFolder},
          {"extension", link.objectExtension}};
}

double tenths(double points) { return std::round(points * 10) / 10; }

void printShapesJson(const std::vector<SlideShapes>& slides) {
  Json json = Json::array();
  for (const auto& [slide, shapes] : slides) {
    Json list = Json::array();
    for (const ListedShape& shape : shapes) {
      list.push_back({{"name", shape.name},
                      {"id", shape.id},
                      {"kind", shape.kind},
                      {"text", shape.text},
                      {"left", tenths(shape.left)},
                      {"top", tenths(shape.top)},
                      {"width", tenths(shape.width)},
                      {"height", tenths(shape.height)},
                      {"group", shape.group},
                      {"shows", shape.shows},
                      {"whyNot", shape.whyNot},
                      {"link", shape.link ? linkJson(*shape.link) : Json()}});
    }
    json.push_back({{"index", slide}, {"shapes", std::move(list)}});
  }
  printJson(std::cout, {{"slides", std::move(json)}});
}

std::string placeOf(const ListedShape& shape) {
  std::ostringstream place;
  place << std::lround(shape.left) << ", " << std::lround(shape.top) << "  " << std::lround(shape.width)
        << " x " << std::lround(shape.height);
  return place.str();
}

std::string remarkOf(const ListedShape& shape) {
  std::string link = shape.link ? oneLine(linkText(*shape.link)) : "";
  if (shape.whyNot.empty()) return link;
  return link + (link.empty() ? "" : "; ") + "cannot be linked: " + shape.whyNot;
}

void printShapes(const std::vector<SlideShapes>& slides) {
  std::vector<std::vector<std::string>> rows;
  for (const auto& [slide, shapes] : slides) {
    for (const ListedShape& shape : shapes) {
      rows.push_back({std::to_string(slide), oneLine(shape.name), shape.kind, oneLine(shape.text),
                      placeOf(shape), remarkOf(shape)});
    }
  }
  printTable(std::cout, {"Slide", "Shape", "Kind", "Text", "Place in points", "Link"}, rows);
}

/// Frames with names over the slide's page: linked green, what can be linked blue, the rest grey.
std::string labels(const std::vector<ListedShape>& shapes) {
  constexpr double PxPerPoint = 4.0 / 3.0;
  std::ostringstream html;
  html << "<style>.name{position:absolute;box-sizing:border-box;border:1.5px solid var(--c);z-index:1}"
          ".name>b{position:absolute;left:-1.5px;top:-1.5px;background:var(--c);color:#fff;"
          "font:600 11px/14px sans-serif;padding:0 3px;white-space:nowrap}</style>";
  for (const ListedShape& shape : shapes) {
    const char* color = !shape.whyNot.empty() ? "#666" : shape.link ? "#0a7d33" : "#1257c2";
    html << "<div class=\"name\" style=\"--c:" << color << ";left:" << shape.left * PxPerPoint
         << "px;top:" << shape.top * PxPerPoint << "px;width:" << shape.width * PxPerPoint
         << "px;height:" << shape.height * PxPerPoint << "px\"><b>" << basic::Escaped(shape.name)
         << "</b></div>";
  }
  return html.str();
}

void drawShapes(deck::Presentation& deck, const std::vector<SlideShapes>& slides,
                const ShapesOptions& options) {
  HeadlessBrowser browser;
  makeFolder(options.folder);
  DrawnDeck drawn(deck);
  const process::TemporaryFolder temporary;
  const HeadlessBrowser::View view = slideView(drawn.renderer().size(), options.width);
  for (const auto& [slide, shapes] : slides) {
    const std::filesystem::path page = temporary.path() / "slide.html";
    writeFile(page, drawPage(deck, drawn, slide, labels(shapes)).html);
    browser.open(page, view);
    writeFile(std::filesystem::path(options.folder) / (slideFileName(slide) + ".png"), browser.photograph());
  }
}

void listDeck(const ShapesOptions& options) {
  const auto application = std::make_shared<deck::Application>();
  const auto deck = application->open(options.deck);
  std::vector<SlideShapes> slides;
  if (options.slide != 0) static_cast<void>(slideOf(*deck, options.slide));
  for (std::int32_t i = 1; i <= deck->slideCount(); ++i) {
    if (options.slide == 0 || options.slide == i) slides.push_back({i, listShapes(*deck, i)});
  }
  if (!options.folder.empty()) drawShapes(*deck, slides, options);
  if (options.json) {
    printShapesJson(slides);
  } else {
    printShapes(slides);
  }
}

}  // namespace

void addShapesCommand(CLI::App& program, Environment&) {
  constexpr int WidestPicture = 16384;
  auto options = std::make_shared<ShapesOptions>();
  CLI::App* verb = program.add_subcommand(
      "shapes", "List the shapes of the slides: name, kind, text, place, link, and why one cannot be linked");
  verb->add_option("DECK", options->deck, "The deck")->required();
  verb->add_option("--slide", options->slide, "This slide alone")->check(wholeNumber(1));
  verb->add_flag("--json", options->json, "Print as JSON");
  CLI::Option* folder = verb->add_option(
      "--png", options->folder, "Folder for pictures of the slides with the names on them (takes Chromium)");
  verb->add_option("--width", options->width, "Width of the pictures in pixels")
      ->check(CLI::Range(1, WidestPicture))
      ->needs(folder)
      ->capture_default_str();
  verb->callback([options] { listDeck(*options); });
}

}  // namespace app
