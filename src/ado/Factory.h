#pragma once

#include <memory>

#include "ado/Drivers.h"
#include "ado/Providers.h"
#include "host/adodb.h"

namespace ado {

class EndingWorkers;

/// Makes connections to databases (ado::Connection) and recordsets
/// (ado::Recordset). Both are used on the thread of the loop alone.
///
/// The factory may go before what it made. Destroying it waits up to two seconds
/// for connections that were closed and are not gone yet, so that the program
/// does not end under a working driver.
class Factory final : public ADODB::Factory {
 public:
  /// `translatePath` is for the database files of connection strings.
  explicit Factory(PathTranslator translatePath = {});
  ~Factory() override;
  Factory(const Factory&) = delete;
  Factory& operator=(const Factory&) = delete;

  /// Connections made from now on read and change nothing, as far as their database can be told so: SQLite,
  /// PostgreSQL, MariaDB and MySQL refuse what changes data; others are asked to by the driver
  /// (SQL_ATTR_ACCESS_MODE), and few do. A text of several statements is refused, as a later one could take
  /// the refusal back.
  void readOnly(bool isReadOnly) { isReadOnly_ = isReadOnly; }

  [[nodiscard]] std::vector<ADODB::Provider> Providers() const override;
  [[nodiscard]] std::vector<std::string> DataSources() const override { return dataSources(); }
  [[nodiscard]] std::shared_ptr<ADODB::Connection> CreateConnection() override;
  [[nodiscard]] std::shared_ptr<ADODB::Recordset> CreateRecordset() override;

 private:
  std::shared_ptr<EndingWorkers> ending_;
  PathTranslator translatePath_;
  bool isReadOnly_ = false;
};

}  // namespace ado
