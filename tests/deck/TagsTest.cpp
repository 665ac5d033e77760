#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/DeckBuilder.h"
#include "support/ErrorOf.h"
#include "support/PackageCheck.h"

namespace deck::test {
namespace {

using support::DeckBuilder;
using support::errorOf;
using support::faultsOf;
using support::storedEntries;
using support::tagsReference;
using support::textShape;
using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::Pair;

using NamedValues = std::vector<std::pair<std::string, std::string>>;

NamedValues valuesOf(PowerPoint::Tags& tags) {
  NamedValues values;
  for (std::int32_t i = 1; i <= tags.Count(); ++i) values.emplace_back(tags.Name(i), tags.Value(i));
  return values;
}

/// Puts pending tags into the package, and opens what would be saved.
std::shared_ptr<Presentation> reopened(Presentation& presentation) {
  presentation.tagStore().write();
  const std::string bytes = presentation.package().serialize();
  EXPECT_THAT(faultsOf(bytes), IsEmpty());
  return DeckBuilder::opened(bytes);
}

std::shared_ptr<PowerPoint::Shape> shapeOf(Presentation& presentation, int slide, std::int32_t index) {
  return presentation.Slides()->Item(slide)->Shapes()->Item(index);
}

std::vector<std::string> tagParts(Presentation& presentation) {
  std::vector<std::string> names;
  for (opc::Part* part : presentation.package().parts()) {
    if (part->name().starts_with("ppt/tags/")) names.push_back(part->name());
  }
  return names;
}

/// One shape of every kind that can carry tags.
const std::string EveryKind =
    support::plainShape(2, "sp", "", "<p:ph/><p:extLst/>") + support::pictureShape(3, "pic", "") +
    support::graphicFrame(4, "frame", "urn:x") +
    "<p:cxnSp><p:nvCxnSpPr><p:cNvPr id=\"5\" name=\"line\"/><p:cNvCxnSpPr/><p:nvPr/></p:nvCxnSpPr><p:spPr/>"
    "</p:cxnSp>" +
    support::groupShape(6, "group", "");

TEST(TagsTest, EveryOwnerKeepsThemAndLetsThemGo) {
  DeckBuilder deck = DeckBuilder::of(EveryKind);
  deck.afterShapes(1, "<p:extLst/>");
  deck.presentationExtra("<p:defaultTextStyle/>");
  const auto presentation = deck.presentation();
  const std::string original = presentation->package().serialize();
  const auto eachOwner = [](Presentation& owners, const auto& visit) {
    visit(*owners.Tags());
    visit(*owners.Slides()->Item(1)->Tags());
    for (std::int32_t i = 1; i <= 5; ++i) visit(*shapeOf(owners, 1, i)->Tags());
  };
  eachOwner(*presentation, [](PowerPoint::Tags& tags) {
    EXPECT_EQ(tags.Count(), 0);
    tags.Add("Kind", "own");
    tags.Add("other", "");
  });
  EXPECT_FALSE(presentation->Saved());

  const auto again = reopened(*presentation);
  eachOwner(*again, [](PowerPoint::Tags& tags) {
    EXPECT_THAT(valuesOf(tags), ElementsAre(Pair("KIND", "own"), Pair("OTHER", "")));
  });
  // The places that the schema asks for.
  const std::string slide(again->slidePart(1).bytes());
  EXPECT_THAT(slide, HasSubstr("</p:spTree><p:custDataLst>"));
  EXPECT_THAT(slide, HasSubstr("</p:custDataLst><p:extLst/></p:cSld>"));
  EXPECT_THAT(slide, HasSubstr("<p:nvPr><p:ph/><p:custDataLst>"));
  EXPECT_THAT(std::string(again->part().bytes()), HasSubstr("</p:custDataLst><p:defaultTextStyle/>"));
  EXPECT_EQ(tagParts(*again).size(), 7U);

  eachOwner(*again, [](PowerPoint::Tags& tags) {
    tags.Delete("kind");
    tags.Delete("OTHER");
    tags.Delete("never there");
  });
  const auto cleared = reopened(*again);
  EXPECT_THAT(tagParts(*cleared), IsEmpty());
  EXPECT_THAT(std::string(cleared->slidePart(1).bytes()), Not(HasSubstr("custDataLst")));
  EXPECT_THAT(std::string(cleared->part().bytes()), Not(HasSubstr("custDataLst")));
  EXPECT_THAT(std::string(cleared->package().part("[Content_Types].xml").bytes()), Not(HasSubstr("tags")));
  EXPECT_EQ(storedEntries(cleared->package().serialize()).size(), storedEntries(original).size());
}

TEST(TagsTest, AnythingSurvivesInAValue) {
  const std::vector<std::string> values{"0\tprices.txt\t1\t",
                                        "a\nb\r\nc\r",
                                        "\"quoted\" 'and' <b>&amp;</b>",
                                        "  blanks  ",
                                        "\xC3\xBC \xE2\x82\xAC",
                                        std::string(70000, 'x'),
                                        ""};
  const auto presentation = DeckBuilder::of().presentation();
  const auto tags = presentation->Tags();
  for (std::size_t i = 0; i < values.size(); ++i) tags->Add("T" + std::to_string(i), values[i]);
  const auto again = reopened(*presentation)->Tags();
  for (std::size_t i = 0; i < values.size(); ++i) {
    EXPECT_EQ(again->Value(static_cast<std::int32_t>(i + 1)), values[i]);
  }
}

TEST(TagsTest, OneOfTheSameNameIsReplacedInItsPlace) {
  DeckBuilder deck = DeckBuilder::of();
  deck.presentationTags({{"FIRST", "1"}, {"Foreign", "keep"}, {"LAST", "3"}});
  const auto presentation = deck.presentation();
  presentation->Tags()->Add("first", "one");
  presentation->Tags()->Add("new", "4");
  EXPECT_THAT(
      valuesOf(*reopened(*presentation)->Tags()),
      ElementsAre(Pair("FIRST", "one"), Pair("FOREIGN", "keep"), Pair("LAST", "3"), Pair("NEW", "4")));
}

TEST(TagsTest, TakenAwayAndAddedAgainTouchesNoPart) {
  DeckBuilder deck = DeckBuilder::of();
  deck.presentationTags({{"A", "1"}});
  const auto presentation = deck.presentation();
  const std::string before = presentation->package().serialize();
  presentation->Tags()->Add("A", "1");
  EXPECT_TRUE(presentation->Saved()) << "the same value is no change";
  presentation->Tags()->Delete("A");
  presentation->Tags()->Add("A", "1");
  presentation->tagStore().write();
  EXPECT_EQ(presentation->package().serialize(), before);
}

TEST(TagsTest, SeveralPartsOfOneOwnerAreOneList) {
  DeckBuilder deck = DeckBuilder::of();
  const std::string first = deck.relate(1, "tags", deck.addTags({{"A", "1"}, {"B", "2"}}));
  const std::string second = deck.relate(1, "tags", deck.addTags({{"C", "3"}}));
  deck.afterShapes(
      1, "<p:custDataLst><p:tags r:id=\"" + first + "\"/><p:tags r:id=\"" + second + "\"/></p:custDataLst>");
  const auto presentation = deck.presentation();
  const auto tags = presentation->Slides()->Item(1)->Tags();
  EXPECT_THAT(valuesOf(*tags), ElementsAre(Pair("A", "1"), Pair("B", "2"), Pair("C", "3")));
  tags->Delete("C");
  tags->Add("B", "two");
  const auto again = reopened(*presentation);
  EXPECT_THAT(valuesOf(*again->Slides()->Item(1)->Tags()), ElementsAre(Pair("A", "1"), Pair("B", "two")));
  EXPECT_THAT(tagParts(*again), ElementsAre("ppt/tags/tag1.xml"));
}

TEST(TagsTest, APartSharedByTwoOwnersIsCopiedBeforeItChanges) {
  for (const bool onOneSlide : {false, true}) {
    SCOPED_TRACE(onOneSlide ? "two shapes, one relationship" : "two slides");
    DeckBuilder deck;
    const std::string target = deck.addTags({{"A", "1"}});
    deck.addSlide();
    const std::string id = deck.relate(1, "tags", target);
    if (onOneSlide) {
      deck.shapes(1, textShape(2, "one", "", tagsReference(id)) + textShape(3, "two", "", tagsReference(id)));
    } else {
      deck.addSlide();
      deck.shapes(1, textShape(2, "one", "", tagsReference(id)));
      deck.shapes(2, textShape(2, "two", "", tagsReference(deck.relate(2, "tags", target))));
    }
    const auto shapes = [&](Presentation& presentation) {
      return std::pair(shapeOf(presentation, 1, 1),
                       onOneSlide ? shapeOf(presentation, 1, 2) : shapeOf(presentation, 2, 1));
    };
    const auto changed = deck.presentation();
    shapes(*changed).first->Tags()->Add("A", "changed");
    const auto [one, two] = shapes(*reopened(*changed));
    EXPECT_THAT(valuesOf(*one->Tags()), ElementsAre(Pair("A", "changed")));
    EXPECT_THAT(valuesOf(*two->Tags()), ElementsAre(Pair("A", "1")));

    const auto removed = deck.presentation();
    shapes(*removed).first->Tags()->Delete("A");
    const auto after = reopened(*removed);
    EXPECT_EQ(shapes(*after).first->Tags()->Count(), 0);
    EXPECT_THAT(valuesOf(*shapes(*after).second->Tags()), ElementsAre(Pair("A", "1")));
    shapes(*after).second->Tags()->Delete("A");
    EXPECT_THAT(tagParts(*reopened(*after)), IsEmpty());
  }
}

TEST(TagsTest, OtherCustomDataStaysWhenTheTagsGo) {
  DeckBuilder deck = DeckBuilder::of();
  const std::string id = deck.relate(1, "tags", deck.addTags({{"A", "1"}}));
  deck.part("customXml/item1.xml", "<x/>");
  const std::string data = deck.relate(1, "customXml", "../../customXml/item1.xml");
  deck.afterShapes(
      1, "<p:custDataLst><p:custData r:id=\"" + data + "\"/><p:tags r:id=\"" + id + "\"/></p:custDataLst>");
  const auto presentation = deck.presentation();
  presentation->Slides()->Item(1)->Tags()->Delete("A");
  const auto again = reopened(*presentation);
  EXPECT_THAT(std::string(again->slidePart(1).bytes()),
              HasSubstr("<p:custDataLst><p:custData r:id=\"" + data + "\"/></p:custDataLst>"));
  EXPECT_NE(again->package().find("customXml/item1.xml"), nullptr);
}

TEST(TagsTest, ErrorsNameTheOwner) {
  DeckBuilder deck = DeckBuilder::of();
  deck.afterShapes(1, tagsReference("rId77"));
  const auto presentation = deck.presentation();
  EXPECT_THAT(errorOf([&] { static_cast<void>(presentation->Tags()->Name(1)); }), HasSubstr("no tag 1"));
  EXPECT_THAT(errorOf([&] { static_cast<void>(presentation->Slides()->Item(1)->Tags()); }),
              AllOf(HasSubstr("ppt/slides/slide1.xml"), HasSubstr("rId77")))
      << "a missing tag part must not read as no tags";
}

}  // namespace
}  // namespace deck::test
