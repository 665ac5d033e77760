#pragma once

#include <memory>
#include <string>
#include <vector>

#include "host/adodb.h"

namespace windows::automation {

/// ActiveX Data Objects. What opens databases is installed with Windows and with other programs, and asked
/// for when it is needed.
class DataObjects final : public ADODB::Factory {
 public:
  /// Those that are known; whether they are there is looked up in the registry.
  [[nodiscard]] std::vector<ADODB::Provider> Providers() const override;
  [[nodiscard]] std::vector<std::string> DataSources() const override;
  [[nodiscard]] std::shared_ptr<ADODB::Connection> CreateConnection() override;
  [[nodiscard]] std::shared_ptr<ADODB::Recordset> CreateRecordset() override;
};

}  // namespace windows::automation
