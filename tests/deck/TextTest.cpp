#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/DeckBuilder.h"
#include "support/RecordedChanges.h"

namespace deck::test {
namespace {

using support::DeckBuilder;
using support::shapeWithParagraphs;
using support::textShape;
using testing::HasSubstr;

/// A presentation with one shape, which holds these paragraphs.
std::shared_ptr<Presentation> withParagraphs(const std::string& paragraphs) {
  return DeckBuilder::of(shapeWithParagraphs(7, "Body", paragraphs)).presentation();
}

std::shared_ptr<PowerPoint::TextRange> bodyOf(Presentation& presentation) {
  return presentation.Slides()->Item(1)->Shapes()->Item("Body")->TextFrame()->TextRange();
}

/// The paragraphs as they stand in the part that would be saved.
std::string paragraphsOf(Presentation& presentation) {
  const std::string xml(presentation.slidePart(1).bytes());
  const std::string before = "<a:lstStyle/>";
  const std::size_t begin = xml.find(before) + before.size();
  return xml.substr(begin, xml.find("</p:txBody>") - begin);
}

TEST(TextTest, IsReadAsPowerPointGivesIt) {
  const std::pair<const char*, const char*> cases[] = {
      {"<a:p/>", ""},
      {"<a:p><a:r><a:t>one</a:t></a:r></a:p>", "one"},
      {"<a:p><a:r><a:t>o</a:t></a:r><a:r><a:rPr b=\"1\"/><a:t>ne</a:t></a:r></a:p>", "one"},
      {"<a:p><a:r><a:t>one</a:t></a:r></a:p>\n  <a:p><a:r><a:t>two</a:t></a:r></a:p>", "one\rtwo"},
      {"<a:p><a:r><a:t>one</a:t></a:r></a:p><a:p><a:endParaRPr/></a:p>", "one\r"},
      {"<a:p><a:r><a:t>one</a:t></a:r><a:br/><a:r><a:t>two</a:t></a:r></a:p>", "one\vtwo"},
      {"<a:p><a:fld type=\"slidenum\"><a:t>4</a:t></a:fld><a:r><a:t> of 9</a:t></a:r></a:p>", "4 of 9"},
      {"<a:p><a:r><a:t> </a:t></a:r></a:p>", " "},
      {"<a:p><a:r><a:t>a &lt; b &amp; c<![CDATA[ < d]]></a:t></a:r></a:p>", "a < b & c < d"},
  };
  for (const auto& [xml, text] : cases) EXPECT_EQ(bodyOf(*withParagraphs(xml))->Text(), text) << xml;
}

TEST(TextTest, KeepsTheFirstFormattingWhenItIsSet) {
  struct Case {
    const char* title;
    const char* before;
    const char* text;
    const char* after;
  };
  const std::vector<Case> cases{
      {"one run",
       "<a:p><a:pPr algn=\"ctr\"/><a:r><a:rPr b=\"1\"/><a:t>old</a:t></a:r><a:endParaRPr i=\"1\"/></a:p>",
       "new",
       "<a:p><a:pPr algn=\"ctr\"/><a:r><a:rPr b=\"1\"/><a:t>new</a:t></a:r><a:endParaRPr i=\"1\"/></a:p>"},
      {"many runs and paragraphs become one",
       "<a:p><a:pPr lvl=\"1\"/><a:r><a:rPr "
       "b=\"1\"/><a:t>a</a:t></a:r><a:r><a:t>b</a:t></a:r></a:p><a:p><a:r><a:t>c"
       "</a:t></a:r></a:p>",
       "new", "<a:p><a:pPr lvl=\"1\"/><a:r><a:rPr b=\"1\"/><a:t>new</a:t></a:r></a:p>"},
      {"new paragraphs take the first one's properties",
       "<a:p><a:pPr lvl=\"1\"/><a:r><a:rPr b=\"1\"/><a:t>a</a:t></a:r><a:endParaRPr i=\"1\"/></a:p>", "x\ry",
       "<a:p><a:pPr lvl=\"1\"/><a:r><a:rPr b=\"1\"/><a:t>x</a:t></a:r><a:endParaRPr i=\"1\"/></a:p>"
       "<a:p><a:pPr lvl=\"1\"/><a:r><a:rPr b=\"1\"/><a:t>y</a:t></a:r><a:endParaRPr i=\"1\"/></a:p>"},
      {"line break", "<a:p><a:r><a:rPr b=\"1\"/><a:t>a</a:t></a:r></a:p>", "x\vy",
       "<a:p><a:r><a:rPr b=\"1\"/><a:t>x</a:t></a:r><a:br><a:rPr b=\"1\"/></a:br><a:r><a:rPr "
       "b=\"1\"/><a:t>y</a:t>"
       "</a:r></a:p>"},
      {"the end mark's formatting when there was no run", "<a:p><a:endParaRPr sz=\"900\"/></a:p>", "x",
       "<a:p><a:r><a:rPr sz=\"900\"/><a:t>x</a:t></a:r><a:endParaRPr sz=\"900\"/></a:p>"},
      {"an emptied text remembers its formatting", "<a:p><a:r><a:rPr b=\"1\"/><a:t>a</a:t></a:r></a:p>", "",
       "<a:p><a:endParaRPr b=\"1\"/></a:p>"},
      {"a field becomes text",
       "<a:p><a:fld id=\"{1}\" type=\"slidenum\"><a:rPr u=\"sng\"/><a:t>4</a:t></a:fld></a:p>", "x",
       "<a:p><a:r><a:rPr u=\"sng\"/><a:t>x</a:t></a:r></a:p>"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.title);
    const auto presentation = withParagraphs(c.before);
    bodyOf(*presentation)->Text(c.text);
    EXPECT_EQ(paragraphsOf(*presentation), c.after);
  }
}

TEST(TextTest, SurvivesSettingSavingAndReading) {
  const std::pair<std::string, std::string> cases[] = {
      {"a\nb\r\nc\rd", "a\rb\rc\rd"},
      {"\ra\r", "\ra\r"},
      {"  blanks at both ends  ", "  blanks at both ends  "},
      {"a\tb", "a\tb"},
      {"<b>&amp;\"'</b>]]>", "<b>&amp;\"'</b>]]>"},
      {std::string("a\0b\x01\x1F|", 6), "ab|"},
      {"a\vb\x02", "a\vb"},
      {"50 \xE2\x82\xAC, \xF0\x9F\x98\x80", "50 \xE2\x82\xAC, \xF0\x9F\x98\x80"},
      {"caf\xE9 latin", "caf\xEF\xBF\xBD latin"},
      {"\xEF\xBF\xBF|\xED\xA0\x80|", "|\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD|"},
      {std::string(100000, 'x'), std::string(100000, 'x')},
  };
  for (const auto& [set, read] : cases) {
    const auto presentation = DeckBuilder::of(textShape(7, "Body", "old")).presentation();
    bodyOf(*presentation)->Text(set);
    EXPECT_EQ(bodyOf(*presentation)->Text(), read);
    EXPECT_EQ(bodyOf(*DeckBuilder::opened(presentation->package().serialize()))->Text(), read);
  }
}

TEST(TextTest, TheSameTextChangesNothingAndTellsNobody) {
  const auto presentation =
      withParagraphs("<a:p><a:r><a:t>a</a:t></a:r></a:p><a:p><a:r><a:t>b</a:t></a:r></a:p>");
  support::RecordedChanges listener;
  presentation->addListener(listener);
  const std::string before = presentation->package().serialize();
  for (const char* same : {"a\rb", "a\nb", "a\r\nb"}) bodyOf(*presentation)->Text(same);
  EXPECT_TRUE(listener.shapes.empty());
  EXPECT_TRUE(presentation->Saved());
  EXPECT_EQ(presentation->package().serialize(), before);

  bodyOf(*presentation)->Text("c");
  EXPECT_EQ(listener.shapes, std::vector<std::string>{"1/7"});
  EXPECT_FALSE(presentation->Saved());
  presentation->removeListener(listener);
  bodyOf(*presentation)->Text("d");
  EXPECT_EQ(listener.shapes.size(), 1U);
}

TEST(TextTest, AShapeWithoutTextBodyGetsOneInItsPlace) {
  const auto presentation =
      DeckBuilder::of(support::plainShape(2, "Body", "", "", "<p:style/><p:extLst/>")).presentation();
  const auto frame = presentation->Slides()->Item(1)->Shapes()->Item(1)->TextFrame();
  EXPECT_FALSE(frame->HasText());
  frame->TextRange()->Text("");
  EXPECT_TRUE(presentation->Saved());
  frame->TextRange()->Text("new");
  EXPECT_TRUE(frame->HasText());
  EXPECT_THAT(
      std::string(presentation->slidePart(1).bytes()),
      HasSubstr("<p:style/><p:txBody><a:bodyPr/><a:lstStyle/><a:p><a:r><a:t>new</a:t></a:r></a:p></p:txBody>"
                "<p:extLst/>"));
}

}  // namespace
}  // namespace deck::test
