#pragma once

#include <functional>
#include <memory>
#include <string_view>
#include <vector>

#include "addin/Commands.h"
#include "host/office.h"

namespace LF2000 {

/// The commands on the host's bars, in its menus and context menus.
class CommandBars {
 public:
  /// What is selected now.
  using Look = std::function<CommandSelection()>;
  explicit CommandBars(Look look) : look_(std::move(look)) {}
  /// Ends the subscriptions; the controls stay.
  ~CommandBars();
  CommandBars(const CommandBars&) = delete;
  CommandBars& operator=(const CommandBars&) = delete;

  /// Puts every control onto the bars. An error leaves those that were made before it.
  void Build(Office::CommandBars& bars);
  /// Deletes every control in the order in which they were made, then the bar. Errors are ignored: the user
  /// may have deleted some.
  void Delete();

  /// Enables what is of use for the selection; of the others the tooltip says why they are not.
  void Update();
  /// Presses the command of a display type, releases the others and chooses it in the list; 0 is none.
  void DisplayType(std::int32_t code);

 private:
  struct Button {
    const LF2000::Command* Command;
    std::shared_ptr<Office::CommandBarButton> Control;
  };

  void Add(Office::CommandBarControls& controls, std::uint32_t place, bool beginsGroup = false);
  void AddDisplayTypes(Office::CommandBarControls& controls);
  void AddDisplayTypeList(Office::CommandBarControls& controls);
  void Click(const Command& command);
  void DisplayTypeList_Change();
  void Unsubscribe();

  Look look_;
  /// All of them, in the order in which they were made.
  std::vector<std::shared_ptr<Office::CommandBarControl>> controls_;
  std::vector<Button> buttons_;
  std::shared_ptr<Office::CommandBarComboBox> displayTypes_;
  std::shared_ptr<Office::CommandBar> bar_;
};

}  // namespace LF2000
