#include <sys/stat.h>

#include <chrono>
#include <cmath>
#include <thread>

#include "platform/Sandbox.h"
#include "platform/Shell.h"
#include "platform/SystemClock.h"

namespace platform {
namespace {

class SystemTest : public Sandbox {};

TEST_F(SystemTest, ClockFollowsTheTimeZone) {
  const SystemClock clock;
  setVariable("TZ", "UTC");
  const basic::Date there = clock.Now();
  setVariable("TZ", "UTC-5:30");
  const basic::Date here = clock.Now();
  EXPECT_NEAR((here.serial - there.serial) * 24, 5.5, 0.01);
  const basic::DateParts parts = basic::Split(here);
  const double now = parts.hour * 3600 + parts.minute * 60 + parts.second;
  const double apart = std::abs(clock.Timer() - now);
  EXPECT_TRUE(apart < 2 || apart > 86398) << apart;
}

TEST_F(SystemTest, ShellStartsWhatThePathHas) {
  const Settings settings(folder_ + "/settings.ini");
  Shell shell(settings, /*opensFiles=*/true);
  setVariable("PATH", folder_.c_str());
  EXPECT_FALSE(shell.ShellExecute("open", "/tmp/x", 5)) << "nothing to start it with";

  const std::string said = folder_ + "/said";
  const std::string program = write("xdg-open", "#!/bin/sh\nprintf %s \"$1\" > '" + said +
                                                    ".new'\n/bin/mv '" + said + ".new' '" + said + "'\n");
  chmod(program.c_str(), 0755);
  const auto argumentFor = [&](const char* file) {
    std::filesystem::remove(said);
    EXPECT_TRUE(shell.ShellExecute("open", file, 5));
    for (int i = 0; i < 6000 && !std::filesystem::exists(said); ++i) {
      std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
    return read(said);
  };
  EXPECT_EQ(argumentFor("http://example.org/?a b"), "http://example.org/?a b");
  EXPECT_EQ(argumentFor("/tmp\\errors.txt"), "/tmp/errors.txt");
  EXPECT_EQ(argumentFor("--help"), "./--help");
  EXPECT_FALSE(shell.ShellExecute("open", "C:\\nowhere.txt", 5));
  EXPECT_FALSE(Shell(settings, /*opensFiles=*/false).ShellExecute("open", "/tmp/errors.txt", 5));
}

}  // namespace
}  // namespace platform
