// One column as it comes from a driver: fetched in blocks or value by value, as which type, and what its
// cells become.

#include "ado/Column.h"

#include <sql.h>
#include <sqlext.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <cstring>

#include "ado/Database.h"
#include "ado/Diagnostics.h"
#include "ado/Encoding.h"
#include "basic/Error.h"

namespace ado {
namespace {

static_assert(sizeof(SQLLEN) == sizeof(std::intptr_t) && sizeof(SQLWCHAR) == sizeof(char16_t));

constexpr std::size_t LongestBound = 4000;  // characters
constexpr std::size_t ShortestBound = 31;

bool isWide(std::int16_t type) {
  return type == SQL_WCHAR || type == SQL_WVARCHAR || type == SQL_WLONGVARCHAR;
}

bool isBinary(std::int16_t type) {
  return type == SQL_BINARY || type == SQL_VARBINARY || type == SQL_LONGVARBINARY;
}

template <typename T>
T read(const char* value) {
  T copy{};
  std::memcpy(&copy, value, sizeof copy);
  return copy;
}

/// The double with the digits that the float shows.
double widened(float value) {
  std::array<char, 32> text{};
  const auto end = std::to_chars(text.data(), text.data() + text.size(), value).ptr;
  double wide = value;
  std::from_chars(text.data(), end, wide);
  return wide;
}

}  // namespace

Column::Transfer Column::transferOf(const ColumnDescription& description, bool looseTypes) {
  if (isBinary(description.type)) return {SQL_C_BINARY, 0};
  if (isWide(description.type)) return {SQL_C_WCHAR, 0};
  if (looseTypes) return {SQL_C_CHAR, 0};
  switch (description.type) {
    case SQL_BIT:
      return {SQL_C_BIT, 1};
    case SQL_TINYINT:
    case SQL_SMALLINT:
    case SQL_INTEGER:
      return {SQL_C_SBIGINT, sizeof(std::int64_t)};
    case SQL_BIGINT:
      if (description.isUnsigned) return {SQL_C_CHAR, 0};
      return {SQL_C_SBIGINT, sizeof(std::int64_t)};
    case SQL_REAL:
      return {SQL_C_FLOAT, sizeof(float)};
    case SQL_FLOAT:
    case SQL_DOUBLE:
      return {SQL_C_DOUBLE, sizeof(double)};
    case SQL_TYPE_DATE:
      return {SQL_C_TYPE_DATE, sizeof(SQL_DATE_STRUCT)};
    case SQL_TYPE_TIME:
      return {SQL_C_TYPE_TIME, sizeof(SQL_TIME_STRUCT)};
    case SQL_TYPE_TIMESTAMP:
      return {SQL_C_TYPE_TIMESTAMP, sizeof(SQL_TIMESTAMP_STRUCT)};
    default:
      return {SQL_C_CHAR, 0};
  }
}

TextMeaning Column::meaningOf(const ColumnDescription& description) {
  switch (description.type) {
    case SQL_BIT:
      return TextMeaning::Boolean;
    case SQL_TINYINT:
    case SQL_SMALLINT:
    case SQL_INTEGER:
    case SQL_BIGINT:
      return TextMeaning::Integer;
    case SQL_REAL:
    case SQL_FLOAT:
    case SQL_DOUBLE:
      return TextMeaning::Real;
    case SQL_DECIMAL:
    case SQL_NUMERIC:
      return TextMeaning::Decimal;
    case SQL_TYPE_DATE:
    case SQL_TYPE_TIME:
    case SQL_TYPE_TIMESTAMP:
      return TextMeaning::Moment;
    default:
      return TextMeaning::Text;
  }
}

Column::Column(ColumnDescription description, const Dialect& dialect)
    : description_(std::move(description)),
      meaning_(meaningOf(description_)),
      transfer_(transferOf(description_, dialect.looseTypes)),
      width_(transfer_.width) {
  if (!isVariable()) return;
  const std::size_t size = description_.size;
  const bool isNumber = meaning_ != TextMeaning::Text;
  // Sign, point and an exponent come on top of the digits.
  const std::size_t characters = isNumber ? size + 16 : size;
  long_ = !(dialect.trueSizes || (isNumber && !dialect.looseTypes)) || size == 0 || characters > LongestBound;
  const std::size_t bound = std::clamp(characters, ShortestBound, LongestBound);
  if (transfer_.type == SQL_C_BINARY) {
    width_ = bound;
  } else if (transfer_.type == SQL_C_WCHAR) {
    // Beyond the basic plane a character takes two.
    width_ = (2 * bound + 1) * sizeof(SQLWCHAR);
  } else {
    width_ = 4 * bound + 1;
  }
}

void Column::bind(void* statement, std::uint16_t number, std::size_t rows) {
  number_ = number;
  buffer_.resize(width_ * rows);
  lengths_.resize(rows);
  if (!SQL_SUCCEEDED(SQLBindCol(statement, number, transfer_.type, buffer_.data(),
                                static_cast<SQLLEN>(width_), reinterpret_cast<SQLLEN*>(lengths_.data())))) {
    failReading(statement);
  }
}

void Column::addCell(void* statement, std::size_t row, ResultTableBuilder& builder) {
  if (buffer_.empty()) return addAsked(statement, builder);
  const SQLLEN length = lengths_[row];
  if (length == SQL_NULL_DATA) return builder.addNull();
  const char* const value = buffer_.data() + row * width_;
  if (!isVariable()) return addFixed(value, builder);
  const std::size_t terminator = transfer_.type == SQL_C_BINARY  ? 0
                                 : transfer_.type == SQL_C_WCHAR ? sizeof(SQLWCHAR)
                                                                 : 1;
  const bool fits = length >= 0 && static_cast<std::size_t>(length) <= width_ - terminator;
  if (fits) return addVariable({value, static_cast<std::size_t>(length)}, builder);
  if (!long_) {
    throw basic::Error(basic::AdapterError, "ADODB.Recordset",
                       "A value of column '" + description_.name + "' is longer than the " +
                           std::to_string(description_.size) + " characters that the driver announces.");
  }
  addAsked(statement, builder);
}

void Column::addFixed(const char* value, ResultTableBuilder& builder) const {
  switch (transfer_.type) {
    case SQL_C_BIT:
      return builder.addBoolean(*value != 0);
    case SQL_C_SBIGINT: {
      const auto number = read<std::int64_t>(value);
      const auto narrow = static_cast<std::int32_t>(number);
      return description_.type != SQL_BIGINT && narrow == number ? builder.addInt32(narrow)
                                                                 : builder.addInt64(number);
    }
    case SQL_C_FLOAT:
      return builder.addDouble(widened(read<float>(value)));
    case SQL_C_DOUBLE:
      return builder.addDouble(read<double>(value));
    case SQL_C_TYPE_DATE: {
      const auto day = read<SQL_DATE_STRUCT>(value);
      return addMoment(builder, day.year, day.month, day.day, 0, 0, 0);
    }
    case SQL_C_TYPE_TIME: {
      const auto time = read<SQL_TIME_STRUCT>(value);
      return addTime(builder, time.hour, time.minute, time.second);
    }
    default: {
      const auto moment = read<SQL_TIMESTAMP_STRUCT>(value);
      return addMoment(builder, moment.year, moment.month, moment.day, moment.hour, moment.minute,
                       moment.second);
    }
  }
}

void Column::addVariable(std::string_view value, ResultTableBuilder& builder) const {
  if (transfer_.type == SQL_C_BINARY) return builder.addBinary(value);
  if (transfer_.type == SQL_C_CHAR) return addFromText(builder, meaning_, value);
  std::u16string wide(value.size() / sizeof(char16_t), u'\0');
  if (!wide.empty()) std::memcpy(wide.data(), value.data(), wide.size() * sizeof(char16_t));
  builder.addText(utf8FromUtf16(wide));
}

/// Piece by piece, as the driver's pieces are: text with a terminator each.
void Column::addAsked(void* statement, ResultTableBuilder& builder) {
  if (!isVariable()) {
    std::array<char, 64> fixed{};
    SQLLEN length = 0;
    if (!SQL_SUCCEEDED(SQLGetData(statement, number_, transfer_.type, fixed.data(),
                                  static_cast<SQLLEN>(fixed.size()), &length))) {
      failReading(statement);
    }
    return length == SQL_NULL_DATA ? builder.addNull() : addFixed(fixed.data(), builder);
  }
  const std::size_t terminator = transfer_.type == SQL_C_BINARY  ? 0
                                 : transfer_.type == SQL_C_WCHAR ? sizeof(SQLWCHAR)
                                                                 : 1;
  std::string value;
  std::size_t room = std::size_t{1} << 16U;
  while (true) {
    const std::size_t had = value.size();
    value.resize(had + room);
    SQLLEN length = 0;
    const SQLRETURN result = SQLGetData(statement, number_, transfer_.type, value.data() + had,
                                        static_cast<SQLLEN>(room), &length);
    if (result == SQL_NO_DATA) {
      value.resize(had);
      break;
    }
    if (!SQL_SUCCEEDED(result)) failReading(statement);
    if (length == SQL_NULL_DATA) return builder.addNull();
    const std::size_t capacity = room - terminator;
    const bool complete = length != SQL_NO_TOTAL && static_cast<std::size_t>(length) <= capacity;
    value.resize(had + (complete ? static_cast<std::size_t>(length) : capacity));
    if (complete) break;
    // The driver tells what is left, so that one more piece can hold it.
    constexpr std::size_t Largest = std::size_t{1} << 28U;
    room = length == SQL_NO_TOTAL
               ? std::min(2 * room, Largest)
               : std::min(static_cast<std::size_t>(length) - capacity + 2 * terminator, Largest);
  }
  addVariable(value, builder);
}

void Column::failReading(void* statement) const {
  throw basic::Error(
      basic::AdapterError, "ADODB.Recordset",
      "column '" + description_.name + "': " + diagnosisOf(HandleKind::Statement, statement).words);
}

}  // namespace ado
