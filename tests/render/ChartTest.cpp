#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include "basic/Strings.h"
#include "render/ChartDeck.h"
#include "render/chart/ChartSlots.h"
#include "render/html/SlideRenderer.h"

namespace render {
namespace {

using namespace test;
using nlohmann::json;
using testing::HasSubstr;

std::string unescaped(std::string text) {
  const std::pair<const char*, const char*> marks[] = {
      {"&quot;", "\""}, {"&lt;", "<"}, {"&gt;", ">"}, {"&#39;", "'"}, {"&amp;", "&"}};
  for (const auto& [mark, character] : marks) text = basic::Replace(text, mark, character);
  return text;
}

/// What the slide's chart element carries; null without one.
json describedIn(const std::string& html) {
  const std::string before = "data-chart=\"";
  const auto begin = html.find(before);
  if (begin == std::string::npos) return nullptr;
  const auto from = begin + before.size();
  return json::parse(unescaped(html.substr(from, html.find('"', from) - from)));
}

json describe(const std::string& part) {
  const auto package = chartDeck(part);
  const auto page = SlideRenderer(*package).slide(1);
  EXPECT_THAT(page.problems, testing::IsEmpty());
  return describedIn(page.html);
}

const std::string Cats = chartTexts("cat", {"North", "South", "West"});

std::string barChart(const std::string& series, const std::string& properties = {},
                     const std::string& axes = {}) {
  return "<c:barChart><c:barDir val=\"col\"/>" + properties + series + ChartAxisIds + "</c:barChart>" +
         (axes.empty() ? chartAxes() : axes);
}

TEST(Chart, NumbersComeFormattedAndAxesScaled) {
  const auto chart = describe(chartPart(barChart(chartSeries(
      0, "Sales", Cats + chartNumbers("val", {"1200", "", "950.5"}, "#,##0.0"),
      "<c:dLbls><c:showVal val=\"1\"/><c:showCatName val=\"1\"/><c:separator>: </c:separator></c:dLbls>"))));
  const auto& series = chart["series"][0];
  EXPECT_EQ(series["data"], json({1200, nullptr, 950.5}));
  EXPECT_EQ(series["labels"]["texts"], json({"North: 1,200.0", "", "West: 950.5"}));
  EXPECT_EQ(chart["axes"][0]["labels"], json({"North", "South", "West"}));
  EXPECT_EQ(chart["axes"][1]["labels"].front(), "0.0");
  EXPECT_EQ(chart["axes"][1]["labels"].back(), "1,400.0");
  EXPECT_THAT(chart["title"]["html"].get<std::string>(), HasSubstr("Sales"));
}

TEST(Chart, RadarsTakeAsManyStepsAsTheirSpokesHaveRoomFor) {
  const auto labels = [](const std::string& font) {
    const auto series = chartSeries(0, "A", Cats + chartNumbers("val", {"3", "9", "6"}));
    return describe(chartPart("<c:radarChart><c:radarStyle val=\"marker\"/>" + series + ChartAxisIds +
                              "</c:radarChart>" +
                              chartAxes("", "<c:txPr><a:bodyPr/><a:p><a:pPr><a:defRPr sz=\"" + font +
                                                "\"/></a:pPr></a:p></c:txPr>")))["axes"][1]["labels"];
  };
  EXPECT_EQ(labels("1800"), json({"0", "2", "4", "6", "8", "10"}));
  EXPECT_EQ(labels("6600"), json({"0", "5", "10"}));
}

TEST(Chart, PointsThatLackAnXHaveNoErrorBars) {
  const auto bars = "<c:errBars><c:errValType val=\"fixedVal\"/><c:val val=\"1\"/></c:errBars>";
  const auto series = chartSeries(
      0, "A", chartNumbers("xVal", {"1", "2"}) + chartNumbers("yVal", {"5", "6", "7", "8"}), bars);
  const auto chart =
      describe(chartPart("<c:scatterChart>" + series + ChartAxisIds + "</c:scatterChart>" + chartAxes()));
  EXPECT_EQ(chart["series"][0]["data"], json({{1, 5}, {2, 6}, {nullptr, 7}, {nullptr, 8}}));
  EXPECT_EQ(chart["series"][1]["data"], json({{1, 5, 4, 6}, {2, 6, 5, 7}}));
}

TEST(Chart, StacksOfAHundredPercentAreShares) {
  const auto chart =
      describe(chartPart(barChart(chartSeries(0, "A", Cats + chartNumbers("val", {"1", "-1", "0"})) +
                                      chartSeries(1, "B", Cats + chartNumbers("val", {"3", "1", "0"}),
                                                  "<c:dLbls><c:showVal val=\"1\"/></c:dLbls>"),
                                  "<c:grouping val=\"percentStacked\"/><c:overlap val=\"100\"/>")));
  EXPECT_EQ(chart["series"][0]["data"], json({0.25, -0.5, 0}));
  EXPECT_EQ(chart["series"][1]["data"], json({0.75, 0.5, 0}));
  EXPECT_EQ(chart["series"][1]["labels"]["texts"][0], "3");
  EXPECT_EQ(chart["axes"][1]["labels"].back(), "100%");
  EXPECT_EQ(chart["axes"][1]["min"], -0.6);
}

TEST(Chart, AxesStandWhereTheyCross) {
  const struct {
    std::string category, value;
    double at, labelsAt;
    int outward;
  } cases[] = {
      {"", "", 0.5, 0.5, -1},
      {"<c:tickLblPos val=\"low\"/>", "", 0.5, 0, -1},
      {"<c:tickLblPos val=\"high\"/>", "", 0.5, 1, 1},
      {"<c:crosses val=\"max\"/>", "", 1, 1, 1},
      {"<c:crosses val=\"min\"/>", "", 0, 0, -1},
      {"<c:crossesAt val=\"3\"/>", "", 0.75, 0.75, -1},
      {"<c:crossesAt val=\"99\"/>", "", 1, 1, 1},
      {"", "<c:scaling><c:orientation val=\"maxMin\"/></c:scaling>", 0.5, 0.5, 1},
      {"<c:crosses val=\"min\"/>", "<c:scaling><c:orientation val=\"maxMin\"/></c:scaling>", 1, 1, 1},
  };
  for (const auto& [category, value, at, labelsAt, outward] : cases) {
    const auto chart = describe(chartPart(barChart(
        chartSeries(0, "A", Cats + chartNumbers("val", {"-5", "5", "1"})), "", chartAxes(category, value))));
    const auto& axis = chart["axes"][0];
    EXPECT_EQ(axis["at"], at) << category << value;
    EXPECT_EQ(axis["labelsAt"], labelsAt) << category << value;
    EXPECT_EQ(axis["outward"], outward) << category << value;
  }
}

TEST(Chart, PointsSlicesAndLegendsHaveTheirOwnLooks) {
  const auto chart = describe(chartPart(
      "<c:pieChart><c:varyColors val=\"1\"/>" +
          chartSeries(
              0, "Sales", Cats + chartNumbers("val", {"1", "2", "1"}),
              "<c:dPt><c:idx val=\"1\"/><c:explosion val=\"20\"/><c:spPr><a:solidFill><a:srgbClr "
              "val=\"123456\"/></a:solidFill></c:spPr></c:dPt><c:dPt><c:idx val=\"77\"/></c:dPt><c:dLbls>"
              "<c:dLbl><c:idx val=\"0\"/><c:delete val=\"1\"/></c:dLbl><c:showPercent "
              "val=\"1\"/></c:dLbls>") +
          "<c:firstSliceAng val=\"90\"/></c:pieChart>",
      "<c:legend><c:legendPos val=\"b\"/><c:legendEntry><c:idx val=\"0\"/><c:delete "
      "val=\"1\"/></c:legendEntry>"
      "</c:legend>"));
  const auto& pie = chart["series"][0];
  EXPECT_EQ(pie["points"]["1"]["fill"], "#123456");
  EXPECT_EQ(pie["points"]["1"]["explosion"], 0.2);
  EXPECT_EQ(pie["points"].size(), 3U);
  EXPECT_EQ(pie["labels"]["texts"], json({"", "50%", "25%"}));
  ASSERT_EQ(chart["legend"]["entries"].size(), 2U);
  EXPECT_EQ(chart["legend"]["entries"][0]["text"], "South");
  EXPECT_EQ(chart["legend"]["entries"][0]["fill"], "#123456");
}

TEST(Chart, ChangedDataIsAllThatChanges) {
  const auto package =
      chartDeck(chartPart(barChart(chartSeries(0, "A", Cats + chartNumbers("val", {"1", "2", "3"})))));
  SlideRenderer renderer(*package);
  auto before = describedIn(renderer.shape(1, 2));
  auto& part = package->part("ppt/charts/chart1.xml");
  part.xml().select_node("//c:val//c:pt[2]/c:v").node().text().set("2.5");
  part.markChanged();
  const auto after = describedIn(renderer.shape(1, 2));
  EXPECT_NE(before, after);
  before["series"][0]["data"][1] = 2.5;
  EXPECT_EQ(before, after);
}

TEST(Chart, NothingFromTheDeckGetsOutOfItsAttribute) {
  const std::string evil = "\"&gt;&lt;script&gt;'</c:v></c:pt><c:pt idx=\"1\"><c:v>&amp;quot;";
  const auto package =
      chartDeck(chartPart(barChart(chartSeries(0, evil, Cats + chartNumbers("val", {"1"})))));
  const auto html = SlideRenderer(*package).slide(1).html;
  EXPECT_THAT(html, testing::Not(HasSubstr("<script>")));
  EXPECT_EQ(describedIn(html)["series"][0]["name"], "\"><script>' &quot;");
}

TEST(Chart, AHundredThousandPointsBecomeABoundedPage) {
  std::vector<std::string> values(100000, "1");
  values[70000] = "500";
  const auto line =
      "<c:lineChart>" + chartSeries(0, "A", chartNumbers("val", values)) + ChartAxisIds + "</c:lineChart>";
  const auto xy = "<c:scatterChart>" +
                  chartSeries(0, "A", chartNumbers("xVal", values) + chartNumbers("yVal", values)) +
                  ChartAxisIds + "</c:scatterChart>";
  for (const auto& plot : {line, xy}) {
    const auto package = chartDeck(chartPart(plot + chartAxes()));
    const auto html = SlideRenderer(*package).slide(1).html;
    EXPECT_LT(html.size(), 200000U);
    const auto data = describedIn(html)["series"][0]["data"];
    EXPECT_LE(data.size(), MostPointsOfSeries);
    EXPECT_THAT(data.dump(), HasSubstr("500"));
  }
}

TEST(Chart, OtherPrefixesAndStrictNamespacesMeanTheSame) {
  auto part = chartPart(barChart(chartSeries(0, "A", Cats + chartNumbers("val", {"1", "2", "3"}))));
  for (auto at = part.find("c:"); at != std::string::npos; at = part.find("c:", at + 3)) {
    if (part[at - 1] == '<' || part[at - 1] == '/' || part[at - 1] == ':') part.replace(at, 2, "ch:");
  }
  part.replace(part.find("xmlns:c="), 8, "xmlns:ch=");
  const std::string old = "http://schemas.openxmlformats.org/drawingml/2006/chart";
  part.replace(part.find(old), old.size(), "http://purl.oclc.org/ooxml/drawingml/chart");
  EXPECT_EQ(describe(part)["series"][0]["data"], json({1, 2, 3}));
}

TEST(Chart, WhatIsWrongInItCostsNoMoreThanItConcerns) {
  const auto bars = [](const std::string& data) { return barChart(chartSeries(0, "A", data)); };
  const struct {
    std::string plot;
    const char* problem;
    const char* data;
  } cases[] = {
      {bars(Cats + chartNumbers("val", {"1", "two", "3"})), "1 of its values", "[1.0,null,3.0]"},
      {bars(Cats + chartNumbers("val", {"nan", "inf", "1e999"})), "3 of its values", "[null,null,null]"},
      {bars(Cats + chartNumbers("val", {"#N/A", "2"})), nullptr, "[null,2.0,null]"},
      {bars(Cats), nullptr, "[null,null,null]"},
      {bars(""), nullptr, "[]"},
      {bars("<c:val><c:numRef><c:numCache><c:ptCount val=\"4000000000\"/><c:pt idx=\"-1\"><c:v>1</c:v></c:pt>"
            "<c:pt idx=\"4000000000\"><c:v>1</c:v></c:pt><c:pt idx=\"1\"><c:v>7</c:v></c:pt>"
            "</c:numCache></c:numRef></c:val>"),
       "2 of its values", nullptr},
      {"<c:surfaceChart>" + chartSeries(0, "A", Cats) + "</c:surfaceChart>", "surfaceChart are not drawn",
       nullptr},
      {"<c:barChart/>", "no series", nullptr},
      {"", "no series", nullptr},
      {"<c:barChart>" + chartSeries(0, "A", chartNumbers("val", {"1"})) + ChartAxisIds + "</c:barChart>",
       "the axes of its barChart are missing", nullptr},
      // Axes that cross themselves, and a scale that is none.
      {barChart(chartSeries(0, "A", chartNumbers("val", {"1"})), "",
                "<c:catAx><c:axId val=\"1\"/><c:crossAx val=\"1\"/></c:catAx><c:valAx><c:axId val=\"2\"/>"
                "<c:crossAx val=\"2\"/><c:scaling><c:logBase val=\"0\"/><c:min val=\"x\"/></c:scaling>"
                "<c:majorUnit val=\"0\"/></c:valAx>"),
       nullptr, "[1.0]"},
  };
  for (const auto& [plot, problem, data] : cases) {
    const auto package = chartDeck(chartPart(plot));
    const auto page = SlideRenderer(*package).slide(1);
    EXPECT_THAT(page.html, HasSubstr("still here"));
    const auto whole = std::string("The chart of shape 2 of slide 1 is not drawn whole: ");
    if (problem == nullptr) {
      EXPECT_THAT(page.problems, testing::IsEmpty()) << plot;
    } else {
      EXPECT_THAT(page.problems, testing::ElementsAre(testing::AllOf(HasSubstr(whole), HasSubstr(problem))))
          << plot;
    }
    if (data != nullptr) {
      EXPECT_EQ(describedIn(page.html)["series"][0]["data"].dump(), data);
    }
  }
  const auto broken = chartDeck("<c:chartSpace");
  const auto page = SlideRenderer(*broken).slide(1);
  EXPECT_THAT(page.html, testing::AllOf(HasSubstr("still here"), HasSubstr("id=\"s1-sh2\"")));
  EXPECT_EQ(page.problems.size(), 1U);
}

}  // namespace
}  // namespace render
