// Decks that are drawn as they are expected to be: scene/RULE/ holds a deck (input.xml) and its scene
// (expected.txt), html/NAME/ a deck and its page. docs/rendering.md says how expectations are written anew.

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <pugixml.hpp>
#include <sstream>

#include "render/html/SlideRenderer.h"
#include "support/DeckBuilder.h"

namespace {

namespace fs = std::filesystem;

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

/// The head of a GIF, which is all that the renderer looks at.
std::string gif(unsigned width, unsigned height) {
  std::string bytes = "GIF89a";
  for (const unsigned side : {width, height}) {
    bytes += static_cast<char>(side & 0xFFU);
    bytes += static_cast<char>(side >> 8U);
  }
  return bytes;
}

/// A deck of one slide, which gives what the builder has in place of what the file leaves out:
///   presentation, styles   behind the notes' size, and behind the master's colour map
///   master, layout, slide  shapes; the master's background goes before its shapes
///   after                  what stands behind the slide's shapes
///   related                a part that the slide names by type: XML, or a picture of a size; the first is
///   rId2 part                   any other, by name
std::unique_ptr<opc::Package> deckOf(const fs::path& input) {
  pugi::xml_document source;
  const auto parsed = source.load_file(input.c_str(), pugi::parse_default | pugi::parse_ws_pcdata_single);
  EXPECT_TRUE(parsed) << input << ": " << parsed.description();
  const auto deck = source.document_element();
  support::DeckBuilder builder = support::DeckBuilder::of(inner(deck.child("slide")));
  builder.afterCommonData(1, inner(deck.child("after")));
  builder.presentationExtra(inner(deck.child("presentation")));
  builder.part("ppt/theme/theme1.xml", readFile(fs::path(RENDER_TESTS) / "theme.xml"));
  builder.part("ppt/slideMasters/slideMaster1.xml",
               "<p:sldMaster><p:cSld>" + inner(deck.child("background")) + "<p:spTree>" +
                   inner(deck.child("master")) +
                   "</p:spTree></p:cSld><p:clrMap bg1=\"lt1\" tx1=\"dk1\" bg2=\"lt2\" tx2=\"dk2\"/>" +
                   inner(deck.child("styles")) + "</p:sldMaster>");
  builder.part(
      "ppt/slideLayouts/slideLayout1.xml",
      "<p:sldLayout><p:cSld><p:spTree>" + inner(deck.child("layout")) + "</p:spTree></p:cSld></p:sldLayout>");
  for (const auto part : deck.children("part")) builder.part(part.attribute("name").value(), inner(part));
  int count = 0;
  for (const auto part : deck.children("related")) {
    const unsigned width = part.attribute("width").as_uint();
    const std::string name = "part" + std::to_string(++count) + (width > 0 ? ".gif" : ".xml");
    builder.relate(1, part.attribute("type").value(), "../" + name);
    builder.part("ppt/" + name, width > 0 ? gif(width, part.attribute("height").as_uint()) : inner(part));
  }
  return builder.package();
}

void expectAll(const fs::path& folder, const char* expectation,
               const std::function<std::string(render::SlideRenderer&)>& drawn) {
  const bool renew = std::getenv("RENEW_EXPECTED") != nullptr;
  int count = 0;
  for (const auto& entry : fs::directory_iterator(folder)) {
    ++count;
    const auto package = deckOf(entry.path() / "input.xml");
    render::SlideRenderer renderer(*package);
    const std::string found = drawn(renderer);
    const fs::path expected = entry.path() / expectation;
    if (renew) std::ofstream(expected, std::ios::binary) << found;
    EXPECT_EQ(found, readFile(expected)) << expected;
  }
  EXPECT_GT(count, 0) << folder;
}

TEST(Golden, ScenesAreAsTheFormatSays) {
  expectAll(fs::path(RENDER_TESTS) / "scene", "expected.txt",
            [](render::SlideRenderer& renderer) { return renderer.scene(1); });
}

/// One element a line and no long lines, for comparisons that can be read.
std::string broken(std::string_view html) {
  constexpr std::size_t Longest = 118;
  std::string lines;
  while (!html.empty()) {
    std::size_t end = std::min(html.find("><"), html.size() - 1) + 1;
    if (end > Longest) {
      const std::size_t last = html.find_last_of(" ;", Longest - 1);
      if (last != std::string_view::npos) end = html[last] == ' ' && last > 0 ? last : last + 1;
    }
    lines += html.substr(0, end);
    lines += '\n';
    html.remove_prefix(end);
  }
  return lines;
}

TEST(Golden, PagesAreAsTheyWere) {
  expectAll(fs::path(RENDER_TESTS) / "html", "expected.html", [](render::SlideRenderer& renderer) {
    const auto page = renderer.slide(1);
    EXPECT_TRUE(page.problems.empty()) << page.problems.front();
    return broken(page.html);
  });
}

}  // namespace
