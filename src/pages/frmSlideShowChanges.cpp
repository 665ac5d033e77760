// What an author does to connections on the page of the presentation: tests, removes, replaces them.

#include <utility>

#include "basic/Strings.h"
#include "pages/frmSlideShow.h"

namespace LF2000 {

namespace {

std::string CaptionOf(const clsConnection& connection) {
  return connection.ConnectionTagNumber() + " " + connection.ConnectionDescription();
}

/// The first places, so that a question stays one that is read.
std::string FirstOf(const std::vector<std::string>& places) {
  constexpr std::size_t Most = 10;
  std::string text;
  for (std::size_t i = 0; i < places.size() && i < Most; ++i) text += (i == 0 ? "" : ", ") + places[i];
  return places.size() > Most ? text + " and " + std::to_string(places.size() - Most) + " more" : text;
}

}  // namespace

void frmSlideShow::Test(const clsConnection& connection) {
  const std::string& number = connection.ConnectionTagNumber();
  auto& trial = trials_[number];
  if (trial) trial->Abandon();
  trial = std::make_shared<ConnectionTrial>(modConnections::CopyOf(connection));
  results_.erase(number);
  trial->Progress([this, weak = weak_from_this()](const std::string& text) {
    if (const auto form = weak.lock()) lblResult_.Text(text);
  });
  const std::weak_ptr<Forms::Form> weak = weak_from_this();
  trial->Start([this, weak, number, caption = CaptionOf(connection)](const TrialResult& result) {
    const auto form = weak.lock();
    if (!form || !IsShown()) return;
    Update([&] {
      const bool isRead = result.Failure.empty();
      results_[number] = isRead ? "tested: " + RowsText(result) : result.Failure;
      lblResult_.Text(
          caption + ": " + (isRead ? RowsText(result) + ", " + ColumnsText(result) : result.Failure),
          isRead ? Forms::Severity::Ok : Forms::Severity::Error);
      ShowItems();
    });
  });
  ShowItems();
}

void frmSlideShow::TestAll() {
  // Each by a job, so that one that does not answer holds up the others for its deadline at most.
  const auto connections = Presentation()->Connections();
  for (const auto& connection : connections) {
    if (!connection->IsSample()) Test(*connection);
  }
}

void frmSlideShow::EndTrials() {
  for (const auto& entry : trials_) entry.second->Abandon();
  trials_.clear();
  if (comparison_) comparison_->Abandon();
  comparison_.reset();
}

void frmSlideShow::HideQuestions() {
  if (comparison_) comparison_->Abandon();
  comparison_.reset();
  for (Forms::Control* control : std::initializer_list<Forms::Control*>{
           &lblRemove_, &cmdRemoveNow_, &cmdKeep_, &cmbReplacement_, &lblComparison_, &cmdUse_, &cmdLeave_}) {
    control->Visible(false);
  }
}

void frmSlideShow::AskRemove() {
  HideQuestions();
  const auto uses = uses_.find(SelectedNumber());
  if (uses == uses_.end()) return Remove();
  const std::string shapes = uses->second.Shapes == 1 ? " loses its link: " : " lose their link: ";
  lblRemove_.Text(uses->second.Text() + shapes + FirstOf(uses->second.Places) + ".",
                  Forms::Severity::Warning);
  cmdRemoveNow_.Caption("Re&move " + SelectedNumber());
  for (Forms::Control* control :
       std::initializer_list<Forms::Control*>{&lblRemove_, &cmdRemoveNow_, &cmdKeep_}) {
    control->Visible(true);
  }
  Focus(cmdKeep_);
}

void frmSlideShow::Remove() {
  HideQuestions();
  const auto connection = Selected();
  if (!connection) return;
  modConnections::Remove(*Presentation(), connection->ConnectionTagNumber());
  lblResult_.Text(CaptionOf(*connection) + " has been removed.");
  lstConnections_.Selected({});
  lstUses_.Visible(false);
  Reload();
}

void frmSlideShow::AskReplace() {
  HideQuestions();
  Forms::Items others;
  for (const auto& connection : Presentation()->Connections()) {
    if (connection->ConnectionTagNumber() != SelectedNumber()) others.push_back({CaptionOf(*connection), {}});
  }
  cmbReplacement_.Items(std::move(others));
  cmbReplacement_.Text("");
  cmbReplacement_.Visible(true);
  cmdLeave_.Visible(true);
  Focus(cmbReplacement_);
}

void frmSlideShow::ReplacementChosen() {
  if (comparison_) comparison_->Abandon();
  comparison_.reset();
  cmdUse_.Visible(false);
  const std::string number = cmbReplacement_.Text().substr(0, cmbReplacement_.Text().find(' '));
  const auto other = Presentation()->FindConnection(number);
  if (!other) return;
  lblComparison_.Visible(true);
  if (other->RecordsetReady()) return Compare(number, *other);
  lblComparison_.Text("Reading its columns\u2026");
  comparison_ = std::make_shared<ConnectionTrial>(modConnections::CopyOf(*other));
  comparison_->Start([this, weak = weak_from_this(), number](const TrialResult& result) {
    const auto form = weak.lock();
    if (!form || !IsShown()) return;
    Update([&] {
      if (result.Failure.empty()) return Compare(number, comparison_->Connection());
      lblComparison_.Text("Its columns cannot be compared: " + result.Failure, Forms::Severity::Warning);
      cmdUse_.Caption("&Use " + number + " all the same");
      cmdUse_.Visible(true);
    });
  });
}

void frmSlideShow::Compare(const std::string& number, const clsConnection& other) {
  const modConnections::Uses& uses = uses_[SelectedNumber()];
  std::string missing;
  for (const std::string& column : modConnections::MissingColumns(uses, other)) {
    const std::size_t shapes = uses.Columns.at(column);
    missing += (missing.empty() ? "'" : ", '") + column + "' (" + std::to_string(shapes) +
               (shapes == 1 ? " shape)" : " shapes)");
  }
  if (missing.empty()) {
    lblComparison_.Text("It has every column that these links use.", Forms::Severity::Ok);
  } else {
    lblComparison_.Text("It has no column " + missing + ". These shapes will show nothing.",
                        Forms::Severity::Warning);
  }
  cmdUse_.Caption("&Use " + number + " for " + std::to_string(uses.Shapes) +
                  (uses.Shapes == 1 ? " link" : " links"));
  cmdUse_.Visible(true);
}

void frmSlideShow::Replace() {
  const std::string number = cmbReplacement_.Text().substr(0, cmbReplacement_.Text().find(' '));
  const std::string before = SelectedNumber();
  HideQuestions();
  modConnections::MoveLinks(*Presentation(), before, number);
  lblResult_.Text("What showed " + before + " shows " + number + " now.", Forms::Severity::Ok);
  Reload();
}

}  // namespace LF2000
