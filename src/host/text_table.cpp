// The index of a table: what a row's record holds, and the blocks that records lie in.

#include "host/text_table.h"

#include <algorithm>
#include <limits>
#include <string>
#include <utility>

#include "basic/Error.h"

namespace host {
namespace {

// A record's head: the number of its fields, and whether their ends are wide.
constexpr std::uint16_t WideFlag = 0x8000;
constexpr std::size_t RecordHead = 3;

// The place of a record in its block has to fit into 16 bits.
constexpr std::size_t LargestBlock = 0x10000;

std::size_t Join(std::uint16_t low, std::uint16_t high) { return low | (std::size_t{high} << 16U); }
std::uint16_t Low(std::size_t value) { return static_cast<std::uint16_t>(value & 0xFFFFU); }
std::uint16_t High(std::size_t value) { return static_cast<std::uint16_t>((value >> 16U) & 0xFFFFU); }

std::string_view WithoutFiller(const char* begin, const char* end) {
  if (begin != end && *begin == TextTableBuilder::Filler) ++begin;
  if (begin != end && end[-1] == TextTableBuilder::Filler) --end;  // the closing quote, mostly
  if (begin != end && end[-1] == TextTableBuilder::Filler) {
    end = std::partition_point(begin, end, [](char c) { return c != TextTableBuilder::Filler; });
  }
  return {begin, static_cast<std::size_t>(end - begin)};
}

}  // namespace

std::optional<std::string_view> TextTable::field(std::size_t row, std::size_t column) const {
  const std::uint32_t place = rows_[row];
  const std::uint16_t* const record = blocks_[place >> 16U].get() + (place & 0xFFFFU);
  if (column >= (record[0] & ~WideFlag)) return std::nullopt;

  const char* const start = text_.data.get() + Join(record[1], record[2]);
  const std::uint16_t* const ends = record + RecordHead;
  if ((record[0] & WideFlag) != 0) {
    const auto end = [ends](std::size_t i) { return Join(ends[2 * i], ends[2 * i + 1]); };
    return WithoutFiller(start + (column == 0 ? 0 : end(column - 1) + 1), start + end(column));
  }
  return WithoutFiller(start + (column == 0 ? 0 : ends[column - 1] + 1), start + ends[column]);
}

TextTableBuilder::TextTableBuilder(std::vector<std::string> columns, Bytes text) {
  if (text.size > std::numeric_limits<std::uint32_t>::max()) {
    throw basic::Error(basic::AdapterError, basic::DefaultSource,
                       "The text has " + std::to_string(text.size) + " bytes; a table holds less than 4 GB.");
  }
  if (columns.size() > MaxColumns) {
    throw basic::Error(basic::AdapterError, basic::DefaultSource,
                       "The text has " + std::to_string(columns.size()) + " columns; a table holds at most " +
                           std::to_string(MaxColumns) + ".");
  }
  // A field takes a byte of the text, a record four numbers for its first.
  blockSize_ = std::min(LargestBlock, 4 * (text.size + 1));
  table_.columns_ = std::move(columns);
  table_.text_ = std::move(text);
}

void TextTableBuilder::BeginRow(std::size_t offset) {
  if (static_cast<std::size_t>(blockEnd_ - next_) <= RecordHead) {
    record_ = next_;
    NewBlock();
  }
  record_ = next_;
  next_ += RecordHead;
  start_ = offset;
  fields_ = 0;
  wide_ = false;
}

void TextTableBuilder::EndRow() {
  record_[0] = static_cast<std::uint16_t>(fields_ | (wide_ ? WideFlag : 0U));
  record_[1] = Low(start_);
  record_[2] = High(start_);
  const auto place = static_cast<std::size_t>(record_ - table_.blocks_.back().get());
  table_.rows_.push_back(static_cast<std::uint32_t>(((table_.blocks_.size() - 1) << 16U) | place));
}

void TextTableBuilder::AddWideField(std::size_t distance) {
  if (!wide_) {
    // The ends so far become two halves each.
    wide_ = true;
    const std::vector<std::uint16_t> ends(record_ + RecordHead, next_);
    next_ = record_ + RecordHead;
    for (const std::uint16_t end : ends) {
      Push(end);
      Push(0);
    }
  }
  Push(Low(distance));
  Push(High(distance));
}

/// The record under way moves along into the new block.
void TextTableBuilder::NewBlock() {
  if (table_.blocks_.size() == LargestBlock) {
    throw basic::Error(basic::AdapterError, basic::DefaultSource,
                       "The text has too many fields; a table holds some four thousand million.");
  }
  const auto begun = static_cast<std::size_t>(next_ - record_);
  table_.blocks_.push_back(std::make_unique_for_overwrite<std::uint16_t[]>(blockSize_));
  std::uint16_t* const block = table_.blocks_.back().get();
  std::copy_n(record_, begun, block);
  record_ = block;
  next_ = block + begun;
  blockEnd_ = block + blockSize_;
}

}  // namespace host
