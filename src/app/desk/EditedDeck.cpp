// What is edited, saved, recovered, and put onto newer versions of its file.

#include "app/desk/EditedDeck.h"

#include <utility>

#include "app/wiring/Failure.h"
#include "basic/Quotes.h"

namespace app {

EditedDeck::EditedDeck(deck::Application& application, platform::EventLoop& loop,
                       std::shared_ptr<deck::Presentation> presentation, Options options, Hearer hearer)
    : application_(application),
      loop_(loop),
      presentation_(std::move(presentation)),
      options_(std::move(options)),
      hearer_(std::move(hearer)),
      file_(presentation_->FullName()),
      log_(std::make_unique<EditLog>(presentation_)),
      undo_(*log_) {
  application_.onUndoEntry([this](std::string_view label, std::string_view run) {
    undo_.begin({std::string(label), options_.window ? options_.window() : std::string()}, run);
  });
  if (!options_.stateFolder.empty()) {
    journal_ = std::make_unique<Journal>(options_.stateFolder, file_.path());
  }
  if (journal_ && journal_->recoverable()) {
    CompletedEdits kept = withDecksSecrets(*journal_->recoverable(), *log_->inFile({}));
    withoutSecrets_ = std::move(kept.withoutSecrets);
    recovery_ = std::make_unique<Rebase>(kept.edits, *log_);
  }
  watch();
}

EditedDeck::~EditedDeck() { application_.onUndoEntry({}); }

void EditedDeck::watch() {
  if (!presentation_->fileState()) return;
  DeckWatch::Hearer hearer;
  hearer.version = [this](DeckVersion version) { offer(std::move(version)); };
  hearer.broken = [this](const std::string& why) {
    if (hearer_.broken) hearer_.broken(why);
  };
  watch_ = std::make_unique<DeckWatch>(loop_, file_.path(), *presentation_->fileState(),
                                       presentation_->package().fingerprint(), std::move(hearer));
}

bool EditedDeck::endStep() {
  const bool isStep = undo_.end();
  const bool isSaved = log_->takeSaved();
  if (isSaved) noteSaved();
  if (isStep && !isSaved) writeJournal();
  return isStep;
}

void EditedDeck::noteSaved() {
  static_cast<void>(log_->take());  // the display type
  log_->noteSaved();
  undo_.endRun();
  followFile();
  writeJournal();
}

std::optional<StepEffect> EditedDeck::undo() {
  auto effect = undo_.undo();
  if (effect) writeJournal();
  return effect;
}

std::optional<StepEffect> EditedDeck::redo() {
  auto effect = undo_.redo();
  if (effect) writeJournal();
  return effect;
}

void EditedDeck::writeJournal() {
  if (newer_) compareWithNewer();
  if (!journal_) return;
  const auto problem = journal_->write(log_->unsavedChanges());
  if (problem && !std::exchange(isJournalProblemTold_, true) && hearer_.problem) hearer_.problem(*problem);
}

/// Shapes that are kept out are as in the file until putBack.
OwnerChanges EditedDeck::takeKeptOut() {
  OwnerChanges taken;
  if (!options_.keptOut) return taken;
  for (const deck::OwnerId& owner : options_.keptOut()) {
    const auto inFile = log_->inFile(owner);
    if (!inFile) continue;
    taken.push_back({owner, inFile, log_->current(owner)});
    log_->put(owner, inFile);
  }
  return taken;
}

EditedDeck::Saved EditedDeck::save() {
  endStep();
  const OwnerChanges keptOut = takeKeptOut();
  const auto putBack = [&] {
    for (const OwnerChange& change : keptOut) log_->put(change.owner, change.after);
    if (!keptOut.empty()) writeJournal();
  };
  try {
    const Saved saved = saveTheRest();
    putBack();
    return saved;
  } catch (...) {
    putBack();
    throw;
  }
}

EditedDeck::Saved EditedDeck::saveTheRest() {
  if (unsaved() == 0) return Saved::NothingToDo;
  const std::string refused = basic::InQuotes(file_.path()) + " cannot be saved: ";
  const DeckFile::Look look = file_.look(*presentation_);
  if (look == DeckFile::Look::Changed) {
    offer(file_.takeVersion());
    fail(refused +
         "another program has saved it meanwhile. Take the newer version first; your changes are kept.");
  }
  // Said before the live values are taken out for nothing.
  if (const auto why = file_.whyReadOnly()) fail(refused + *why);
  presentation_->Save();
  static_cast<void>(log_->takeSaved());
  noteSaved();
  return look == DeckFile::Look::Gone ? Saved::WrittenAnew : Saved::Written;
}

void EditedDeck::followFile() {
  if (options_.lock != nullptr) options_.lock->follow();
}

void EditedDeck::offer(DeckVersion version) {
  followFile();
  // Our own save, seen by the watch.
  if (version.package->fingerprint() == presentation_->package().fingerprint()) {
    presentation_->acceptFileState(version.state);
    newer_.reset();
    return;
  }
  endStep();
  Newer newer;
  newer.presentation =
      std::make_shared<deck::Presentation>(std::move(version.package), file_.path(), version.state);
  newer.log = std::make_unique<EditLog>(newer.presentation);
  newer_ = std::move(newer);
  compareWithNewer();
  if (unsaved() == 0) return takeNewer();
  if (hearer_.newer) hearer_.newer();
}

void EditedDeck::compareWithNewer() {
  auto rebase = std::make_unique<Rebase>(log_->unsavedChanges(), *newer_->log);
  // What was decided stays so.
  if (newer_->rebase) rebase->decideAs(*newer_->rebase);
  newer_->rebase = std::move(rebase);
}

void EditedDeck::takeNewer() {
  if (!newer_) return;
  endStep();
  if (hearer_.replacing) hearer_.replacing();
  Newer newer = std::move(*newer_);
  newer_.reset();
  static_cast<void>(newer.rebase->apply());
  undo_.follow(*newer.log, statesIn(*newer.log, *log_));
  const auto before = std::exchange(presentation_, newer.presentation);
  const auto oldLog = std::exchange(log_, std::move(newer.log));
  // Those of an earlier run are compared anew.
  if (recovery_) {
    const CompletedEdits kept = withDecksSecrets(*journal_->recoverable(), *log_->inFile({}));
    recovery_ = std::make_unique<Rebase>(kept.edits, *log_);
  }
  application_.open(presentation_);
  // What was done in the old one while the system took up the new one.
  if (const OwnerChanges late = oldLog->take(); !late.empty()) {
    undo_.add("Edit", Rebase(late, *log_).apply());
  }
  writeJournal();
  if (hearer_.replaced) hearer_.replaced(before, unsaved());
  application_.close(before);
}

void EditedDeck::upload(const std::string& file) {
  if (file_.look(*presentation_) == DeckFile::Look::Changed) {
    offer(file_.takeVersion());
    fail(basic::InQuotes(file_.path()) +
         " has been saved by another program meanwhile. Take that version first.");
  }
  offer(file_.replaceBy(file, *presentation_));
}

EditedDeck::Recovered EditedDeck::recover() {
  if (!recovery_) return {};
  endStep();
  Recovered recovered;
  recovered.effect = undo_.add("Recover", recovery_->apply());
  recovered.withoutSecrets = std::exchange(withoutSecrets_, {});
  discardRecoverable();
  writeJournal();
  return recovered;
}

void EditedDeck::discardRecoverable() {
  recovery_.reset();
  if (journal_) journal_->forgetRecoverable();
}

}  // namespace app
