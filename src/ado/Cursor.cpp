#include "ado/Cursor.h"

#include <algorithm>

#include "ado/Errors.h"

namespace ado {

std::int64_t Cursor::absolutePosition() const {
  constexpr std::int64_t Unknown = -1;
  constexpr std::int64_t Bof = -2;
  constexpr std::int64_t Eof = -3;
  if (count_ == 0 || atGap_) return Unknown;
  return position_ == 0 ? Bof : position_ > count_ ? Eof : position_;
}

void Cursor::moveFirst() {
  if (count_ == 0) failNoCurrentRecord();
  position_ = 1;
  atGap_ = false;
}

void Cursor::moveLast() {
  moveFirst();
  position_ = count_;
}

void Cursor::move(std::int64_t records) {
  if (records == 0 && hasRecord()) return;
  const bool beyondBof = records < 0 && position_ == 0;
  const bool beyondEof = records > 0 && position_ > count_ && !atGap_;
  if (count_ == 0 || beyondBof || beyondEof) failNoCurrentRecord();
  if (records == 0) return;
  // The record behind the gap has taken the number of the deleted one.
  const std::int64_t from = atGap_ && records > 0 ? position_ - 1 : position_;
  position_ = std::clamp<std::int64_t>(from + records, 0, count_ + 1);
  atGap_ = false;
}

void Cursor::appended() {
  position_ = ++count_;
  atGap_ = false;
}

void Cursor::deleted() {
  --count_;
  atGap_ = true;
}

}  // namespace ado
