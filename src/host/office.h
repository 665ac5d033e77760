#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

// The part of the Office object model that the system uses for its commands: bars, menus, context menus and
// what stands on them. Names, numbers and behaviour follow the object model's own reference (Office Visual
// Basic reference); collections count from 1. A member that fails throws basic::Error. Everything is called
// on one thread.

namespace Office {

/// MsoControlType, as far as used.
enum class ControlType : std::int32_t { Button = 1, ComboBox = 4, Popup = 10 };
/// MsoBarPosition, as far as used.
enum class BarPosition : std::int32_t { Top = 1, Popup = 5 };
/// MsoButtonState.
enum class ButtonState : std::int32_t { Up = 0, Down = -1 };

/// What stands on a bar or in a menu. It stays on its bar when the last reference goes; Delete takes it away.
class CommandBarControl {
 public:
  virtual ~CommandBarControl() = default;
  [[nodiscard]] virtual ControlType Type() const = 0;
  /// "&" stands before its access key.
  [[nodiscard]] virtual std::string Caption() const = 0;
  virtual void Caption(std::string_view caption) = 0;
  [[nodiscard]] virtual bool Enabled() const = 0;
  virtual void Enabled(bool enabled) = 0;
  /// What says more than the caption: of a control that is not enabled, why.
  [[nodiscard]] virtual std::string TooltipText() const = 0;
  virtual void TooltipText(std::string_view text) = 0;
  /// For the use of whoever made it: the system keeps its command's name here.
  [[nodiscard]] virtual std::string Tag() const = 0;
  virtual void Tag(std::string_view tag) = 0;
  /// A line stands before it.
  [[nodiscard]] virtual bool BeginGroup() const = 0;
  virtual void BeginGroup(bool begins) = 0;
  /// An error for one that was deleted before. The optional argument (whether it comes back in the host's
  /// next session) is omitted.
  virtual void Delete() = 0;
};

class CommandBarButton : public virtual CommandBarControl {
 public:
  [[nodiscard]] virtual ButtonState State() const = 0;
  virtual void State(ButtonState state) = 0;
  /// The keys that it stands for, as its menu shows them: "Ctrl+Shift+C".
  [[nodiscard]] virtual std::string ShortcutText() const = 0;
  virtual void ShortcutText(std::string_view text) = 0;
  /// Its event Click. The handler must not throw; an empty one ends the subscription.
  virtual void OnClick(std::function<void()> handler) = 0;
};

/// A list on a bar.
class CommandBarComboBox : public virtual CommandBarControl {
 public:
  virtual void AddItem(std::string_view text) = 0;
  [[nodiscard]] virtual std::int32_t ListCount() const = 0;
  /// From 1.
  [[nodiscard]] virtual std::string List(std::int32_t index) const = 0;
  /// Which one is chosen, 0 for none. Letting it raises no Change.
  [[nodiscard]] virtual std::int32_t ListIndex() const = 0;
  virtual void ListIndex(std::int32_t index) = 0;
  /// Its event Change. As CommandBarButton::OnClick.
  virtual void OnChange(std::function<void()> handler) = 0;
};

class CommandBarControls {
 public:
  virtual ~CommandBarControls() = default;
  [[nodiscard]] virtual std::int32_t Count() const = 0;
  [[nodiscard]] virtual std::shared_ptr<CommandBarControl> Item(std::int32_t index) = 0;
  // Add(Type, Temporary:=True), one for each type.
  virtual std::shared_ptr<CommandBarButton> AddButton() = 0;
  virtual std::shared_ptr<CommandBarComboBox> AddComboBox() = 0;
  virtual std::shared_ptr<class CommandBarPopup> AddPopup() = 0;
};

/// A menu.
class CommandBarPopup : public virtual CommandBarControl {
 public:
  [[nodiscard]] virtual std::shared_ptr<CommandBarControls> Controls() = 0;
};

class CommandBar {
 public:
  virtual ~CommandBar() = default;
  [[nodiscard]] virtual std::string Name() const = 0;
  [[nodiscard]] virtual BarPosition Position() const = 0;
  [[nodiscard]] virtual bool Visible() const = 0;
  virtual void Visible(bool visible) = 0;
  [[nodiscard]] virtual std::shared_ptr<CommandBarControls> Controls() = 0;
  /// A bar of the host's own cannot be deleted.
  virtual void Delete() = 0;
};

/// The host's bars: "Menu Bar"; the context menus "Shapes" and "Slides"; those that were added.
class CommandBars {
 public:
  virtual ~CommandBars() = default;
  [[nodiscard]] virtual std::int32_t Count() const = 0;
  [[nodiscard]] virtual std::shared_ptr<CommandBar> Item(std::int32_t index) = 0;
  /// An error without a bar of that name.
  [[nodiscard]] virtual std::shared_ptr<CommandBar> Item(std::string_view name) = 0;
  /// Add(Name, Position, MenuBar:=False, Temporary:=True): a bar that is not visible yet. An error when one
  /// of that name is there.
  virtual std::shared_ptr<CommandBar> Add(std::string_view name, BarPosition position) = 0;
};

}  // namespace Office
