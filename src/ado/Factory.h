#pragma once

#include "host/adodb.h"

namespace ado {

/// Makes recordsets in memory. There are no database connections in this
/// build: asking for one is an error that says so.
class Factory final : public ADODB::Factory {
 public:
  [[nodiscard]] std::shared_ptr<ADODB::Connection> CreateConnection() override;
  [[nodiscard]] std::shared_ptr<ADODB::Recordset> CreateRecordset() override;
};

}  // namespace ado
