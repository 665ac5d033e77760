// How the range of a worksheet becomes a recordset.

#include <unordered_set>

#include "addin/support/modErrors.h"
#include "addin/support/modGlobalFunctions.h"
#include "basic/Conversion.h"
#include "basic/Error.h"
#include "basic/Strings.h"
#include "basic/numberformat/NumberFormat.h"
#include "connections/clsConnection.h"

namespace LF2000 {

using modDebug::DebugKind;

namespace {

constexpr std::int32_t LongestValue = 4000;

/// What the cell shows; where it shows nothing but holds a value, the value
/// written by the cell's own number format.
std::string CellText(const Excel::Cell& cell) {
  std::string text = cell.Text();
  if (!text.empty()) return text;
  const basic::Variant value = cell.Value();
  if (std::holds_alternative<basic::Empty>(value)) return {};
  const basic::NumberFormat format(cell.NumberFormat());
  if (const auto* number = std::get_if<double>(&value)) return basic::FormatNumber(format, *number);
  if (const auto* date = std::get_if<basic::Date>(&value)) return basic::FormatNumber(format, date->serial);
  if (const auto* truth = std::get_if<bool>(&value)) return basic::FormatNumber(format, *truth);
  if (const auto* words = std::get_if<std::string>(&value)) {
    return basic::FormatNumber(format, std::string_view(*words));
  }
  return basic::CStr(value);
}

std::string WithCarriageReturns(std::string_view text) {
  return text.find('\n') == std::string_view::npos ? std::string(text) : basic::Replace(text, "\n", "\r\n");
}

}  // namespace

void clsConnection::CloseExcel() {
  Log(DebugKind::Information, "CloseExcel");
  modGlobalFunctions::IgnoreErrors([&] {
    if (!workbook_) return;
    workbook_->Saved(true);
    workbook_->Close();
  });
  workbook_.reset();
  worksheet_.reset();
}

void clsConnection::OpenExcelFile() try {
  if (!dataOpen_) return;
  Log(DebugKind::Information, "OpenExcelFile");
  Log(DebugKind::Information, "Create recordset");
  auto recordset = host::Current().ado->CreateRecordset();
  recordset->CursorLocation(ADODB::adUseClient);
  recordset->CursorType(ADODB::adOpenForwardOnly);
  if (!worksheet_) basic::Raise(basic::RuntimeError::ObjectVariableNotSet);
  // Reading lets the loop run, which may close the workbook.
  const std::shared_ptr<Excel::Worksheet> worksheet = worksheet_;
  const auto range = worksheet->Range(connectionRange_);
  DefineExcelFields(*range, *recordset);

  Log(DebugKind::Information, "Populate rs");
  recordset->Open();
  const std::int64_t highestRowWithData = FillExcelRecords(*range, *recordset);
  Log(DebugKind::Information, std::to_string(recordset->RecordCount()) + "recordcount: ");
  if (recordset->RecordCount() > 0) {
    Log(DebugKind::Information, std::to_string(highestRowWithData) + "end highestrowwithdata ");
    if (highestRowWithData != recordset->RecordCount()) {
      recordset->MoveLast();
      while (recordset->RecordCount() > highestRowWithData) {
        recordset->Delete();
        if (recordset->RecordCount() > 0) recordset->MovePrevious();
      }
    }
  }
  recordset_ = std::move(recordset);
  NoteReading();
  Log(DebugKind::Information, "Closing excel");
  CloseExcel();
} catch (...) {
  CloseExcel();
  modErrors::SetLastError();
  const modErrors::ErrorRecord error = modErrors::LastError;
  if (error.Number == modErrors::ErrorBase + modErrors::DuplicatedColumn) throw;
  modErrors::RaiseError(modErrors::ReadingExcelFile, connectionDescription_, error.Description);
}

void clsConnection::DefineExcelFields(Excel::Range& range, ADODB::Recordset& recordset) const {
  std::unordered_set<std::string> names;
  std::int32_t firstRow = 0;
  range.ForEach([&](const Excel::Cell& cell) {
    if (firstRow == 0) firstRow = cell.Row();
    if (cell.Row() != firstRow) return false;
    std::string name = connectionFirstRowFieldNames_ ? CellText(cell) : std::string();
    if (name.empty()) name = ColumnLetters(cell.Column());
    if (!names.insert(name).second) modErrors::RaiseError(modErrors::DuplicatedColumn, name);
    recordset.Fields().Append(name, ADODB::adVarChar, LongestValue);
    return true;
  });
}

std::int64_t clsConnection::FillExcelRecords(Excel::Range& range, ADODB::Recordset& recordset) const {
  ADODB::Fields& fields = recordset.Fields();
  std::int64_t records = 0;
  std::int64_t highestRowWithData = 0;
  std::int32_t firstRow = 0;
  std::int32_t currentRow = 0;
  std::int32_t position = 0;
  range.ForEach([&](const Excel::Cell& cell) {
    const std::int32_t row = cell.Row();
    if (firstRow == 0) firstRow = row;
    if (connectionFirstRowFieldNames_ && row == firstRow) return true;
    if (row != currentRow) {
      recordset.AddNew();
      ++records;
      currentRow = row;
      position = 0;
    }
    const std::string text = WithCarriageReturns(CellText(cell));
    if (!basic::Trim(text).empty()) highestRowWithData = records;
    fields.Item(position++).Value(std::string(basic::Left(text, LongestValue)));
    return true;
  });
  if (records > 0) recordset.Update();
  return highestRowWithData;
}

}  // namespace LF2000
