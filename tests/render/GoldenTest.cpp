#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <pugixml.hpp>
#include <sstream>

#include "render/html/SlideRenderer.h"
#include "support/DeckBuilder.h"

// golden/NAME.xml holds what a theme, master, layout and slide contain,
// golden/NAME.html what the slide looks like. After a change that is meant,
// RENEW_GOLDEN=1 test_render --gtest_filter='Golden*' writes the pages anew.

namespace {

namespace fs = std::filesystem;

const std::string Namespaces =
    " xmlns:a=\"http://schemas.openxmlformats.org/drawingml/2006/main\""
    " xmlns:r=\"http://schemas.openxmlformats.org/officeDocument/2006/relationships\""
    " xmlns:p=\"http://schemas.openxmlformats.org/presentationml/2006/main\"";

std::string readFile(const fs::path& path) {
  std::ifstream file(path, std::ios::binary);
  std::ostringstream content;
  content << file.rdbuf();
  return content.str();
}

std::string inner(pugi::xml_node node) {
  std::ostringstream out;
  for (const auto child : node.children()) child.print(out, "", pugi::format_raw);
  return out.str();
}

/// One element a line, for comparisons that can be read.
std::string broken(const std::string& html) {
  std::string lines;
  for (std::size_t i = 0; i < html.size(); ++i) {
    lines += html[i];
    if (html[i] == '>' && i + 1 < html.size() && html[i + 1] == '<') lines += '\n';
  }
  return lines + '\n';
}

std::string render(const fs::path& path) {
  pugi::xml_document source;
  const auto parsed = source.load_file(path.c_str(), pugi::parse_default | pugi::parse_ws_pcdata_single);
  EXPECT_TRUE(parsed) << path << ": " << parsed.description();
  const auto golden = source.document_element();
  deck::test::DeckBuilder builder;
  builder.addSlide(inner(golden.child("slide")));
  builder.part("ppt/theme/theme1.xml", readFile(fs::path(GOLDEN_FOLDER) / "theme.inc"));
  const std::string tree = "><p:cSld>" + inner(golden.child("background")) + "<p:spTree>";
  builder.part("ppt/slideMasters/slideMaster1.xml",
               "<p:sldMaster" + Namespaces + tree + inner(golden.child("master")) +
                   "</p:spTree></p:cSld><p:clrMap bg1=\"lt1\" tx1=\"dk1\" bg2=\"lt2\" tx2=\"dk2\"/>" +
                   inner(golden.child("styles")) + "</p:sldMaster>");
  builder.part("ppt/slideLayouts/slideLayout1.xml", "<p:sldLayout" + Namespaces + "><p:cSld><p:spTree>" +
                                                        inner(golden.child("layout")) +
                                                        "</p:spTree></p:cSld></p:sldLayout>");
  const auto package = builder.package();
  render::SlideRenderer renderer(*package);
  const auto page = renderer.slide(1);
  EXPECT_TRUE(page.problems.empty()) << page.problems.front();
  return broken(page.html);
}

TEST(Golden, PagesAreAsTheyWere) {
  const bool renew = std::getenv("RENEW_GOLDEN") != nullptr;
  int count = 0;
  for (const auto& entry : fs::directory_iterator(GOLDEN_FOLDER)) {
    if (entry.path().extension() != ".xml") continue;
    ++count;
    const auto html = render(entry.path());
    auto expected = entry.path();
    expected.replace_extension(".html");
    if (renew) {
      std::ofstream(expected, std::ios::binary) << html;
      continue;
    }
    EXPECT_EQ(html, readFile(expected)) << expected;
  }
  EXPECT_GE(count, 7);
}

}  // namespace
