// The verb snapshot: every slide as it would be shown now, as pages and pictures.

#include <CLI/CLI.hpp>
#include <cerrno>
#include <cmath>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <memory>
#include <optional>

#include "addin/modErrors.h"
#include "app/AddInHost.h"
#include "app/Camera.h"
#include "app/Commands.h"
#include "app/Environment.h"
#include "app/Failure.h"
#include "app/LinkedShapes.h"
#include "app/StandalonePage.h"
#include "deck/SlideShow.h"
#include "render/SlideRenderer.h"

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

/// slide-001, slide-002, ...
std::string nameOf(int slide) {
  constexpr std::size_t Digits = 3;
  const std::string number = std::to_string(slide);
  return "slide-" + std::string(number.size() < Digits ? Digits - number.size() : 0, '0') + number;
}

/// A show fills its slides as it begins; nobody watches this one.
class FilledDeck {
 public:
  FilledDeck(const std::string& path, platform::EventLoop& loop)
      : deck_(host_.open(path)),
        show_(deck::SlideShow::begin(host_.application(), deck_, loop)),
        renderer_(deck_->package()) {}
  ~FilledDeck() { show_->end(); }
  FilledDeck(const FilledDeck&) = delete;
  FilledDeck& operator=(const FilledDeck&) = delete;

  [[nodiscard]] const deck::Presentation& deck() const { return *deck_; }
  [[nodiscard]] render::SlideSize size() const { return renderer_.size(); }

  std::string page(int slide) {
    render::SlidePage rendered = renderer_.slide(slide);
    for (const std::string& problem : rendered.problems) std::cerr << "lumenfold: " << problem << '\n';
    StandalonePage page;
    page.title = fs::path(deck_->FullName()).stem().string() + " - " + std::to_string(slide);
    page.slide = std::move(rendered.html);
    page.styles = render::SlideRenderer::styles();
    page.asset = [this](std::string_view name) -> std::optional<web::Asset> {
      const render::Asset* found = renderer_.assets().find(name);
      if (!found) return std::nullopt;
      return web::Asset{std::make_shared<const std::string>(renderer_.assets().bytes(name)),
                        found->contentType};
    };
    return page.html();
  }

 private:
  AddInHost host_;
  std::shared_ptr<deck::Presentation> deck_;
  std::shared_ptr<deck::SlideShow> show_;
  render::SlideRenderer renderer_;
};

void snapshot(const SnapshotOptions& options, Environment& environment) {
  std::unique_ptr<Camera> camera;
  if (options.png) camera = std::make_unique<Camera>();
  const fs::path folder = options.folder;
  std::error_code error;
  fs::create_directories(folder, error);
  if (error) fail(options.folder + ": the folder cannot be made: " + error.message() + ".");

  FilledDeck filled(options.deck, environment.loop());
  const render::SlideSize size = filled.size();
  const Camera::View view{static_cast<int>(std::lround(size.width)),
                          static_cast<int>(std::lround(size.height)), options.width / size.width};
  const int count = filled.deck().slideCount();
  for (int slide = 1; slide <= count; ++slide) {
    const fs::path page = folder / (nameOf(slide) + ".html");
    writeFile(page, filled.page(slide));
    if (camera) writeFile(folder / (nameOf(slide) + ".png"), camera->photograph(page, view));
  }
  std::cout << count << (count == 1 ? " slide" : " slides") << " written to " << options.folder << '\n';
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
  verb->callback([options, &environment] {
    snapshot(*options, environment);
    if (LF2000::modErrors::ErrorsOccurred) {
      fail(options->deck + ": not everything could be filled; see " + LF2000::modErrors::ErrorLogFile() +
           ".");
    }
  });
}

}  // namespace app
