// What a connection answers to the shapes that show its data.

#include <utility>

#include "addin/support/modErrors.h"
#include "basic/Conversion.h"
#include "basic/Strings.h"
#include "connections/DisplayTypes.h"
#include "connections/clsConnection.h"

namespace LF2000 {

namespace {

constexpr std::string_view RowMarker = "[Row not available in current dataset]";
constexpr std::string_view EmptyMarker = "[Empty]";

}  // namespace

std::string clsConnection::GetValueDatabase(double row, std::string_view column, std::int16_t displayType,
                                            bool showMarkers, bool& noValue) try {
  if (!dataOpen_) return {};
  WaitForRows();
  noValue = true;
  switch (displayType) {
    case DisplayValue: {
      const bool markers = designMode_ && showMarkers && preview_ == DataPreview::AsTheyAre;
      if (!HasRow(row)) return markers ? std::string(RowMarker) : std::string();
      MoveTo(row);
      std::string text = FieldText(column, markers);
      noValue = text.empty();
      return text;
    }
    case 2:
      return connectionDescription_;
    case 3:
      return std::string(column);
    case 4:
      return basic::CStr(row);
    case 5:
      return std::string(column) + " " + basic::CStr(row);
    case 6:
      return connectionDescription_ + " " + std::string(column);
    default:
      return {};
  }
} catch (...) {
  modErrors::SetLastError();
  modErrors::RaiseError(modErrors::RetrievingValue, column, basic::CStr(row),
                        std::string(modErrors::LastError.Description));
}

void clsConnection::WaitForRows() const {
  while (recordset_ && recordset_->State() == ADODB::adStateFetching) host::Current().loop->DoEvents();
}

bool clsConnection::IsNull(double row, std::string_view column) {
  WaitForRows();
  if (!HasRow(row)) return true;
  MoveTo(row);
  return basic::IsNull(recordset_->Fields().Item(column).Value());
}

bool clsConnection::HasRow(double row) const { return recordset_ && RecordCount() >= row && row > 0; }

void clsConnection::MoveTo(double row) {
  if (static_cast<double>(recordset_->AbsolutePosition()) == row) return;
  recordset_->MoveFirst();
  recordset_->Move(basic::CLng(row - 1));
}

std::string clsConnection::FieldText(std::string_view column, bool markers) {
  basic::Variant value = recordset_->Fields().Item(column).Value();
  if (basic::IsNull(value)) return markers ? std::string(EmptyMarker) : std::string();
  if (auto* text = std::get_if<std::string>(&value)) return std::move(*text);
  return basic::CStr(value);
}

std::string clsConnection::GetValueObject(double row, std::string_view column, std::string_view folder,
                                          std::string_view extension, std::int16_t displayType,
                                          bool showMarkers, bool& noValue) {
  std::string text = GetValueDatabase(row, column, displayType, showMarkers, noValue);
  if (noValue) return {};
  if (text == RowMarker || text == EmptyMarker || displayType != DisplayValue) return text;
  const std::string_view trimmed = basic::Trim(folder);
  if (!folder.empty() && (trimmed.empty() || trimmed.back() != '\\')) {
    text = std::string(folder) + "\\" + text;
  }
  if (!extension.empty()) text.append(".").append(extension);
  return text;
}

void clsConnection::Preview(DataPreview preview) {
  if (preview == preview_ || !recordset_) return;
  WaitForRows();
  if (!previewed_) previewed_ = recordset_;
  const bool isData = preview == DataPreview::AsTheyAre;
  recordset_ = isData ? std::exchange(previewed_, nullptr) : StandInFor(*previewed_, preview);
  preview_ = preview;
}

bool clsConnection::GetValueGraph(MSGraph::Table& table) {
  if (!dataOpen_) return false;
  WaitForRows();
  if (!recordset_ || RecordCount() <= 0) return false;
  ADODB::Fields& fields = recordset_->Fields();
  const auto rows = static_cast<std::size_t>(RecordCount());
  const std::int32_t columns = fields.Count();
  MSGraph::Table all(rows + 1, static_cast<std::size_t>(columns));
  for (std::int32_t column = 0; column < columns; ++column) {
    all.cell(0, static_cast<std::size_t>(column), fields.Item(column).Name());
  }
  recordset_->MoveFirst();
  for (std::size_t row = 1; row <= rows; ++row) {
    if (row > 1) recordset_->Move(1);
    for (std::int32_t column = 0; column < columns; ++column) {
      all.cell(row, static_cast<std::size_t>(column), fields.Item(column).Value());
    }
  }
  table = std::move(all);
  return true;
}

std::vector<std::string> clsConnection::Columns() const {
  std::vector<std::string> names(1);
  if (!recordset_) return names;
  ADODB::Fields& fields = recordset_->Fields();
  for (std::int32_t i = 0; i < fields.Count(); ++i) names.push_back(fields.Item(i).Name());
  return names;
}

}  // namespace LF2000
