// Writes a deck's slides as pages that stand alone, for looking at:
//   render_pages DECK OUTDIR

#include <filesystem>
#include <fstream>
#include <iostream>

#include "basic/Error.h"
#include "opc/Package.h"
#include "render/conversion/PictureConverter.h"
#include "render/html/PageContract.h"
#include "render/html/SlideRenderer.h"

namespace {

void writeFile(const std::filesystem::path& path, std::string_view content) {
  std::ofstream file(path, std::ios::binary);
  file.write(content.data(), static_cast<std::streamsize>(content.size()));
  if (!file) throw std::runtime_error("cannot write " + path.string());
}

std::string pageName(int index) {
  const auto digits = std::to_string(index);
  return "slide-" + std::string(digits.size() < 3 ? 3 - digits.size() : 0, '0') + digits + ".html";
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 3) {
    std::cerr << "usage: render_pages DECK OUTDIR\n";
    return 2;
  }
  try {
    const auto package = opc::Package::open(argv[1]);
    const std::filesystem::path folder = argv[2];
    std::filesystem::create_directories(folder / "assets");
    std::filesystem::copy_file(CHARTS_SCRIPT, folder / "charts.js",
                               std::filesystem::copy_options::overwrite_existing);
    render::PictureConverter converter{{}};
    render::SlideRenderer renderer(*package,
                                   {.assetPrefix = "assets/", .isLive = {}, .converter = &converter});
    for (int index = 1; index <= renderer.slideCount(); ++index) renderer.slide(index);
    converter.finish();
    renderer.forget();
    const auto size = renderer.size();
    for (int index = 1; index <= renderer.slideCount(); ++index) {
      const auto page = renderer.slide(index);
      for (const auto& problem : page.problems) std::cerr << problem << '\n';
      std::string html =
          "<!doctype html><meta charset=utf-8><title>" + std::to_string(index) + "</title><style>";
      html += render::slideStyles();
      html += "body{margin:0}</style>";
      html += page.html;
      html += "<script src=\"charts.js\"></script>";
      writeFile(folder / pageName(index), html);
      for (const auto& name : page.assets)
        writeFile(folder / "assets" / name, *renderer.assets().bytes(name));
    }
    std::cout << size.width << ' ' << size.height << ' ' << renderer.slideCount() << '\n';
  } catch (const basic::Error& error) {
    std::cerr << error.description << '\n';
    return 1;
  }
}
