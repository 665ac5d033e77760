#include "connections/DataPreview.h"

#include <string>
#include <utility>
#include <vector>

#include "basic/Conversion.h"
#include "basic/Strings.h"
#include "host/services.h"

namespace LF2000 {

namespace {

struct LongText {
  std::string Text;
  std::size_t Length = 0;
};

std::vector<std::string> LongestTexts(ADODB::Recordset& data) {
  ADODB::Fields& fields = data.Fields();
  std::vector<LongText> longest(static_cast<std::size_t>(fields.Count()));
  const std::int64_t rows = data.RecordCount();
  for (std::int64_t row = 1; row <= rows; ++row) {
    if (row == 1) {
      data.MoveFirst();
    } else {
      data.Move(1);
    }
    for (std::size_t column = 0; column < longest.size(); ++column) {
      const basic::Variant value = fields.Item(static_cast<std::int32_t>(column)).Value();
      if (basic::IsNull(value)) continue;
      std::string text = basic::CStr(value);
      const std::size_t length = basic::Len(text);
      if (length > longest[column].Length) longest[column] = {std::move(text), length};
    }
  }
  std::vector<std::string> texts;
  texts.reserve(longest.size());
  for (LongText& each : longest) texts.push_back(std::move(each.Text));
  return texts;
}

}  // namespace

std::shared_ptr<ADODB::Recordset> StandInFor(ADODB::Recordset& data, DataPreview preview) {
  constexpr std::int32_t Size = 4000;
  ADODB::Fields& fields = data.Fields();
  auto standIn = host::Current().ado->CreateRecordset();
  for (std::int32_t i = 0; i < fields.Count(); ++i) {
    standIn->Fields().Append(fields.Item(i).Name(), ADODB::adVarChar, Size);
  }
  standIn->Open();
  if (preview != DataPreview::LongestTexts || data.RecordCount() < 1) return standIn;
  const std::vector<std::string> texts = LongestTexts(data);
  const std::int64_t rows = data.RecordCount();
  for (std::int64_t row = 0; row < rows; ++row) {
    standIn->AddNew();
    for (std::size_t column = 0; column < texts.size(); ++column) {
      if (!texts[column].empty())
        standIn->Fields().Item(static_cast<std::int32_t>(column)).Value(texts[column]);
    }
  }
  standIn->Update();
  return standIn;
}

}  // namespace LF2000
