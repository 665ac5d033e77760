#include "render/conversion/PictureConverter.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>
#include <sstream>

namespace render {
namespace {

namespace fs = std::filesystem;
using State = PictureConversion::State;
using testing::HasSubstr;
using testing::Not;

/// Two programs that stand in for the real ones: "office" notes that it ran and
/// fails when a picture is "bad" (YmFk in base64) and never ends for "slow" (c2xvdw).
class PictureConverterTest : public testing::Test {
 protected:
  PictureConverterTest() {
    options_.office = script(
        "office", "for last; do :; done\necho run >> " + (folder_.path() / "runs").string() +
                      "\n"
                      "grep -q YmFk \"$last\" && exit 1\n"
                      "grep -q c2xvdw \"$last\" && sleep 60\n"
                      "d=$(dirname \"$last\")/out; mkdir -p \"$d\"; cp \"$last\" \"$d/pictures.pdf\"\n");
    options_.outliner =
        script("outliner",
               "printf '<svg width=\"1pt\" height=\"1pt\" viewBox=\"0 0 1 1\"><defs/><g id=\"surface1\">"
               "<path style=\"fill:rgb(100%%,100%%,100%%)\" d=\"M 0 0\"/><path id=\"page%s\"/></g>"
               "</svg>\\n' $3 > \"$7\"\n");
    options_.cache = folder_.path() / "cache";
  }

  std::string script(const std::string& name, const std::string& lines) {
    const auto path = folder_.path() / name;
    std::ofstream(path) << "#!/bin/sh\n" << lines;
    fs::permissions(path, fs::perms::owner_all);
    return path.string();
  }
  [[nodiscard]] std::size_t runs() const {
    std::ifstream file(folder_.path() / "runs");
    return static_cast<std::size_t>(std::count(std::istreambuf_iterator<char>(file), {}, '\n'));
  }

  process::TemporaryFolder folder_;
  PictureConverter::Options options_;
};

TEST_F(PictureConverterTest, WhatIsAskedForAtOnceIsConvertedAtOnceAndKept) {
  PictureConverter converter(options_);
  const auto& first = converter.convert("1", "one", 200, 100);
  const auto& second = converter.convert("2", "two", 0, 0);
  EXPECT_EQ(first.state, State::Pending);
  EXPECT_EQ(runs(), 0U);
  converter.finish();
  ASSERT_EQ(first.state, State::Done);
  ASSERT_EQ(second.state, State::Done);
  EXPECT_EQ(runs(), 1U);
  EXPECT_THAT(*first.svg,
              HasSubstr("width=\"200\" height=\"100\" preserveAspectRatio=\"none\" viewBox=\"0 0 720 360\""));
  EXPECT_THAT(*first.svg, HasSubstr("page1"));
  EXPECT_THAT(*second.svg, HasSubstr("page2"));
  EXPECT_THAT(*first.svg, Not(HasSubstr("rgb(100%"))) << "paper lies behind the picture";

  PictureConverter later(options_);
  EXPECT_EQ(later.convert("1", "one", 200, 100).state, State::Done);
  EXPECT_EQ(*later.convert("1", "one", 200, 100).svg, *first.svg);
  EXPECT_FALSE(later.isBusy());
}

TEST_F(PictureConverterTest, APictureThatBreaksTheConverterCostsNoOther) {
  options_.timeout = std::chrono::seconds(5);
  PictureConverter converter(options_);
  const auto& bad = converter.convert("1", "bad", 1, 1);
  const auto& good = converter.convert("2", "good", 1, 1);
  const auto& slow = converter.convert("3", "slow", 1, 1);
  converter.finish();
  EXPECT_EQ(good.state, State::Done);
  EXPECT_EQ(bad.state, State::Failed);
  EXPECT_EQ(bad.problem, "LibreOffice cannot read it");
  EXPECT_EQ(slow.state, State::Failed);
  EXPECT_EQ(slow.problem, "its conversion took too long");
}

TEST_F(PictureConverterTest, WithoutTheProgramsItSaysWhatToInstall) {
  options_.outliner = "/nonexistent/pdftocairo";
  PictureConverter converter(options_);
  const auto& one = converter.convert("1", "one", 1, 1);
  converter.finish();
  EXPECT_EQ(one.problem, "pdftocairo is not installed (apt install poppler-utils)");

  options_.office = "/nonexistent/soffice";
  PictureConverter bare(options_);
  const auto& two = bare.convert("2", "two", 1, 1);
  bare.finish();
  EXPECT_THAT(two.problem, HasSubstr("not installed (apt install libreoffice-draw)"));
}

/// A metafile of one green rectangle.
std::string metafile() {
  std::string bytes("\xD7\xCD\xC6\x9A\0\0\0\0\0\0\xA0\5\xD0\2\xA0\5\0\0\0\0\xB1\x52", 22);
  const auto record = [&](int function, std::initializer_list<int> values) {
    const auto word = [&](int value) {
      bytes += static_cast<char>(value & 0xFF);
      bytes += static_cast<char>(value >> 8 & 0xFF);
    };
    word(static_cast<int>(values.size()) + 3);
    word(0);
    word(function);
    for (const int value : values) word(value);
  };
  bytes += std::string("\1\0\x09\0\0\3\x2B\0\0\0\1\0\7\0\0\0\0\0", 18);
  record(0x020B, {0, 0});
  record(0x020C, {720, 1440});
  record(0x02FC, {0, 0xFF00, 0, 0});
  record(0x012D, {0});
  record(0x041B, {600, 1200, 100, 200});
  record(0, {});
  return bytes;
}

TEST_F(PictureConverterTest, LibreOfficeDrawsAMetafile) {
  // Which ends without fonts, and the other tests have none.
  options_.office = script("office", "unset FONTCONFIG_FILE; exec soffice \"$@\"\n");
  options_.outliner = "pdftocairo";
  PictureConverter converter(options_);
  const auto& picture = converter.convert("1", metafile(), 96, 48);
  const auto& garbage = converter.convert("2", "no picture at all", 96, 48);
  converter.finish();
  ASSERT_EQ(picture.state, State::Done) << picture.problem;
  EXPECT_THAT(*picture.svg, HasSubstr("fill:rgb(0%,100%,0%)"));
  EXPECT_NE(garbage.state, State::Pending);
}

}  // namespace
}  // namespace render
