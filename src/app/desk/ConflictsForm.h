#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

#include "app/desk/Rebase.h"
#include "host/forms.h"

namespace app {

/// Where an author's changes and another version of the deck disagree, one by one: which side counts, ours
/// unless it is chosen otherwise. A choice is made in the rebase at once; whoever looks again finds it.
class ConflictsForm final : public Forms::Form {
 public:
  struct Surroundings {
    /// The comparison as it is now; null once it is over.
    std::function<Rebase*()> rebase;
    /// The button that applies it, when so many changes go over: "Take it and keep my 6 changes".
    std::function<std::string(std::size_t kept)> caption;
    /// That button was pressed; the form has been closed.
    std::function<void()> take;
  };
  /// Of more than MostLines conflicts the rest follows the buttons for all.
  static constexpr std::size_t MostLines = 100;

  /// `subject`: what is compared, "shop.pptx".
  ConflictsForm(std::string subject, Surroundings around);

  /// Whether other conflicts are shown than there are now.
  [[nodiscard]] bool isOutdated() const;
  [[nodiscard]] bool KeepsAtOnce() const override { return true; }

 private:
  struct Line {
    Forms::OptionButton* ours = nullptr;
    Forms::OptionButton* theirs = nullptr;
  };

  void AddLine(const EditConflict& conflict, std::size_t number);
  void Choose(std::size_t place, bool takesOurs);
  void ChooseAll(bool takesOurs);
  void ShowCaption();
  void Take();
  void CatchError() override;

  const Surroundings around_;
  /// As they were when the form was made.
  const std::vector<EditConflict> shown_;
  /// One for each of the first conflicts; empty for what is gone.
  std::vector<Line> lines_;
  Forms::CommandButton& cmdOK_;
};

}  // namespace app
