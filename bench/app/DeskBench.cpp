// What an edit of a whole deck of 2,000 linked shapes costs whoever edits it: taking it as a step, undoing
// it, keeping it for recovery.
#include <benchmark/benchmark.h>

#include <filesystem>
#include <memory>

#include "app/LinkedDeck.h"
#include "app/desk/Journal.h"
#include "app/desk/UndoStack.h"
#include "deck/objects/Application.h"
#include "model/clsPresentation.h"
#include "support/TemporaryFolder.h"

namespace {

class EditedDeck {
 public:
  EditedDeck() { linked_.Describe(deck_); }

  /// Takes every link off, or moves every link to another row.
  void edit(bool unlinks) {
    undo.begin({"Edit", ""}, "");
    if (unlinks) {
      linked_.RemoveLumenfold();
    } else {
      moveRows();
    }
  }

 private:
  void moveRows() {
    ++row_;
    for (std::int32_t slide = 1; slide <= deck_->slideCount(); ++slide) {
      const auto shapes = deck_->Slides()->Item(slide)->Shapes();
      for (std::int32_t i = 1; i <= shapes->Count(); ++i) {
        shapes->Item(i)->Tags()->Add("CORVANE COLUMN ROW", std::to_string(row_));
      }
    }
  }

  support::TemporaryFolder folder_;
  std::shared_ptr<deck::Application> application_ = std::make_shared<deck::Application>();
  std::shared_ptr<deck::Presentation> deck_ =
      application_->open(folder_.write("deck.pptx", bench::linkedDeck(100, 20)));
  LF2000::clsPresentation linked_;
  int row_ = 1;

 public:
  app::EditLog log{deck_};
  app::UndoStack undo{log};
  std::string state = folder_.path().string() + "/state";
};

/// The argument: whether all links are taken off.
void TakeAsStep(benchmark::State& state) {
  EditedDeck desk;
  const bool unlinks = state.range(0) != 0;
  for (auto _ : state) {
    state.PauseTiming();
    desk.edit(unlinks);
    state.ResumeTiming();
    benchmark::DoNotOptimize(desk.undo.end());
    state.PauseTiming();
    desk.undo.undo();
    state.ResumeTiming();
  }
}
BENCHMARK(TakeAsStep)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);

void Undo(benchmark::State& state) {
  EditedDeck desk;
  desk.edit(state.range(0) != 0);
  for (auto _ : state) {
    benchmark::DoNotOptimize(desk.undo.undo());
    state.PauseTiming();
    desk.undo.redo();
    state.ResumeTiming();
  }
}
BENCHMARK(Undo)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);

void WriteJournal(benchmark::State& state) {
  EditedDeck desk;
  desk.edit(state.range(0) != 0);
  desk.undo.end();
  app::Journal journal(desk.state, "/decks/deck.pptx");
  for (auto _ : state) benchmark::DoNotOptimize(journal.write(desk.log.unsavedChanges()));
}
BENCHMARK(WriteJournal)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);

}  // namespace
