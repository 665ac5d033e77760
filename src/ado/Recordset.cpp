// The cursor, the fields and the states of a recordset, whatever its rows come from.

#include "ado/Recordset.h"

#include <limits>
#include <utility>

#include "ado/Connection.h"
#include "ado/Errors.h"
#include "ado/Query.h"

namespace ado {

void Recordset::CursorLocation(ADODB::CursorLocation) { requireClosed(); }
void Recordset::CursorType(ADODB::CursorType) { requireClosed(); }
void Recordset::LockType(ADODB::LockType) { requireClosed(); }

Recordset::~Recordset() { breakOff("The recordset was destroyed."); }

void Recordset::ActiveConnection(const std::shared_ptr<ADODB::Connection>& connection) {
  if (query_ && !query_->finished()) failStillExecuting();
  auto ours = std::dynamic_pointer_cast<Connection>(connection);
  if (connection && !ours) failNoConnection();
  connection_ = std::move(ours);
}

void Recordset::Open(std::string_view source, ADODB::CursorType, ADODB::LockType, std::int32_t options) {
  requireClosed();
  if (!connection_) failNoConnection();
  const bool isTable = options != ADODB::adOptionUnspecified && (options & ADODB::adCmdTableDirect) != 0;
  source_ = Source{std::string(source), isTable ? Source::Kind::Table : Source::Kind::Either};
  requerying_ = false;
  startReading();
}

void Recordset::OpenSchema(ADODB::Schema schema, std::string_view table) {
  requireClosed();
  if (!connection_) failNoConnection();
  source_ = Source{std::string(table),
                   schema == ADODB::adSchemaTables ? Source::Kind::Tables : Source::Kind::Columns};
  requerying_ = false;
  startReading();
}

void Recordset::Open() {
  requireClosed();
  if (fields_.Count() == 0) failNoConnection();
  source_.reset();
  failure_.reset();
  records_ = Records();
  cursor_ = Cursor();
  open_ = true;
}

void Recordset::Open(host::TextTable table) {
  requireClosed();
  source_.reset();
  failure_.reset();
  fields_.clear();
  for (const std::string& column : table.columns())
    fields_.add(column, std::numeric_limits<std::size_t>::max());
  records_ = Records(std::move(table));
  cursor_ = Cursor(static_cast<std::int64_t>(records_.count()));
  open_ = true;
}

void Recordset::Requery(std::int32_t) {
  if (!source_) {
    requireOpen();
    failNotSupported("a recordset in memory has no source to query again");
  }
  if (!connection_) failNoConnection();
  breakOff("The recordset is being queried anew.");
  requerying_ = true;
  startReading();
}

void Recordset::Close() {
  if (!query_ && !failure_) requireOpen();
  if (edited_) failContext();
  breakOff("The recordset was closed.");
  failure_.reset();
  source_.reset();
  records_ = Records();
  cursor_ = Cursor();
  open_ = false;
}

std::int32_t Recordset::State() {
  takeRecords();
  if (query_) return ADODB::adStateFetching;
  if (failure_) throw *failure_;
  return open_ ? ADODB::adStateOpen : ADODB::adStateClosed;
}

void Recordset::startReading() {
  const std::shared_ptr<Session> session = connection_->openSession();
  failure_.reset();
  timeout_ = session->commandTimeout();
  started_ = std::chrono::steady_clock::now();
  query_ = session->read(*source_);
}

void Recordset::breakOff(const std::string& why) {
  if (query_) Query::abandon(query_, why);
  query_.reset();
}

void Recordset::takeRecords() {
  if (!query_) return;
  if (!query_->finished()) {
    if (timeout_.count() == 0 || std::chrono::steady_clock::now() - started_ <= timeout_) return;
    Query::abandon(query_, "Cannot read " + shownSource(*source_) + ": it was not complete within the " +
                               std::to_string(timeout_.count()) + " seconds of the command time-out.");
  }
  const std::shared_ptr<Query> query = std::exchange(query_, nullptr);
  try {
    ResultTable table = query->take();
    fields_.assign(table.columns());
    records_ = Records(std::move(table));
  } catch (const basic::Error& error) {
    if (requerying_) throw;
    failure_ = error;
    return;
  }
  cursor_ = Cursor(static_cast<std::int64_t>(records_.count()));
  open_ = true;
}

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
  requireChangeable();
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
  requireChangeable();
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
  requireChangeable();
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
  if (open_) return;
  if (query_) failStillExecuting();
  failClosed();
}

void Recordset::requireClosed() const {
  if (open_ || query_) failOpen();
}

void Recordset::requireChangeable() const {
  if (source_) failNotSupported("the records of a database can only be read");
}

std::size_t Recordset::currentRecord() const {
  if (!cursor_.hasRecord()) failNoCurrentRecord();
  return static_cast<std::size_t>(cursor_.absolutePosition() - 1);
}

}  // namespace ado
