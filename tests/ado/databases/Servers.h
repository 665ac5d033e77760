#pragma once

#include <sys/types.h>

#include <filesystem>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "host/adodb.h"
#include "support/TemporaryFolder.h"

namespace ado::test {

/// A database that the tests start themselves and that is gone when they end.
class TestServer {
 public:
  virtual ~TestServer() = default;
  explicit TestServer(std::string_view quote = "\"") : quote_(quote) {}
  TestServer(const TestServer&) = delete;
  TestServer& operator=(const TestServer&) = delete;

  /// As an author writes it, with password.
  [[nodiscard]] virtual std::string connectionString() const = 0;
  /// A name of the database's own, as its statements have it.
  [[nodiscard]] std::string quoted(std::string_view name) const;
  /// For preparing tests: by the driver manager itself. Throws on failure.
  void execute(const std::string& sql) const;

  /// Open connections and recordsets, or their failure.
  [[nodiscard]] std::shared_ptr<ADODB::Connection> connected() const;
  [[nodiscard]] std::shared_ptr<ADODB::Recordset> opened(std::string_view source,
                                                         std::int32_t options = 16) const;

 private:
  /// As the driver manager takes it.
  [[nodiscard]] virtual std::string odbcText() const = 0;
  std::string quote_;
};

/// Waits, as the system does, until the state is no more that one; throws after
/// two minutes. Returns how often it looked.
int waitWhile(ADODB::Connection& connection, std::int32_t state);
int waitWhile(ADODB::Recordset& recordset, std::int32_t state);

/// A server in a process of its own, in a folder of its own.
class ProcessServer : public TestServer {
 public:
  virtual void start() = 0;
  void stop();

 protected:
  explicit ProcessServer(std::string_view quote = "\"");
  ~ProcessServer() override;
  /// Runs a program as an account that is not root, its output in the log.
  void launch(std::vector<std::string> arguments);
  void run(std::vector<std::string> arguments);
  /// Until statements are answered; throws with the log.
  void waitForAnswers() const;

  int stopSignal_ = 15;

 private:
  support::TemporaryFolder temporary_;

 protected:
  const std::filesystem::path& folder_ = temporary_.path();

 private:
  [[nodiscard]] pid_t spawn(std::vector<std::string> arguments) const;
  [[nodiscard]] std::string log() const;
  pid_t process_ = -1;
};

/// Each is made when it is first asked for. A missing package fails the test
/// that asks, by its name.
TestServer& sqlite();
TestServer& postgres();
TestServer& maria();
/// The same as postgres(), which can be stopped.
ProcessServer& postgresProcess();

/// What has to be escaped in a connection string.
inline constexpr const char* PostgresPassword = "s3;c}r{e't\"=";

}  // namespace ado::test
