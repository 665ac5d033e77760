// Logs, the rule of reporting errors, paths, the registry and the small helpers.

#include <gtest/gtest.h>

#include <algorithm>

#include "addin/support/modBrowsers.h"
#include "addin/support/modDebug.h"
#include "addin/support/modErrors.h"
#include "addin/support/modGlobalFunctions.h"
#include "addin/support/modHelp.h"
#include "addin/support/modRegistry.h"
#include "fakes/FakeServices.h"

namespace LF2000 {
namespace {

using modDebug::DebugKind;

struct SupportTest : testing::Test {
  fakes::Machine machine;
  std::string DebugLog() { return machine.files.files["/addin/lumenfold.dbg"].content; }
  std::string ErrorsLog() { return machine.files.files["/addin/errors.txt"].content; }
  static void Fail(std::int32_t number, const std::string& description) {
    try {
      throw basic::Error(number, "LF2000", description);
    } catch (...) {
      modErrors::SetLastError();
    }
  }
};

TEST_F(SupportTest, DebugLogIsWrittenOnlyWhenOnAndStartsAfreshOnce) {
  machine.files.files["/addin/lumenfold.dbg"].content = "old run\r\n";
  modDebug::WriteDebugLog(DebugKind::Event, "Connect", "unseen");
  EXPECT_EQ(DebugLog(), "old run\r\n");

  modDebug::DebugOn = true;
  modDebug::WriteDebugLog(DebugKind::Event, "Connect", "OnConnection");
  modDebug::WriteDebugLog(static_cast<DebugKind>(4), "Connect", "odd");
  EXPECT_EQ(DebugLog(),
            "2/3/2026 12:00:00 PM.000 Event        OnConnection\r\n"
            "2/3/2026 12:00:00 PM.000  odd\r\n");
}

TEST_F(SupportTest, LogsKeepTheNewestLinesOfTheProcessAndNoMoreThanTwoFilesOfThem) {
  auto& files = machine.files.files;
  files["/addin/errors.1.txt"].content = "old run\r\n";
  files["/addin/lumenfold.1.dbg"].content = "old run\r\n";
  modDebug::DebugOn = true;
  modErrors::WriteErrorLog("first");
  modDebug::WriteDebugLog(DebugKind::Event, "Connect", "first");
  EXPECT_FALSE(files.contains("/addin/errors.1.txt"));
  EXPECT_FALSE(files.contains("/addin/lumenfold.1.dbg"));

  const std::string text(1000, 'x');
  std::string newest;
  for (int i = 0; i < 4000; ++i) {
    newest = std::to_string(i) + text;
    modErrors::WriteErrorLog(newest);
    modDebug::WriteDebugLog(DebugKind::Event, "Connect", newest);
  }
  for (const auto& [name, olderName] : {std::pair{"/addin/errors.txt", "/addin/errors.1.txt"},
                                        std::pair{"/addin/lumenfold.dbg", "/addin/lumenfold.1.dbg"}}) {
    const std::string& present = files[name].content;
    const std::string& older = files[olderName].content;
    EXPECT_LE(std::max(present.size(), older.size()), modErrors::LongestLog + 100) << name;
    EXPECT_GT(older.size(), modErrors::LongestLog / 2) << "the line before the newest file is kept";
    EXPECT_TRUE(present.ends_with(newest + "\r\n")) << name;
    const std::size_t lines = static_cast<std::size_t>(std::ranges::count(present + older, '\n'));
    EXPECT_NE((older + present).find(std::to_string(4000 - lines) + text), std::string::npos)
        << "nothing is lost in between";
  }
}

TEST_F(SupportTest, MillisecondsArePaddedOnTheRight) {
  const std::pair<float, const char*> cases[] = {
      {100.0F, ".000 "}, {100.0078125F, ".700 "}, {100.125F, ".125 "}, {100.046875F, ".460 "}};
  for (const auto& [timer, expected] : cases) {
    machine.clock.timerStart = timer;
    modErrors::AppendLogLine("/log", "x");
    EXPECT_NE(machine.files.files["/log"].content.find(expected), std::string::npos) << timer;
    machine.files.files.clear();
  }
}

TEST_F(SupportTest, ErrorsAreShownWithoutAShowAndLoggedDuringOneAfresh) {
  machine.files.files["/addin/errors.txt"].content = "old run\r\n";
  Fail(53, "File not found");
  machine.messageBox.answer = host::MsgBoxResult::Cancel;
  EXPECT_EQ(modErrors::ReportError(modErrors::FillingValues), host::MsgBoxResult::Cancel);
  modErrors::ReportError();
  ASSERT_EQ(machine.messageBox.shown.size(), 2U);
  EXPECT_EQ(machine.messageBox.shown[0].text, "Error while filling values. \r\nFile not found");
  EXPECT_EQ(machine.messageBox.shown[0].style, 49);
  EXPECT_EQ(machine.messageBox.shown[0].title, "Corvane Lumenfold 2000");
  EXPECT_EQ(machine.messageBox.shown[1].text, "File not found");
  EXPECT_EQ(machine.messageBox.shown[1].style, 48);
  EXPECT_EQ(ErrorsLog(), "old run\r\n");
  EXPECT_FALSE(modErrors::ErrorsOccurred);

  modErrors::SlideShowRunning = true;
  modErrors::ReportError(modErrors::FillingValues);
  modErrors::ReportError();
  EXPECT_EQ(machine.messageBox.shown.size(), 2U);
  EXPECT_TRUE(modErrors::ErrorsOccurred);
  EXPECT_EQ(ErrorsLog(),
            "2/3/2026 12:00:00 PM.000 File not found (-2147221491-LF2000)\r\n"
            "2/3/2026 12:00:00 PM.000 File not found (53-LF2000)\r\n");
  modErrors::OpenErrorLog();
  EXPECT_EQ(machine.shell.executed, std::vector<std::string>{"open /addin/errors.txt 5"});
}

TEST_F(SupportTest, PathsResolveAgainstThePresentation) {
  const struct {
    const char* path;
    const char* base;
    const char* resolved;
  } cases[] = {
      {"", "/decks/a.pptx", ""},
      {"data.txt", "/decks/a.pptx", "/decks/data.txt"},
      {"sub\\data.txt", "/decks/a.pptx", "/decks/sub/data.txt"},
      {"sub\\data.txt", "C:\\decks\\a.pptx", "C:\\decks\\sub\\data.txt"},
      {"/srv/data.txt", "/decks/a.pptx", "/srv/data.txt"},
      {"C:\\data\\x.txt", "/decks/a.pptx", "C:\\data\\x.txt"},
      {"\\\\server\\share\\x.txt", "/decks/a.pptx", "\\\\server\\share\\x.txt"},
      {"Https://host/x", "/decks/a.pptx", "Https://host/x"},
      {"C:/data/x.txt", "/decks/a.pptx", "C:/data/x.txt"},
      {"[LUMENFOLDFOLDER]/x.txt", "/decks/a.pptx", "/decks/x.txt"},
      {"[LUMENFOLDFOLDER]\\x.txt", "C:\\decks\\a.pptx", "C:\\decks\\x.txt"},
      {"[lumenfoldfolder]/x.txt", "/decks/a.pptx", "/decks/[lumenfoldfolder]/x.txt"},
  };
  for (const auto& c : cases)
    EXPECT_EQ(modGlobalFunctions::ResolvePath(c.path, c.base), c.resolved) << c.path;
  EXPECT_EQ(modGlobalFunctions::ShortenPath("/decks/data/x.txt", "/decks/a.pptx"), "data/x.txt");
  EXPECT_EQ(modGlobalFunctions::ShortenPath("/decks2/x.txt", "/decks/a.pptx"), "/decks2/x.txt");
  EXPECT_EQ(modGlobalFunctions::ShortenPath("C:\\decks\\x.txt", "C:\\decks\\a.pptx"), "x.txt");
}

TEST_F(SupportTest, ASettingMayNameTheFolderOfThePlaceholder) {
  machine.settings.info["LumenfoldFolder"] = "/srv/shared;data";
  EXPECT_EQ(modGlobalFunctions::ResolvePath("[LUMENFOLDFOLDER]/x.txt", "/decks/a.pptx"),
            "/srv/shared;data/x.txt");
  EXPECT_EQ(modGlobalFunctions::ResolveConnectionString(
                "Provider=SQLite;Data Source=[LUMENFOLDFOLDER]/stock.db", "/decks/a.pptx"),
            "Provider=SQLite;Data Source=\"/srv/shared;data/stock.db\"");
  EXPECT_EQ(modGlobalFunctions::ResolveConnectionString("Driver=X;Folder=[LUMENFOLDFOLDER];Top=1", ""),
            "Driver=X;Folder=\"/srv/shared;data\";Top=1");
}

TEST_F(SupportTest, ConnectionStringsResolveAgainstThePresentation) {
  const struct {
    const char* text;
    const char* resolved;
  } cases[] = {
      {"Provider=Microsoft.Jet.OLEDB.4.0;Data Source=stock.mdb;Mode=Read",
       "Provider=Microsoft.Jet.OLEDB.4.0;Data Source=/decks/stock.mdb;Mode=Read"},
      {"PROVIDER=Microsoft.Jet.OLEDB.4.0; data source = C:\\it's here.mdb ;Password='x;y'",
       "PROVIDER=Microsoft.Jet.OLEDB.4.0; data source = C:\\it's here.mdb ;Password='x;y'"},
      {"Provider=SQLite;Data Source=\"my; stock.db\";Timeout=5",
       "Provider=SQLite;Data Source=\"/decks/my; stock.db\";Timeout=5"},
      {"Provider=SQLite;Data Source=:memory:", "Provider=SQLite;Data Source=:memory:"},
      {"Driver={SQLite3};Database=data\\stock.db;Timeout=5",
       "Driver={SQLite3};Database=/decks/data/stock.db;Timeout=5"},
      {"DBQ={it's.mdb};Driver=MDBTools", "DBQ={/decks/it's.mdb};Driver=MDBTools"},
      {"Provider=MSDASQL;Extended Properties=\"Driver={SQLite3};Database=stock.db\"",
       "Provider=MSDASQL;Extended Properties=\"Driver={SQLite3};Database=/decks/stock.db\""},
      {"Driver={PostgreSQL};Database=shop", "Driver={PostgreSQL};Database=shop"},
      {"DSN=stock;Data Source=x", "DSN=stock;Data Source=x"},
  };
  for (const auto& c : cases)
    EXPECT_EQ(modGlobalFunctions::ResolveConnectionString(c.text, "/decks/a.pptx"), c.resolved);
  EXPECT_EQ(
      modGlobalFunctions::ResolveConnectionString("Provider=SQLite;Data Source=stock.db", "/a;b/a.pptx"),
      "Provider=SQLite;Data Source=\"/a;b/stock.db\"");
}

TEST_F(SupportTest, SmallHelpersFollowTheirRules) {
  std::string prefix;
  EXPECT_EQ(modGlobalFunctions::MakeTempFileName(prefix), "/tmp/TMP1.tmp");
  EXPECT_EQ(prefix, "TMP");

  EXPECT_EQ(modGlobalFunctions::LocalComputerName(), "GATE7");
  machine.shell.computer.reset();
  EXPECT_EQ(modGlobalFunctions::LocalComputerName(), "");

  modGlobalFunctions::OpenUrl("example.org", 1);
  modGlobalFunctions::OpenUrl("hTTp://example.org", 1);
  EXPECT_EQ(modHelp::ShowHelp(0, "a.chm"), 7);
  modHelp::ShowHelp(0, "a.chm", 12);
  EXPECT_EQ(machine.shell.executed,
            (std::vector<std::string>{"open http://example.org 1", "open hTTp://example.org 1",
                                      "help a.chm 0 0", "help a.chm 15 12"}));

  EXPECT_EQ(modBrowsers::BrowseForFolder(0, "t"), "");
  machine.shell.browsed = host::Shell::Browsed{"PC1", "/data"};
  EXPECT_EQ(modBrowsers::BrowseForFolder(0, "t"), "/data");
  EXPECT_EQ(modBrowsers::BrowseForComputer(0, "t"), "PC1");
  EXPECT_EQ(machine.shell.browseFlags, 0x1000U);
}

TEST_F(SupportTest, RegistryEntriesKeepTheirTypes) {
  modRegistry::SaveEntryString(1, "Software\\X", "Name", "gate");
  modRegistry::SaveEntryLong(1, "Software\\X", "Count", -5);
  modRegistry::SaveEntryBinary(1, "Software\\X", "Raw", {1, 2});
  EXPECT_EQ(modRegistry::GetEntryString(1, "Software\\X", "Name"), "gate");
  EXPECT_EQ(modRegistry::GetEntryLong(1, "Software\\X", "Count"), -5);
  EXPECT_EQ(modRegistry::GetEntryBinary(1, "Software\\X", "Raw"), (std::vector<unsigned char>{1, 2}));
  EXPECT_EQ(modRegistry::GetEntryString(0, "Software\\X", "Name"), "");
  modRegistry::SaveEntryString(1, "Software\\X", "Long", std::string(300, 'x'));

  const auto fails = [](const char* source, const char* why, const std::function<void()>& operation) {
    try {
      operation();
      ADD_FAILURE() << why;
    } catch (const basic::Error& error) {
      EXPECT_EQ(error.number, -2147212504);
      EXPECT_EQ(error.source, source);
      EXPECT_EQ(error.description, why);
    }
  };
  using namespace modRegistry;
  const char* const X = "Software\\X";
  fails("GetEntryString", "Key not found", [] { (void)GetEntryString(1, "Nowhere", "Name"); });
  fails("GetEntryString", "Key entry not found", [&] { (void)GetEntryString(1, X, "?"); });
  fails("GetEntryString", "Key entry type not string", [&] { (void)GetEntryString(1, X, "Count"); });
  fails("GetEntryString", "Key entry could not be read", [&] { (void)GetEntryString(1, X, "Long"); });
  fails("GetEntryLong", "Key entry not type long", [&] { (void)GetEntryLong(1, X, "Name"); });
  fails("GetEntryBinary", "Key entry not type long", [&] { (void)GetEntryBinary(1, X, "Name"); });
  fails("GetEntryBinary", "Registry entry could not be read", [&] { (void)GetEntryBinary(1, X, "?"); });
  fails("SaveEntryString", "No spaces allowed in the Entry name", [&] { SaveEntryString(1, X, "A b", ""); });
  fails("DeleteKey", "No subkey specified", [] { DeleteKey(1, ""); });
  fails("DeleteKeyEntry", "Key entry not specified", [&] { DeleteKeyEntry(1, X, ""); });
  machine.registry.readOnly = true;
  fails("CreateKey", "Key could not be created", [] { CreateKey(1, "Software\\Y"); });
  fails("SaveEntryString", "Key could not be created", [&] { SaveEntryString(1, X, "Name", "x"); });
  fails("SaveEntryLong", "Value could not be saved", [&] { SaveEntryLong(1, X, "Count", 1); });
  fails("SaveEntryBinary", "Value could not be saved", [&] { SaveEntryBinary(1, X, "Raw", {}); });
  EXPECT_EQ(machine.registry.openKeys, 0);
}

}  // namespace
}  // namespace LF2000
