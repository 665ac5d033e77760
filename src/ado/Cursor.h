#pragma once

#include <cstdint>

namespace ado {

/// The position of a recordset among its records, by ADO's rules: before the
/// first record (BOF), at one, or behind the last (EOF). After a deletion it is
/// at the gap that the record left, until it moves.
class Cursor {
 public:
  /// Among `count` records, at the first if there is one.
  explicit Cursor(std::int64_t count = 0) : count_(count), position_(count == 0 ? 0 : 1) {}

  [[nodiscard]] std::int64_t count() const { return count_; }
  [[nodiscard]] bool hasRecord() const { return !atGap_ && position_ >= 1 && position_ <= count_; }
  /// 1-based number of the current record; -2 at BOF, -3 at EOF, -1 without
  /// records and at a deleted one (adPosBOF, adPosEOF, adPosUnknown).
  [[nodiscard]] std::int64_t absolutePosition() const;

  /// These fail as in ADO: without records, and when moving on backwards from
  /// BOF or forwards from EOF.
  void moveFirst();
  void moveLast();
  void move(std::int64_t records);

  /// A record was added behind the last; it becomes the current one.
  void appended();
  /// The current record was deleted.
  void deleted();

 private:
  std::int64_t count_;
  std::int64_t position_;  // 0 is BOF, count_ + 1 is EOF
  bool atGap_ = false;     // between the records position_ - 1 and position_
};

}  // namespace ado
