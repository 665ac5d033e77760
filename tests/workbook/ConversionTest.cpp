// Workbooks of other formats, by LibreOffice or what stands in for it.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fcntl.h>
#include <stdlib.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <iterator>

#include "workbook/Reading.h"

namespace workbook::test {
namespace {

namespace fs = std::filesystem;

/// A program in LibreOffice's place: the shell script gets its arguments.
class StandIn {
 public:
  explicit StandIn(const std::string& script) {
    options.program = folder.write("soffice", "#!/bin/sh\ncd '" + folder.path().string() + "'\n" + script);
    fs::permissions(options.program, fs::perms::owner_all);
    static_cast<void>(folder.write("made.xlsx", oneNumber().bytes()));
    source = folder.write("source.xls", "anything");
  }
  [[nodiscard]] std::string error() const {
    return errorOf([&] { Desk(options).open(source); });
  }

  TemporaryFolder folder;
  std::string source;
  Converter::Options options;
};

// Its arguments end with: --outdir OUT INPUT.
constexpr const char* Converts = R"(echo x >> runs
for out; do input="$last"; last="$out"; done
mkdir -p "$input" && cp made.xlsx "$input/workbook.xlsx"
)";

int runsOf(const StandIn& program) {
  const std::string runs = program.folder.read("runs");
  return static_cast<int>(std::count(runs.begin(), runs.end(), 'x'));
}

/// Where temporary files go while it lives.
class TemporaryFiles {
 public:
  TemporaryFiles() { ::setenv("TMPDIR", folder_.path().c_str(), 1); }
  ~TemporaryFiles() { ::unsetenv("TMPDIR"); }
  TemporaryFiles(const TemporaryFiles&) = delete;
  TemporaryFiles& operator=(const TemporaryFiles&) = delete;
  /// But for the converter's profile, which serves all conversions.
  [[nodiscard]] std::ptrdiff_t count() const {
    const fs::recursive_directory_iterator all(folder_.path());
    return std::count_if(begin(all), end(all), [](const fs::directory_entry& entry) {
      return entry.path().string().find("/profile") == std::string::npos;
    });
  }

 private:
  TemporaryFolder folder_;
};

/// In place, as much as there was, with the time of the last change set back.
void rewriteKeepingTime(const std::string& path, const std::string& content) {
  struct stat before {};
  struct stat after {};
  ::stat(path.c_str(), &before);
  do {
    std::fstream(path, std::ios::in | std::ios::out) << content;
    const timespec times[] = {before.st_atim, before.st_mtim};
    ::utimensat(AT_FDCWD, path.c_str(), times, 0);
    ::stat(path.c_str(), &after);
  } while (after.st_ctim.tv_sec == before.st_ctim.tv_sec && after.st_ctim.tv_nsec == before.st_ctim.tv_nsec);
}

TEST(Conversion, IsDoneOnceWhileTheSourceStays) {
  const StandIn program(Converts);
  const TemporaryFiles temporary;
  {
    Desk desk(program.options);
    EXPECT_EQ(desk.texts(program.source, "Sheet1", "A1"), "1");
    EXPECT_GT(desk.loop.events, 0);
    EXPECT_EQ(desk.texts(program.source, "Sheet1", "A1"), "1");
    EXPECT_EQ(runsOf(program), 1);
    static_cast<void>(program.folder.write("source.xls", "changed"));
    EXPECT_EQ(desk.texts(program.source, "Sheet1", "A1"), "1");
    EXPECT_EQ(runsOf(program), 2);
    rewriteKeepingTime(program.source, "CHANGED");
    EXPECT_EQ(desk.texts(program.source, "Sheet1", "A1"), "1");
    EXPECT_EQ(runsOf(program), 3);
    EXPECT_EQ(temporary.count(), 2) << "a folder with the latest result";
  }
  EXPECT_EQ(temporary.count(), 0);
}

TEST(Conversion, CanBeAskedForWhileOneRuns) {
  const StandIn program(std::string("sleep 0.05\n") + Converts + "echo \"$1\" >> profiles\n");
  const std::string other = program.folder.write("other.xls", "anything");
  Desk desk(program.options);
  std::string texts;
  desk.loop.onEvents = [&] {
    if (desk.loop.events == 1) texts = desk.texts(other, "Sheet1", "A1");
  };
  EXPECT_EQ(desk.texts(program.source, "Sheet1", "A1"), "1");
  EXPECT_EQ(texts, "1");
  const std::string profiles = program.folder.read("profiles");
  EXPECT_THAT(profiles,
              ::testing::AllOf(::testing::HasSubstr("profile1\n"), ::testing::HasSubstr("profile2\n")));
}

TEST(Conversion, FailsWithTheReason) {
  const StandIn failing("echo 'Error: source file could not be loaded' >&2\nexit 1\n");
  EXPECT_EQ(failing.error(),
            "workbook '" + failing.source +
                "' cannot be opened: LibreOffice cannot convert it (Error: source file could not be "
                "loaded). It needs its part Calc (apt install libreoffice-calc)");
  const StandIn silent("exit 0\n");
  EXPECT_THAT(silent.error(), ::testing::HasSubstr("LibreOffice cannot convert it. It needs"));
  StandIn missing("");
  missing.options.program = "/nonexistent/soffice";
  EXPECT_EQ(missing.error(),
            "workbook '" + missing.source +
                "' cannot be opened: LibreOffice Calc, which reads such workbooks, is not installed "
                "(apt install libreoffice-calc)");
}

TEST(Conversion, IsEndedWhenItTakesTooLong) {
  StandIn slow("sh -c 'exec 3>alive; sleep 3600' & wait\n");
  slow.options.timeout = std::chrono::milliseconds(500);
  const std::string pipe = (slow.folder.path() / "alive").string();
  ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
  const int alive = ::open(pipe.c_str(), O_RDONLY | O_NONBLOCK);
  ASSERT_GE(alive, 0);
  EXPECT_THAT(slow.error(), ::testing::HasSubstr("LibreOffice did not convert it within 1 s"));
  // What it started is killed with it: nobody holds the pipe.
  const auto isHeld = [&] {
    char byte = 0;
    return ::read(alive, &byte, 1) < 0 && errno == EAGAIN;
  };
  for (int i = 0; i < 12'000 && isHeld(); ++i) std::this_thread::sleep_for(std::chrono::milliseconds(5));
  EXPECT_FALSE(isHeld());
  ::close(alive);
}

TEST(Conversion, ByLibreOfficeShowsTheSame) {
  if (!fs::exists("/usr/lib/libreoffice/program/libsclo.so")) {
    GTEST_SKIP() << "LibreOffice Calc is not installed (libreoffice-calc)";
  }
  Desk desk;
  const auto texts = [&](const char* file) {
    return desk.texts(std::string(TEST_DATA) + "/" + file, "cities", "Whole");
  };
  EXPECT_EQ(texts("libreoffice.ods"), "City|Share|Since/Zürich West|45.7%|03.02.2026/||/||/2|TRUE|08:05");
  // LibreOffice itself makes a number of the truth value in the old format.
  EXPECT_EQ(texts("libreoffice.xls"), "City|Share|Since/Zürich West|45.7%|03.02.2026/||/||/2|1|08:05");
}

}  // namespace
}  // namespace workbook::test
