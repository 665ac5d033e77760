// The form on which an author decides, one by one, what two versions of the deck disagree about.

#include "app/desk/ConflictsForm.h"

#include <algorithm>
#include <utility>

#include "addin/support/modErrors.h"
#include "basic/Counted.h"

namespace app {
namespace {

bool sayTheSame(const EditConflict& a, const EditConflict& b) {
  return a.owner == b.owner && a.ours == b.ours && a.theirs == b.theirs && a.isGone == b.isGone;
}

/// A caption's "&" marks an access key; texts of decks have none.
std::string withoutKeys(const std::string& text) {
  std::string caption;
  for (const char c : text) caption += c == '&' ? std::string("&&") : std::string(1, c);
  return caption;
}

}  // namespace

ConflictsForm::ConflictsForm(std::string subject, Surroundings around)
    : Form("frmConflicts", "Changed on both sides", Forms::Width::Wide),
      around_(std::move(around)),
      shown_(around_.rebase()->conflicts()),
      cmdOK_(Add<Forms::CommandButton>("cmdOK", "")) {
  Subject(std::move(subject));
  const std::size_t count = std::min(shown_.size(), MostLines);
  for (std::size_t i = 0; i < count; ++i) AddLine(shown_[i], i + 1);
  if (shown_.size() > count) {
    auto& lblMore = Add<Forms::Label>("lblMore");
    lblMore.Text(basic::Counted(shown_.size() - count, "further shape") +
                 " changed on both sides: All mine and All theirs decide there as well.");
    AddRow("", {&lblMore});
  }
  auto& cmdOurs = Add<Forms::CommandButton>("cmdOurs", "All &mine");
  auto& cmdTheirs = Add<Forms::CommandButton>("cmdTheirs", "All &theirs");
  auto& cmdCancel = Add<Forms::CommandButton>("cmdCancel", "Not now");
  cmdOurs.Click = [this] { ChooseAll(true); };
  cmdTheirs.Click = [this] { ChooseAll(false); };
  cmdOK_.Click = [this] { Take(); };
  cmdCancel.Click = [this] { Close(Forms::Result::Cancel); };
  AddRow("", {&cmdOurs, &cmdTheirs});
  AddButtons({&cmdOK_, &cmdCancel});
  DefaultButton(cmdOK_);
  CancelButton(cmdCancel);
  ShowCaption();
}

void ConflictsForm::AddLine(const EditConflict& conflict, std::size_t number) {
  const std::string suffix = std::to_string(number);
  const auto& group = Add<Forms::Frame>("fraOwner" + suffix, withoutKeys(conflict.name));
  if (conflict.isGone) {
    auto& gone = Add<Forms::Label>("lblGone" + suffix);
    gone.Text("It is no longer in the deck. Yours would be: " + conflict.ours + ".",
              Forms::Severity::Warning);
    AddRow("", {&gone}, &group);
    lines_.emplace_back();
    return;
  }
  const auto option = [&](const char* prefix, const char* whose, const std::string& words) {
    return &Add<Forms::OptionButton>(prefix + suffix, whose + withoutKeys(words), "side" + suffix);
  };
  const Line line{option("optOurs", "Mine: ", conflict.ours),
                  option("optTheirs", "In the file: ", conflict.theirs)};
  (conflict.takesOurs ? line.ours : line.theirs)->Value(true);
  line.ours->Change = [this, place = number - 1] { Choose(place, true); };
  line.theirs->Change = [this, place = number - 1] { Choose(place, false); };
  AddRow("", {line.ours}, &group);
  AddRow("", {line.theirs}, &group);
  lines_.push_back(line);
}

bool ConflictsForm::isOutdated() const {
  const Rebase* rebase = around_.rebase();
  return rebase == nullptr || !std::equal(shown_.begin(), shown_.end(), rebase->conflicts().begin(),
                                          rebase->conflicts().end(), sayTheSame);
}

void ConflictsForm::Choose(std::size_t place, bool takesOurs) {
  Rebase* rebase = around_.rebase();
  if (rebase == nullptr) return;
  for (EditConflict& conflict : rebase->conflicts()) {
    if (conflict.owner == shown_[place].owner) conflict.takesOurs = takesOurs;
  }
  ShowCaption();
}

void ConflictsForm::ChooseAll(bool takesOurs) {
  Rebase* rebase = around_.rebase();
  if (rebase == nullptr) return;
  for (EditConflict& conflict : rebase->conflicts()) conflict.takesOurs = takesOurs;
  for (const Line& line : lines_) {
    if (line.ours != nullptr) (takesOurs ? line.ours : line.theirs)->Value(true);
  }
  ShowCaption();
}

void ConflictsForm::ShowCaption() { cmdOK_.Caption(around_.caption(around_.rebase()->kept())); }

void ConflictsForm::Take() {
  const bool isOver = isOutdated();
  const auto take = around_.take;
  Close(isOver ? Forms::Result::Cancel : Forms::Result::OK);
  if (!isOver) take();
}

void ConflictsForm::CatchError() { LF2000::modErrors::CatchError(); }

}  // namespace app
