#include "platform/ServiceManager.h"

#include <unistd.h>

#include <chrono>
#include <string>

#include "platform/Log.h"
#include "platform/Sandbox.h"
#include "support/ManagerSocket.h"

namespace platform {
namespace {

using support::ManagerSocket;

class ServiceManagerTest : public Sandbox {
 protected:
  ServiceManagerTest() {
    for (const char* name : {"NOTIFY_SOCKET", "WATCHDOG_USEC", "WATCHDOG_PID"}) setVariable(name, nullptr);
  }
  const std::string path_ = folder_ + "/notify";
};

TEST_F(ServiceManagerTest, HearsAtPathsAndAbstractAddresses) {
  for (const std::string& address : {path_, "@lumenfold-test-" + std::to_string(::getpid())}) {
    ManagerSocket socket(address);
    setVariable("NOTIFY_SOCKET", address.c_str());
    ServiceManager manager;
    ASSERT_TRUE(manager.isThere()) << address;
    manager.tell("READY=1\nSTATUS=on\n");
    EXPECT_EQ(socket.next(), "READY=1\nSTATUS=on\n") << address;
  }
}

TEST_F(ServiceManagerTest, GetsWhatItDidNotTakeWithWhatComesNext) {
  ManagerSocket socket(path_);
  setVariable("NOTIFY_SOCKET", path_.c_str());
  ServiceManager manager;
  // Until the socket is full, which is after some hundred on any system.
  constexpr int Many = 5000;
  for (int i = 0; i < Many; ++i) manager.tell("WATCHDOG=1\n");
  manager.tell("READY=1\n");
  while (!socket.next().empty()) {
  }
  manager.tell("STATUS=on\n");
  const std::string rest = socket.next();
  EXPECT_NE(rest.find("READY=1\nSTATUS=on\n"), std::string::npos) << rest;
  EXPECT_LT(rest.size(), 20'000U);
}

TEST_F(ServiceManagerTest, MayBeGoneOrNotThereAtAll) {
  ServiceManager none;
  EXPECT_FALSE(none.isThere());
  none.tell("READY=1\n");
  const std::string tooLong = "/" + std::string(200, 'x');
  for (const char* const address : {"relative", tooLong.c_str(), "@"}) {
    setVariable("NOTIFY_SOCKET", address);
    EXPECT_FALSE(ServiceManager().isThere()) << address;
  }
  setVariable("NOTIFY_SOCKET", "/nowhere/notify");
  ServiceManager gone;
  gone.tell("READY=1\n");
}

TEST_F(ServiceManagerTest, SaysHowOftenItWantsASignOfLifeFromThisProcess) {
  const auto wanted = [this](const char* interval, const std::string& process) {
    setVariable("NOTIFY_SOCKET", "@lumenfold-test-watchdog");
    setVariable("WATCHDOG_USEC", interval);
    setVariable("WATCHDOG_PID", process.c_str());
    return ServiceManager().watchdog();
  };
  EXPECT_EQ(wanted("2000000", std::to_string(::getpid())), std::chrono::seconds(2));
  EXPECT_EQ(wanted("2000000", ""), std::chrono::seconds(2));
  EXPECT_FALSE(wanted("2000000", "1"));
  for (const char* nonsense : {"", "0", "-5", "10s", "99999999999999999999999"})
    EXPECT_FALSE(wanted(nonsense, ""));
}

TEST(LogTest, HasOneLineForEachMessageButForPeople) {
  using namespace std::chrono_literals;
  const auto time = std::chrono::system_clock::time_point(1'767'225'600s + 45ms);
  const auto line = [&](LogForm form) {
    return logLine(form, Priority::Warning, "settings", "broken \r\n\"so\" \x1b[1m", time);
  };
  EXPECT_EQ(line(LogForm::Text), "lumenfold: broken \n\"so\" ?[1m\n");
  EXPECT_EQ(line(LogForm::Journal), "<4>broken \"so\" ?[1m\n");
  EXPECT_EQ(line(LogForm::Json),
            "{\"time\":\"2026-01-01T00:00:00.045Z\",\"priority\":4,\"where\":\"settings\","
            "\"message\":\"broken \\\"so\\\" ?[1m\"}\n");
}

}  // namespace
}  // namespace platform
