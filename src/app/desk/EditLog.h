#pragma once

#include <map>
#include <memory>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "deck/objects/OwnContent.h"
#include "deck/objects/Presentation.h"

namespace app {

/// What edits can change of an owner (the presentation, a slide or a shape), at one moment.
struct OwnerState {
  std::vector<deck::Tag> tags;
  /// A shape's; else empty.
  std::string name;
  /// Of a shape that is not linked. A linked one holds live values, which are nobody's work: null.
  std::shared_ptr<const deck::OwnContent> content;
};

/// Whether it is that of a linked shape.
[[nodiscard]] bool isLinked(const OwnerState& state);
/// Whether both mean the same to an author. The display type is a view, written when the deck is saved, and
/// does not count.
[[nodiscard]] bool isSame(const OwnerState& a, const OwnerState& b);

/// States are shared: what one step left is what the next one finds.
struct OwnerChange {
  deck::OwnerId owner;
  std::shared_ptr<const OwnerState> before;
  std::shared_ptr<const OwnerState> after;
};

using OwnerChanges = std::vector<OwnerChange>;

/// Listens to the edits of an open deck: what has changed of which owner since it was asked last, and what
/// differs from the deck's file. Nothing is walked: the cost is that of the owners that are edited.
class EditLog final : public deck::EditListener {
 public:
  /// The deck is as in its file.
  explicit EditLog(std::shared_ptr<deck::Presentation> presentation);
  ~EditLog() override;
  EditLog(const EditLog&) = delete;
  EditLog& operator=(const EditLog&) = delete;

  [[nodiscard]] deck::Presentation& presentation() const { return *presentation_; }

  /// Whether something has been touched since take(), be it changed or not.
  [[nodiscard]] bool isTouched() const { return !touched_.empty(); }
  /// What has changed since the last call, in the order of OwnerId.
  OwnerChanges take();
  /// What an owner is now and what it is in the file, as far as that was taken; null when the deck has no
  /// such owner.
  [[nodiscard]] std::shared_ptr<const OwnerState> current(const deck::OwnerId& owner);
  [[nodiscard]] std::shared_ptr<const OwnerState> inFile(const deck::OwnerId& owner);
  /// Gives an owner this state. The answer is false when the deck has no such owner; nothing happens then.
  bool put(const deck::OwnerId& owner, const std::shared_ptr<const OwnerState>& state);

  // As of the last take() or put():

  /// The number of owners that differ from the file.
  [[nodiscard]] std::size_t unsaved() const { return different_.size(); }
  /// Those owners; `before` is what the file has.
  [[nodiscard]] OwnerChanges unsavedChanges() const;
  /// The file has the present state from now on.
  void noteSaved();
  /// Whether the presentation has been saved since the last call.
  [[nodiscard]] bool takeSaved() { return std::exchange(isSaved_, false); }

  void tagsWillChange(const deck::OwnerId& owner) override { touch(owner); }
  void nameWillChange(const deck::OwnerId& owner) override { touch(owner); }
  void saved() override { isSaved_ = true; }

 private:
  struct Record {
    std::shared_ptr<const OwnerState> inFile;
    std::shared_ptr<const OwnerState> current;
  };

  void touch(const deck::OwnerId& owner);
  /// Null for an owner that the deck does not have.
  Record* record(const deck::OwnerId& owner);
  /// `known` lends its content, if that is still the same.
  [[nodiscard]] std::shared_ptr<const OwnerState> read(const deck::OwnerId& owner, const OwnerState* known);
  void compare(const deck::OwnerId& owner, const Record& record);

  std::shared_ptr<deck::Presentation> presentation_;
  std::map<deck::OwnerId, Record> records_;  // of all that was ever edited
  std::set<deck::OwnerId> touched_;
  std::set<deck::OwnerId> different_;
  bool isPutting_ = false;
  bool isSaved_ = false;
};

}  // namespace app
