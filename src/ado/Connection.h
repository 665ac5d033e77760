#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

#include "ado/Providers.h"
#include "ado/Session.h"
#include "host/adodb.h"

namespace ado {

/// A connection to a database by an ODBC driver; see ado/Providers.h for the
/// connection strings it takes.
///
/// Opens in the background: State is adStateConnecting, then adStateOpen. When
/// it fails, State throws why, until the connection is closed or opened again,
/// so that nobody waits for an opening that never comes. Closing and destroying
/// never wait: what is under way is broken off, and recordsets being filled over
/// the connection fail.
class Connection final : public ADODB::Connection, public std::enable_shared_from_this<Connection> {
 public:
  Connection(std::shared_ptr<EndingWorkers> ending, PathTranslator translatePath, bool isReadOnly)
      : ending_(std::move(ending)), translatePath_(std::move(translatePath)), isReadOnly_(isReadOnly) {}
  ~Connection() override;
  Connection(const Connection&) = delete;
  Connection& operator=(const Connection&) = delete;

  void ConnectionString(std::string_view text) override;
  [[nodiscard]] std::string ConnectionString() const override { return text_; }
  /// User and password, where given, go before those of the connection string.
  /// In the background whatever the options. What no driver serves fails at once. While a file that
  /// the string names is looked for on another machine, the loop runs.
  void Open(std::string_view user, std::string_view password, std::int32_t options) override;
  void Close() override;
  [[nodiscard]] std::int32_t State() override;
  /// As the connection string says ("Connect Timeout", "Command Timeout", 0 for
  /// none), else 15 and 30.
  [[nodiscard]] std::int32_t ConnectionTimeout() const override { return connectionTimeout_; }
  [[nodiscard]] std::int32_t CommandTimeout() const override { return commandTimeout_; }

  [[nodiscard]] std::shared_ptr<ADODB::Recordset> OpenSchema(ADODB::Schema schema,
                                                             std::string_view table) override;

  /// Where recordsets read; an error unless it is open.
  [[nodiscard]] std::shared_ptr<Session> openSession();

 private:
  void requireClosed() const;

  std::shared_ptr<EndingWorkers> ending_;
  PathTranslator translatePath_;
  bool isReadOnly_;
  std::string text_;
  std::int32_t connectionTimeout_ = 15;
  std::int32_t commandTimeout_ = 30;
  std::shared_ptr<Session> session_;
};

}  // namespace ado
