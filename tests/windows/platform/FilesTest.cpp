// Files with names of all letters and lengths, and what they answer when they cannot be had.

#include "windows/platform/Files.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

#include "support/ErrorOf.h"
#include "windows/com/Text.h"
#include "windows/platform/Paths.h"
#include "windows/platform/SystemClock.h"

namespace windows::platform {

struct FilesTest : testing::Test {
  FilesTest() : folder(files.TempFileName(files.TempPath(), "lf")) {
    files.Kill(folder);
    make(folder);
  }
  ~FilesTest() override {
    for (auto each = made.rbegin(); each != made.rend(); ++each) {
      ::DeleteFileW(systemPath(*each).c_str());
      ::RemoveDirectoryW(systemPath(*each).c_str());
    }
  }
  FilesTest(const FilesTest&) = delete;
  FilesTest& operator=(const FilesTest&) = delete;

  void make(const std::string& path) {
    ASSERT_TRUE(::CreateDirectoryW(systemPath(path).c_str(), nullptr)) << path;
    made.push_back(path);
  }
  std::string write(const std::string& path, std::string_view text) {
    files.Append(path, text);
    made.push_back(path);
    return path;
  }
  std::string read(const std::string& path) {
    const host::Bytes bytes = files.OpenForInput(path)->ReadAll();
    return {bytes.data.get(), bytes.size};
  }

  Files files;
  std::vector<std::string> made;
  std::string folder;
};

TEST_F(FilesTest, NamesMayBeOfAnyLettersAndLength) {
  std::string deep = folder + "\\Abflüge – отлёт 出発";
  make(deep);
  for (int i = 0; i < 3; ++i) make(deep += "\\" + std::string(120, 'x'));
  const std::string file = write(deep + "/Größe €.txt", "Tag\t1\r\n");
  files.Append(file, "Nacht\t2\r\n");
  EXPECT_EQ(read(file), "Tag\t1\r\nNacht\t2\r\n");
  EXPECT_EQ(files.LocalPath(file), deep + "\\Größe €.txt");
  const std::string renamed = deep + "\\neu.txt";
  files.Name(file, renamed);
  made.push_back(renamed);
  EXPECT_EQ(read(renamed).size(), 16U);
  EXPECT_EQ(support::errorNumber([&] { (void)read(file); }), 53);
}

TEST_F(FilesTest, ErrorsSayWhichFileAndWhy) {
  const std::string file = write(folder + "\\taken.txt", "x");
  EXPECT_EQ(support::errorOf([&] { files.Kill(folder + "\\none.txt"); }),
            "'" + folder + "\\none.txt' cannot be deleted: there is no such file or folder.");
  EXPECT_EQ(support::errorNumber([&] { files.Append(folder + "\\no\\x.txt", "x"); }), 76);
  EXPECT_EQ(support::errorNumber([&] { files.Name(write(folder + "\\a.txt", ""), file); }), 58);
  const HANDLE held =
      ::CreateFileW(systemPath(file).c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr);
  EXPECT_EQ(support::errorOf([&] { (void)read(file); }),
            "'" + file + "' cannot be opened: another program holds it.");
  ::CloseHandle(held);
  EXPECT_NE(support::errorOf([&] { (void)read(""); }), "");
}

TEST_F(FilesTest, AChangeUnderTheSameTimeShows) {
  const std::string file = write(folder + "\\feed.txt", "a");
  const auto setTime = [&](const SYSTEMTIME& moment) {
    FILETIME time{};
    ::SystemTimeToFileTime(&moment, &time);
    const HANDLE handle = ::CreateFileW(systemPath(file).c_str(), GENERIC_WRITE, 7, nullptr, OPEN_EXISTING,
                                        FILE_ATTRIBUTE_NORMAL, nullptr);
    EXPECT_TRUE(::SetFileTime(handle, nullptr, nullptr, &time)) << ::GetLastError();
    ::CloseHandle(handle);
    return localDate(time);
  };
  const SYSTEMTIME moment{2001, 7, 0, 14, 12, 30, 15, 0};
  const basic::Date set = setTime(moment);
  const basic::Date first = files.FileDateTime(file);
  EXPECT_EQ(first, set);
  EXPECT_EQ(first, files.FileDateTime(file));
  files.Append(file, "b");
  setTime(moment);
  const basic::Date second = files.FileDateTime(file);
  EXPECT_NE(first, second);
  EXPECT_EQ(basic::Split(first).second, basic::Split(second).second);
  EXPECT_EQ(support::errorNumber([&] { (void)files.FileDateTime(folder + "\\none"); }), 53);
}

TEST_F(FilesTest, NoNameLeadsOutOfAFolder) {
  make(folder + "\\in");
  write(folder + "\\out.png", "x");
  const std::string inside = write(folder + "\\in\\a.png", "x");
  EXPECT_NE(files.FileWithin(folder + "\\in", "A.PNG"), "");
  for (const std::string name : {"..\\out.png", "../out.png", "x\\..\\..\\out.png", "\\out.png",
                                 "C:\\out.png", "a.png:stream", "..\\none.png", ".."}) {
    EXPECT_NE(support::errorOf([&] { (void)files.FileWithin(folder + "\\in", name); }).find("leads out"),
              std::string::npos)
        << name;
  }
  EXPECT_EQ(support::errorNumber([&] { (void)files.FileWithin(folder + "\\in", "none.png"); }), 53);
}

TEST_F(FilesTest, TemporaryFilesAreNewAndEmpty) {
  const std::string first = files.TempFileName(files.TempPath(), "TMP");
  const std::string second = files.TempFileName(files.TempPath(), "TMP");
  made.push_back(first);
  made.push_back(second);
  EXPECT_NE(first, second);
  EXPECT_EQ(files.TempPath().back(), '\\');
  EXPECT_TRUE(first.starts_with(files.TempPath() + "TMP")) << first;
  EXPECT_EQ(read(first), "");
}

}  // namespace windows::platform
