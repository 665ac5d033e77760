// Bars, menus and what stands on them.

#include "windows/automation/CommandBars.h"

#include <functional>
#include <string>
#include <utility>

#include "basic/Error.h"
#include "windows/com/Events.h"
#include "windows/com/Object.h"

namespace windows::automation {
namespace {

namespace office {
com::Class CommandBars{"CommandBars"};
com::Class CommandBar{"CommandBar"};
com::Class Controls{"CommandBarControls"};
com::Class Button{"CommandBarButton"};
com::Class ComboBox{"CommandBarComboBox"};
com::Class Popup{"CommandBarPopup"};
com::Class Control{"CommandBarControl"};
}  // namespace office

constexpr IID ButtonEvents = {0x000C0351, 0x0000, 0x0000, {0xC0, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x46}};
constexpr IID ComboBoxEvents = {0x000C0354, 0x0000, 0x0000, {0xC0, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x46}};
/// Click of the one, Change of the other; their first argument is the control.
constexpr DISPID UsedEvent = 1;

/// What every kind of control has.
template <typename Kind>
class Control : public Kind {
 public:
  explicit Control(com::Object control) : control_(std::move(control)) {}
  [[nodiscard]] Office::ControlType Type() const override {
    return static_cast<Office::ControlType>(control_.number(L"Type"));
  }
  [[nodiscard]] std::string Caption() const override { return control_.text(L"Caption"); }
  void Caption(std::string_view caption) override { control_.put(L"Caption", caption); }
  [[nodiscard]] bool Enabled() const override { return control_.flag(L"Enabled"); }
  void Enabled(bool enabled) override { control_.put(L"Enabled", enabled); }
  [[nodiscard]] std::string TooltipText() const override { return control_.text(L"TooltipText"); }
  void TooltipText(std::string_view text) override { control_.put(L"TooltipText", text); }
  [[nodiscard]] std::string Tag() const override { return control_.text(L"Tag"); }
  void Tag(std::string_view tag) override { control_.put(L"Tag", tag); }
  [[nodiscard]] bool BeginGroup() const override { return control_.flag(L"BeginGroup"); }
  void BeginGroup(bool begins) override { control_.put(L"BeginGroup", begins); }
  void Delete() override { control_.call(L"Delete"); }

 protected:
  /// Every control of one tag raises the event on the handlers of all of them: the argument says which it is.
  void subscribe(REFIID events, std::function<void()> handler) {
    events_.end();
    if (!handler) return;
    events_ = com::Subscription(
        control_.dispatch(), events,
        [handler = std::move(handler), id = control_.number(L"InstanceId")](const com::Event& event) {
          if (event.id() != UsedEvent) return;
          const com::Object source(event.object(0), office::Control);
          if (source.number(L"InstanceId") == id) handler();
        });
  }

  com::Object control_;

 private:
  com::Subscription events_;
};

class Button final : public Control<Office::CommandBarButton> {
 public:
  using Control::Control;
  [[nodiscard]] Office::ButtonState State() const override {
    return static_cast<Office::ButtonState>(control_.number(L"State"));
  }
  void State(Office::ButtonState state) override { control_.put(L"State", static_cast<std::int32_t>(state)); }
  [[nodiscard]] std::string ShortcutText() const override { return control_.text(L"ShortcutText"); }
  /// Refused for buttons without a macro; the menu does without it then.
  void ShortcutText(std::string_view text) override {
    if (text.empty()) return;
    try {
      control_.put(L"ShortcutText", text);
    } catch (const basic::Error&) {  // NOLINT(bugprone-empty-catch): no more than said above
    }
  }
  void OnClick(std::function<void()> handler) override { subscribe(ButtonEvents, std::move(handler)); }
};

class ComboBox final : public Control<Office::CommandBarComboBox> {
 public:
  using Control::Control;
  void AddItem(std::string_view text) override { control_.call(L"AddItem", text); }
  [[nodiscard]] std::int32_t ListCount() const override { return control_.number(L"ListCount"); }
  [[nodiscard]] std::string List(std::int32_t index) const override { return control_.text(L"List", index); }
  [[nodiscard]] std::int32_t ListIndex() const override { return control_.number(L"ListIndex"); }
  void ListIndex(std::int32_t index) override { control_.put(L"ListIndex", index); }
  void OnChange(std::function<void()> handler) override { subscribe(ComboBoxEvents, std::move(handler)); }
};

class Popup final : public Control<Office::CommandBarPopup> {
 public:
  using Control::Control;
  [[nodiscard]] std::shared_ptr<Office::CommandBarControls> Controls() override;
};

class Controls final : public Office::CommandBarControls {
 public:
  explicit Controls(com::Object controls) : controls_(std::move(controls)) {}
  [[nodiscard]] std::int32_t Count() const override { return controls_.number(L"Count"); }
  [[nodiscard]] std::shared_ptr<Office::CommandBarControl> Item(std::int32_t index) override {
    const com::Ptr<IDispatch> control = controls_.object(office::Control, L"Item", index).dispatch();
    switch (static_cast<Office::ControlType>(com::Object(control, office::Control).number(L"Type"))) {
      case Office::ControlType::Button:
        return std::make_shared<Button>(com::Object(control, office::Button));
      case Office::ControlType::ComboBox:
        return std::make_shared<ComboBox>(com::Object(control, office::ComboBox));
      case Office::ControlType::Popup:
        return std::make_shared<Popup>(com::Object(control, office::Popup));
    }
    return std::make_shared<Control<Office::CommandBarControl>>(com::Object(control, office::Control));
  }
  std::shared_ptr<Office::CommandBarButton> AddButton() override {
    constexpr std::int32_t CaptionAlone = 2;  // msoButtonCaption: without a picture
    const com::Object button = add(Office::ControlType::Button, office::Button);
    button.put(L"Style", CaptionAlone);
    return std::make_shared<Button>(button);
  }
  std::shared_ptr<Office::CommandBarComboBox> AddComboBox() override {
    return std::make_shared<ComboBox>(add(Office::ControlType::ComboBox, office::ComboBox));
  }
  std::shared_ptr<Office::CommandBarPopup> AddPopup() override {
    return std::make_shared<Popup>(add(Office::ControlType::Popup, office::Popup));
  }

 private:
  [[nodiscard]] com::Object add(Office::ControlType type, com::Class& kind) const {
    // Type, Id, Parameter, Before, Temporary
    return controls_.object(kind, L"Add", static_cast<std::int32_t>(type), com::Missing{}, com::Missing{},
                            com::Missing{}, true);
  }

  com::Object controls_;
};

std::shared_ptr<Office::CommandBarControls> Popup::Controls() {
  return std::make_shared<automation::Controls>(control_.object(office::Controls, L"Controls"));
}

class CommandBar final : public Office::CommandBar {
 public:
  explicit CommandBar(com::Object bar) : bar_(std::move(bar)) {}
  [[nodiscard]] std::string Name() const override { return bar_.text(L"Name"); }
  [[nodiscard]] Office::BarPosition Position() const override {
    return static_cast<Office::BarPosition>(bar_.number(L"Position"));
  }
  [[nodiscard]] bool Visible() const override { return bar_.flag(L"Visible"); }
  void Visible(bool visible) override { bar_.put(L"Visible", visible); }
  [[nodiscard]] std::shared_ptr<Office::CommandBarControls> Controls() override {
    return std::make_shared<automation::Controls>(bar_.object(office::Controls, L"Controls"));
  }
  void Delete() override { bar_.call(L"Delete"); }

 private:
  com::Object bar_;
};

class CommandBars final : public Office::CommandBars {
 public:
  explicit CommandBars(com::Object bars) : bars_(std::move(bars)) {}
  [[nodiscard]] std::int32_t Count() const override { return bars_.number(L"Count"); }
  [[nodiscard]] std::shared_ptr<Office::CommandBar> Item(std::int32_t index) override {
    return std::make_shared<CommandBar>(bars_.object(office::CommandBar, L"Item", index));
  }
  [[nodiscard]] std::shared_ptr<Office::CommandBar> Item(std::string_view name) override {
    return std::make_shared<CommandBar>(bars_.object(office::CommandBar, L"Item", name));
  }
  std::shared_ptr<Office::CommandBar> Add(std::string_view name, Office::BarPosition position) override {
    // Name, Position, MenuBar, Temporary
    return std::make_shared<CommandBar>(
        bars_.object(office::CommandBar, L"Add", name, static_cast<std::int32_t>(position), false, true));
  }

 private:
  com::Object bars_;
};

}  // namespace

std::shared_ptr<Office::CommandBars> commandBars(com::Ptr<IDispatch> bars) {
  if (!bars) return nullptr;
  return std::make_shared<CommandBars>(com::Object(std::move(bars), office::CommandBars));
}

}  // namespace windows::automation
