// Bars and their controls, which hold what they are told and nothing more.

#include "deck/bars/CommandBars.h"

#include <algorithm>
#include <utility>

#include "basic/Quotes.h"
#include "basic/Strings.h"
#include "deck/Failure.h"

namespace deck {

namespace {

class Controls;

/// What every control has. `Base` is its interface.
template <typename Base>
class Control : public Base {
 public:
  Control(std::weak_ptr<CommandBars> bars, std::weak_ptr<Controls> owner)
      : bars_(std::move(bars)), owner_(std::move(owner)) {}

  [[nodiscard]] std::string Caption() const override { return caption_; }
  void Caption(std::string_view caption) override { set(caption_, std::string(caption)); }
  [[nodiscard]] bool Enabled() const override { return enabled_; }
  void Enabled(bool enabled) override { set(enabled_, enabled); }
  [[nodiscard]] std::string TooltipText() const override { return tooltip_; }
  void TooltipText(std::string_view text) override { set(tooltip_, std::string(text)); }
  [[nodiscard]] std::string Tag() const override { return tag_; }
  void Tag(std::string_view tag) override { set(tag_, std::string(tag)); }
  [[nodiscard]] bool BeginGroup() const override { return beginsGroup_; }
  void BeginGroup(bool begins) override { set(beginsGroup_, begins); }
  void Delete() override;

 protected:
  template <typename T>
  void set(T& member, T value) {
    if (member == value) return;
    member = std::move(value);
    tell();
  }
  void tell() const {
    if (const auto bars = bars_.lock()) bars->noteChange();
  }
  [[nodiscard]] const std::weak_ptr<CommandBars>& bars() const { return bars_; }

 private:
  std::weak_ptr<CommandBars> bars_;
  std::weak_ptr<Controls> owner_;
  std::string caption_;
  std::string tooltip_;
  std::string tag_;
  bool enabled_ = true;
  bool beginsGroup_ = false;
};

class Button final : public Control<Office::CommandBarButton> {
 public:
  using Control::Control;
  [[nodiscard]] Office::ControlType Type() const override { return Office::ControlType::Button; }
  [[nodiscard]] Office::ButtonState State() const override { return state_; }
  void State(Office::ButtonState state) override { set(state_, state); }
  [[nodiscard]] std::string ShortcutText() const override { return shortcut_; }
  void ShortcutText(std::string_view text) override { set(shortcut_, std::string(text)); }
  void OnClick(std::function<void()> handler) override { handler_ = std::move(handler); }

  void click() const {
    const auto handler = handler_;  // it may delete the button
    if (handler) handler();
  }

 private:
  Office::ButtonState state_ = Office::ButtonState::Up;
  std::string shortcut_;
  std::function<void()> handler_;
};

class ComboBox final : public Control<Office::CommandBarComboBox> {
 public:
  using Control::Control;
  [[nodiscard]] Office::ControlType Type() const override { return Office::ControlType::ComboBox; }
  void AddItem(std::string_view text) override {
    items_.emplace_back(text);
    tell();
  }
  [[nodiscard]] std::int32_t ListCount() const override { return static_cast<std::int32_t>(items_.size()); }
  [[nodiscard]] std::string List(std::int32_t index) const override {
    require(index, 1);
    return items_[static_cast<std::size_t>(index - 1)];
  }
  [[nodiscard]] std::int32_t ListIndex() const override { return index_; }
  void ListIndex(std::int32_t index) override {
    require(index, 0);
    set(index_, index);
  }
  void OnChange(std::function<void()> handler) override { handler_ = std::move(handler); }

  void choose(std::int32_t index) {
    require(index, 1);
    ListIndex(index);
    const auto handler = handler_;
    if (handler) handler();
  }

 private:
  void require(std::int32_t index, std::int32_t least) const {
    if (index >= least && index <= ListCount()) return;
    fail("The list " + basic::InQuotes(Caption()) + " has no entry " + std::to_string(index) + ".");
  }

  std::vector<std::string> items_;
  std::int32_t index_ = 0;
  std::function<void()> handler_;
};

class Controls final : public Office::CommandBarControls, public std::enable_shared_from_this<Controls> {
 public:
  explicit Controls(std::weak_ptr<CommandBars> bars) : bars_(std::move(bars)) {}

  [[nodiscard]] std::int32_t Count() const override { return static_cast<std::int32_t>(all_.size()); }
  [[nodiscard]] std::shared_ptr<Office::CommandBarControl> Item(std::int32_t index) override {
    if (index < 1 || index > Count()) fail("There is no control " + std::to_string(index) + " on the bar.");
    return all_[static_cast<std::size_t>(index - 1)];
  }
  std::shared_ptr<Office::CommandBarButton> AddButton() override { return add<Button>(); }
  std::shared_ptr<Office::CommandBarComboBox> AddComboBox() override { return add<ComboBox>(); }
  std::shared_ptr<Office::CommandBarPopup> AddPopup() override;

  void remove(const Office::CommandBarControl& control) {
    const auto found =
        std::find_if(all_.begin(), all_.end(), [&](const auto& each) { return each.get() == &control; });
    if (found == all_.end())
      fail("The control " + basic::InQuotes(control.Caption()) + " was deleted before.");
    all_.erase(found);
    if (const auto bars = bars_.lock()) bars->noteChange();
  }

  template <typename T>
  std::shared_ptr<T> add() {
    auto control = std::make_shared<T>(bars_, weak_from_this());
    all_.push_back(control);
    if (const auto bars = bars_.lock()) bars->noteChange();
    return control;
  }

 private:
  std::weak_ptr<CommandBars> bars_;
  std::vector<std::shared_ptr<Office::CommandBarControl>> all_;
};

template <typename Base>
void Control<Base>::Delete() {
  const auto owner = owner_.lock();
  if (!owner) fail("The control " + basic::InQuotes(caption_) + " stands on no bar any more.");
  owner->remove(*this);
}

class Popup final : public Control<Office::CommandBarPopup> {
 public:
  Popup(const std::weak_ptr<CommandBars>& bars, std::weak_ptr<deck::Controls> owner)
      : Control(bars, std::move(owner)), controls_(std::make_shared<deck::Controls>(bars)) {}
  [[nodiscard]] Office::ControlType Type() const override { return Office::ControlType::Popup; }
  [[nodiscard]] std::shared_ptr<Office::CommandBarControls> Controls() override { return controls_; }

 private:
  std::shared_ptr<deck::Controls> controls_;
};

std::shared_ptr<Office::CommandBarPopup> Controls::AddPopup() { return add<Popup>(); }

class Bar final : public Office::CommandBar {
 public:
  Bar(const std::weak_ptr<CommandBars>& bars, std::string_view name, Office::BarPosition position, bool isOwn)
      : bars_(bars),
        name_(name),
        position_(position),
        isOwn_(isOwn),
        isVisible_(isOwn),
        controls_(std::make_shared<deck::Controls>(bars)) {}

  [[nodiscard]] std::string Name() const override { return name_; }
  [[nodiscard]] Office::BarPosition Position() const override { return position_; }
  [[nodiscard]] bool Visible() const override { return isVisible_; }
  void Visible(bool visible) override {
    isVisible_ = visible;
    if (const auto bars = bars_.lock()) bars->noteChange();
  }
  [[nodiscard]] std::shared_ptr<Office::CommandBarControls> Controls() override { return controls_; }
  void Delete() override {
    if (isOwn_) fail("The bar " + basic::InQuotes(name_) + " is the program's own and cannot be deleted.");
    if (const auto bars = bars_.lock()) bars->forget(*this);
  }

 private:
  std::weak_ptr<CommandBars> bars_;
  std::string name_;
  Office::BarPosition position_;
  bool isOwn_;
  bool isVisible_;
  std::shared_ptr<deck::Controls> controls_;
};

/// The first control of the kind with the tag, on these and in their menus; null without one.
template <typename T>
std::shared_ptr<T> findTagged(Office::CommandBarControls& controls, std::string_view tag) {
  for (std::int32_t i = 1; i <= controls.Count(); ++i) {
    const auto control = controls.Item(i);
    if (auto found = std::dynamic_pointer_cast<T>(control); found && found->Tag() == tag) return found;
    if (const auto popup = std::dynamic_pointer_cast<Office::CommandBarPopup>(control)) {
      if (auto found = findTagged<T>(*popup->Controls(), tag)) return found;
    }
  }
  return nullptr;
}

template <typename T>
std::shared_ptr<T> enabledControl(const std::vector<std::shared_ptr<Office::CommandBar>>& bars,
                                  std::string_view tag) {
  for (const auto& bar : bars) {
    auto control = findTagged<T>(*bar->Controls(), tag);
    if (!control) continue;
    if (control->Enabled()) return control;
    fail(control->TooltipText().empty() ? basic::InQuotes(control->Caption()) + " is not enabled now."
                                        : control->TooltipText());
  }
  fail("There is no command " + basic::InQuotes(tag) + ".");
}

}  // namespace

std::shared_ptr<CommandBars> CommandBars::create() {
  std::shared_ptr<CommandBars> bars(new CommandBars());
  const auto add = [&](std::string_view name, Office::BarPosition position) {
    bars->bars_.push_back(std::make_shared<Bar>(bars, name, position, /*isOwn=*/true));
  };
  add("Menu Bar", Office::BarPosition::Top);
  add("Shapes", Office::BarPosition::Popup);
  add("Slides", Office::BarPosition::Popup);
  return bars;
}

std::shared_ptr<Office::CommandBar> CommandBars::Item(std::int32_t index) {
  if (index < 1 || index > Count()) fail("There is no bar " + std::to_string(index) + ".");
  return bars_[static_cast<std::size_t>(index - 1)];
}

std::shared_ptr<Office::CommandBar> CommandBars::Item(std::string_view name) {
  const auto found = std::find_if(bars_.begin(), bars_.end(), [&](const auto& bar) {
    return basic::EqualsIgnoreCase(bar->Name(), name);
  });
  if (found == bars_.end()) fail("There is no bar " + basic::InQuotes(name) + ".");
  return *found;
}

std::shared_ptr<Office::CommandBar> CommandBars::Add(std::string_view name, Office::BarPosition position) {
  for (const auto& bar : bars_) {
    if (basic::EqualsIgnoreCase(bar->Name(), name))
      fail("There is a bar " + basic::InQuotes(name) + " already.");
  }
  bars_.push_back(std::make_shared<Bar>(weak_from_this(), name, position, /*isOwn=*/false));
  noteChange();
  return bars_.back();
}

void CommandBars::forget(const Office::CommandBar& bar) {
  std::erase_if(bars_, [&](const auto& each) { return each.get() == &bar; });
  noteChange();
}

void CommandBars::press(std::string_view tag) { enabledControl<Button>(bars_, tag)->click(); }

void CommandBars::choose(std::string_view tag, std::int32_t index) {
  enabledControl<ComboBox>(bars_, tag)->choose(index);
}

}  // namespace deck
