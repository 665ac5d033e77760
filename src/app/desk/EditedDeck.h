#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "app/desk/DeckFile.h"
#include "app/desk/DeckLock.h"
#include "app/desk/Journal.h"
#include "app/desk/Rebase.h"
#include "app/desk/UndoStack.h"
#include "deck/objects/Application.h"
#include "platform/EventLoop.h"

namespace app {

/// An open deck that is being edited: its steps, what of it is unsaved, saving, newer versions of its file,
/// and what an earlier run has left unsaved. It draws and fills nothing: whoever owns it takes up what its
/// answers name (StepEffect), by the system.
class EditedDeck {
 public:
  struct Options {
    /// For journals; empty: none is kept.
    std::string stateFolder;
    /// Follows the deck's file; may be null.
    DeckLock* lock = nullptr;
    /// Names the window in which a step begins; may be null.
    std::function<std::string()> window = {};
    /// Names the shapes whose edits a save leaves out: they are in the file as they were, and stay unsaved;
    /// may be null.
    std::function<std::vector<deck::OwnerId>()> keptOut = {};
  };
  /// All are called on the loop; any may be null.
  struct Hearer {
    /// Another version has taken the place of this one, with our edits in it, and the system has taken it up.
    /// The one before is closed afterwards. `kept`: how many of our edits are unsaved in it.
    std::function<void(const std::shared_ptr<deck::Presentation>& before, std::size_t kept)> replaced;
    /// A newer version waits, as something is unsaved: see newer(). Called again for each further version.
    std::function<void()> newer;
    /// A newer version stays broken; why, as a sentence.
    std::function<void(const std::string& why)> broken;
    /// What goes wrong beside the work itself (no journal can be written): told once.
    std::function<void(const std::string& problem)> problem;
    /// Another version is about to take the place of this one.
    std::function<void()> replacing;
  };

  /// The presentation was opened by the application, which tells it where undo entries start. The objects
  /// must outlive this one.
  EditedDeck(deck::Application& application, platform::EventLoop& loop,
             std::shared_ptr<deck::Presentation> presentation, Options options, Hearer hearer);
  ~EditedDeck();
  EditedDeck(const EditedDeck&) = delete;
  EditedDeck& operator=(const EditedDeck&) = delete;

  [[nodiscard]] const std::shared_ptr<deck::Presentation>& presentation() const { return presentation_; }
  [[nodiscard]] const DeckFile& file() const { return file_; }

  /// To be called when the handler of a gesture is over: what it changed becomes a step, and goes into the
  /// journal. Costs nothing when nothing has changed. Answers whether something has.
  bool endStep();
  /// As of the last endStep(): the number of owners that differ from the file.
  [[nodiscard]] std::size_t unsaved() const { return log_->unsaved(); }
  [[nodiscard]] std::optional<StepName> undoName() const { return undo_.undoName(); }
  [[nodiscard]] std::optional<StepName> redoName() const { return undo_.redoName(); }
  /// Nothing when there is no step.
  std::optional<StepEffect> undo();
  std::optional<StepEffect> redo();

  enum class Saved {
    Written,
    /// The file was gone and has been written anew.
    WrittenAnew,
    /// Nothing is unsaved but what is kept out: the file was not touched.
    NothingToDo,
  };
  /// Saves as the host does, so that the system takes its live values out. Throws basic::Error saying why it
  /// cannot; nothing is lost then, but shapes may be blank until they are filled again. When another program
  /// has saved meanwhile, that is the reason, and newer() has its version.
  Saved save();

  /// The newer version that waits, with what it has against our edits; null without one. Conflicts may be
  /// decided in it.
  [[nodiscard]] Rebase* newer() const { return newer_ ? newer_->rebase.get() : nullptr; }
  /// Takes it, and keeps our edits. Nothing without one.
  void takeNewer();
  /// Makes another file's bytes the newer version, in the deck's file and here, as if PowerPoint had saved
  /// it. Throws when they are no whole deck, or the deck's file cannot be replaced.
  void upload(const std::string& file);

  /// What an earlier run left; null when there is nothing. Its conflicts may be decided.
  [[nodiscard]] Rebase* recoverable() const { return recovery_.get(); }
  /// When that was written last.
  [[nodiscard]] std::time_t recoverableSince() const { return journal_->recoverable()->written; }
  struct Recovered {
    StepEffect effect;
    /// The numbers of connections whose password was not kept and has to be given anew.
    std::vector<std::string> withoutSecrets;
  };
  /// Applies it, as one step.
  Recovered recover();
  void discardRecoverable();
  /// Journals that could not be read and were put aside, a sentence each.
  [[nodiscard]] std::vector<std::string> damagedJournals() const {
    return journal_ ? journal_->damages() : std::vector<std::string>();
  }

 private:
  struct Newer {
    std::shared_ptr<deck::Presentation> presentation;
    std::unique_ptr<EditLog> log;
    std::unique_ptr<Rebase> rebase;
  };

  void watch();
  void offer(DeckVersion version);
  void compareWithNewer();
  [[nodiscard]] OwnerChanges takeKeptOut();
  Saved saveTheRest();
  void writeJournal();
  void noteSaved();
  void followFile();

  deck::Application& application_;
  platform::EventLoop& loop_;
  std::shared_ptr<deck::Presentation> presentation_;
  Options options_;
  Hearer hearer_;
  DeckFile file_;
  std::unique_ptr<EditLog> log_;
  UndoStack undo_;
  std::unique_ptr<Journal> journal_;
  std::unique_ptr<Rebase> recovery_;
  std::vector<std::string> withoutSecrets_;
  bool isJournalProblemTold_ = false;
  std::optional<Newer> newer_;
  std::unique_ptr<DeckWatch> watch_;
};

}  // namespace app
