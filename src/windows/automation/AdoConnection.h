#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "host/adodb.h"
#include "windows/com/Object.h"

namespace windows::automation {

/// What it says of a failure bears no secret of its connection string.
class Connection final : public ADODB::Connection {
 public:
  explicit Connection(com::Object connection) : connection_(std::move(connection)) {}
  Connection(const Connection&) = delete;
  Connection& operator=(const Connection&) = delete;
  ~Connection() override;

  void ConnectionString(std::string_view text) override;
  [[nodiscard]] std::string ConnectionString() const override { return text_; }
  void Open(std::string_view user, std::string_view password, std::int32_t options) override;
  void Close() override;
  [[nodiscard]] std::int32_t State() override;
  [[nodiscard]] std::int32_t ConnectionTimeout() const override {
    return connection_.number(L"ConnectionTimeout");
  }
  [[nodiscard]] std::int32_t CommandTimeout() const override { return connection_.number(L"CommandTimeout"); }
  [[nodiscard]] std::shared_ptr<ADODB::Recordset> OpenSchema(ADODB::Schema schema,
                                                             std::string_view table) override;

  [[nodiscard]] const com::Object& object() const { return connection_; }

 private:
  com::Object connection_;
  /// As it was set: ADO takes the password out of its own when it has opened.
  std::string text_;
};

}  // namespace windows::automation
