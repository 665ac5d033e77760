// Presentations, what stands on their slides, and the bars, where the adapters do more than hand on.

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "windows/automation/CommandBars.h"
#include "windows/automation/Presentation.h"
#include "windows/automation/Shapes.h"
#include "windows/automation/Slides.h"
#include "windows/automation/Table.h"
#include "windows/com/Object.h"
#include "windows/support/ScriptedObject.h"

namespace windows::automation {
namespace {

using com::Variant;
using support::anyClass;
using support::handedOut;
using support::ScriptedObject;

/// A property that keeps what is put into it.
ScriptedObject::Member kept(std::string& value) {
  return [&value](const ScriptedObject::Arguments& a) {
    if (!a.empty()) value = a[0].text();
    return Variant(value);
  };
}

TEST(KnownPresentations, OneObjectForEachPresentation) {
  KnownPresentations known;
  const auto first = ScriptedObject::make({});
  const auto second = ScriptedObject::make({});
  const auto presentation = known.of(first);
  EXPECT_EQ(known.of(first), presentation);
  EXPECT_NE(known.of(second), presentation);
}

TEST(LinkFormat, ShowsFilesForAWhile) {
  std::string source = "C:\\author.png";
  int updates = 0;
  const auto link =
      ScriptedObject::make({{L"SourceFullName", kept(source)}, {L"Update", [&] { ++updates; }}});
  const auto own = std::make_shared<AuthorsOwn>();
  Shape shape({ScriptedObject::make({{L"Id", 5}, {L"LinkFormat", link}}), anyClass}, {own, 256});
  shape.LinkFormat()->SourceFullName("C:\\live1.png");
  shape.LinkFormat()->SourceFullName("C:\\live2.png");
  EXPECT_EQ(source, "C:\\live2.png");
  shape.LinkFormat()->SourceFullName("");
  EXPECT_EQ(source, "C:\\author.png");
  source = "C:\\changed by the author.png";
  shape.LinkFormat()->SourceFullName("");
  EXPECT_EQ(source, "C:\\changed by the author.png") << "its own is shown already";
}

TEST(LinkFormat, CoversAnEmbeddedPictureForAWhile) {
  std::string source;
  std::string visible = "-1";
  std::vector<std::string> steps;
  bool isDeleted = false;
  const auto step = [&steps](std::string text) {
    return [&steps, text] {
      steps.push_back(text);
      return Variant(0.0);
    };
  };
  const auto link = ScriptedObject::make({{L"SourceFullName", kept(source)}, {L"Update", step("update")}});
  auto* cover = new ScriptedObject({{L"ZOrderPosition", 7},
                                    {L"ZOrder", step("backward")},
                                    {L"Rotation", step("rotated")},
                                    {L"LinkFormat", link},
                                    {L"Delete", [&] { isDeleted = true; }}});
  const auto held = com::Ptr<IDispatch>::taking(cover);
  const auto shapes = ScriptedObject::make({{L"AddPicture", [&](const auto& a) {
                                               steps.push_back("added " + a.at(0).text() + " at " +
                                                               a.at(3).text() + " " + a.at(4).text());
                                               return held;
                                             }}});
  const auto slide = ScriptedObject::make({{L"Shapes", shapes}});
  const auto own = std::make_shared<AuthorsOwn>();
  Shape shape({ScriptedObject::make({{L"Id", 5.0},
                                     {L"Type", 13.0},
                                     {L"Parent", slide},
                                     {L"Left", 10.0},
                                     {L"Top", 20.0},
                                     {L"Width", 30.0},
                                     {L"Height", 40.0},
                                     {L"Rotation", 0.0},
                                     {L"ZOrderPosition", 4.0},
                                     {L"Visible", kept(visible)}}),
               anyClass},
              {own, 256});
  const auto show = [&shape](std::string_view path) {
    const auto format = shape.LinkFormat();
    format->SourceFullName(path);
    format->Update();
  };
  show("");
  EXPECT_TRUE(steps.empty()) << "its own is shown already";
  show("C:\\live1.png");
  EXPECT_EQ(steps,
            (std::vector<std::string>{"added C:\\live1.png at 10 20", "backward", "backward", "rotated"}));
  EXPECT_EQ(visible, "0");
  steps.clear();
  show("C:\\live2.png");
  EXPECT_EQ(shape.LinkFormat()->SourceFullName(), "C:\\live2.png");
  EXPECT_EQ(steps, std::vector<std::string>{"update"}) << "the same one goes on";
  show("");
  EXPECT_TRUE(isDeleted);
  EXPECT_EQ(visible, "-1");
  EXPECT_EQ(shape.LinkFormat()->SourceFullName(), "");
}

TEST(Table, PutsTheAuthorsTextsBackAndSparesMergedPlaces) {
  std::string text = "author";
  std::vector<std::pair<int, int>> written;
  const auto cell = [&](int row, int column) {
    const auto range = ScriptedObject::make({{L"Text", [&, row, column](const auto& a) {
                                                if (!a.empty()) {
                                                  text = a[0].text();
                                                  written.emplace_back(row, column);
                                                }
                                                return Variant(text);
                                              }}});
    const auto frame = ScriptedObject::make({{L"TextRange", range}});
    const bool isMerged = row == 1;  // the two cells of the first row
    const auto shape = ScriptedObject::make(
        {{L"Left", isMerged ? 0.0 : 50.0 * column}, {L"Top", 20.0 * row}, {L"TextFrame", frame}});
    return ScriptedObject::make({{L"Merged", isMerged}, {L"Shape", shape}});
  };
  const auto own = std::make_shared<AuthorsOwn>();
  Table table({ScriptedObject::make(
                   {{L"Cell", [&](const auto& a) { return cell(a.at(0).number(), a.at(1).number()); }}}),
               anyClass},
              own, {256, 4});
  EXPECT_FALSE(table.IsCovered(1, 1));
  EXPECT_TRUE(table.IsCovered(1, 2));
  EXPECT_FALSE(table.IsCovered(2, 2));
  EXPECT_TRUE(table.FirstRow()) << "of versions that do not tell";
  EXPECT_FALSE(table.LastRow());
  table.Text(1, 2, "nobody sees it");
  EXPECT_TRUE(written.empty());
  table.Text(2, 1, "live");
  table.Text(2, 1, "later");
  EXPECT_EQ(text, "later");
  table.Restore();
  EXPECT_EQ(text, "author");
  written.clear();
  table.Restore();
  EXPECT_TRUE(written.empty());
}

TEST(TimeLine, KeepsEffectsAmongFilms) {
  for (const bool hasFilm : {false, true}) {
    std::vector<int> effects = {1, hasFilm ? 83 : 10};
    const auto sequence = ScriptedObject::make(
        {{L"Count", [&] { return static_cast<int>(effects.size()); }},
         {L"Item", [&](const auto& a) {
            const int index = a.at(0).number();
            return ScriptedObject::make(
                {{L"EffectType", [&, index] { return effects.at(static_cast<std::size_t>(index) - 1); }},
                 {L"Delete", [&, index] { effects.erase(effects.begin() + (index - 1)); }}});
          }}});
    const auto none = ScriptedObject::make({{L"Count", 0}});
    const auto timeLine =
        ScriptedObject::make({{L"MainSequence", sequence}, {L"InteractiveSequences", none}});
    Slide slide({ScriptedObject::make({{L"TimeLine", timeLine}}), anyClass}, nullptr);
    slide.TimeLine()->Delete();
    EXPECT_EQ(effects.size(), hasFilm ? 2U : 0U);
  }
}

TEST(CommandBars, AClickIsThatOfOneButton) {
  constexpr IID ButtonEvents = {0x000C0351, 0x0000, 0x0000, {0xC0, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x46}};
  const auto button = [&](int id) { return new ScriptedObject({{L"InstanceId", id}, {L"Type", 1}}); };
  auto* first = button(1);
  auto& events = first->withEvents(ButtonEvents);
  const auto held = com::Ptr<IDispatch>::taking(first);
  const auto second = com::Ptr<IDispatch>::taking(button(2));
  const auto controls = ScriptedObject::make({{L"Item", held}});
  const auto bar = ScriptedObject::make({{L"Controls", controls}});
  const auto bars = commandBars(ScriptedObject::make({{L"Item", bar}}));
  const auto control =
      std::dynamic_pointer_cast<Office::CommandBarButton>(bars->Item("Menu Bar")->Controls()->Item(1));
  ASSERT_NE(control, nullptr);
  int clicks = 0;
  control->OnClick([&clicks] { ++clicks; });
  const auto click = [&](const com::Ptr<IDispatch>& clicked) {
    std::vector<Variant> arguments;
    arguments.push_back(handedOut(clicked));
    arguments.emplace_back(false);
    events.raise(1, std::move(arguments));
  };
  click(held);
  EXPECT_EQ(clicks, 1);
  click(second);
  EXPECT_EQ(clicks, 1) << "another button of the same tag";
  control->OnClick({});
  EXPECT_EQ(events.sinks(), 0U);
  EXPECT_EQ(commandBars({}), nullptr);
}

}  // namespace
}  // namespace windows::automation
