#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "app/desk/EditLog.h"
#include "app/desk/UndoStack.h"

namespace app {

/// An edit of ours that another version of the deck has something against. Both sides in words for people,
/// without passwords.
struct EditConflict {
  deck::OwnerId owner;
  /// What the owner is called: "'Price' on slide 2".
  std::string name;
  std::string ours;
  /// What the other version has; that it has no such owner any more.
  std::string theirs;
  bool isGone = false;
  /// To be chosen; without effect on what is gone.
  bool takesOurs = true;
};

/// Puts the edits of one version of a deck onto another: what PowerPoint has saved meanwhile, or the file
/// after a crash. Slides and shapes are known by their ids, wherever they stand. An owner of which both sides
/// have changed the same, each to something else, is a conflict: the link or the name of a shape, one tag of
/// a slide or of the presentation. Tags of other programs are always theirs; so is what a shape holds, but
/// for one that our edit has unlinked.
class Rebase {
 public:
  /// `before` of each edit is what both versions come from. The other version is as in its file, and must
  /// outlive this object with its log.
  Rebase(const OwnerChanges& edits, EditLog& theirs);

  [[nodiscard]] std::vector<EditConflict>& conflicts() { return conflicts_; }
  [[nodiscard]] const std::vector<EditConflict>& conflicts() const { return conflicts_; }
  /// Decides as another one did, where both have a conflict of the same owner.
  void decideAs(const Rebase& other);
  /// How many edits go over, as it is decided now; and how many there are.
  [[nodiscard]] std::size_t kept() const;
  [[nodiscard]] std::size_t count() const { return clean_.size() + conflicts_.size(); }
  /// Applies them, with those of the conflicts that take ours. Answers what has changed.
  OwnerChanges apply();

 private:
  void add(const OwnerChange& edit);
  void put(const OwnerChange& edit, bool takesOurs, OwnerChanges& changes);

  EditLog& theirs_;
  OwnerChanges clean_;
  OwnerChanges disputed_;  // one for each conflict
  std::vector<EditConflict> conflicts_;
};

/// What the states of one version of a deck are in another, for its undo history: see UndoStack::follow. They
/// are merged as edits are; one that is disputed, or of a shape with another name, is in none.
[[nodiscard]] UndoStack::Translate statesIn(EditLog& theirs, EditLog& ours);

}  // namespace app
