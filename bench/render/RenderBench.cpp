#include <benchmark/benchmark.h>

#include <cstdlib>
#include <filesystem>
#include <memory>
#include <vector>

#include "render/ChartDeck.h"
#include "render/html/SlideRenderer.h"
#include "support/DeckBuilder.h"

// An ordinary business slide: a title, two lists of ten paragraphs, a table of ten
// rows, twenty small shapes with a number in each.

namespace {

std::string paragraphs(int count) {
  std::string xml;
  for (int i = 0; i < count; ++i) {
    xml +=
        "<a:p><a:pPr marL=\"342900\" indent=\"-342900\"><a:buFont typeface=\"Arial\"/><a:buChar "
        "char=\"•\"/></a:pPr>"
        "<a:r><a:rPr lang=\"en-US\" sz=\"1800\"/><a:t>Revenue grew by </a:t></a:r><a:r><a:rPr lang=\"en-US\" "
        "sz=\"1800\" "
        "b=\"1\"/><a:t>12.5 %</a:t></a:r><a:r><a:rPr lang=\"en-US\" sz=\"1800\"/><a:t> over last "
        "year</a:t></a:r></a:p>";
  }
  return xml;
}

std::string table() {
  std::string rows;
  for (int row = 0; row < 10; ++row) {
    rows += "<a:tr h=\"370840\">";
    for (int column = 0; column < 5; ++column) {
      rows += "<a:tc><a:txBody><a:bodyPr/><a:p><a:r><a:t>cell</a:t></a:r></a:p></a:txBody><a:tcPr/></a:tc>";
    }
    rows += "</a:tr>";
  }
  std::string columns;
  for (int column = 0; column < 5; ++column) columns += "<a:gridCol w=\"1000000\"/>";
  return "<p:graphicFrame><p:nvGraphicFramePr><p:cNvPr id=\"90\" "
         "name=\"T\"/></p:nvGraphicFramePr><p:xfrm><a:off x=\"0\" "
         "y=\"0\"/><a:ext cx=\"5000000\" cy=\"3708400\"/></p:xfrm><a:graphic><a:graphicData><a:tbl><a:tblPr "
         "firstRow=\"1\" "
         "bandRow=\"1\"><a:tableStyleId>{5C22544A-7EE6-4342-B048-85BDC9FD1C3A}</a:tableStyleId></a:tblPr>"
         "<a:tblGrid>" +
         columns + "</a:tblGrid>" + rows + "</a:tbl></a:graphicData></a:graphic></p:graphicFrame>";
}

std::unique_ptr<opc::Package> businessDeck() {
  using namespace support;
  std::string shapes = textShape(2, "Title", "Quarterly results") +
                       shapeWithParagraphs(3, "Left", paragraphs(10)) +
                       shapeWithParagraphs(4, "Right", paragraphs(10)) + table();
  for (int i = 0; i < 20; ++i) shapes += textShape(10 + i, "Number", "1 234.50");
  DeckBuilder builder;
  builder.addSlide(shapes);
  return builder.package();
}

void Page(benchmark::State& state) {
  const auto package = businessDeck();
  render::SlideRenderer renderer(*package);
  renderer.slide(1);
  for (auto _ : state) benchmark::DoNotOptimize(renderer.slide(1));
}
BENCHMARK(Page)->Unit(benchmark::kMicrosecond);

/// With nothing of the layout and theme known yet.
void FirstPage(benchmark::State& state) {
  const auto package = businessDeck();
  render::SlideRenderer renderer(*package);
  for (auto _ : state) {
    renderer.forget();
    benchmark::DoNotOptimize(renderer.slide(1));
  }
}
BENCHMARK(FirstPage)->Unit(benchmark::kMicrosecond);

/// What a tick costs: one shape's text changed.
void OneShape(benchmark::State& state) {
  const auto package = businessDeck();
  render::SlideRenderer renderer(*package);
  renderer.slide(1);
  auto text = package->part("ppt/slides/slide1.xml")
                  .xml()
                  .select_node("//p:sp[p:nvSpPr/p:cNvPr/@id='20']//a:t")
                  .node();
  int value = 0;
  for (auto _ : state) {
    text.text().set(++value);
    benchmark::DoNotOptimize(renderer.shape(1, 20));
  }
}
BENCHMARK(OneShape)->Unit(benchmark::kMicrosecond);

void TableAlone(benchmark::State& state) {
  const auto package = businessDeck();
  render::SlideRenderer renderer(*package);
  renderer.slide(1);
  for (auto _ : state) benchmark::DoNotOptimize(renderer.shape(1, 90));
}
BENCHMARK(TableAlone)->Unit(benchmark::kMicrosecond);

/// All slides of the decks in the folder that the environment names; LUMENFOLD_DECKS.
void SlidesOfDecks(benchmark::State& state) {
  const char* folder = std::getenv("LUMENFOLD_DECKS");
  if (folder == nullptr) {
    state.SkipWithError("LUMENFOLD_DECKS names no folder of decks");
    return;
  }
  struct Deck {
    std::unique_ptr<opc::Package> package;
    std::unique_ptr<render::SlideRenderer> renderer;
  };
  std::vector<Deck> decks;
  for (const auto& entry : std::filesystem::directory_iterator(folder)) {
    if (entry.path().extension() != ".pptx") continue;
    auto package = opc::Package::open(entry.path().string());
    auto renderer = std::make_unique<render::SlideRenderer>(*package);
    decks.push_back({std::move(package), std::move(renderer)});
  }
  const bool anew = state.range(0) != 0;
  std::int64_t slides = 0;
  for (auto _ : state) {
    for (const auto& deck : decks) {
      if (anew) deck.renderer->forget();
      for (int index = 1; index <= deck.renderer->slideCount(); ++index, ++slides)
        benchmark::DoNotOptimize(deck.renderer->slide(index));
    }
  }
  state.counters["slide"] = benchmark::Counter(static_cast<double>(slides),
                                               benchmark::Counter::kIsRate | benchmark::Counter::kInvert);
}
BENCHMARK(SlidesOfDecks)->ArgName("anew")->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);

/// Columns of twelve categories in five series with their labels, or lines of many points.
std::unique_ptr<opc::Package> chartWith(std::size_t points, int seriesCount) {
  using namespace render::test;
  std::vector<std::string> names;
  for (std::size_t i = 0; i < points; ++i) names.push_back("Category " + std::to_string(i));
  std::string series;
  for (int s = 0; s < seriesCount; ++s) {
    std::vector<std::string> values;
    for (std::size_t i = 0; i < points; ++i) values.push_back(std::to_string((i * 37 + 11) % 1009) + ".5");
    series += chartSeries(s, "Series", chartTexts("cat", names) + chartNumbers("val", values, "#,##0.0"),
                          "<c:dLbls><c:showVal val=\"1\"/></c:dLbls>");
  }
  return chartDeck(chartPart("<c:barChart>" + series + ChartAxisIds + "</c:barChart>" + chartAxes(),
                             "<c:legend><c:legendPos val=\"r\"/></c:legend>"));
}

/// Reading, scaling and describing one: what a refilled chart costs.
void Chart(benchmark::State& state) {
  const auto package = chartWith(static_cast<std::size_t>(state.range(0)), static_cast<int>(state.range(1)));
  render::SlideRenderer renderer(*package);
  renderer.slide(1);
  for (auto _ : state) benchmark::DoNotOptimize(renderer.shape(1, 2));
}
BENCHMARK(Chart)->Args({12, 5})->Args({100000, 1})->Unit(benchmark::kMicrosecond);

}  // namespace

BENCHMARK_MAIN();
