// The dialog of text files.

#include <gmock/gmock.h>

#include "pages/ConnectionDialogs.h"

namespace LF2000::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

struct TextConnectionTest : ConnectionDialogs {
  TextConnectionTest() {
    machine.files.Write("/decks/today.txt", "Item\tPrice\nRye bread\t4.80\nPlum cake\t4.10\n");
    machine.files.Write("/decks/plain.txt", "1;2\n3;4\n");
  }
};

TEST_F(TextConnectionTest, AFileIsConnectedAsItIsFound) {
  Load({});
  OpenNew(ConnectionKind::TextFile, "/decks/today.txt");
  EXPECT_EQ(view.Top().Caption(), "Text file");
  EXPECT_EQ(view.Text("txtDescription"), "today");
  EXPECT_EQ(view.Text("txtFile"), "today.txt");
  EXPECT_EQ(view.Text("lblFound"), "UTF-8, tab, 2 columns, 2 rows");
  EXPECT_EQ(Preview(), "Rye bread 4.80 /Plum cake 4.10 ");

  EXPECT_EQ(view.Click("cmdOK"), "");
  EXPECT_TRUE(view.IsEmpty());
  EXPECT_EQ(stored, "001");
  EXPECT_EQ(Tag("001"), "0|today|today.txt|-1|");
  EXPECT_THAT(host->undoEntries, ElementsAre(testing::Pair("Connect today", "")));
  machine.RunJobs();
  EXPECT_EQ(presentation->FindConnection("001")->RecordCount(), 2);
}

TEST_F(TextConnectionTest, WhatTheAuthorSaysIsNotGuessedAgain) {
  Load({});
  OpenNew(ConnectionKind::TextFile);
  EXPECT_EQ(view.Text("lblFound"), "");
  view.Set("txtFile", "plain.txt");
  machine.RunJobs();
  EXPECT_EQ(view.Text("txtDescription"), "plain");
  EXPECT_EQ(view.Text("lblFound"), "UTF-8, semicolon, 2 columns, 2 rows");
  view.Check("chkFirstRow", true);
  view.Set("txtDescription", "Mine");
  view.Set("txtFile", "today.txt");
  view.Set("txtFile", "plain.txt");  // the look at the one before is not heard
  machine.RunJobs();
  EXPECT_EQ(view.Text("lblFound"), "UTF-8, semicolon, 2 columns, 1 row");
  view.Click("cmdOK");
  EXPECT_EQ(Tag("001"), "0|Mine|plain.txt|-1|");
}

TEST_F(TextConnectionTest, ComplainsAboutWhatMustNotBeStored) {
  Load({});
  OpenNew(ConnectionKind::TextFile);
  struct Case {
    const char* description;
    const char* file;
    const char* complaint;
  };
  const Case cases[] = {
      {"", "today.txt", "txtDescription: Give the connection a description."},
      {"  ", "today.txt", "txtDescription: Give the connection a description."},
      {"To\tday", "today.txt", "txtDescription: What is stored in a presentation cannot hold a TAB."},
      {"Today", "", "txtFile: Say which file holds the data."},
      {"Today", "to\tday.txt", "txtFile: What is stored in a presentation cannot hold a TAB."},
      {"Today", "gone.txt",
       "txtFile: File not found: /decks/gone.txt. Mend the path, or press OK again to keep it all the same."},
  };
  for (const Case& each : cases) {
    view.Set("txtDescription", each.description);
    view.Set("txtFile", each.file);
    EXPECT_EQ(view.Click("cmdOK"), "");
    EXPECT_EQ(LastComplaint(), each.complaint);
  }
  EXPECT_EQ(view.focused.back(), "txtFile");
  EXPECT_TRUE(host->undoEntries.empty());
  EXPECT_TRUE(presentation->Connections().empty());

  // The file may be there on another machine.
  view.Click("cmdOK");
  EXPECT_EQ(Tag("001"), "0|Today|gone.txt|0|");
}

TEST_F(TextConnectionTest, ATestReadsACopy) {
  Load({"0|Today|today.txt|-1|"});
  deck->Add().AddField("p1", 1, "001", "Weight");
  OpenExisting("001");
  const auto before = presentation->FindConnection("001")->DataVersion();
  view.Click("cmdTest");
  EXPECT_EQ(view.Property("cmdTest", "Caption"), "Cancel");
  EXPECT_THAT(machine.Captions(), ElementsAre("Reading Today"));
  machine.RunJobs();
  EXPECT_EQ(view.Property("cmdTest", "Caption"), "&Test");
  EXPECT_EQ(view.Text("lblTest"),
            "Read 2 rows, 2 columns in less than 0.1 s\nThere is no column 'Weight', which shapes show.");
  EXPECT_EQ(presentation->FindConnection("001")->DataVersion(), before);

  view.Check("chkFirstRow", false);
  EXPECT_THAT(view.Text("lblTest"), HasSubstr("(settings changed since)"));
  EXPECT_FALSE(view.Get("grdPreview").Enabled());

  view.Click("cmdTest");
  view.Click("cmdTest");
  EXPECT_EQ(view.Text("lblTest"), "Cancelled.");
  view.Click("cmdTest");
  view.Click("cmdCancel");
  machine.RunJobs();  // nobody hears
  EXPECT_TRUE(view.IsEmpty());
  EXPECT_EQ(Tag("001"), "0|Today|today.txt|-1|");
}

TEST_F(TextConnectionTest, AChangeIsOneStepAndARenamingKeepsTheData) {
  Load({"0|Today|today.txt|-1|"});
  const auto before = presentation->FindConnection("001");
  OpenExisting("001");
  view.Click("cmdOK");
  EXPECT_TRUE(host->undoEntries.empty());

  OpenExisting("001");
  view.Set("txtDescription", "Offer");
  view.Click("cmdOK");
  EXPECT_EQ(presentation->FindConnection("001"), before);
  EXPECT_EQ(Tag("001"), "0|Offer|today.txt|-1|");

  OpenExisting("001");
  view.Set("txtFile", "plain.txt");
  view.Check("chkFirstRow", false);
  view.Click("cmdOK");
  machine.RunJobs();
  EXPECT_EQ(Tag("001"), "0|Offer|plain.txt|0|");
  EXPECT_EQ(presentation->FindConnection("001")->Columns().at(1), "Column1");
  EXPECT_THAT(host->undoEntries, ElementsAre(testing::Pair("Change connection 001", ""),
                                             testing::Pair("Change connection 001", "")));
}

TEST_F(TextConnectionTest, NumbersEndAt999) {
  Load({});
  deck->tags->items.emplace_back("CORVANE CONNECTION999", "0\tToday\ttoday.txt\t-1\t");
  presentation->ActivePresentation(deck);
  EXPECT_THAT(support::errorOf([this] { OpenNew(ConnectionKind::TextFile); }), HasSubstr("999"));
  EXPECT_TRUE(view.IsEmpty());
}

}  // namespace
}  // namespace LF2000::test
