#include "ado/Connection.h"

#include <utility>

#include "ado/Errors.h"
#include "ado/Providers.h"
#include "ado/Recordset.h"

namespace ado {

Connection::~Connection() {
  if (session_) session_->end();
}

void Connection::ConnectionString(std::string_view text) {
  requireClosed();
  text_ = text;
}

void Connection::Open(std::string_view user, std::string_view password, std::int32_t) {
  requireClosed();
  const auto self = shared_from_this();
  Target target = targetOf(text_, translatePath_, user, password);
  target.isReadOnly = isReadOnly_;
  // The loop may have run, and somebody opened it meanwhile.
  requireClosed();
  connectionTimeout_ = static_cast<std::int32_t>(target.connectTimeout.count());
  commandTimeout_ = static_cast<std::int32_t>(target.commandTimeout.count());
  session_ = Session::start(std::move(target), ending_);
}

void Connection::Close() {
  if (!session_) failClosed();
  session_->end();
  session_.reset();
}

std::int32_t Connection::State() {
  if (!session_) return ADODB::adStateClosed;
  switch (session_->state()) {
    case Session::State::Connecting:
      return ADODB::adStateConnecting;
    case Session::State::Open:
      return ADODB::adStateOpen;
    case Session::State::Failed:
      throw session_->failure();
    case Session::State::Ended:
      break;
  }
  return ADODB::adStateClosed;
}

std::shared_ptr<ADODB::Recordset> Connection::OpenSchema(ADODB::Schema schema, std::string_view table) {
  auto recordset = std::make_shared<Recordset>();
  recordset->ActiveConnection(shared_from_this());
  recordset->OpenSchema(schema, table);
  return recordset;
}

std::shared_ptr<Session> Connection::openSession() {
  if (!session_ || session_->state() != Session::State::Open) failNoConnection();
  return session_;
}

void Connection::requireClosed() const {
  if (session_ && session_->state() != Session::State::Failed) failOpen();
}

}  // namespace ado
