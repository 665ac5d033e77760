#include "platform/Files.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>

#include <cmath>
#include <functional>

#include "basic/Conversion.h"
#include "platform/InputFile.h"
#include "platform/Sandbox.h"

namespace platform {
namespace {

class FilesTest : public Sandbox {
 protected:
  std::string readAll(const std::string& path) {
    const host::Bytes bytes = files_.OpenForInput(path)->ReadAll();
    return {bytes.data.get(), bytes.size};
  }

  Settings settings_{folder_ + "/settings.ini"};
  Files files_{settings_};
};

TEST_F(FilesTest, ReadsWhatThereIsAtEachRead) {
  const std::string path = write("data.txt", "first");
  const auto file = files_.OpenForInput(path);
  std::ofstream(path, std::ios::app) << " and more";
  EXPECT_EQ(file->ReadAll().size, 14U);
  std::ofstream(path).flush();  // empties it
  EXPECT_EQ(file->ReadAll().size, 0U);

  const std::string large(5'000'000, 'x');
  write("data.txt", large);
  EXPECT_EQ(readAll(path), large);
}

TEST_F(FilesTest, SaysWhatItCannotReadAndWhy) {
  const std::string missing = folder_ + "/missing.txt";
  EXPECT_EQ(errorOf([&] { (void)readAll(missing); }),
            "'" + missing + "' cannot be opened: there is no such file or folder.");
  EXPECT_EQ(errorOf([&] { (void)readAll(folder_); }), "'" + folder_ + "' is a folder, not a file.");
  const std::string pipe = folder_ + "/pipe";
  ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
  EXPECT_EQ(errorOf([&] { (void)readAll(pipe); }), "'" + pipe + "' is a device or a pipe, not a file.");
  const std::string huge = write("huge.txt", "");
  std::filesystem::resize_file(huge, InputFile::MaximumSize + 1);
  EXPECT_EQ(errorOf([&] { (void)readAll(huge); }),
            "'" + huge + "' has 268435457 bytes; files of more than 256 MiB are not read.");
  EXPECT_EQ(errorOf([&] { (void)readAll(""); }), "A path is empty.");
  EXPECT_EQ(errorOf([&] { (void)readAll("http://host/x.txt"); }),
            "'http://host/x.txt' is an address, not the path of a file.");
}

TEST_F(FilesTest, RespectsLocks) {
  const std::string path = write("data.txt", "x");
  const std::string locked = "'" + path + "' is locked by another program.";
  const int other = open(path.c_str(), O_RDWR);
  const auto file = files_.OpenForInput(path);

  ASSERT_EQ(flock(other, LOCK_EX | LOCK_NB), 0) << "an open file must not keep a writer out";
  EXPECT_EQ(errorOf([&] { (void)file->ReadAll(); }), locked);
  EXPECT_EQ(errorOf([&] { (void)files_.OpenForInput(path); }), locked);
  ASSERT_EQ(flock(other, LOCK_SH), 0);
  EXPECT_EQ(file->ReadAll().size, 1U);

  struct flock record {};
  record.l_type = F_WRLCK;
  ASSERT_EQ(fcntl(other, F_OFD_SETLK, &record), 0);
  EXPECT_EQ(errorOf([&] { (void)file->ReadAll(); }), locked);
  close(other);
  EXPECT_EQ(file->ReadAll().size, 1U);
}

TEST_F(FilesTest, AppendsAndDeletes) {
  const std::string path = folder_ + "/log.txt";
  files_.Append(path, "one\r\n");
  files_.Append(path, "two\r\n");
  EXPECT_EQ(read(path), "one\r\ntwo\r\n");
  files_.Kill(path);
  EXPECT_EQ(errorOf([&] { files_.Kill(path); }),
            "'" + path + "' cannot be deleted: there is no such file or folder.");
  EXPECT_NE(errorOf([&] { files_.Append(folder_ + "/none/log.txt", "x"); }), "no error");
}

TEST_F(FilesTest, TellsTimesApartByTheMillisecond) {
  setVariable("TZ", "Europe/Berlin");
  const std::string path = write("data.txt", "x");
  const auto at = [&](std::time_t second, long nanosecond) {
    const timespec times[2] = {{second, nanosecond}, {second, nanosecond}};
    EXPECT_EQ(utimensat(AT_FDCWD, path.c_str(), times, 0), 0);
    return files_.FileDateTime(path);
  };
  constexpr std::time_t Second = 1'750'000'000;  // 15 June 2025, 15:06:40 UTC
  const basic::DateParts parts = basic::Split(at(Second, 0));
  EXPECT_EQ((std::array{parts.year, parts.month, parts.day, parts.hour, parts.minute, parts.second}),
            (std::array{2025, 6, 15, 17, 6, 40}));
  for (long ms = 0; ms < 999; ++ms) {
    const double step = at(Second, (ms + 1) * 1'000'000).serial - at(Second, ms * 1'000'000).serial;
    EXPECT_NEAR(step * 86400, 0.001, 0.000'002);
  }
}

TEST_F(FilesTest, TellsChangesApartThatKeepTheTime) {
  constexpr timespec Second{1'750'000'000, 0};
  const timespec times[2] = {Second, Second};
  const std::string path = write("data.txt", "old");
  ASSERT_EQ(utimensat(AT_FDCWD, path.c_str(), times, 0), 0);
  const basic::Date old = files_.FileDateTime(path);
  EXPECT_EQ(files_.FileDateTime(path), old);
  const std::string other = write("other.txt", "new");
  ASSERT_EQ(utimensat(AT_FDCWD, other.c_str(), times, 0), 0);
  std::filesystem::rename(other, path);
  const basic::Date renamed = files_.FileDateTime(path);
  EXPECT_NE(renamed, old);
  EXPECT_EQ(basic::CStr(renamed), basic::CStr(old)) << "what keeps whole seconds keeps them";
  EXPECT_EQ(files_.FileDateTime(path), renamed);
}

TEST(FileDatesTest, AnyDifferenceMovesTheTimeWithinItsSecond) {
  struct stat status {};
  status.st_mtim = {1'750'000'000, 999'000'000};
  FileDates dates;
  long last = dates.of("x", status).tv_nsec;
  EXPECT_EQ(last, 999'000'000);
  const std::function<void()> changes[] = {[&] { ++status.st_size; }, [&] { ++status.st_ino; },
                                           [&] { ++status.st_dev; }, [&] { ++status.st_ctim.tv_sec; },
                                           [&] { ++status.st_ctim.tv_nsec; }};
  for (int i = 0; i < 1000; ++i) {
    changes[i % 5]();
    const timespec moved = dates.of("x", status);
    EXPECT_NE(moved.tv_nsec, last);
    EXPECT_EQ(moved.tv_sec, 1'750'000'000);
    EXPECT_GE(moved.tv_nsec, 500'000'000) << "it rounds to the second it was in";
    EXPECT_LT(moved.tv_nsec, 1'000'000'000);
    last = moved.tv_nsec;
    EXPECT_EQ(dates.of("x", status).tv_nsec, last);
  }
  status.st_mtim.tv_nsec = 5;
  EXPECT_EQ(dates.of("x", status).tv_nsec, 5) << "another time of the change is told as it is";
}

TEST_F(FilesTest, RenamesButNotOntoAnother) {
  const std::string path = write("a.txt", "a");
  const std::string taken = write("b.txt", "b");
  EXPECT_EQ(errorOf([&] { files_.Name(path, taken); }),
            "'" + path + "' cannot be renamed to '" + taken + "': File exists.");
  EXPECT_EQ(read(taken), "b");
  files_.Name(path, folder_ + "/c.txt");
  EXPECT_EQ(read(folder_ + "/c.txt"), "a");
  EXPECT_NE(errorOf([&] { files_.Name(path, folder_ + "/d.txt"); }), "no error");
}

TEST_F(FilesTest, MakesNewTemporaryFiles) {
  setVariable("TMPDIR", folder_.c_str());
  EXPECT_EQ(files_.TempPath(), folder_ + "/");
  const std::string first = files_.TempFileName(files_.TempPath(), "TMP");
  const std::string second = files_.TempFileName(files_.TempPath(), "TMP");
  EXPECT_NE(first, second);
  EXPECT_EQ(first.substr(0, folder_.size() + 4), folder_ + "/TMP");
  EXPECT_EQ(std::filesystem::file_size(first), 0U);
  EXPECT_NE(errorOf([&] { (void)files_.TempFileName(folder_ + "/none", "TMP"); }), "no error");
}

class PathRulesTest : public FilesTest {
 protected:
  PathRules rules_{settings_};
};

TEST_F(PathRulesTest, KeepThisSystemsPaths) {
  EXPECT_EQ(rules_.translate("/srv/data.txt"), "/srv/data.txt");
  EXPECT_EQ(rules_.translate("data\\sub\\x.txt"), "data/sub/x.txt");
  // The system joins a folder and a name with a backslash.
  EXPECT_EQ(rules_.translate(folder_ + "\\errors.txt"), folder_ + "/errors.txt");
  const std::string odd = write("odd\\name.txt", "x");
  EXPECT_EQ(rules_.translate(odd), odd);
}

TEST_F(PathRulesTest, TranslateDrivesAndShares) {
  write("settings.ini", "[Paths]\nC:\\data = " + folder_ + "/one\nc:\\Data\\Shop\\ = " + folder_ +
                            "/two\n\\\\server\\Share = " + folder_ + "/three\nD: = " + folder_ + "\n");
  struct {
    const char* path;
    const char* translated;  // below the folder
  } const cases[] = {
      {"C:\\data\\x.txt", "/one/x.txt"},
      {"c:/DATA/sub/x.txt", "/one/sub/x.txt"},
      {"C:\\data", "/one"},
      {"C:\\data\\shop\\x.txt", "/two/x.txt"},
      {"C:\\data\\shopping\\x.txt", "/one/shopping/x.txt"},
      {"\\\\SERVER\\share\\x.txt", "/three/x.txt"},
      {"D:\\x.txt", "/x.txt"},
      {"D:\\ONE\\Prices.TXT", "/one/prices.txt"},
      {"C:\\data\\PRICES.txt", "/one/prices.txt"},
      {"C:\\data\\new\\File.txt", "/one/new/File.txt"},
  };
  write("one/prices.txt", "x");
  for (const auto& c : cases) EXPECT_EQ(rules_.translate(c.path), folder_ + c.translated) << c.path;
  EXPECT_EQ(readAll("c:\\data\\Prices.txt"), "x");
}

TEST_F(PathRulesTest, SayHowToAddATranslation) {
  write("settings.ini", "[Paths]\nC:\\data = /srv\n");
  const auto error = [&](const std::string& path, const std::string& folder) {
    EXPECT_EQ(errorOf([&] { (void)rules_.translate(path); }),
              "This system has no '" + path + "'. To say where it is, add a line like '" + folder +
                  " = /srv/data' to the section [Paths] of " + settings_.file() + ".");
  };
  error("C:\\database\\x.txt", "C:\\database");
  error("E:\\x.txt", "E:");
  error("\\\\server\\share\\x.txt", "\\\\server\\share");
}

TEST_F(PathRulesTest, FindFilesWithinAFolderAndNothingElse) {
  const std::string folder = folder_ + "/pics";
  const std::string soup = std::filesystem::canonical(write("pics/starters/Soup.JPG", "")).string();
  write("secret.jpg", "");
  std::filesystem::create_symlink(folder_ + "/secret.jpg", folder + "/through.jpg");
  std::filesystem::create_directory_symlink(folder_, folder + "/up");
  for (const char* name : {"starters/Soup.JPG", "starters\\soup.jpg", "./starters/../starters/soup.jpg"}) {
    EXPECT_EQ(rules_.searchWithin(folder + "/", name).find(), soup) << name;
  }
  const std::string absolute = folder_ + "/secret.jpg";
  for (const std::string& name :
       {std::string("../secret.jpg"), std::string("..\\secret.jpg"), std::string("starters/../../secret.jpg"),
        absolute, std::string("C:\\secret.jpg"), std::string("\\\\server\\secret.jpg"),
        std::string("through.jpg"), std::string("up/secret.jpg"), std::string("..")}) {
    EXPECT_EQ(errorOf([&] { static_cast<void>(rules_.searchWithin(folder, name).find()); }),
              "'" + name + "' leads out of the folder '" + folder + "'; only what lies in it is shown.");
  }
  EXPECT_EQ(errorOf([&] { static_cast<void>(rules_.searchWithin(folder, "none.jpg").find()); }),
            "'none.jpg' cannot be found in the folder '" + folder + "': No such file or directory.");
}

}  // namespace
}  // namespace platform
