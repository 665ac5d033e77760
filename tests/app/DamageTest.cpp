// Every part of sample decks is damaged in turn, in every way: the show runs, what is left is drawn, and
// nothing else changes.

#include <gmock/gmock.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <set>
#include <sstream>

#include "app/ShowTest.h"
#include "app/show/Stage.h"
#include "basic/Error.h"
#include "fakes/FakeDatabase.h"
#include "render/html/SlideRenderer.h"
#include "support/TemporaryFolder.h"
#include "support/ZipFile.h"
#include "workbook/sheet/Factory.h"

namespace app::test {
namespace {

using support::ZipEntry;
using testing::HasSubstr;

struct Shown {
  std::vector<std::string> slides;
  std::set<std::string> complaints;
};

std::vector<ZipEntry> entriesOf(const std::filesystem::path& deck) {
  const auto package = opc::Package::open(deck.string());
  std::vector<ZipEntry> entries;
  for (opc::Part* part : package->parts()) {
    entries.push_back({part->name(), std::string(part->bytes()), /*deflated=*/false});
  }
  return entries;
}

const std::vector<std::pair<const char*, std::string (*)(const std::string&)>> Damages{
    {"empty", [](const std::string&) { return std::string(); }},
    {"cut short", [](const std::string& whole) { return whole.substr(0, whole.size() / 2); }},
    {"garbage", [](const std::string& whole) { return std::string(whole.size(), '\x07'); }},
    {"other XML", [](const std::string&) { return std::string("<other/>"); }},
};

class DamageTest : public testing::TestWithParam<const char*> {
 protected:
  DamageTest() {
    const std::string param = GetParam();
    const std::string name = param.substr(0, param.find('_'));
    const std::filesystem::path sample = std::filesystem::path(SAMPLES_FOLDER) / name;
    std::filesystem::copy(sample, folder_.path(), std::filesystem::copy_options::recursive);
    for (const auto& file : std::filesystem::recursive_directory_iterator(folder_.path())) {
      machine_.files.Write(file.path().string(), {});
    }
    machine_.UseExcel(&excel_);
    machine_.UseAdo(&database_);
    // Enough for a chart, whatever the deck asks for.
    database_.rows = {{"First", "3"}, {"Second", "5"}};
    const std::filesystem::path deck = sample / (name + ".pptx");
    entries_ = entriesOf(name == param ? deck : writtenAnew(deck));
    whole_ = show(entries_);
  }

  /// The deck as LibreOffice writes it: other parts, other names, no links.
  [[nodiscard]] std::filesystem::path writtenAnew(const std::filesystem::path& deck) const {
    const std::filesystem::path folder = folder_.path() / "anew";
    const std::string line = "soffice -env:UserInstallation=file://" + folder.string() +
                             "/profile --headless --convert-to pptx --outdir " + folder.string() + " " +
                             deck.string();
    EXPECT_EQ(std::system((line + " >/dev/null").c_str()), 0) << line;
    return folder / deck.filename();
  }

  /// As screens see it, slide by slide. Throws when the deck is refused.
  Shown show(const std::vector<ZipEntry>& entries) {
    const std::string path = folder_.write("deck.pptx", support::zipOf(entries));
    const std::string log = "/addin/errors.txt";
    machine_.files.files[log].content.clear();
    AddInHost host;
    Stage stage(host, loop_, host.open(path, deck::Application::Damaged::Repaired), {});
    stage.begin(std::nullopt, [] {});
    render::SlideRenderer renderer(stage.deck()->package());
    Shown shown;
    for (int slide = 1; slide <= stage.deck()->slideCount(); ++slide) {
      EXPECT_TRUE(stage.goTo(slide).isDone());
      shown.slides.push_back(stage.state({}).current.value().html);
      EXPECT_THAT(renderer.scene(slide), testing::StartsWith("slide " + std::to_string(slide) + " "));
    }
    EXPECT_TRUE(stage.end().isDone());
    std::istringstream lines(machine_.files.files[log].content);
    for (std::string line; std::getline(lines, line);) shown.complaints.insert(line);
    return shown;
  }

  /// Nothing hangs on what the whole package hangs on but a sentence.
  static bool mayBeRefused(const std::string& part) {
    return part == "[Content_Types].xml" || part == "_rels/.rels" ||
           part.starts_with("ppt/presentation.xml") || part.starts_with("ppt/_rels/presentation.xml");
  }

  void expectShown(const std::vector<ZipEntry>& damaged, const std::string& part) {
    try {
      const Shown shown = show(damaged);
      ASSERT_EQ(shown.slides.size(), whole_.slides.size());
      for (std::size_t i = 0; i < shown.slides.size(); ++i) {
        const std::string slide = "slide" + std::to_string(i + 1) + ".xml";
        EXPECT_THAT(shown.slides[i], HasSubstr("id=\"s" + std::to_string(i + 1) + "\""));
        const bool isAnotherSlide = part.find("ppt/slides/") == 0 && part.find(slide) == std::string::npos;
        if (isAnotherSlide) {
          EXPECT_TRUE(shown.slides[i] == whole_.slides[i]) << "slide " << i + 1 << " is another";
        }
      }
      const bool isSlide = part.starts_with("ppt/slides/slide");
      if (isSlide) {
        EXPECT_FALSE(std::includes(whole_.complaints.begin(), whole_.complaints.end(),
                                   shown.complaints.begin(), shown.complaints.end()));
      }
    } catch (const basic::Error& error) {
      EXPECT_TRUE(mayBeRefused(part)) << error.description;
    }
  }

  fakes::Machine machine_;
  platform::EventLoop loop_;
  workbook::Factory excel_{loop_, [](std::string_view path) { return std::string(path); }};
  fakes::Database database_;
  support::TemporaryFolder folder_;
  std::vector<ZipEntry> entries_;
  Shown whole_;
};

TEST_P(DamageTest, WhatIsLeftIsShown) {
  for (std::size_t i = 0; i < entries_.size(); ++i) {
    for (const auto& [kind, damage] : Damages) {
      SCOPED_TRACE(entries_[i].name + ": " + kind);
      std::vector<ZipEntry> damaged = entries_;
      damaged[i].content = damage(entries_[i].content);
      expectShown(damaged, entries_[i].name);
    }
    SCOPED_TRACE(entries_[i].name + ": missing");
    std::vector<ZipEntry> damaged = entries_;
    damaged.erase(damaged.begin() + static_cast<std::ptrdiff_t>(i));
    expectShown(damaged, entries_[i].name);
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
      expectShown(damaged, entries_[i].name.starts_with("ppt/slides/") ? "" : entries_[i].name);
    }
  }
}

INSTANTIATE_TEST_SUITE_P(Samples, DamageTest, testing::Values("plant", "shop", "plant_writtenAnew"),
                         [](const auto& sample) { return std::string(sample.param); });

}  // namespace
}  // namespace app::test
