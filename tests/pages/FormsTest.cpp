// Forms as objects: what they refuse, what they gather, how their controls behave. No page of the system.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <stdexcept>

#include "fakes/FakeFormView.h"
#include "fakes/FakeServices.h"

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

struct OrderForm final : Forms::Form {
  OrderForm() : Form("frmOrder", "Order") {
    txtCount.Change = [this] {
      lblTotal.Text(txtCount.Text() + " pieces");
      lblTotal.Text(txtCount.Text() + " pieces in all", Forms::Severity::Ok);
      ++changes;
    };
    cmdOrder.Click = [] { throw std::runtime_error("sold out"); };
    cmdClose.Click = [this] { Close(Forms::Result::OK); };
    AddRow("Count", {&txtCount, &udCount});
    AddButtons({&cmdOrder, &cmdClose});
    CancelButton(cmdClose);
  }
  using Form::Complain;
  using Form::View;
  void CatchError() override {
    try {
      throw;
    } catch (const std::exception& error) {
      caught.emplace_back(error.what());
    }
  }

  Forms::TextBox& txtCount = Add<Forms::TextBox>("txtCount");
  Forms::UpDown& udCount = Add<Forms::UpDown>("udCount", txtCount, 1, 9);
  Forms::Label& lblTotal = Add<Forms::Label>("lblTotal");
  Forms::CheckBox& chkGift = Add<Forms::CheckBox>("chkGift", "Gift");
  Forms::OptionButton& optRed = Add<Forms::OptionButton>("optRed", "Red", "colour");
  Forms::OptionButton& optBlue = Add<Forms::OptionButton>("optBlue", "Blue", "colour");
  Forms::OptionButton& optFast = Add<Forms::OptionButton>("optFast", "Fast", "speed");
  Forms::ComboBox& cmbSize = Add<Forms::ComboBox>("cmbSize");
  Forms::ListBox& lstParts = Add<Forms::ListBox>("lstParts", std::vector<std::string>{"Part"}, true);
  Forms::CommandButton& cmdOrder = Add<Forms::CommandButton>("cmdOrder", "Order");
  Forms::CommandButton& cmdClose = Add<Forms::CommandButton>("cmdClose", "Close");
  std::vector<std::string> caught;
  int changes = 0;
};

struct FormsTest : testing::Test {
  FormsTest() {
    machine.UseForms(&view);
    form->Show(Forms::Placement::Dialog, [this](Forms::Result how) { closed.push_back(how); });
  }

  fakes::Machine machine;
  fakes::FormView view;
  std::shared_ptr<OrderForm> form = std::make_shared<OrderForm>();
  std::vector<Forms::Result> closed;
};

TEST_F(FormsTest, WhatCannotBeUsedIsRefusedAndChangesNothing) {
  form->cmbSize.Items({{"S"}, {"L", "", false}});
  form->cmbSize.Text("gone");
  form->chkGift.Enabled(false, "Gifts are for members.");
  form->txtCount.Text("3");
  EXPECT_THAT(view.Set("txtNone", "1"), HasSubstr("no control 'txtNone'"));
  EXPECT_EQ(view.Check("chkGift", true), "Gifts are for members.");
  EXPECT_THAT(view.Set("lblTotal", "9"), HasSubstr("does not take this"));
  EXPECT_THAT(view.Check("txtCount", true), HasSubstr("does not take this"));
  EXPECT_THAT(view.Step("txtCount", 1), HasSubstr("does not take this"));
  EXPECT_THAT(view.Choose("cmbSize", "XL"), HasSubstr("does not offer this"));
  EXPECT_THAT(view.Choose("cmbSize", "L"), HasSubstr("does not offer this")) << "it is greyed";
  EXPECT_EQ(view.Choose("cmbSize", "gone"), "") << "what is missing may stay";
  form->txtCount.Visible(false);
  EXPECT_THAT(view.Set("txtCount", "4"), HasSubstr("not to be seen"));
  EXPECT_EQ(form->txtCount.Text(), "3");
  EXPECT_EQ(form->changes, 0);
  EXPECT_FALSE(form->chkGift.Value());

  view.Click("cmdClose");
  EXPECT_EQ(form->Raise({"chkGift", Forms::EventKind::Change, true}).value_or(""),
            "The form has been closed.");
}

TEST_F(FormsTest, AViewIsToldOnceWhatAHandlerChanged) {
  view.Set("txtCount", "4");
  ASSERT_EQ(view.changed.size(), 1U);
  EXPECT_THAT(view.changed[0].at("lblTotal"), ElementsAre("Text", "Severity"));
  EXPECT_THAT(view.changed[0].at("txtCount"), ElementsAre("Text"));

  view.changed.clear();
  form->lblTotal.Text("4 pieces in all", Forms::Severity::Ok);
  EXPECT_THAT(view.changed, IsEmpty()) << "nothing is new";
  form->Update([this] {
    form->lblTotal.Text("a");
    form->chkGift.Value(true);
  });
  ASSERT_EQ(view.changed.size(), 1U);
  EXPECT_EQ(view.changed[0].size(), 2U);

  view.changed.clear();
  const std::vector<Forms::Event> typedThenClicked = {
      {"txtCount", Forms::EventKind::Change, std::string("7")},
      {"txtNone", Forms::EventKind::Click, std::nullopt},
      {"cmdClose", Forms::EventKind::Click, std::nullopt}};
  EXPECT_TRUE(form->Raise(typedThenClicked).has_value());
  EXPECT_EQ(form->txtCount.Text(), "7") << "what came before the refused one counts";
  EXPECT_TRUE(form->IsShown()) << "what came behind it does not";
  EXPECT_EQ(view.changed.size(), 1U);
}

TEST_F(FormsTest, AnUpDownStaysWithinItsBounds) {
  const struct {
    const char* text;
    std::int64_t steps;
    const char* then;
  } cases[] = {{"3", 1, "4"}, {"3", -1, "2"},   {"9", 1, "9"},       {"1", -5, "1"},       {"7000", -1, "9"},
               {"", 1, "1"},  {"abc", -1, "1"}, {"1, 2, 3", 1, "2"}, {"3", INT64_MAX, "9"}};
  for (const auto& c : cases) {
    form->txtCount.Text(c.text);
    EXPECT_EQ(view.Step("udCount", c.steps), "");
    EXPECT_EQ(form->txtCount.Text(), c.then) << c.text << " by " << c.steps;
  }
}

TEST_F(FormsTest, ListsOptionsAndComplaints) {
  view.Check("optRed", true);
  view.Check("optFast", true);
  view.Check("optBlue", true);
  EXPECT_FALSE(form->optRed.Value());
  EXPECT_TRUE(form->optBlue.Value());
  EXPECT_TRUE(form->optFast.Value()) << "of another group";

  form->lstParts.Items({{"a"}, {"b"}, {"c"}});
  view.Select("lstParts", {2, 7, -1, 0});
  EXPECT_THAT(form->lstParts.Selected(), ElementsAre(2, 0));
  form->lstParts.Items({{"a"}, {"b"}});
  EXPECT_THAT(form->lstParts.Selected(), ElementsAre(0)) << "the list has become shorter";

  form->Complain(form->txtCount, "Too many.");
  EXPECT_THAT(view.complaints, ElementsAre("txtCount: Too many."));
  view.Set("txtCount", "2");
  EXPECT_EQ(view.Problem("txtCount"), "");
}

TEST_F(FormsTest, AFailingHandlerIsCaughtAndClosingIsToldOnce) {
  EXPECT_EQ(view.Click("cmdOrder"), "");
  EXPECT_THAT(form->caught, ElementsAre("sold out"));
  form->QueryClose();
  form->QueryClose();
  EXPECT_THAT(closed, ElementsAre(Forms::Result::OK)) << "as its cancel button does";
  EXPECT_FALSE(form->IsShown());
  EXPECT_ANY_THROW(static_cast<void>(form->View()));

  const auto other = std::make_shared<OrderForm>();
  machine.UseForms(nullptr);
  EXPECT_ANY_THROW(other->Show(Forms::Placement::Docked));
}

}  // namespace
