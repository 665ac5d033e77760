#include <benchmark/benchmark.h>

#include <array>
#include <string>

#include "app/LinkedDeck.h"
#include "deck/objects/Application.h"
#include "support/ChartDeck.h"
#include "support/DeckBuilder.h"
#include "support/TemporaryFolder.h"

// A deck as a busy screen has it: every slide with twenty linked text shapes,
// each with its tags in a part of its own. The argument is the number of slides;
// 100 slides make 2,101 tag parts.

namespace {

using namespace support;

constexpr int ShapesPerSlide = 20;

/// A deck file that lasts for one benchmark.
struct DeckOnDisk {
  explicit DeckOnDisk(int slides)
      : path(folder.write("linked.pptx", bench::linkedDeck(slides, ShapesPerSlide))) {}
  TemporaryFolder folder;
  std::string path;
};

std::size_t readTags(PowerPoint::Tags& tags) {
  std::size_t size = 0;
  for (std::int32_t i = tags.Count(); i >= 1; --i) size += tags.Name(i).size() + tags.Value(i).size();
  return size;
}

/// Reads every tag and text and sets every text, as filling a deck does.
std::size_t fill(deck::Presentation& presentation, const std::string& value) {
  std::size_t size = readTags(*presentation.Tags());
  const auto slides = presentation.Slides();
  for (std::int32_t i = slides->Count(); i >= 1; --i) {
    const auto slide = slides->Item(i);
    size += readTags(*slide->Tags());
    const auto shapes = slide->Shapes();
    for (std::int32_t j = shapes->Count(); j >= 1; --j) {
      const auto shape = shapes->Item(j);
      size += readTags(*shape->Tags());
      const auto range = shape->TextFrame()->TextRange();
      size += range->Text().size();
      range->Text(value + std::to_string(j));
    }
  }
  return size;
}

void OpenAndFill(benchmark::State& state) {
  const DeckOnDisk deck(static_cast<int>(state.range(0)));
  for (auto _ : state) {
    const auto application = std::make_shared<deck::Application>();
    const auto presentation = application->open(deck.path);
    benchmark::DoNotOptimize(fill(*presentation, "12.50 "));
  }
}
BENCHMARK(OpenAndFill)->Arg(100)->Arg(1000)->Unit(benchmark::kMillisecond);

void OpenFillAndSave(benchmark::State& state) {
  const DeckOnDisk deck(static_cast<int>(state.range(0)));
  int round = 0;
  for (auto _ : state) {
    const auto application = std::make_shared<deck::Application>();
    const auto presentation = application->open(deck.path);
    fill(*presentation, std::to_string(++round) + ".50 ");
    presentation->Save();
  }
}
BENCHMARK(OpenFillAndSave)->Arg(100)->Arg(1000)->Unit(benchmark::kMillisecond);

void Open(benchmark::State& state) {
  const DeckOnDisk deck(static_cast<int>(state.range(0)));
  for (auto _ : state) {
    const auto application = std::make_shared<deck::Application>();
    benchmark::DoNotOptimize(application->open(deck.path));
  }
}
BENCHMARK(Open)->Arg(100)->Arg(1000)->Unit(benchmark::kMillisecond);

/// Takes every tag away and adds it again with another row, as relinking does.
void RelinkEveryShapeAndSave(benchmark::State& state) {
  const DeckOnDisk deck(static_cast<int>(state.range(0)));
  int round = 0;
  for (auto _ : state) {
    const auto application = std::make_shared<deck::Application>();
    const auto presentation = application->open(deck.path);
    ++round;
    for (std::int32_t i = 1; i <= presentation->slideCount(); ++i) {
      const auto shapes = presentation->Slides()->Item(i)->Shapes();
      for (std::int32_t j = shapes->Count(); j >= 1; --j) {
        const auto tags = shapes->Item(j)->Tags();
        while (tags->Count() > 0) tags->Delete(tags->Name(tags->Count()));
        tags->Add("CORVANE COLUMN TYPE", "2");
        tags->Add("CORVANE COLUMN ROW", std::to_string(round));
      }
    }
    presentation->Save();
  }
}
BENCHMARK(RelinkEveryShapeAndSave)->Arg(100)->Arg(1000)->Unit(benchmark::kMillisecond);

/// The clock of a running show: one text, a thousand times.
void RewriteOneText(benchmark::State& state) {
  DeckBuilder builder;
  builder.addSlide(textShape(2, "Clock", "0"));
  const auto presentation = builder.presentation();
  const auto range = presentation->Slides()->Item(1)->Shapes()->Item("clock")->TextFrame()->TextRange();
  int tick = 0;
  for (auto _ : state) range->Text(std::to_string(++tick));
}
BENCHMARK(RewriteOneText);

/// Categories and five series of numbers; `round` is part of them.
MSGraph::Table numbers(std::size_t rows, int round) {
  MSGraph::Table table(rows + 1, 6);
  for (std::size_t column = 0; column < 6; ++column)
    table.cell(0, column, "Column " + std::to_string(column));
  for (std::size_t row = 1; row <= rows; ++row) {
    table.cell(row, 0, "Row " + std::to_string(row));
    for (std::size_t column = 1; column < 6; ++column) {
      table.cell(row, column, std::to_string(row * column) + "." + std::to_string(round));
    }
  }
  return table;
}

/// A chart of so many rows, refilled with other numbers until a renderer can read it.
void RefillChart(benchmark::State& state) {
  const auto presentation = ChartDeck().build().presentation();
  const auto sheet = presentation->Slides()
                         ->Item(1)
                         ->Shapes()
                         ->Item("Chart")
                         ->OLEFormat()
                         ->Object()
                         ->Application()
                         ->DataSheet();
  const auto rows = static_cast<std::size_t>(state.range(0));
  const std::array<MSGraph::Table, 2> tables{numbers(rows, 1), numbers(rows, 2)};
  std::size_t round = 0;
  for (auto _ : state) {
    sheet->Cells(tables[++round % 2]);
    benchmark::DoNotOptimize(presentation->package().part("ppt/charts/chart1.xml").xml());
  }
}
BENCHMARK(RefillChart)->Arg(12)->Arg(100000)->Unit(benchmark::kMicrosecond);

/// The same, and a copy with the data in the workbook.
void RefillChartAndCopy(benchmark::State& state) {
  const TemporaryFolder folder;
  const std::string copy = (folder.path() / "copy.pptx").string();
  const auto presentation = ChartDeck().build().presentation();
  const auto sheet = presentation->Slides()
                         ->Item(1)
                         ->Shapes()
                         ->Item("Chart")
                         ->OLEFormat()
                         ->Object()
                         ->Application()
                         ->DataSheet();
  const auto rows = static_cast<std::size_t>(state.range(0));
  int round = 0;
  for (auto _ : state) {
    sheet->Cells(numbers(rows, ++round));
    presentation->SaveCopyAs(copy);
  }
}
BENCHMARK(RefillChartAndCopy)->Arg(12)->Arg(100000)->Unit(benchmark::kMillisecond);

}  // namespace
