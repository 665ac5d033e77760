// The page of the presentation: the list of its connections, and its display type.

#include "pages/frmSlideShow.h"

#include <algorithm>
#include <array>
#include <utility>

#include "basic/Error.h"
#include "connections/SourceKind.h"
#include "model/modCommandState.h"
#include "pages/modConnectionPages.h"
#include "pages/modPages.h"

namespace LF2000 {

namespace {

constexpr std::array<const char*, 3> KindNames = {"Text file", "Database", "Worksheet"};

std::string KindName(std::int32_t type) {
  const auto index = static_cast<std::size_t>(type);
  return type >= 0 && index < KindNames.size() ? KindNames[index] : "type " + std::to_string(type);
}

std::string NumberOf(const Forms::Items& items, std::int64_t index) {
  return index < 0 ? std::string() : items[static_cast<std::size_t>(index)].Text;
}

}  // namespace

frmSlideShow::frmSlideShow(std::shared_ptr<clsPresentation> presentation)
    : frmPage("frmSlideShow", "Slide show properties", Forms::Placement::Dialog, std::move(presentation),
              Forms::Width::Wide),
      lstConnections_(Add<Forms::ListBox>(
          "lstConnections",
          std::vector<std::string>{"Number", "Description", "Type", "Source", "Rows", "Used by", "State"})),
      cmbKind_(Add<Forms::ComboBox>("cmbKind")),
      cmdAdd_(Add<Forms::CommandButton>("cmdAdd", "&Add\u2026")),
      cmdEdit_(Add<Forms::CommandButton>("cmdEdit", "&Edit\u2026")),
      cmdTest_(Add<Forms::CommandButton>("cmdTest", "&Test")),
      cmdTestAll_(Add<Forms::CommandButton>("cmdTestAll", "Test a&ll")),
      cmdDuplicate_(Add<Forms::CommandButton>("cmdDuplicate", "&Duplicate")),
      cmdReplace_(Add<Forms::CommandButton>("cmdReplace", "Use another &source for these links\u2026")),
      cmdRemove_(Add<Forms::CommandButton>("cmdRemove", "&Remove")),
      cmdShowUses_(Add<Forms::CommandButton>("cmdShowUses", "Sho&w uses")),
      lblResult_(Add<Forms::Label>("lblResult")),
      lstUses_(Add<Forms::ListBox>("lstUses")),
      lblRemove_(Add<Forms::Label>("lblRemove")),
      cmdRemoveNow_(Add<Forms::CommandButton>("cmdRemoveNow", "")),
      cmdKeep_(Add<Forms::CommandButton>("cmdKeep", "&Keep it")),
      cmbReplacement_(Add<Forms::ComboBox>("cmbReplacement")),
      lblComparison_(Add<Forms::Label>("lblComparison")),
      cmdUse_(Add<Forms::CommandButton>("cmdUse", "")),
      cmdLeave_(Add<Forms::CommandButton>("cmdLeave", "Leave them as they are")),
      cmbDisplayType_(Add<Forms::ComboBox>("cmbDisplayType")),
      cmdClose_(Add<Forms::CommandButton>("cmdClose", "Close")) {
  AddControls();
  SetHandlers();
  Reload();
}

void frmSlideShow::AddControls() {
  AddRow("&Connections", {&lstConnections_});
  AddRow("", {&cmbKind_, &cmdAdd_, &cmdEdit_, &cmdDuplicate_, &cmdRemove_});
  AddRow("", {&cmdTest_, &cmdTestAll_, &cmdReplace_, &cmdShowUses_});
  AddRow("", {&lblResult_});
  AddRow("Shown by", {&lstUses_});
  AddRow("", {&lblRemove_});
  AddRow("", {&cmdRemoveNow_, &cmdKeep_});
  AddRow("&Instead of it", {&cmbReplacement_});
  AddRow("", {&lblComparison_});
  AddRow("", {&cmdUse_, &cmdLeave_});
  AddRow("S&hapes show", {&cmbDisplayType_});
  AddButtons({&cmdClose_});
  DefaultButton(cmdClose_);
  CancelButton(cmdClose_);

  Forms::Items kinds;
  for (const char* kind : KindNames) kinds.push_back({kind, {}});
  cmbKind_.Items(std::move(kinds));
  cmbKind_.Text(KindNames.front());
  Forms::Items types;
  for (const std::string_view label : modCommandState::DisplayTypeLabels) {
    types.push_back({std::string(label), {}});
  }
  cmbDisplayType_.Items(std::move(types));
  lstUses_.Visible(false);
  HideQuestions();
}

void frmSlideShow::SetHandlers() {
  lstConnections_.Change = [this] {
    HideQuestions();
    lstUses_.Visible(false);
    ShowEnabled();
  };
  lstConnections_.DblClick = [this] { EditConnection(); };
  cmdAdd_.Click = [this] { AddConnection(); };
  cmdEdit_.Click = [this] { EditConnection(); };
  cmdTest_.Click = [this] {
    if (const auto connection = Selected()) Test(*connection);
  };
  cmdTestAll_.Click = [this] { TestAll(); };
  cmdDuplicate_.Click = [this] { Duplicate(); };
  cmdShowUses_.Click = [this] { ShowUses(); };
  cmdRemove_.Click = [this] { AskRemove(); };
  cmdRemoveNow_.Click = [this] { Remove(); };
  cmdKeep_.Click = [this] { HideQuestions(); };
  cmdReplace_.Click = [this] { AskReplace(); };
  cmbReplacement_.Change = [this] { ReplacementChosen(); };
  cmdUse_.Click = [this] { Replace(); };
  cmdLeave_.Click = [this] { HideQuestions(); };
  cmbDisplayType_.Change = [this] { DisplayTypeChosen(); };
  cmdClose_.Click = [this] { Close(Forms::Result::OK); };
}

void frmSlideShow::OpenAndWatch() {
  Show(Forms::Placement::Dialog, [this](Forms::Result) {
    tmrState_.reset();
    EndTrials();
  });
  // Connections are opened and read anew behind the page.
  constexpr std::int32_t Second = 1000;
  tmrState_ = host::Current().loop->CreateTimer([weak = weak_from_this(), this] {
    if (const auto form = weak.lock()) Update([this] { ShowItems(); });
  });
  tmrState_->Interval(Second);
  tmrState_->Enabled(true);
}

std::string frmSlideShow::SelectedNumber() const {
  return NumberOf(lstConnections_.Items(), lstConnections_.ListIndex());
}

std::shared_ptr<clsConnection> frmSlideShow::Selected() const {
  return Presentation()->FindConnection(SelectedNumber());
}

void frmSlideShow::Select(const std::string& number) {
  const Forms::Items& items = lstConnections_.Items();
  const auto found =
      std::find_if(items.begin(), items.end(), [&](const Forms::Item& each) { return each.Text == number; });
  lstConnections_.Selected(found == items.end() ? Forms::Places() : Forms::Places{found - items.begin()});
}

std::string frmSlideShow::StateOf(const clsConnection& connection) const {
  const std::string& number = connection.ConnectionTagNumber();
  const auto trial = trials_.find(number);
  if (trial != trials_.end() && trial->second->IsRunning()) return "being tested";
  if (const auto result = results_.find(number); result != results_.end()) return result->second;
  if (Presentation()->ReadingJob(connection)) return "being read";
  if (connection.Readings().IsFailing) return connection.Readings().LastError;
  return connection.RecordsetReady() ? "read" : "not read yet";
}

Forms::Item frmSlideShow::ItemOf(const clsConnection& connection) const {
  const auto uses = uses_.find(connection.ConnectionTagNumber());
  Forms::Item item{connection.ConnectionTagNumber(), {}};
  item.Cells = {connection.ConnectionDescription(),
                connection.IsSample() ? "Sample" : KindName(connection.ConnectionType()),
                SourceText(connection),
                connection.RecordsetReady()
                    ? std::to_string(static_cast<std::int64_t>(connection.RecordCount()))
                    : std::string(),
                uses == uses_.end() ? "no shape" : uses->second.Text(),
                StateOf(connection)};
  return item;
}

void frmSlideShow::ShowItems() {
  const std::string selected = SelectedNumber();
  Forms::Items items;
  for (const auto& connection : Presentation()->Connections()) items.push_back(ItemOf(*connection));
  lstConnections_.Items(std::move(items));
  if (SelectedNumber() != selected) Select(selected);
}

void frmSlideShow::ShowEnabled() {
  const auto selected = Selected();
  const bool isSelected = selected != nullptr;
  const bool isSample = isSelected && selected->IsSample();
  const bool isUsed = uses_.contains(SelectedNumber());
  const bool isAny = !Presentation()->Connections().empty();
  for (Forms::CommandButton* button : {&cmdEdit_, &cmdTest_, &cmdDuplicate_}) {
    button->Enabled(isSelected && !isSample,
                    isSample ? "Sample data have no source." : "Select a connection first.");
  }
  cmdRemove_.Enabled(isSelected, "Select a connection first.");
  const char* const noUse = isSelected ? "No shape shows this connection." : "Select a connection first.";
  cmdShowUses_.Enabled(isSelected && isUsed, noUse);
  const bool hasOther = Presentation()->Connections().size() > 1;
  cmdReplace_.Enabled(isSelected && isUsed && hasOther,
                      isSelected && isUsed ? "There is no other connection; add one first." : noUse);
  cmdTestAll_.Enabled(isAny, "There is no connection yet.");
}

void frmSlideShow::Reload() {
  uses_ = modConnections::AllUses(*Presentation());
  ShowItems();
  ShowEnabled();
  // A deck in which nothing is linked has none yet; what is linked there first will show its value.
  const std::int32_t type = std::max(Presentation()->DisplayType(), 1);
  const auto& labels = modCommandState::DisplayTypeLabels;
  const bool isKnown = static_cast<std::size_t>(type) <= labels.size();
  cmbDisplayType_.Text(isKnown ? labels[static_cast<std::size_t>(type) - 1] : std::string_view());
}

void frmSlideShow::Stored(const std::string& number) {
  results_.erase(number);
  Reload();
  Select(number);
  ShowEnabled();
}

void frmSlideShow::AddConnection() {
  modConnectionPages::OpenNew(static_cast<ConnectionKind>(cmbKind_.ListIndex()), {}, Presentation(),
                              [this, weak = weak_from_this()](const std::string& number) {
                                if (const auto form = weak.lock()) Update([&] { Stored(number); });
                              });
}

void frmSlideShow::EditConnection() {
  const std::string number = SelectedNumber();
  if (number.empty()) return;
  modConnectionPages::OpenExisting(number, Presentation(),
                                   [this, weak = weak_from_this()](const std::string& stored) {
                                     if (const auto form = weak.lock()) Update([&] { Stored(stored); });
                                   });
}

void frmSlideShow::Duplicate() {
  const auto connection = Selected();
  if (!connection) return;
  const auto copy = modConnections::CopyOf(*connection);
  copy->ConnectionDescription(connection->ConnectionDescription() + " (copy)");
  Stored(modConnections::Add(*Presentation(), copy));
}

void frmSlideShow::ShowUses() {
  Forms::Items places;
  for (const std::string& place : uses_[SelectedNumber()].Places) places.push_back({place, {}});
  lstUses_.Items(std::move(places));
  lstUses_.Visible(true);
  modPages::ShowUses(SelectedNumber());
}

void frmSlideShow::DisplayTypeChosen() {
  const std::int64_t index = cmbDisplayType_.ListIndex();
  if (index < 0) return;
  Presentation()->DisplayType(static_cast<std::int32_t>(index) + 1);
  Presentation()->FillValues(false);
}

}  // namespace LF2000
