// The dialog of worksheets.

#include "pages/frmExcelConnection.h"

#include <algorithm>
#include <cctype>
#include <utility>

#include "basic/CellReference.h"
#include "basic/Strings.h"

namespace LF2000 {

namespace {

constexpr const char* DefaultRange = "A1:I10";
constexpr const char* InvalidRange = "Invalid range specification. Enter A1:B2 for cells A1, A2, B1 and B2.";

/// A name that a workbook may have defined: letters, digits, underscores and points, no digit first.
bool MayBeName(std::string_view text) {
  const auto isPart = [](char c) {
    const auto byte = static_cast<unsigned char>(c);
    return byte >= 0x80 || std::isalnum(byte) != 0 || c == '_' || c == '.';
  };
  return !text.empty() && std::isdigit(static_cast<unsigned char>(text.front())) == 0 &&
         std::all_of(text.begin(), text.end(), isPart);
}

/// The letters of the columns of an area.
std::vector<std::string> LettersOf(const std::optional<basic::Area>& area, std::size_t count) {
  std::vector<std::string> letters;
  if (!area) return letters;
  for (std::uint32_t i = 0; i < count; ++i) letters.push_back(basic::ColumnLetters(area->firstColumn + i));
  return letters;
}

}  // namespace

frmExcelConnection::frmExcelConnection(const std::shared_ptr<clsPresentation>& presentation,
                                       const std::shared_ptr<clsConnection>& edited, std::string_view path,
                                       Stored stored)
    : frmConnection("frmExcelConnection", "Worksheet", presentation, edited, std::move(stored)),
      txtFile_(Add<Forms::TextBox>("txtFile")),
      cmdBrowse_(Add<Forms::CommandButton>("cmdBrowse", "&Browse\u2026")),
      cmbSheet_(Add<Forms::ComboBox>("cmbSheet", true)),
      txtRange_(Add<Forms::TextBox>("txtRange")),
      cmdWholeSheet_(Add<Forms::CommandButton>("cmdWholeSheet", "")),
      chkFirstRow_(Add<Forms::CheckBox>("chkFirstRow", "First &row holds column names")),
      lblFound_(Add<Forms::Label>("lblFound")),
      guessesFirstRow_(edited == nullptr),
      guessesRange_(edited == nullptr) {
  AddRow("&File", {&txtFile_, &cmdBrowse_});
  AddRow("&Sheet", {&cmbSheet_});
  AddRow("R&ange", {&txtRange_, &cmdWholeSheet_});
  AddRow("", {&chkFirstRow_});
  AddRow("", {&lblFound_});
  AddPreview();
  Preview().Change = [this] { TakeDrawn(); };
  cmdWholeSheet_.Visible(false);
  if (edited) {
    txtFile_.Text(edited->ConnectionFileString());
    cmbSheet_.Text(edited->ConnectionSheet());
    txtRange_.Text(edited->ConnectionRange());
    chkFirstRow_.Value(edited->ConnectionFirstRowFieldNames());
  } else {
    txtFile_.Text(path);
    txtRange_.Text(DefaultRange);
    SuggestFileDescription(path);
  }
  txtFile_.Change = [this] {
    NoteChange();
    SuggestFileDescription(txtFile_.Text());
    Look();
  };
  cmbSheet_.Change = [this] {
    NoteChange();
    Look();
  };
  txtRange_.Change = [this] {
    NoteChange();
    guessesRange_ = false;
    Look();
  };
  txtRange_.LostFocus = [this] { CheckRange(); };
  chkFirstRow_.Change = [this] {
    NoteChange();
    guessesFirstRow_ = false;
    Look();
  };
  cmdWholeSheet_.Click = [this] {
    NoteChange();
    guessesRange_ = true;
    Complain(txtRange_, "");
    Look();
  };
  cmdBrowse_.Click = [this] {
    Browse(txtFile_, "Select the workbook.", {{"Workbooks", "xlsx xlsm xls xlsb ods"}, {"All files", "*"}});
  };
}

void frmExcelConnection::Describe(clsConnection& connection) const {
  connection.ConnectionType(static_cast<std::int32_t>(ConnectionKind::Excel));
  connection.ConnectionFileString(txtFile_.Text());
  connection.ConnectionSheet(cmbSheet_.Text());
  connection.ConnectionRange(std::string(basic::Trim(txtRange_.Text())));
  connection.ConnectionFirstRowFieldNames(chkFirstRow_.Value());
}

bool frmExcelConnection::CheckRange() {
  const std::string range(basic::Trim(txtRange_.Text()));
  const auto reference = basic::ParseReference(range);
  const bool isKept = Edited() && range == Edited()->ConnectionRange();
  const bool isRange = reference ? !reference->sheet : MayBeName(range) && range != refusedRange_;
  if (isRange || isKept) return true;
  Complain(txtRange_, InvalidRange);
  return false;
}

bool frmExcelConnection::Check() {
  if (!CheckFile(txtFile_)) return false;
  if (cmbSheet_.Text().find('\t') != std::string::npos) {
    Complain(cmbSheet_, "No sheet has a TAB in its name.");
    Focus(cmbSheet_);
    return false;
  }
  if (CheckRange()) return true;
  Focus(txtRange_);
  return false;
}

void frmExcelConnection::Look() {
  Abandon(look_);
  table_.reset();
  if (txtFile_.Text().empty()) {
    lblFound_.Text("");
    return ClearRows();
  }
  cmbSheet_.State(Forms::ListState::Loading);
  const auto look = NewTrial();
  look_ = look;
  const auto found = std::make_shared<Found>();
  look->Prepare([found, guessesFirstRow = guessesFirstRow_,
                 guessesRange = guessesRange_](clsConnection& connection) {
    found->Sheets = ReadSheets(connection);
    found->HasSheets = true;
    if (connection.ConnectionSheet().empty() && !found->Sheets.empty()) {
      connection.ConnectionSheet(found->Sheets.front());
    }
    found->Table = FindSheetTable(connection);
    if (!found->Table) return;
    if (guessesFirstRow) connection.ConnectionFirstRowFieldNames(found->Table->HasNames);
    if (!guessesRange) return;
    connection.ConnectionRange(GrowingRange(found->Table->Cells(connection.ConnectionFirstRowFieldNames())));
  });
  // The trial is let go of only by the dialog, which hears of it first.
  StartTrial(look, [this, found, trial = look.get()](const TrialResult& result) {
    ShowFound(result, *found, trial->Connection());
  });
}

void frmExcelConnection::ShowSheets(const TrialResult& result, const Found& found,
                                    const clsConnection& looked) {
  if (!found.HasSheets) return cmbSheet_.State(Forms::ListState::Failed, result.Failure);
  Forms::Items items;
  for (const std::string& sheet : found.Sheets) items.push_back({sheet, {}});
  cmbSheet_.Items(std::move(items));
  cmbSheet_.State(Forms::ListState::Ready);
  if (!Edited() && cmbSheet_.Text().empty()) cmbSheet_.Text(looked.ConnectionSheet());
}

void frmExcelConnection::ShowFound(const TrialResult& result, const Found& found,
                                   const clsConnection& looked) {
  ShowSheets(result, found, looked);
  table_ = found.Table;
  if (found.Table) {
    if (guessesFirstRow_) chkFirstRow_.Value(looked.ConnectionFirstRowFieldNames());
    if (guessesRange_) txtRange_.Text(looked.ConnectionRange());
  }
  OfferRange();
  const auto reference = basic::ParseReference(looked.ConnectionRange());
  shown_ = reference ? std::optional(reference->area) : std::nullopt;
  showsNames_ = looked.ConnectionFirstRowFieldNames();
  Preview().Selects(shown_.has_value());
  Preview().Hint(shown_ && result.Failure.empty()
                     ? "Draw over cells to take these alone, over headers for whole columns."
                     : "");
  refusedRange_ = !result.Failure.empty() && found.Table && !reference ? looked.ConnectionRange() : "";
  if (!result.Failure.empty()) {
    lblFound_.Text(result.Failure, Forms::Severity::Warning);
    return ClearRows();
  }
  if (!found.Table) {
    lblFound_.Text("The sheet is empty.", Forms::Severity::Warning);
  } else {
    lblFound_.Text(ColumnsText(result) + ", " + RowsText(result) + "; the sheet uses " +
                       basic::AreaText(found.Table->Used),
                   Forms::Severity::Ok);
  }
  ShowRows(result, LettersOf(shown_, result.Columns.size()));
}

void frmExcelConnection::TakeDrawn() {
  const Forms::Places& drawn = Preview().Selected();
  if (!shown_ || drawn.size() != 4) return;
  const auto below = [](std::uint32_t first, std::int64_t place) {
    return first + static_cast<std::uint32_t>(place);
  };
  basic::Area area = *shown_;
  area.firstColumn = below(shown_->firstColumn, drawn[1]);
  area.lastColumn = below(shown_->firstColumn, drawn[3]);
  const bool isHeadersAlone = drawn[2] < 0;
  if (!isHeadersAlone) {
    const std::uint32_t firstRow = shown_->firstRow + (showsNames_ ? 1 : 0);
    const bool hasNames = showsNames_ && drawn[0] < 0;
    area.firstRow = hasNames ? shown_->firstRow : below(firstRow, std::max<std::int64_t>(drawn[0], 0));
    area.lastRow = below(firstRow, drawn[2]);
    chkFirstRow_.Value(hasNames);
    guessesFirstRow_ = false;
  }
  NoteChange();
  guessesRange_ = false;
  Complain(txtRange_, "");
  txtRange_.Text(area.lastRow == basic::MaximumRow ? GrowingRange(area) : basic::AreaText(area));
  Look();
}

void frmExcelConnection::OfferRange() {
  const std::string whole = table_ ? GrowingRange(table_->Cells(chkFirstRow_.Value())) : std::string();
  const bool isOther = !whole.empty() && !basic::EqualsIgnoreCase(whole, basic::Trim(txtRange_.Text()));
  cmdWholeSheet_.Caption("&Use " + whole);
  cmdWholeSheet_.Hint(isOther ? "All that the sheet holds, rows to come included." : "");
  cmdWholeSheet_.Visible(isOther);
}

}  // namespace LF2000
