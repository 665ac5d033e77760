#pragma once

#include <cstddef>
#include <deque>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "app/desk/EditLog.h"

namespace app {

/// What undoing or redoing a step has touched: to be selected, filled and taken up anew.
struct StepEffect {
  std::string label;
  /// Tags of the presentation itself: connections, distribution.
  bool presentation = false;
  std::vector<deck::OwnerId> slides;
  /// In the order of their slides' ids.
  std::vector<deck::OwnerId> shapes;
};

/// What a step is called, and the window in which it was made; empty where none is known.
struct StepName {
  std::string label;
  std::string window;

  friend bool operator==(const StepName&, const StepName&) = default;
};

/// The steps that can be undone, and those undone that can be redone. A step is what the log has heard
/// between its beginning and the end of the handler that began it; nobody writes inverses.
///
/// One gesture is one step: begin() where the system says that one starts, end() when the handler is over.
/// Steps in which nothing has changed are none. Consecutive ones with the same run in one window become one,
/// unless something was undone, saved or begun without a run in between. Saving ends no history.
class UndoStack {
 public:
  static constexpr std::size_t MaximumSteps = 500;

  /// The log must outlive this object, or be replaced by follow().
  explicit UndoStack(EditLog& log) : log_(&log) {}

  /// What changes from now on is a step of that name ("Link Price"). What has changed before in this handler
  /// is one of its own.
  void begin(const StepName& name, std::string_view run);
  /// Answers whether there is a new step, or more in the last one.
  bool end();
  /// Takes changes that were put without the log's hearing as a step, and tells what they have touched.
  StepEffect add(const std::string& label, OwnerChanges changes);
  /// The next step is one of its own.
  void endRun() { isRunOver_ = true; }

  /// Of the step that would be undone or redone; nothing without one.
  [[nodiscard]] std::optional<StepName> undoName() const;
  [[nodiscard]] std::optional<StepName> redoName() const;
  /// Nothing when there is no step. What has been begun is ended before.
  std::optional<StepEffect> undo();
  std::optional<StepEffect> redo();
  [[nodiscard]] std::size_t steps() const { return done_.size(); }

  /// What a state of one version of the deck is in another; null for an owner that is gone or was changed
  /// there.
  using Translate = std::function<std::shared_ptr<const OwnerState>(
      const deck::OwnerId&, const std::shared_ptr<const OwnerState>&)>;
  /// Another version of the deck, with this log, has taken the place of the one before. Steps whose owners
  /// can all be translated stay. At the first other one, going back from the last, the history ends: what
  /// lies before it was made of another deck. Likewise for what was undone.
  void follow(EditLog& log, const Translate& translate);

 private:
  struct Step {
    StepName name;
    std::string run;
    OwnerChanges changes;
  };

  void merge(OwnerChanges changes);
  std::optional<StepEffect> move(std::deque<Step>& from, std::deque<Step>& to, bool isUndo);
  StepEffect apply(const Step& step, bool isUndo);
  static StepEffect effectOf(const Step& step);

  EditLog* log_;
  StepName name_;
  std::string run_;
  std::deque<Step> done_;
  std::deque<Step> undone_;  // the last is redone first
  bool isRunOver_ = true;
};

}  // namespace app
