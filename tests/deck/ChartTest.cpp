// Charts refilled with data: the chart's caches, its workbook, and what stays.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "basic/Strings.h"
#include "support/ChartDeck.h"
#include "support/ErrorOf.h"
#include "support/PackageCheck.h"
#include "support/RecordedChanges.h"
#include "support/TemporaryFolder.h"
#include "workbook/Reading.h"

namespace deck::test {
namespace {

using support::ChartDeck;
using support::DeckBuilder;
using support::errorOf;
using support::faultsOf;
using support::graphicFrame;
using support::group;
using support::series;
using support::seriesIn;
using support::TemporaryFolder;
using support::textShape;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

/// Rows parted by "/", cells by "|"; all text, "~" is Null.
MSGraph::Table table(const std::string& text) {
  std::vector<std::vector<std::string>> rows;
  for (const std::string& row : basic::Split(text, '/')) rows.push_back(basic::Split(row, '|'));
  MSGraph::Table table(rows.size(), rows.front().size());
  for (std::size_t i = 0; i < rows.size(); ++i) {
    for (std::size_t j = 0; j < rows[i].size(); ++j) {
      table.cell(i, j, rows[i][j] == "~" ? basic::Variant(basic::Null{}) : basic::Variant(rows[i][j]));
    }
  }
  return table;
}

/// The chart of a deck, refilled as the system does it.
struct Refilled {
  explicit Refilled(const ChartDeck& source = {}, const std::string& data = {})
      : original(source.build().bytes()), deck(DeckBuilder::opened(original)) {
    deck->addListener(changes);
    if (!data.empty()) fill(data);
  }
  ~Refilled() { deck->removeListener(changes); }

  std::shared_ptr<MSGraph::DataSheet> sheet() {
    const auto shape = deck->Slides()->Item(1)->Shapes()->Item("Chart");
    return shape->OLEFormat()->Object()->Application()->DataSheet();
  }
  void fill(const std::string& data) { sheet()->Cells(table(data)); }
  std::string xml() { return std::string(deck->package().part("ppt/charts/chart1.xml").bytes()); }
  std::string series() { return seriesIn(xml()); }
  std::string saved() {
    deck->SaveCopyAs((folder.path() / "copy.pptx").string());
    return folder.read("copy.pptx");
  }
  /// A part of the saved copy's workbook.
  std::string bookPart(const std::string& part) { return partOf(book(), part); }
  std::string book() { return partOf(saved(), "ppt/embeddings/book.xlsx"); }
  static std::string partOf(const std::string& package, const std::string& part) {
    return std::string(opc::Package::fromBytes(package, "package")->part(part).bytes());
  }
  std::string cells(const std::string& range) {
    return workbook::test::Desk().texts(folder.write("book.xlsx", book()), "Sheet1", range);
  }

  TemporaryFolder folder;
  std::string original;
  std::shared_ptr<Presentation> deck;
  support::RecordedChanges changes;
};

TEST(ChartTest, ChartAndWorkbookTakeMoreRowsAndColumns) {
  Refilled chart({}, "Month|North|West & <East>|Rest/Jan|1.5|2|~/007|none|-3|4/Mar|2e3|| 5/Apr|1|1|1");
  EXPECT_EQ(
      chart.series(),
      "North@Sheet1!$B$1: Jan 1.5, 007 -, Mar 2000, Apr 1; "
      "West & <East>@Sheet1!$C$1: Jan 2, 007 -3, Mar -, Apr 1; Rest@Sheet1!$D$1: Jan -, 007 4, Mar 5, Apr 1");
  EXPECT_THAT(chart.xml(), HasSubstr("<c:f>Sheet1!$A$2:$A$5</c:f>"));
  EXPECT_THAT(chart.xml(),
              HasSubstr("<c:f>Sheet1!$D$2:$D$5</c:f><c:numCache><c:formatCode>0.0</c:formatCode>"));
  EXPECT_EQ(chart.cells("A1:F9"),
            "Month|North|West & <East>|Rest||note/Jan|1.5|2|||/007||-3|4||/Mar|2000||5||/Apr|1|1|1||"
            "/|||||/|||||/|||||/below|||||");
  EXPECT_THAT(
      chart.bookPart("xl/tables/table1.xml"),
      HasSubstr("ref=\"A1:D5\"><autoFilter ref=\"A1:D5\"/><tableColumns count=\"4\"><tableColumn id=\"1\" "
                "name=\"Month\"/><tableColumn id=\"2\" name=\"North\"/><tableColumn id=\"3\" name=\"West "
                "&amp; &lt;East>\"/><tableColumn id=\"4\" name=\"Rest\"/></tableColumns>"));
  EXPECT_THAT(chart.bookPart("xl/worksheets/sheet1.xml"), HasSubstr("<c r=\"B5\" s=\"1\"><v>1</v></c>"))
      << "a further row looks like the one above it";
  EXPECT_THAT(faultsOf(chart.saved()), IsEmpty());

  EXPECT_THAT(support::changedEntries(ChartDeck().bookBytes(), chart.book()),
              ElementsAre("xl/worksheets/sheet1.xml", "xl/tables/table1.xml"));
}

TEST(ChartTest, FewerRowsAndColumnsLeaveNothingBehind) {
  ChartDeck source;
  source.groups = group("barChart", series(0, "B", "North", "1,2,3")) +
                  group("lineChart", series(1, "C", "South", "4,5,6"), 2);
  Refilled chart(source, "Month|Sum/Dec|9");
  EXPECT_EQ(chart.series(), "Sum@Sheet1!$B$1: Dec 9");
  EXPECT_THAT(chart.xml(), Not(HasSubstr("lineChart")));
  EXPECT_THAT(chart.xml(), Not(HasSubstr("val=\"21\""))) << "axes go with their last series";
  EXPECT_EQ(chart.cells("A1:F4"), "Month|Sum||||note/Dec|9||||/|||||/|||||");
  EXPECT_THAT(chart.bookPart("xl/tables/table1.xml"), HasSubstr("ref=\"A1:B2\""));
  chart.fill("Month|a|b|c/Dec|1|2|3");
  EXPECT_THAT(chart.xml(), HasSubstr("val=\"21\""));
  EXPECT_EQ(chart.series(), "a@Sheet1!$B$1: Dec 1; b@Sheet1!$C$1: Dec 2; c@Sheet1!$D$1: Dec 3");
}

TEST(ChartTest, FormattingStaysWithItsSeriesAndPoint) {
  ChartDeck source;
  source.groups = group(
      "lineChart", series(0, "B", "North", "1,2,3",
                          "<c:spPr><a:noFill/></c:spPr><c:marker><c:symbol val=\"none\"/></c:marker>"
                          "<c:dPt><c:idx val=\"0\"/></c:dPt><c:dPt><c:idx val=\"2\"/></c:dPt>"
                          "<c:dLbls><c:dLbl><c:idx val=\"2\"/></c:dLbl><c:showVal val=\"1\"/></c:dLbls>"));
  Refilled chart(source, "Month|a|b/Jan|1|2/Feb|3|4");
  EXPECT_THAT(chart.xml(),
              HasSubstr("</c:tx><c:spPr><a:noFill/></c:spPr><c:marker><c:symbol val=\"none\"/></c:marker>"
                        "<c:dPt><c:idx val=\"0\"/></c:dPt><c:dLbls><c:showVal val=\"1\"/></c:dLbls>"));
  EXPECT_THAT(chart.xml(), HasSubstr("<c:ser><c:idx val=\"1\"/><c:order val=\"1\"/><c:tx>"));
  EXPECT_THAT(chart.xml(), HasSubstr("</c:tx><c:marker><c:symbol val=\"none\"/></c:marker><c:cat>"))
      << "a further series is automatic but for what belongs to the kind of chart";
  chart.fill("Month|a/Jan|1/Feb|3/Mar|4");
  EXPECT_THAT(chart.xml(), HasSubstr("<c:dPt><c:idx val=\"2\"/></c:dPt><c:dLbls><c:dLbl>"));
}

TEST(ChartTest, OnlyWhatChangedIsWrittenAndTold) {
  Refilled chart;
  chart.fill("any corner|North|South/Jan|1|4/Feb|2|5/Mar|3|6");
  EXPECT_THAT(chart.changes.shapes, IsEmpty());
  EXPECT_TRUE(chart.deck->Saved());
  EXPECT_EQ(chart.saved(), chart.original);
  chart.fill("Month|North|South/Jan|1|4/Feb|2|5/Mar|3|7");
  chart.fill("Month|North|South/Jan|1|4/Feb|2|5/Mar|3|7");
  EXPECT_THAT(chart.changes.shapes, ElementsAre("1/7"));
  EXPECT_FALSE(chart.deck->Saved());
}

TEST(ChartTest, TheAuthorsDataComeBackByteForByte) {
  Refilled chart({}, "Month|a|b|c/Jan|1|2|3");
  EXPECT_NE(chart.saved(), chart.original);
  chart.sheet()->Restore();
  EXPECT_EQ(chart.changes.shapes.size(), 2U);
  EXPECT_EQ(chart.saved(), chart.original);
  chart.sheet()->Restore();
  EXPECT_EQ(chart.changes.shapes.size(), 2U) << "there is nothing to put back";
  const MSGraph::Table cells = chart.sheet()->Cells();
  EXPECT_EQ(cells.rows(), 4U);
  EXPECT_EQ(std::get<std::string>(cells.cell(0, 2)), "South");
  EXPECT_EQ(std::get<double>(cells.cell(3, 2)), 6);
  chart.fill("Month|a/Jan|1");
  const std::string once = chart.saved();
  chart.fill("Month|b/Jan|2");
  chart.fill("Month|a/Jan|1");
  EXPECT_EQ(chart.saved(), once) << "equal data give equal files, whatever was there between";
}

/// The same categories as some programs write them, in a level; `end` closes the levels.
std::string levelled(std::string xml, const std::string& end) {
  xml = basic::Replace(xml, "<c:cat><c:strRef>", "<c:cat><c:multiLvlStrRef>");
  xml = basic::Replace(xml, "<c:strCache><c:ptCount val=\"3\"/>",
                       "<c:multiLvlStrCache><c:ptCount val=\"3\"/><c:lvl>");
  return basic::Replace(xml, "</c:strCache></c:strRef></c:cat>",
                        "</c:lvl>" + end + "</c:multiLvlStrRef></c:cat>");
}

TEST(ChartTest, EachKindTakesItsColumns) {
  const auto numeric = [](std::string xml, const std::string& format) {
    for (const auto& [from, to] :
         {std::pair<std::string, std::string>{"<c:cat><c:strRef>", "<c:cat><c:numRef>"},
          {"<c:strCache><c:ptCount val=\"3\"/>",
           "<c:numCache><c:formatCode>" + format + "</c:formatCode><c:ptCount val=\"3\"/>"},
          {"</c:strCache></c:strRef></c:cat>", "</c:numCache></c:numRef></c:cat>"}}) {
      xml = basic::Replace(xml, from, to);
    }
    return xml;
  };
  const auto xy = [](std::string xml) {
    xml = basic::Replace(xml, "c:cat>", "c:xVal>");
    return basic::Replace(xml, "c:val>", "c:yVal>");
  };
  const std::string one = series(0, "B", "North", "1,2,3");
  const std::string points = xy(numeric(one, "General"));
  const std::string size =
      "<c:bubbleSize><c:numRef><c:f>Sheet1!$C$2:$C$4</c:f><c:numCache/></c:numRef></c:bubbleSize>";
  const struct {
    std::string groups;
    std::string data;
    std::string series;
  } cases[] = {
      {group("pieChart", one), "m|a/x|1/y|2", "a@Sheet1!$B$1: x 1, y 2"},
      {group("barChart", one), "m|a|b|c|d/x|4,80|1,234|4,80|1.234,5/y|-1,234|12|1,234.5|2",
       "a@Sheet1!$B$1: x 4.8, y -1.234; b@Sheet1!$C$1: x 1234, y 12; c@Sheet1!$D$1: x 480, y 1234.5; "
       "d@Sheet1!$E$1: x 1234.5, y 2"},
      {group("barChart", levelled(one, "</c:multiLvlStrCache>")), "m|a/Jan|1/Feb|2",
       "a@Sheet1!$B$1: Jan 1, Feb 2"},
      {group("barChart", numeric(one, "General")), "m|a/2024|1/2025|2", "a@Sheet1!$B$1: 2024 1, 2025 2"},
      {group("barChart", numeric(one, "General")), "m|a/2024|1/later|2", "a@Sheet1!$B$1: 2024 1, later 2"},
      {group("barChart", numeric(one, "m/d/yyyy")), "m|a/2026-01-05|1/2026-01-06|2",
       "a@Sheet1!$B$1: 46027 1, 46028 2"},
      {group("scatterChart", points), "x|a|b/1|2|3/4|5|6",
       "a@Sheet1!$B$1: 1 2, 4 5; b@Sheet1!$C$1: 1 3, 4 6"},
      {group("scatterChart", points), "x|a/?|2/4|5", "a@Sheet1!$B$1: - 2, 4 5"},
      {group("bubbleChart", basic::Replace(points, "</c:ser>", size + "</c:ser>")), "x|a|s|b|t/1|2|3|4|5",
       "a@Sheet1!$B$1: 1 2 3; b@Sheet1!$D$1: 1 4 5"},
      {group("bubbleChart", basic::Replace(points, "</c:ser>", size + "</c:ser>")), "x|a/1|2",
       "a@Sheet1!$B$1: 1 2 1"},
      {group("barChart", basic::Replace(basic::Replace(one, "$A", "$D"), "$B", "$E")), "m|a/x|1",
       "a@Sheet1!$E$1: x 1"},
      {group("barChart", series(0, "C", "later", "1,2,3") + series(1, "B", "first", "4,5,6")), "m|a|b/x|1|2",
       "b@Sheet1!$C$1: x 2; a@Sheet1!$B$1: x 1"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.data);
    ChartDeck source;
    source.groups = c.groups;
    source.relationship.clear();
    source.externalData.clear();
    EXPECT_EQ(Refilled(source, c.data).series(), c.series);
  }
}

TEST(ChartTest, AWorkbookKeepsWhatIsNotTheCharts) {
  ChartDeck source;
  // B4 leads a shared formula that E4 takes part in; row 3 has no numbers of its own.
  source.rows =
      "<row r=\"1\"><c r=\"B1\" s=\"1\"/></row><row r=\"2\" hidden=\"1\"><c><v>1</v></c><c><v>2</v></c></row>"
      "<row><c r=\"B3\"/></row><row r=\"4\"><c r=\"B4\"><f t=\"shared\" ref=\"B4:E4\" "
      "si=\"0\">A1</f><v>1</v></c>"
      "<c r=\"E4\"><f t=\"shared\" si=\"0\"/><v>7</v></c><c r=\"F4\"><f>1+1</f><v>2</v></c></row>";
  Refilled chart(source, "_x0041_|North|north/Jan|1|2/Feb|3|4/Mar|5|6");
  const std::string sheet = chart.bookPart("xl/worksheets/sheet1.xml");
  EXPECT_THAT(sheet, HasSubstr("<c r=\"E4\"><v>7</v></c><c r=\"F4\"><f>1+1</f><v>2</v></c>"));
  EXPECT_THAT(sheet, Not(HasSubstr("hidden")));
  EXPECT_THAT(sheet, HasSubstr("_x005F_x0041_"));
  EXPECT_EQ(chart.cells("B1:C1"), "North|north2") << "columns of a table have names of their own";
  EXPECT_EQ(opc::Package::fromBytes(chart.book(), "book")->find("xl/calcChain.xml"), nullptr);
  EXPECT_THAT(chart.bookPart("xl/_rels/workbook.xml.rels"), Not(HasSubstr("calcChain")));
}

TEST(ChartTest, WhatCannotBeFilledSaysWhyAndStays) {
  const std::string fine = "Month|a|b/Jan|1|2";
  const auto with = [](auto change) {
    ChartDeck deck;
    change(deck);
    return deck;
  };
  const std::string main = "<table xmlns=\"http://schemas.openxmlformats.org/spreadsheetml/2006/main\" ";
  const struct {
    ChartDeck source;
    std::string data;
    std::string reason;
  } cases[] = {
      {{}, "Month/Jan", "a column of categories and at least one of values"},
      {{},
       "Month|a|b/Jan|1|often/Feb|2|~",
       "its column 'b' holds text where the chart needs numbers ('often' in row 1)"},
      {with([](ChartDeck& d) {
         d.relationship =
             basic::Replace(d.relationship, "Target=\"", "TargetMode=\"External\" Target=\"file:///C:/");
       }),
       fine, "its data lie in another file"},
      {with([](ChartDeck& d) { d.book = "no workbook"; }), fine, "'ppt/embeddings/book.xlsx' cannot be read"},
      {with([](ChartDeck& d) { d.relationship = basic::Replace(d.relationship, "rId1", "rId2"); }), fine,
       "the relationship to its workbook is missing"},
      {with([](ChartDeck& d) { d.relationship = basic::Replace(d.relationship, "book", "gone"); }), fine,
       "'../embeddings/gone.xlsx' is missing"},
      {with([](ChartDeck& d) { d.groups = basic::Replace(d.groups, "Sheet1!", "Sheet7!"); }), fine,
       "it has no sheet 'Sheet7'"},
      {with([&](ChartDeck& d) { d.table = main + "displayName=\"T\" ref=\"A1:C5\" totalsRowCount=\"1\"/>"; }),
       fine, "a row of totals"},
      {with([](ChartDeck& d) { d.rows = "<row r=\"5\"/><row r=\"2\"/>"; }), fine, "out of order"},
      {with([](ChartDeck& d) { d.groups = group("stockChart", series(0, "B", "Low", "1,2,3")); }), fine,
       "a stock chart of 1 series"},
      {with([](ChartDeck& d) { d.groups = "<c:barChart/>"; }), fine, "it has no series"},
      {with([](ChartDeck& d) { d.groups = "<c:barChart>"; }), fine,
       "ppt/charts/chart1.xml is not well-formed"},
      {with([&](ChartDeck& d) { d.groups = levelled(d.groups, "<c:lvl/></c:multiLvlStrCache>"); }), fine,
       "several levels"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.reason);
    Refilled chart(c.source);
    const std::string before = chart.xml();
    const std::string error = errorOf([&] { chart.fill(c.data); });
    EXPECT_THAT(error, HasSubstr(c.reason));
    EXPECT_THAT(error, HasSubstr("The chart 'Chart' on slide 1 cannot be refilled: "));
    EXPECT_EQ(chart.xml(), before);
    EXPECT_THAT(chart.changes.shapes, IsEmpty());
  }
}

TEST(ChartTest, OtherObjectsAreNoCharts) {
  const std::pair<std::string, const char*> cases[] = {
      {graphicFrame(2, "a", "http://schemas.microsoft.com/office/drawing/2014/chartex", ""),
       "a chart of a newer kind"},
      {graphicFrame(2, "a", "http://schemas.openxmlformats.org/drawingml/2006/chart",
                    "<c:chart r:id=\"rId77\"/>"),
       "relationship 'rId77' should lead to is missing"},
      {graphicFrame(2, "a", "http://schemas.openxmlformats.org/presentationml/2006/ole",
                    "<p:oleObj progId=\"MSGraph.Chart.8\" r:id=\"rId1\"><p:embed/></p:oleObj>"),
       "'MSGraph.Chart.8' cannot be refilled"},
      {textShape(2, "a", "x"), "is neither a chart nor an embedded or linked object"},
  };
  for (const auto& [xml, reason] : cases) {
    const auto shape = DeckBuilder::of(xml).presentation()->Slides()->Item(1)->Shapes()->Item("a");
    EXPECT_THAT(errorOf([&] { static_cast<void>(shape->OLEFormat()->Object()->Application()->DataSheet()); }),
                HasSubstr(reason));
  }
}

}  // namespace
}  // namespace deck::test
