// Slides that come, go and change places, and what else names them.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "deck/objects/SlideShowSettings.h"
#include "support/ChartDeck.h"
#include "support/DeckBuilder.h"
#include "support/ErrorOf.h"
#include "support/PackageCheck.h"
#include "support/RecordedChanges.h"
#include "support/TemporaryFolder.h"

namespace deck::test {
namespace {

using support::DeckBuilder;
using support::errorOf;
using support::faultsOf;
using support::TemporaryFolder;
using support::textShape;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

constexpr const char* Relationships = "http://schemas.openxmlformats.org/officeDocument/2006/relationships/";

std::string section(const std::string& name, const std::string& ids) {
  return "<p14:section name=\"" + name + "\" id=\"{1}\"><p14:sldIdLst>" + ids +
         "</p14:sldIdLst></p14:section>";
}

struct ChangingSlidesTest : testing::Test {
  TemporaryFolder folder;
  std::shared_ptr<Application> application = std::make_shared<Application>();

  /// Three slides in two sections and a custom show; the first has notes, a chart and tags, the second leads
  /// to the first.
  std::shared_ptr<Presentation> threeSlides() {
    DeckBuilder builder = support::ChartDeck().build();
    builder.relate(1, "notesSlide", "../notesSlides/notesSlide1.xml");
    builder.part("ppt/notesSlides/notesSlide1.xml",
                 "<p:notes xmlns:p=\"http://schemas.openxmlformats.org/presentationml/2006/main\"/>",
                 "application/vnd.openxmlformats-officedocument.presentationml.notesSlide+xml");
    builder.part("ppt/notesSlides/_rels/notesSlide1.xml.rels",
                 std::string("<Relationships xmlns=\"http://schemas.openxmlformats.org/package/2006/"
                             "relationships\"><Relationship Id=\"rId1\" Type=\"") +
                     Relationships + "slide\" Target=\"../slides/slide1.xml\"/></Relationships>");
    builder.afterShapes(1,
                        support::tagsReference(builder.relate(1, "tags", builder.addTags({{"MINE", "1"}}))));
    const int second = builder.addSlide();
    const std::string jump = builder.relate(second, "slide", "slide1.xml");
    builder.shapes(second, textShape(2, "Second", "two") +
                               "<p:sp><p:nvSpPr><p:cNvPr id=\"3\" name=\"Jump\"><a:hlinkClick r:id=\"" +
                               jump +
                               "\" action=\"ppaction://hlinksldjump\"/></p:cNvPr><p:cNvSpPr/><p:nvPr/>"
                               "</p:nvSpPr><p:spPr/></p:sp>");
    builder.addSlide(textShape(2, "Third", "three"));
    builder.customShow(0, {1, 3, 1});
    builder.presentationExtra(
        "<p:extLst><p:ext uri=\"{521415D9-36F7-43E2-AB2F-B90AF26B5E84}\"><p14:sectionLst "
        "xmlns:p14=\"http://schemas.microsoft.com/office/powerpoint/2010/main\">" +
        section("A", "<p14:sldId id=\"256\"/><p14:sldId id=\"257\"/>") +
        section("B", "<p14:sldId id=\"258\"/>") + "</p14:sectionLst></p:ext></p:extLst>");
    static_cast<void>(folder.write("deck.pptx", builder.bytes()));
    return application->open((folder.path() / "deck.pptx").string());
  }
  [[nodiscard]] std::string saved(Presentation& deck) const {
    deck.SaveCopyAs((folder.path() / "copy.pptx").string());
    return folder.read("copy.pptx");
  }
  /// The first shape of each slide, in the order of the slides.
  static std::vector<std::string> names(Presentation& deck) {
    std::vector<std::string> names;
    for (int i = 1; i <= deck.slideCount(); ++i)
      names.push_back(deck.Slides()->Item(i)->Shapes()->Item(1)->Name());
    return names;
  }
  static std::vector<std::int32_t> customShow(Presentation& deck) {
    return deck.SlideShowSettings()->NamedSlideShows()->Item(1)->SlideIDs();
  }
  /// The ids of the slides, a bar between sections.
  static std::string sections(Presentation& deck) {
    const auto list =
        deck.part().xml().document_element().child("p:extLst").child("p:ext").child("p14:sectionLst");
    std::string text;
    for (const pugi::xml_node each : list.children("p14:section")) {
      text += text.empty() ? "" : "|";
      for (const pugi::xml_node slide : each.child("p14:sldIdLst"))
        text += slide.attribute("id").value() + std::string(" ");
    }
    return text;
  }
};

TEST_F(ChangingSlidesTest, ADuplicateHasWhatBelongsToTheSlideForItself) {
  const auto deck = threeSlides();
  const auto copy = deck->Slides()->Item(1)->Duplicate();
  EXPECT_EQ(copy->SlideIndex(), 2);
  EXPECT_EQ(copy->SlideID(), 259);
  EXPECT_EQ(copy->Tags()->Value(1), "1");
  EXPECT_THAT(names(*deck), ElementsAre("Chart", "Chart", "Second", "Third"));
  EXPECT_EQ(sections(*deck), "256 259 257 |258 ");
  EXPECT_THAT(customShow(*deck), ElementsAre(256, 258, 256));

  MSGraph::Table table(2, 2);
  table.cell(0, 1, std::string("North"));
  table.cell(1, 0, std::string("Jan"));
  table.cell(1, 1, 7.0);
  copy->Shapes()->Item(1)->OLEFormat()->Object()->Application()->DataSheet()->Cells(table);
  copy->Tags()->Add("MINE", "2");
  EXPECT_EQ(deck->Slides()->Item(1)->Tags()->Value(1), "1");
  const std::string bytes = saved(*deck);
  EXPECT_THAT(faultsOf(bytes), IsEmpty());
  const auto package = opc::Package::fromBytes(bytes, "copy");
  const auto seriesOf = [&](const char* part) {
    return support::seriesIn(std::string(package->part(part).bytes()));
  };
  EXPECT_THAT(seriesOf("ppt/charts/chart1.xml"), HasSubstr("Jan 1"));
  EXPECT_THAT(seriesOf("ppt/charts/chart2.xml"), HasSubstr("Jan 7"));
  opc::Part& notes = package->part("ppt/notesSlides/notesSlide2.xml");
  EXPECT_EQ(notes.related("slide"), &package->part("ppt/slides/slide4.xml"));
  EXPECT_EQ(package->part("ppt/slides/slide4.xml").related("notesSlide"), &notes);
}

TEST_F(ChangingSlidesTest, ACustomShowMayHaveRelationshipsOfItsOwn) {
  const auto deck = threeSlides();
  const std::string own =
      deck->package().addRelationship(deck->part(), Relationships + std::string("slide"), deck->slidePart(2));
  pugi::xml_node show = deck->part().xml().document_element().child("p:custShowLst").child("p:custShow");
  show.child("p:sldLst").append_child("p:sld").append_attribute("r:id") = own.c_str();
  EXPECT_THAT(customShow(*deck), ElementsAre(256, 258, 256, 257));
  deck->Slides()->Item(2)->Delete();
  EXPECT_THAT(customShow(*deck), ElementsAre(256, 258, 256));
}

TEST_F(ChangingSlidesTest, ADeletedSlideLeavesNothingBehind) {
  const auto deck = threeSlides();
  deck->Slides()->Item(1)->Tags()->Add("MINE", "changed");
  deck->Slides()->Item(1)->Delete();
  EXPECT_THAT(names(*deck), ElementsAre("Second", "Third"));
  EXPECT_THAT(customShow(*deck), ElementsAre(258));
  EXPECT_EQ(sections(*deck), "257 |258 ");
  const std::string bytes = saved(*deck);
  EXPECT_THAT(faultsOf(bytes), IsEmpty());
  const auto package = opc::Package::fromBytes(bytes, "copy");
  for (const opc::Part* part : package->parts()) {
    EXPECT_THAT(part->name(), testing::Not(testing::ContainsRegex("slide1[.]|notes|chart|tags|book")));
  }
  EXPECT_EQ(package->part("ppt/slides/slide2.xml").bytes().find("hlinkClick"), std::string_view::npos);

  // What a copy uses as well stays.
  deck->Slides()->Item(1)->Duplicate();
  deck->Slides()->Item(1)->Delete();
  deck->Slides()->Item(2)->Delete();
  EXPECT_THAT(names(*deck), ElementsAre("Second"));
  EXPECT_THAT(faultsOf(saved(*deck)), IsEmpty());
}

TEST_F(ChangingSlidesTest, AMovedSlideTakesItsSectionFromTheOneBeforeIt) {
  const auto deck = threeSlides();
  deck->Slides()->Item(1)->MoveTo(3);
  EXPECT_THAT(names(*deck), ElementsAre("Second", "Third", "Chart"));
  EXPECT_EQ(sections(*deck), "257 |258 256 ");
  deck->Slides()->Item(2)->MoveTo(1);
  EXPECT_THAT(names(*deck), ElementsAre("Third", "Second", "Chart"));
  EXPECT_EQ(sections(*deck), "258 257 |256 ");
  EXPECT_THAT(faultsOf(saved(*deck)), IsEmpty());
  EXPECT_THAT(errorOf([&] { deck->Slides()->Item(1)->MoveTo(4); }), HasSubstr("no slide 4"));
}

TEST_F(ChangingSlidesTest, WhoeverWatchesAPresentationKeepsItsSlides) {
  const auto deck = threeSlides();
  support::RecordedChanges changes;
  deck->addListener(changes);
  const auto slide = deck->Slides()->Item(1);
  for (const std::function<void()>& change : {std::function<void()>([&] { slide->Duplicate(); }),
                                              {[&] { slide->Delete(); }},
                                              {[&] { slide->MoveTo(2); }}}) {
    EXPECT_THAT(errorOf(change), HasSubstr("while it is shown or edited"));
  }
  EXPECT_THAT(names(*deck), ElementsAre("Chart", "Second", "Third"));
  deck->removeListener(changes);
}

TEST_F(ChangingSlidesTest, ShowsTakeOtherSlides) {
  DeckBuilder builder;
  for (int i = 0; i < 4; ++i) builder.addSlide();
  builder.presentationProperties("<p:showPr><p:present/><p:sldRg st=\"2\" end=\"3\"/></p:showPr>");
  builder.customShow(0, {1, 2});
  const auto deck = builder.presentation();
  const auto settings = deck->SlideShowSettings();
  EXPECT_EQ(settings->StartingSlide(), 2);
  settings->EndingSlide(4);
  EXPECT_THAT(SlideShowSettings(*deck).slides(), ElementsAre(2, 3, 4));
  const auto show = settings->NamedSlideShows()->Item(1);
  show->SlideIDs({259, 256, 259});
  EXPECT_THAT(show->SlideIDs(), ElementsAre(259, 256, 259));
  EXPECT_THAT(errorOf([&] { show->SlideIDs({255}); }), HasSubstr("255"));
  EXPECT_THAT(show->SlideIDs(), ElementsAre(259, 256, 259));
  settings->RangeType(PowerPoint::SlideShowRangeType::ShowAll);
  EXPECT_THAT(SlideShowSettings(*deck).slides(), ElementsAre(1, 2, 3, 4));
  EXPECT_THAT(faultsOf(deck->package().serialize()), IsEmpty());
}

TEST_F(ChangingSlidesTest, TransitionsAreReadAndWrittenWhereverTheyStand) {
  DeckBuilder builder = DeckBuilder::of();
  const int plain = builder.addSlide();
  builder.afterCommonData(
      plain, "<p:transition spd=\"slow\" advClick=\"0\" advTm=\"4000\"><p:push/></p:transition>");
  const int newer = builder.addSlide();
  builder.afterCommonData(
      newer, support::alternative("<p:transition p14:dur=\"9\" advTm=\"500\"><p14:reveal/></p:transition>",
                                  "<p:transition><p:fade/></p:transition>") +
                 "<p:timing/>");
  const auto deck = builder.presentation();
  const auto xmlOf = [&](int slide) { return std::string(deck->slidePart(slide).bytes()); };
  for (int slide = 1; slide <= 3; ++slide) {
    const auto transition = deck->Slides()->Item(slide)->SlideShowTransition();
    EXPECT_EQ(transition->AdvanceOnTime(), slide > 1);
    EXPECT_DOUBLE_EQ(transition->AdvanceTime(), slide == 1 ? 0 : slide == 2 ? 4 : 0.5);
    transition->AdvanceOnTime(true);
    transition->AdvanceTime(2.5);
    EXPECT_DOUBLE_EQ(deck->Slides()->Item(slide)->SlideShowTransition()->AdvanceTime(), 2.5);
  }
  EXPECT_THAT(xmlOf(2), HasSubstr("<p:push/>"));
  EXPECT_THAT(xmlOf(3), testing::ContainsRegex("advTm=\"2500\".*reveal.*advTm=\"2500\".*fade"));
  for (int slide = 2; slide <= 3; ++slide) {
    const auto item = deck->Slides()->Item(slide);
    item->SlideShowTransition()->EntryEffect(PowerPoint::EntryEffect::None);
    item->TimeLine()->Delete();
    EXPECT_DOUBLE_EQ(item->SlideShowTransition()->AdvanceTime(), 2.5);
    EXPECT_THAT(xmlOf(slide),
                testing::Not(testing::ContainsRegex("push|reveal|fade|AlternateContent|timing|spd")));
  }
  EXPECT_THAT(xmlOf(2), HasSubstr("advClick=\"0\""));
  const auto transition = deck->Slides()->Item(1)->SlideShowTransition();
  transition->AdvanceOnTime(false);
  EXPECT_FALSE(transition->AdvanceOnTime());
  EXPECT_EQ(xmlOf(1).find("advTm"), std::string::npos);
}

}  // namespace
}  // namespace deck::test
