#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "basic/Error.h"
#include "deck/objects/Presentation.h"
#include "deck/objects/Repair.h"
#include "opc/Package.h"
#include "render/html/SlideRenderer.h"
#include "support/ZipFile.h"

// Every part of sample decks is damaged in turn, in every way: what is left is
// drawn, and nothing else changes.

namespace {

using deck::test::ZipEntry;
using testing::HasSubstr;

struct Drawn {
  std::vector<std::string> slides;
  std::size_t complaints = 0;
};

std::vector<ZipEntry> entriesOf(const std::string& sample) {
  const auto package =
      opc::Package::open(std::string(SAMPLES_FOLDER) + "/" + sample + "/" + sample + ".pptx");
  std::vector<ZipEntry> entries;
  for (opc::Part* part : package->parts()) {
    entries.push_back({part->name(), std::string(part->bytes()), /*deflated=*/false});
  }
  return entries;
}

/// As a show draws it. Throws when the deck is refused.
Drawn draw(const std::vector<ZipEntry>& entries) {
  auto package = opc::Package::fromBytes(deck::test::zipOf(entries), "deck.pptx");
  Drawn drawn;
  auto damages = deck::repair(*package);
  drawn.complaints = damages.size();
  deck::Presentation presentation(std::move(package), "deck.pptx", std::nullopt, std::move(damages));
  render::SlideRenderer renderer(presentation.package());
  for (int slide = 1; slide <= presentation.slideCount(); ++slide) {
    render::SlidePage page = renderer.slide(slide);
    drawn.slides.push_back(std::move(page.html));
    EXPECT_THAT(renderer.scene(slide), testing::StartsWith("slide " + std::to_string(slide) + " "));
    drawn.complaints += page.problems.size();
  }
  return drawn;
}

const std::vector<std::pair<const char*, std::string (*)(const std::string&)>> Damages{
    {"empty", [](const std::string&) { return std::string(); }},
    {"cut short", [](const std::string& whole) { return whole.substr(0, whole.size() / 2); }},
    {"garbage", [](const std::string& whole) { return std::string(whole.size(), '\x07'); }},
    {"other XML", [](const std::string&) { return std::string("<other/>"); }},
};

class DamageTest : public testing::TestWithParam<const char*> {
 protected:
  /// Nothing hangs on what the whole package hangs on but a sentence.
  static bool mayBeRefused(const std::string& part) {
    return part == "[Content_Types].xml" || part == "_rels/.rels" ||
           part.starts_with("ppt/presentation.xml") || part.starts_with("ppt/_rels/presentation.xml");
  }

  void expectDrawn(const std::vector<ZipEntry>& damaged, const std::string& part) {
    try {
      const Drawn drawn = draw(damaged);
      ASSERT_EQ(drawn.slides.size(), whole_.slides.size());
      for (std::size_t i = 0; i < drawn.slides.size(); ++i) {
        const std::string slide = "slide" + std::to_string(i + 1) + ".xml";
        EXPECT_THAT(drawn.slides[i], HasSubstr("id=\"s" + std::to_string(i + 1) + "\""));
        const bool isAnotherSlide = part.find("ppt/slides/") == 0 && part.find(slide) == std::string::npos;
        if (isAnotherSlide) {
          EXPECT_EQ(drawn.slides[i], whole_.slides[i]);
        }
      }
      const bool isSlide = part.starts_with("ppt/slides/slide");
      if (isSlide) {
        EXPECT_GT(drawn.complaints, whole_.complaints);
      }
    } catch (const basic::Error& error) {
      EXPECT_TRUE(mayBeRefused(part)) << error.description;
    }
  }

  std::vector<ZipEntry> entries_ = entriesOf(GetParam());
  Drawn whole_ = draw(entries_);
};

TEST_P(DamageTest, WhatIsLeftIsDrawn) {
  for (std::size_t i = 0; i < entries_.size(); ++i) {
    for (const auto& [kind, damage] : Damages) {
      SCOPED_TRACE(entries_[i].name + ": " + kind);
      std::vector<ZipEntry> damaged = entries_;
      damaged[i].content = damage(entries_[i].content);
      expectDrawn(damaged, entries_[i].name);
    }
    SCOPED_TRACE(entries_[i].name + ": missing");
    std::vector<ZipEntry> damaged = entries_;
    damaged.erase(damaged.begin() + static_cast<std::ptrdiff_t>(i));
    expectDrawn(damaged, entries_[i].name);
  }
}

TEST_P(DamageTest, EachRelationshipMayBeGone) {
  for (std::size_t i = 0; i < entries_.size(); ++i) {
    if (!entries_[i].name.ends_with(".rels")) continue;
    const std::string& whole = entries_[i].content;
    for (std::size_t at = whole.find("<Relationship "); at != std::string::npos;
         at = whole.find("<Relationship ", at + 1)) {
      const std::string gone = whole.substr(at, whole.find('>', at) + 1 - at);
      SCOPED_TRACE(entries_[i].name + ": " + gone);
      std::vector<ZipEntry> damaged = entries_;
      damaged[i].content.erase(at, gone.size());
      expectDrawn(damaged, entries_[i].name.starts_with("ppt/slides/") ? "" : entries_[i].name);
    }
  }
}

INSTANTIATE_TEST_SUITE_P(Samples, DamageTest, testing::Values("plant", "shop"),
                         [](const auto& sample) { return std::string(sample.param); });

}  // namespace
