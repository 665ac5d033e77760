// Forms between the system and a desk's windows: who gets which, what is told once, what is refused.
#include "app/desk/DeskForms.h"

#include <gmock/gmock.h>

#include "basic/Error.h"
#include "fakes/FakeServices.h"
#include "web/desk/Desk.h"

namespace app {
namespace {

using json::Json;
using testing::ElementsAre;

class Page final : public Forms::Form {
 public:
  explicit Page(const std::string& name = "frmPage") : Form(name, "Page") {
    AddRow("&Row", {&txtRow, &udRow});
    AddButtons({&cmdOK, &cmdFile});
    txtRow.Change = [this] { lblNow.Text("row " + txtRow.Text()); };
    cmdOK.Click = [this] { Close(Forms::Result::OK); };
    cmdFile.Click = [this] {
      View().ChooseFile(
          *this, "Choose", {{"Texts", "txt csv"}},
          [this](const std::optional<std::string>& path) { txtRow.Text(path.value_or("nothing")); });
    };
  }
  void CatchError() override {}

  Forms::TextBox& txtRow = Add<Forms::TextBox>("txtRow");
  Forms::UpDown& udRow = Add<Forms::UpDown>("udRow", txtRow, 1, 99);
  Forms::Label& lblNow = Add<Forms::Label>("lblNow");
  Forms::CommandButton& cmdOK = Add<Forms::CommandButton>("cmdOK", "OK");
  Forms::CommandButton& cmdFile = Add<Forms::CommandButton>("cmdFile", "…");
};

class DeskFormsTest : public testing::Test {
 protected:
  DeskFormsTest() {
    host::Services services = host::Current();
    services.forms = &forms;
    host::Use(services);
  }

  std::shared_ptr<Page> show(Forms::Placement placement, const std::string& name = "frmPage") {
    auto page = std::make_shared<Page>(name);
    page->Show(placement, [this, name](Forms::Result result) {
      closed.push_back(name + (result == Forms::Result::OK ? " OK" : " Cancel"));
    });
    return page;
  }
  static Json change(int seq, const std::string& value) {
    return {{"seq", seq}, {"events", {{{"control", "txtRow"}, {"event", "change"}, {"value", value}}}}};
  }
  static Json click(int seq, const std::string& control) {
    return {{"seq", seq}, {"events", {{{"control", control}, {"event", "click"}}}}};
  }
  int status(const std::function<void()>& request) {
    try {
      request();
    } catch (const web::Refusal& refusal) {
      return refusal.status();
    }
    return 200;
  }
  std::vector<std::string> names(const std::string& window) const {
    std::vector<std::string> all;
    for (const Json& form : forms.toJson(window)) all.push_back(form.at("name"));
    return all;
  }

  fakes::Machine machine;
  std::string active = "one";
  std::vector<std::string> closed;
  std::vector<std::string> sent;
  DeskForms forms{{[this] { return active; },
                   [this](const std::string& window, std::string_view event, const Json& data) {
                     sent.push_back(window + " " + std::string(event) + " " + json::textOf(data));
                   },
                   [] {}, [](const std::string& path) { return "assets/" + path; }}};
};

TEST_F(DeskFormsTest, KeepsOneDockedFormForEachWindowBelowItsDialogs) {
  show(Forms::Placement::Dialog, "frmDialog");
  show(Forms::Placement::Docked, "frmFirst");
  show(Forms::Placement::Docked, "frmSecond");
  active = "two";
  show(Forms::Placement::Docked, "frmOther");
  EXPECT_THAT(names("one"), ElementsAre("frmSecond", "frmDialog"));
  EXPECT_THAT(names("two"), ElementsAre("frmOther"));
  EXPECT_THAT(closed, ElementsAre("frmFirst Cancel"));
  forms.forget("one");
  EXPECT_THAT(closed, ElementsAre("frmFirst Cancel", "frmDialog Cancel", "frmSecond Cancel"));
  active.clear();
  EXPECT_THROW(show(Forms::Placement::Dialog), basic::Error);
}

TEST_F(DeskFormsTest, AnswersWithWhatAHandlerChangedAndTellsItOnce) {
  const auto page = show(Forms::Placement::Docked);
  const Json answer = forms.raise("one", 1, change(41, "3"));
  EXPECT_EQ(41, answer.at("ack"));
  EXPECT_EQ("row 3", answer.at("patch").at("lblNow").at("Text"));
  forms.flush();
  forms.flush();
  ASSERT_EQ(1U, sent.size());
  EXPECT_THAT(sent.front(), testing::StartsWith(R"(one form {"form":1,"ack":41,"patch":{)"));
  // What comes from elsewhere carries the newest event that was handled.
  page->Update([&] { page->lblNow.Text("later"); });
  forms.flush();
  EXPECT_THAT(sent.back(), testing::HasSubstr(R"("ack":41,"patch":{"lblNow":{"Text":"later"}})"));
  EXPECT_EQ(41, forms.toJson("one").at(0).at("ack"));
}

TEST_F(DeskFormsTest, RefusesWhatAFormOrAWindowDoesNotHave) {
  const auto page = show(Forms::Placement::Dialog);
  page->cmdOK.Enabled(false, "Choose a column first.");
  EXPECT_EQ(409, status([&] { forms.raise("one", 1, click(1, "cmdOK")); }));
  EXPECT_EQ(409, status([&] { forms.raise("one", 1, click(1, "cmdNone")); }));
  EXPECT_EQ(404, status([&] { forms.raise("two", 1, change(1, "3")); }));
  EXPECT_EQ(404, status([&] { forms.raise("one", 2, change(1, "3")); }));
  const Json unknown = {{"seq", 1}, {"events", {{{"control", "txtRow"}, {"event", "explode"}}}}};
  EXPECT_EQ(400, status([&] { forms.raise("one", 1, unknown); }));
  const Json number = {{"seq", 1}, {"events", {{{"control", "txtRow"}, {"event", "change"}, {"value", 3}}}}};
  EXPECT_EQ(409, status([&] { forms.raise("one", 1, number); }));
  EXPECT_EQ("", page->txtRow.Text());
  page->cmdOK.Enabled(true);
  EXPECT_EQ(200, status([&] { forms.raise("one", 1, click(2, "cmdOK")); }));
  EXPECT_THAT(closed, ElementsAre("frmPage OK"));
  EXPECT_EQ(404, status([&] { forms.raise("one", 1, change(3, "3")); }));
}

TEST_F(DeskFormsTest, AsksForAFileUntilSomebodyAnswers) {
  const auto page = show(Forms::Placement::Dialog);
  forms.raise("one", 1, click(1, "cmdFile"));
  EXPECT_THAT(sent,
              ElementsAre(testing::HasSubstr(R"("kinds":[{"name":"Texts","extensions":["txt","csv"]}])")));
  forms.repeat("one");
  EXPECT_EQ(2U, sent.size());
  EXPECT_EQ(409, status([&] { forms.chosen("two", 1, "x.txt"); }));
  forms.chosen("one", 1, "x.txt");
  EXPECT_EQ("x.txt", page->txtRow.Text());
  EXPECT_EQ(409, status([&] { forms.chosen("one", 1, "y.txt"); }));
  // A form that is closed asks no more.
  forms.raise("one", 1, click(2, "cmdFile"));
  forms.queryClose("one", 1);
  EXPECT_EQ(409, status([&] { forms.chosen("one", 2, "z.txt"); }));
  EXPECT_EQ("x.txt", page->txtRow.Text());
}

}  // namespace
}  // namespace app
