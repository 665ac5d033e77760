// What a page for values shows: texts for one shape and for several, lists, the present value.

#include <algorithm>
#include <utility>

#include "addin/support/modErrors.h"
#include "basic/Conversion.h"
#include "basic/Counted.h"
#include "basic/Strings.h"
#include "connections/DisplayTypes.h"
#include "model/modRelink.h"
#include "pages/frmValuePage.h"

namespace LF2000 {

namespace {

/// Where the look of numbers and dates comes from.
std::string_view FormatHint(const clsConnection& connection) {
  switch (static_cast<ConnectionKind>(connection.ConnectionType())) {
    case ConnectionKind::TextFile:
      return "As the file writes it.";
    case ConnectionKind::Database:
      return "As the database gives it; the statement can format it.";
    case ConnectionKind::Excel:
      return "As the format of the workbook's cell has it.";
  }
  return {};
}

}  // namespace

std::string frmValuePage::RowText() const {
  constexpr std::size_t MostShown = 3;
  const double first = drafts_.front().Row;
  if (std::all_of(drafts_.begin(), drafts_.end(), [&](const Draft& each) { return each.Row == first; })) {
    return basic::CStr(first);
  }
  std::string text;
  for (std::size_t i = 0; i < std::min(drafts_.size(), MostShown); ++i) {
    text += (i == 0 ? "" : ", ") + basic::CStr(drafts_[i].Row);
  }
  return drafts_.size() > MostShown ? text + " …" : text;
}

std::string frmValuePage::StepText() const {
  if (drafts_.size() < 2) return {};
  const double step = drafts_[1].Row - drafts_[0].Row;
  for (std::size_t i = 2; i < drafts_.size(); ++i) {
    if (drafts_[i].Row - drafts_[i - 1].Row != step) return std::string(Various);
  }
  return basic::CStr(step);
}

void frmValuePage::ShowAll(const Forms::Control* typing) {
  const auto mayShow = [typing](const Forms::Control& control) {
    return &control != typing && control.Problem().empty();
  };
  ShowConnections(cmbConnection_);
  if (mayShow(cmbConnection_)) {
    const std::string number = Common(&Draft::Connection);
    cmbConnection_.Text(number == Various ? number : ConnectionText(number));
  }
  ShowColumns();
  if (mayShow(cmbColumn_)) cmbColumn_.Text(Common(&Draft::Column));
  ShowNearest();
  if (mayShow(txtRow_)) txtRow_.Text(RowText());
  if (mayShow(txtStep_)) txtStep_.Text(StepText());
  ShowFill();
  const bool areAllLinked =
      std::all_of(drafts_.begin(), drafts_.end(), [](const Draft& draft) { return draft.IsLinked; });
  cmdLink_.Visible(IsDocked() && !areAllLinked);
  cmdUnlink_.Enabled(AnyLinked(), "Nothing here is linked.");
  ShowNow();
}

void frmValuePage::ShowColumns() {
  constexpr std::size_t MostNotes = 50;
  const std::string number = Common(&Draft::Connection);
  std::string why;
  const auto connection = number == Various ? nullptr : Readable(number, why);
  if (!connection) {
    const auto described = Presentation()->FindConnection(number);
    const bool fails = described && described->Readings().IsFailing;
    cmbColumn_.State(!described || fails ? Forms::ListState::Failed : Forms::ListState::Loading, why);
    return;
  }
  Forms::Items items;
  const std::vector<std::string> columns = connection->Columns();
  for (std::size_t i = 1; i < columns.size(); ++i) {
    if (columns[i].empty()) continue;
    const bool canBeLinked = modFieldNames::CanBeLinked(columns[i]);
    std::string note = canBeLinked ? "" : "holds a control character";
    if (canBeLinked && columns.size() <= MostNotes) {
      note = PresentValue(number, columns[i], drafts_.front().Row);
    }
    items.push_back({columns[i], std::move(note), canBeLinked});
  }
  cmbColumn_.Items(std::move(items));
  cmbColumn_.State(Forms::ListState::Ready);
}

void frmValuePage::ShowNearest() {
  const std::string number = Common(&Draft::Connection);
  const std::string& column = cmbColumn_.Text();
  std::string why;
  const auto connection = number == Various ? nullptr : Readable(number, why);
  const std::vector<std::string> columns = connection ? connection->Columns() : std::vector<std::string>(1);
  const bool isMissing = connection && !column.empty() && column != Various &&
                         modFieldNames::ColumnNames(columns).Find(column) == nullptr;
  const auto likest = isMissing ? modRelink::ByLikeness(column, columns) : std::vector<std::string>();
  nearest_ = likest.empty() ? std::string() : likest.front();
  cmbColumn_.Hint(isMissing ? "not in " + number : "");
  cmdNearest_.Caption("Use '" + nearest_ + "'");
  cmdNearest_.Visible(!nearest_.empty());
}

frmValuePage::Fill frmValuePage::FillBelow(std::size_t shapes) const {
  Fill fill;
  const std::string step = drafts_.size() == 1 ? "1" : StepText();
  if (shapes == 0 || step == Various || step == "0") return fill;
  const double last = drafts_.back().Row;
  const double steps = basic::CDbl(step);
  const double end = last + steps * static_cast<double>(shapes);
  if (last + steps < 1 || end < 1 || end > modManyLinks::MostRows) return fill;
  fill.IsPossible = true;
  fill.First = static_cast<std::int32_t>(last + steps);
  fill.Last = static_cast<std::int32_t>(end);
  fill.Step = static_cast<std::int32_t>(steps);
  return fill;
}

void frmValuePage::ShowFill() {
  const bool isWhole =
      IsDocked() && Common(&Draft::Connection) != Various && Common(&Draft::Column) != Various &&
      std::all_of(drafts_.begin(), drafts_.end(), [](const Draft& draft) { return draft.IsLinked; });
  const std::size_t below = isWhole ? modFillRows::ShapesBelow(Slide(), Shapes()).size() : 0;
  const Fill fill = FillBelow(below);
  lblFill_.Visible(fill.IsPossible);
  cmdFill_.Visible(fill.IsPossible);
  if (!fill.IsPossible) return;
  lblFill_.Text(basic::Counted(below, "more shape") + " in this column");
  cmdFill_.Caption(below == 1 ? "&Fill row " + std::to_string(fill.First)
                              : "&Fill rows " + std::to_string(fill.First) + "–" + std::to_string(fill.Last));
}

std::string frmValuePage::ValueOf(const Draft& draft, std::string& problem) const try {
  const auto connection = Readable(draft.Connection, problem);
  if (!connection) return {};
  if (draft.Column.empty()) {
    problem = "Choose a column.";
    return {};
  }
  const modFieldNames::ColumnNames columns(connection->Columns());
  if (columns.Find(draft.Column) == nullptr) {
    problem = "There is no column '" + draft.Column + "' in " + draft.Connection + ".";
    return {};
  }
  bool noValue = true;
  return connection->GetValueDatabase(draft.Row, draft.Column, DisplayValue, /*showMarkers=*/true, noValue);
} catch (...) {
  modErrors::SetLastError();
  problem = modErrors::LastError.Description;
  return {};
}

void frmValuePage::ShowNow() {
  constexpr std::size_t MostShown = 4;
  std::string text;
  std::string problem;
  for (std::size_t i = 0; i < std::min(drafts_.size(), MostShown) && problem.empty(); ++i) {
    const std::string value = ValueOf(drafts_[i], problem);
    text += (i == 0 ? "" : " · ") + (value.empty() ? "(nothing)" : value);
  }
  if (!problem.empty()) {
    lblNow_.Text(problem, Forms::Severity::Warning);
  } else {
    lblNow_.Text(drafts_.size() > MostShown ? text + " …" : text);
  }
  const std::string number = Common(&Draft::Connection);
  std::string why;
  const auto connection = number == Various ? nullptr : Readable(number, why);
  lblNow_.Hint(connection ? FormatHint(*connection) : "");
  txtRow_.Unit(
      connection ? "of " + basic::Counted(static_cast<std::int64_t>(connection->RecordCount()), "row") : "");
  const bool isBehind = connection && drafts_.back().Row > connection->RecordCount();
  txtRow_.Hint(isBehind ? "The data end before row " + basic::CStr(drafts_.back().Row) + "." : "");
  ShowFreshness(lblFresh_, number == Various ? std::string() : number);
}

}  // namespace LF2000
