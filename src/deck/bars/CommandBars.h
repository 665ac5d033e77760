#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "host/office.h"

namespace deck {

/// Bars, menus and context menus as data: whoever shows them reads them, hears when they change, and presses
/// what stands on them.
class CommandBars final : public Office::CommandBars, public std::enable_shared_from_this<CommandBars> {
 public:
  /// With the host's own: "Menu Bar", "Shapes" and "Slides".
  [[nodiscard]] static std::shared_ptr<CommandBars> create();

  [[nodiscard]] std::int32_t Count() const override { return static_cast<std::int32_t>(bars_.size()); }
  [[nodiscard]] std::shared_ptr<Office::CommandBar> Item(std::int32_t index) override;
  [[nodiscard]] std::shared_ptr<Office::CommandBar> Item(std::string_view name) override;
  std::shared_ptr<Office::CommandBar> Add(std::string_view name, Office::BarPosition position) override;

  /// Called after every change to a bar or to what stands on one; must not throw.
  void onChange(std::function<void()> changed) { changed_ = std::move(changed); }
  /// Does what a click on the button with this tag does. An error without such a button on any bar, and when
  /// it is not enabled, with its tooltip as the reason.
  void press(std::string_view tag);
  /// The same for a choice, from 1, in the list with this tag.
  void choose(std::string_view tag, std::int32_t index);

  /// What the bars and their controls report.
  void noteChange() const {
    if (changed_) changed_();
  }
  void forget(const Office::CommandBar& bar);

 private:
  CommandBars() = default;

  std::vector<std::shared_ptr<Office::CommandBar>> bars_;
  std::function<void()> changed_;
};

}  // namespace deck
