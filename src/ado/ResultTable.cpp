#include "ado/ResultTable.h"

#include <algorithm>
#include <cstring>

#include "basic/Error.h"

// A row: for each cell a head, which is its kind in the upper 4 bits and the end
// of its value in the lower 28; then the values, one right behind the other.

namespace ado {
namespace {

constexpr unsigned EndBits = 28;
constexpr std::uint32_t EndMask = (1U << EndBits) - 1;
constexpr std::size_t FirstBlock = 4096;
constexpr std::size_t LargestBlock = std::size_t{1} << 20U;

std::uint32_t headAt(const char* row, std::size_t column) {
  std::uint32_t head = 0;
  std::memcpy(&head, row + column * sizeof head, sizeof head);
  return head;
}

template <typename T>
T read(std::string_view bytes) {
  T value{};
  std::memcpy(&value, bytes.data(), sizeof value);
  return value;
}

}  // namespace

basic::Variant ResultTable::value(std::size_t row, std::size_t column) const {
  const char* const start = rows_[row];
  const std::uint32_t head = headAt(start, column);
  const std::size_t from = column == 0 ? 0 : headAt(start, column - 1) & EndMask;
  const std::string_view bytes(start + columns_.size() * sizeof head + from, (head & EndMask) - from);
  switch (static_cast<CellKind>(head >> EndBits)) {
    case CellKind::Null:
      return basic::Null{};
    case CellKind::Boolean:
      return bytes[0] != 0;
    case CellKind::Int32:
      return read<std::int32_t>(bytes);
    case CellKind::Int64:
      return read<std::int64_t>(bytes);
    case CellKind::Double:
      return read<double>(bytes);
    case CellKind::Date:
      return basic::Date{read<double>(bytes)};
    case CellKind::Decimal:
      return basic::Decimal{std::string(bytes)};
    case CellKind::Text:
      return basic::Variant(std::in_place_type<std::string>, bytes);
    case CellKind::Binary:
      return basic::Binary(bytes.begin(), bytes.end());
  }
  return basic::Null{};
}

ResultTableBuilder::ResultTableBuilder(std::vector<std::string> columns) : blockSize_(FirstBlock) {
  heads_.reserve(columns.size());
  table_.columns_ = std::move(columns);
}

void ResultTableBuilder::addBoolean(bool value) { add(CellKind::Boolean, &value, 1); }
void ResultTableBuilder::addInt32(std::int32_t value) { add(CellKind::Int32, &value, sizeof value); }
void ResultTableBuilder::addInt64(std::int64_t value) { add(CellKind::Int64, &value, sizeof value); }
void ResultTableBuilder::addDouble(double value) { add(CellKind::Double, &value, sizeof value); }
void ResultTableBuilder::addDate(basic::Date value) {
  add(CellKind::Date, &value.serial, sizeof value.serial);
}

void ResultTableBuilder::head(CellKind kind) {
  heads_.push_back(static_cast<std::uint32_t>(values_.size()) |
                   (static_cast<std::uint32_t>(kind) << EndBits));
}

void ResultTableBuilder::add(CellKind kind, const void* value, std::size_t size) {
  if (values_.size() + size > EndMask) {
    throw basic::Error(basic::AdapterError, "ADODB.Recordset",
                       "Record " + std::to_string(table_.rowCount() + 1) +
                           " is too large: the values of one record may take 256 MB together.");
  }
  const auto* const bytes = static_cast<const char*>(value);
  values_.insert(values_.end(), bytes, bytes + size);
  head(kind);
}

void ResultTableBuilder::endRow() {
  const std::size_t headSize = heads_.size() * sizeof heads_[0];
  char* const row = allocate(headSize + values_.size());
  if (headSize > 0) std::memcpy(row, heads_.data(), headSize);
  if (!values_.empty()) std::memcpy(row + headSize, values_.data(), values_.size());
  table_.rows_.push_back(row);
  heads_.clear();
  values_.clear();
}

char* ResultTableBuilder::allocate(std::size_t size) {
  if (size > left_) {
    const std::size_t block = std::max(blockSize_, size);
    table_.blocks_.push_back(std::make_unique_for_overwrite<char[]>(block));
    free_ = table_.blocks_.back().get();
    left_ = block;
    blockSize_ = std::min(2 * blockSize_, LargestBlock);
  }
  char* const start = free_;
  free_ += size;
  left_ -= size;
  return start;
}

}  // namespace ado
