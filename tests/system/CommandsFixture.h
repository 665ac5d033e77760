#pragma once

#include <functional>
#include <string>
#include <vector>

#include "model/modLinkClipboard.h"
#include "system/EditedDeck.h"

namespace LF2000 {

/// A deck of one slide whose shapes differ in what commands can do with them, and the bars.
struct CommandsTest : EditedDeck {
  using Texts = std::vector<std::string>;

  CommandsTest() {
    modLinkClipboard::Reset();
    machine.files.Write("/decks/prices.txt", "Item\tPrice\nTea\t3\nMilk\t4\n");
    machine.files.Write("/decks/Tea", "a picture");
    deck->tags->items = {{"CORVANE VERSION", "1"},
                         {"CORVANE CONNECTION001", "0\tPrices\tprices.txt\t-1\t"},
                         {"CORVANE DISPLAYTYPE", "1"}};
    fakes::Slide& slide = deck->Add();
    slide.AddField("price", 1);
    slide.AddField("second", 2);
    slide.AddField("photo", 1, "001", "Item", 3);
    slide.AddChart("chart");
    slide.Add("title");
    slide.Add("group").type = PowerPoint::ShapeType::Group;
    slide.Add("twin");
    slide.Add("twin");
  }
  void Load() {
    fakes::load(addIn, host);
    host->sink->PresentationOpen(deck);
  }
  fakes::Shape& Named(const std::string& name) {
    for (const auto& shape : deck->slides[0]->shapes) {
      if (shape->name == name) return *shape;
    }
    fakes::Fail("no shape " + name);
  }
  void Select(const Texts& names) {
    window->shapes.clear();
    for (const std::string& name : names) window->shapes.push_back(Named(name).shared_from_this());
    host->sink->WindowSelectionChange(window);
  }

  using Visit = std::function<void(Office::CommandBarControl&)>;
  static void Walk(Office::CommandBarControls& controls, const Visit& visit) {
    for (std::int32_t i = 1; i <= controls.Count(); ++i) {
      const auto control = controls.Item(i);
      visit(*control);
      if (auto* popup = dynamic_cast<Office::CommandBarPopup*>(control.get()))
        Walk(*popup->Controls(), visit);
    }
  }
  /// One after the other; "-" begins a group.
  std::string Captions(const char* bar) {
    std::string captions;
    Walk(*bars->Item(std::string_view(bar))->Controls(), [&](Office::CommandBarControl& control) {
      captions +=
          std::string(captions.empty() ? "" : " | ") + (control.BeginGroup() ? "-" : "") + control.Caption();
    });
    return captions;
  }
  /// What is said of every control with the tag; all of them say the same.
  std::string Reason(const std::string& tag) {
    std::string reason = "(none)";
    for (std::int32_t i = 1; i <= bars->Count(); ++i) {
      Walk(*bars->Item(i)->Controls(), [&](Office::CommandBarControl& control) {
        if (control.Tag() != tag) return;
        EXPECT_EQ(control.Enabled(), control.TooltipText().empty());
        EXPECT_TRUE(reason == "(none)" || reason == control.TooltipText()) << tag;
        reason = control.TooltipText();
      });
    }
    return reason;
  }
  /// The tags of the menu's pressed buttons.
  std::string Pressed() {
    std::string tags;
    Walk(*bars->Item(std::string_view("Menu Bar"))->Controls(), [&](Office::CommandBarControl& control) {
      const auto* button = dynamic_cast<Office::CommandBarButton*>(&control);
      if (button != nullptr && button->State() == Office::ButtonState::Down) tags += button->Tag();
    });
    return tags;
  }
};

}  // namespace LF2000
