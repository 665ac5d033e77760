// Steps made of what the log has heard, merged while they go on in one run.

#include "app/desk/UndoStack.h"

#include <algorithm>
#include <utility>

namespace app {

void UndoStack::begin(const StepName& name, std::string_view run) {
  end();
  name_ = name;
  run_ = run;
}

bool UndoStack::end() {
  StepName name = std::exchange(name_, {});
  const std::string run = std::exchange(run_, {});
  if (!log_->isTouched()) return false;
  OwnerChanges changes = log_->take();
  if (changes.empty()) return false;
  undone_.clear();
  const bool goesOn = !isRunOver_ && !run.empty() && !done_.empty() && done_.back().run == run &&
                      done_.back().name.window == name.window;
  isRunOver_ = false;
  if (goesOn) {
    done_.back().name = std::move(name);
    merge(std::move(changes));
    return true;
  }
  if (name.label.empty()) name.label = "Edit";
  done_.push_back({std::move(name), run, std::move(changes)});
  if (done_.size() > MaximumSteps) done_.pop_front();
  return true;
}

StepEffect UndoStack::add(const std::string& label, OwnerChanges changes) {
  end();
  endRun();
  undone_.clear();
  if (!changes.empty()) done_.push_back({{label, {}}, {}, changes});
  return effectOf({{label, {}}, {}, std::move(changes)});
}

void UndoStack::merge(OwnerChanges changes) {
  OwnerChanges& merged = done_.back().changes;
  for (OwnerChange& change : changes) {
    const auto known = std::lower_bound(
        merged.begin(), merged.end(), change.owner,
        [](const OwnerChange& other, const deck::OwnerId& owner) { return other.owner < owner; });
    if (known == merged.end() || known->owner != change.owner) {
      merged.insert(known, std::move(change));
    } else {
      known->after = std::move(change.after);
    }
  }
  std::erase_if(merged, [](const OwnerChange& change) { return isSame(*change.before, *change.after); });
  if (!merged.empty()) return;
  done_.pop_back();
  endRun();
}

std::optional<StepName> UndoStack::undoName() const {
  return done_.empty() ? std::nullopt : std::optional(done_.back().name);
}

std::optional<StepName> UndoStack::redoName() const {
  return undone_.empty() ? std::nullopt : std::optional(undone_.back().name);
}

std::optional<StepEffect> UndoStack::move(std::deque<Step>& from, std::deque<Step>& to, bool isUndo) {
  end();
  if (from.empty()) return std::nullopt;
  StepEffect effect = apply(from.back(), isUndo);
  to.push_back(std::move(from.back()));
  from.pop_back();
  return effect;
}

std::optional<StepEffect> UndoStack::undo() { return move(done_, undone_, /*isUndo=*/true); }

std::optional<StepEffect> UndoStack::redo() { return move(undone_, done_, /*isUndo=*/false); }

void UndoStack::follow(EditLog& log, const Translate& translate) {
  log_ = &log;
  endRun();
  const auto follows = [&](Step& step) {
    for (OwnerChange& change : step.changes) {
      change.before = translate(change.owner, change.before);
      change.after = translate(change.owner, change.after);
      if (!change.before || !change.after) return false;
    }
    // What the other version has already is no step of it.
    std::erase_if(step.changes,
                  [](const OwnerChange& change) { return isSame(*change.before, *change.after); });
    return true;
  };
  for (std::deque<Step>* steps : {&done_, &undone_}) {
    const auto last = std::find_if_not(steps->rbegin(), steps->rend(), follows);
    steps->erase(steps->begin(), last.base());
    std::erase_if(*steps, [](const Step& step) { return step.changes.empty(); });
  }
}

StepEffect UndoStack::apply(const Step& step, bool isUndo) {
  endRun();
  for (const OwnerChange& change : step.changes) {
    log_->put(change.owner, isUndo ? change.before : change.after);
  }
  return effectOf(step);
}

StepEffect UndoStack::effectOf(const Step& step) {
  StepEffect effect;
  effect.label = step.name.label;
  for (const OwnerChange& change : step.changes) {
    if (change.owner.isPresentation()) {
      effect.presentation = true;
    } else {
      (change.owner.isSlide() ? effect.slides : effect.shapes).push_back(change.owner);
    }
  }
  return effect;
}

}  // namespace app
