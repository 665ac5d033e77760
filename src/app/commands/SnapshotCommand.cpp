// The verb snapshot: every slide as it would be shown now, as pages and pictures.

#include <CLI/CLI.hpp>
#include <cerrno>
#include <cmath>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <memory>

#include "app/commands/Commands.h"
#include "app/inspect/Camera.h"
#include "app/inspect/CollectedErrors.h"
#include "app/inspect/FilledDeck.h"
#include "app/wiring/Environment.h"
#include "app/wiring/Failure.h"
#include "platform/Console.h"

namespace app {

namespace {

namespace fs = std::filesystem;

struct SnapshotOptions {
  std::string deck;
  std::string folder;
  bool png = false;
  int width = 960;
};

void writeFile(const fs::path& path, std::string_view content) {
  std::ofstream file(path, std::ios::binary | std::ios::trunc);
  file.write(content.data(), static_cast<std::streamsize>(content.size()));
  file.close();
  if (!file) fail(path.string() + ": cannot be written: " + std::strerror(errno) + ".");
}

void complain(const std::string& text) { std::cerr << "lumenfold: " << platform::forTerminal(text) << '\n'; }

/// slide-001, slide-002, ...
std::string nameOf(int slide) {
  constexpr std::size_t Digits = 3;
  const std::string number = std::to_string(slide);
  return "slide-" + std::string(number.size() < Digits ? Digits - number.size() : 0, '0') + number;
}

void snapshot(const SnapshotOptions& options, Environment& environment) {
  std::unique_ptr<Camera> camera;
  if (options.png) camera = std::make_unique<Camera>();
  const fs::path folder = options.folder;
  std::error_code error;
  fs::create_directories(folder, error);
  if (error) fail(options.folder + ": the folder cannot be made: " + error.message() + ".");

  const CollectedErrors errors;
  FilledDeck filled(options.deck, environment.loop());
  const std::vector<deck::Damage>& damages = filled.deck().damages();
  for (const deck::Damage& damage : damages) complain(damage.text);
  const render::SlideSize size = filled.size();
  const Camera::View view{static_cast<int>(std::lround(size.width)),
                          static_cast<int>(std::lround(size.height)), options.width / size.width};
  const int count = filled.slideCount();
  for (int slide = 1; slide <= count; ++slide) {
    const FilledDeck::Page page = filled.page(slide);
    for (const std::string& problem : page.problems) complain(problem);
    const fs::path file = folder / (nameOf(slide) + ".html");
    writeFile(file, page.html);
    if (!camera) continue;
    camera->open(file, view);
    writeFile(folder / (nameOf(slide) + ".png"), camera->photograph());
  }
  std::cout << count << (count == 1 ? " slide" : " slides") << " written to " << options.folder << '\n';
  if (errors.texts().empty() && damages.empty()) return;
  for (const std::string& text : errors.texts()) complain(text);
  fail(options.deck + ": not everything could be filled and drawn (see above).");
}

}  // namespace

void addSnapshotCommand(CLI::App& program, Environment& environment) {
  constexpr int WidestPicture = 16384;
  auto options = std::make_shared<SnapshotOptions>();
  CLI::App* verb = program.add_subcommand("snapshot", "Write every slide, filled, as a page or a picture");
  verb->add_option("DECK", options->deck, "The deck")->required();
  verb->add_option("-o,--output", options->folder, "Folder for the pages; made when it is not there")
      ->required();
  verb->add_flag("--png", options->png, "Pictures as well (takes Chromium)");
  verb->add_option("--width", options->width, "Width of the pictures in pixels")
      ->check(CLI::Range(1, WidestPicture))
      ->capture_default_str();
  verb->callback([options, &environment] { snapshot(*options, environment); });
}

}  // namespace app
