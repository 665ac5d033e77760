// The rows of a result, packed one behind the other.

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

ResultTableBuilder::ResultTableBuilder(std::vector<std::string> columns)
    : headSize_(columns.size() * sizeof(std::uint32_t)), blockSize_(FirstBlock) {
  table_.columns_ = std::move(columns);
}

void ResultTableBuilder::addBoolean(bool value) { add(CellKind::Boolean, &value, 1); }
void ResultTableBuilder::addInt32(std::int32_t value) { add(CellKind::Int32, &value, sizeof value); }
void ResultTableBuilder::addInt64(std::int64_t value) { add(CellKind::Int64, &value, sizeof value); }
void ResultTableBuilder::addDouble(double value) { add(CellKind::Double, &value, sizeof value); }
void ResultTableBuilder::addDate(basic::Date value) {
  add(CellKind::Date, &value.serial, sizeof value.serial);
}

void ResultTableBuilder::add(CellKind kind, const void* value, std::size_t size) {
  if (valuesSize_ + size > EndMask) {
    throw basic::Error(basic::AdapterError, "ADODB.Recordset",
                       "Record " + std::to_string(table_.rowCount() + 1) +
                           " is too large: the values of one record may take 256 MB together.");
  }
  const std::size_t needed = headSize_ + valuesSize_ + size;
  if (needed > room_) moveRow(needed);
  if (size > 0) std::memcpy(row_ + headSize_ + valuesSize_, value, size);
  valuesSize_ += size;
  const std::uint32_t head =
      static_cast<std::uint32_t>(valuesSize_) | (static_cast<std::uint32_t>(kind) << EndBits);
  std::memcpy(row_ + headsSize_, &head, sizeof head);
  headsSize_ += sizeof head;
}

void ResultTableBuilder::endRow() {
  table_.rows_.push_back(row_);
  const std::size_t size = headSize_ + valuesSize_;
  row_ += size;
  room_ -= size;
  headsSize_ = 0;
  valuesSize_ = 0;
}

void ResultTableBuilder::moveRow(std::size_t needed) {
  // A row larger than a block doubles its own, or each of its cells would move it.
  const std::size_t size = needed > blockSize_ ? 2 * needed : blockSize_;
  auto block = std::make_unique_for_overwrite<char[]>(size);
  if (headsSize_ > 0) {
    std::memcpy(block.get(), row_, headsSize_);
    std::memcpy(block.get() + headSize_, row_ + headSize_, valuesSize_);
  }
  const bool alone = !table_.blocks_.empty() && row_ == table_.blocks_.back().get();
  if (alone) table_.blocks_.pop_back();
  row_ = block.get();
  room_ = size;
  table_.blocks_.push_back(std::move(block));
  blockSize_ = std::min(2 * blockSize_, LargestBlock);
}

}  // namespace ado
