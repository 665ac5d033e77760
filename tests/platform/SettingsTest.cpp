#include "platform/Settings.h"

#include "platform/Sandbox.h"
#include "platform/UserFolders.h"

namespace platform {
namespace {

using testing::internal::CaptureStderr;
using testing::internal::GetCapturedStderr;

class SettingsTest : public Sandbox {
 protected:
  std::string get(const std::string& section, const std::string& key) {
    return settings_.GetSetting("Corvane Lumenfold 2000", section, key);
  }
  Settings settings_{folder_ + "/settings.ini"};
};

TEST_F(SettingsTest, ReadsTheFile) {
  write("settings.ini",
        "\xEF\xBB\xBF; a comment\r\n"
        "[Info]\r\n"
        "Debug = True\r\n"
        "# another = comment\r\n"
        "  hideuserinterface\t=\t1  \r\n"
        "Quoted = \" blanks \"\r\n"
        "Empty =\r\n"
        "Twice = first\r\n"
        "Equals = a=b;c#d\r\n"
        "[ Other ]\r\n"
        "Debug = 0\r\n"
        "[INFO]\r\n"
        "Twice = second");
  const char* const values[][3] = {
      {"Info", "Debug", "True"},          {"info", "DEBUG", "True"},      {"Other", "Debug", "0"},
      {"Info", "HideUserInterface", "1"}, {"Info", "Quoted", " blanks "}, {"Info", "Empty", ""},
      {"Info", "Twice", "second"},        {"Info", "Equals", "a=b;c#d"},  {"Info", "Missing", ""}};
  for (const auto& [section, key, value] : values) EXPECT_EQ(get(section, key), value) << key;
  EXPECT_EQ(settings_.GetSetting("Other program", "Info", "Debug"), "");
  setVariable("LUMENFOLD_INFO_DEBUG", "False");
  EXPECT_EQ(get("Info", "Debug"), "False") << "variables go first";
}

TEST_F(SettingsTest, ReadsTheFileAnewWhenItChanges) {
  EXPECT_EQ(get("Info", "Debug"), "");
  write("settings.ini", "[Info]\nDebug=1\n");
  EXPECT_EQ(get("Info", "Debug"), "1");
  write("new.ini", "[Info]\nDebug=2\n");  // of the same size, put in its place
  std::filesystem::rename(folder_ + "/new.ini", folder_ + "/settings.ini");
  EXPECT_EQ(get("Info", "Debug"), "2");
  std::filesystem::remove(folder_ + "/settings.ini");
  EXPECT_EQ(get("Info", "Debug"), "");
}

TEST_F(SettingsTest, ReportsBrokenLinesOnce) {
  write("settings.ini", "[Info\n[Info]\nno value\nDebug=1\n= x\n");
  CaptureStderr();
  EXPECT_EQ(get("Info", "Debug"), "1");
  const std::string report = GetCapturedStderr();
  for (const char* line : {"line 1 is", "line 3 is", "line 5 is"})
    EXPECT_NE(report.find(line), std::string::npos);

  write("settings.ini", "[Info\n[Info]\nno value\nDebug=2\n= x\nmore\n");
  CaptureStderr();
  EXPECT_EQ(get("Info", "Debug"), "2");
  EXPECT_EQ(GetCapturedStderr(), "lumenfold: " + settings_.file() +
                                     ", line 6 is ignored: there is no = between a key and its value.\n");
}

TEST_F(SettingsTest, KeepsWhatItReadWhileTheFileCannotBeRead) {
  write("settings.ini", "[Info]\nDebug=1\n");
  EXPECT_EQ(get("Info", "Debug"), "1");
  std::filesystem::remove(folder_ + "/settings.ini");
  std::filesystem::create_directory(folder_ + "/settings.ini");
  CaptureStderr();
  EXPECT_EQ(get("Info", "Debug"), "1");
  EXPECT_EQ(get("Info", "Debug"), "1");
  EXPECT_EQ(GetCapturedStderr(), "lumenfold: '" + settings_.file() + "' is a folder, not a file.\n");
}

TEST_F(SettingsTest, LiesInTheUsersFolder) {
  EXPECT_EQ(Settings().file(), folder_ + "/.config/Corvane Lumenfold 2000/settings.ini");
  setVariable("XDG_CONFIG_HOME", "/somewhere");
  EXPECT_EQ(Settings().file(), "/somewhere/Corvane Lumenfold 2000/settings.ini");
  setVariable("XDG_CONFIG_HOME", "relative");
  EXPECT_EQ(Settings().file(), folder_ + "/.config/Corvane Lumenfold 2000/settings.ini");
  setVariable("XDG_STATE_HOME", "/state");
  EXPECT_EQ(stateFolder(), "/state/Corvane Lumenfold 2000");
}

}  // namespace
}  // namespace platform
