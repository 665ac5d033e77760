#include "ado/Recordset.h"

#include <limits>
#include <utility>

#include "ado/Errors.h"

namespace ado {

void Recordset::CursorLocation(ADODB::CursorLocation) { requireClosed(); }
void Recordset::CursorType(ADODB::CursorType) { requireClosed(); }
void Recordset::LockType(ADODB::LockType) { requireClosed(); }

void Recordset::ActiveConnection(const std::shared_ptr<ADODB::Connection>& connection) {
  if (connection != nullptr) failNoConnection();
}

void Recordset::Open(std::string_view, ADODB::CursorType, ADODB::LockType, std::int32_t) {
  requireClosed();
  failNoConnection();
}

void Recordset::Open() {
  requireClosed();
  if (fields_.Count() == 0) failNoConnection();
  records_ = Records();
  cursor_ = Cursor();
  open_ = true;
}

void Recordset::Open(host::TextTable table) {
  requireClosed();
  fields_.clear();
  for (const std::string& column : table.columns())
    fields_.add(column, std::numeric_limits<std::size_t>::max());
  records_ = Records(std::move(table));
  cursor_ = Cursor(static_cast<std::int64_t>(records_.count()));
  open_ = true;
}

void Recordset::Requery(std::int32_t) {
  requireOpen();
  failNotSupported("a recordset in memory has no source to query again");
}

void Recordset::Close() {
  requireOpen();
  if (edited_) failContext();
  records_ = Records();
  cursor_ = Cursor();
  open_ = false;
}

std::int32_t Recordset::State() { return open_ ? ADODB::adStateOpen : ADODB::adStateClosed; }

std::int64_t Recordset::RecordCount() const {
  requireOpen();
  return cursor_.count();
}

std::int64_t Recordset::AbsolutePosition() const {
  requireOpen();
  return cursor_.absolutePosition();
}

void Recordset::MoveFirst() {
  Update();
  cursor_.moveFirst();
}

void Recordset::MoveLast() {
  Update();
  cursor_.moveLast();
}

void Recordset::MovePrevious() { Move(-1); }

void Recordset::Move(std::int32_t records) {
  Update();
  cursor_.move(records);
}

void Recordset::AddNew() {
  Update();
  edited_.emplace(static_cast<std::size_t>(fields_.Count()), basic::Null{});
  adding_ = true;
}

void Recordset::Update() {
  requireOpen();
  if (!edited_) return;
  if (adding_) {
    records_.append(std::move(*edited_));
    cursor_.appended();
  } else {
    records_.replace(currentRecord(), std::move(*edited_));
  }
  edited_.reset();
  adding_ = false;
}

void Recordset::Delete() {
  requireOpen();
  if (adding_) failContext();
  records_.erase(currentRecord());
  cursor_.deleted();
  edited_.reset();
}

basic::Variant Recordset::value(std::size_t field) const {
  requireOpen();
  return edited_ ? (*edited_)[field] : records_.value(currentRecord(), field);
}

void Recordset::setValue(std::size_t field, basic::Variant value) {
  requireOpen();
  if (!edited_) {
    const std::size_t record = currentRecord();
    Record copy;
    for (std::size_t i = 0; i < static_cast<std::size_t>(fields_.Count()); ++i) {
      copy.push_back(records_.value(record, i));
    }
    edited_ = std::move(copy);
  }
  (*edited_)[field] = std::move(value);
}

void Recordset::requireOpen() const {
  if (!open_) failClosed();
}

void Recordset::requireClosed() const {
  if (open_) failOpen();
}

std::size_t Recordset::currentRecord() const {
  if (!cursor_.hasRecord()) failNoCurrentRecord();
  return static_cast<std::size_t>(cursor_.absolutePosition() - 1);
}

}  // namespace ado
