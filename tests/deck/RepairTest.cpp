#include "deck/objects/Repair.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "deck/objects/Application.h"
#include "support/DeckBuilder.h"
#include "support/ErrorOf.h"
#include "support/TemporaryFolder.h"

namespace deck::test {
namespace {

using support::DeckBuilder;
using support::errorOf;
using support::TemporaryFolder;
using support::textShape;
using testing::HasSubstr;
using testing::IsEmpty;

/// A deck of three slides, of which a test damages something.
class RepairTest : public testing::Test {
 protected:
  RepairTest() {
    for (const char* text : {"one", "two", "three"}) deck_.addSlide(textShape(2, "Text", text));
  }

  std::shared_ptr<Presentation> open() {
    const std::string path = folder_.write("deck.pptx", deck_.bytes());
    return application_->open(path, Application::Damaged::Repaired);
  }
  static std::size_t shapesOn(Presentation& presentation, std::int32_t slide) {
    return presentation.shapesOf(slide).all().size();
  }

  TemporaryFolder folder_;
  DeckBuilder deck_;
  std::shared_ptr<Application> application_ = std::make_shared<Application>();
};

TEST_F(RepairTest, AWholeDeckStaysAsItIs) {
  EXPECT_THAT(repair(*deck_.package()), IsEmpty());
  const auto package = deck_.package();
  repair(*package);
  EXPECT_EQ(package->serialize(), deck_.bytes());
}

TEST_F(RepairTest, ASlideThatCannotBeReadIsEmptyAndTheOthersAreThere) {
  const std::string second = "ppt/slides/slide2.xml";
  const char* const missing = nullptr;
  for (const char* content : {"", "<p:sld><p:cSld>", "\x01\x02 no XML", "<html/>", missing}) {
    SCOPED_TRACE(content == missing ? "missing" : content);
    application_ = std::make_shared<Application>();
    if (content == missing) {
      deck_.removePart(second);
    } else {
      deck_.part(second, content);
    }
    const auto presentation = open();
    ASSERT_EQ(presentation->slideCount(), 3);
    EXPECT_EQ(shapesOn(*presentation, 1), 1U);
    EXPECT_EQ(shapesOn(*presentation, 2), 0U);
    EXPECT_EQ(shapesOn(*presentation, 3), 1U);
    ASSERT_EQ(presentation->damages().size(), 1U);
    EXPECT_EQ(presentation->damages()[0].slide, 2);
    EXPECT_THAT(presentation->damages()[0].text, HasSubstr("slides/slide2.xml"));
    opc::Part* const layout = presentation->slidePart(2).related(opc::relationship::SlideLayout);
    ASSERT_NE(layout, nullptr);
    EXPECT_NE(layout->related(opc::relationship::SlideMaster), nullptr);
  }
}

TEST_F(RepairTest, ASlideWithoutItsLayoutKeepsItsShapes) {
  deck_.removePart("ppt/slideLayouts/slideLayout1.xml");
  const auto presentation = open();
  EXPECT_EQ(presentation->damages().size(), 3U) << "one for each slide";
  for (std::int32_t slide = 1; slide <= 3; ++slide) {
    EXPECT_EQ(shapesOn(*presentation, slide), 1U);
    EXPECT_NE(presentation->slidePart(slide).related(opc::relationship::SlideLayout), nullptr);
  }
}

TEST_F(RepairTest, WhatWasRepairedCannotBeSaved) {
  deck_.part("ppt/theme/theme1.xml", "<a:theme>");
  const auto presentation = open();
  EXPECT_THAT(errorOf([&] { presentation->Save(); }), HasSubstr("damaged"));
  const std::string copy = (folder_.path() / "copy.pptx").string();
  EXPECT_THAT(errorOf([&] { presentation->SaveCopyAs(copy); }), HasSubstr("theme1.xml"));
}

TEST_F(RepairTest, ADeckWithoutAnyWholeSlideIsRefused) {
  deck_.removePart("ppt/_rels/presentation.xml.rels");
  EXPECT_THAT(errorOf([&] { open(); }), HasSubstr("none of its slides can be read"));
}

}  // namespace
}  // namespace deck::test
