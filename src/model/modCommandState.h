#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <string_view>

/// The way from a presentation to the commands, which stand above the model and listen here.
namespace LF2000::modCommandState {

/// The display types in the order of their codes, from 1.
inline constexpr std::array<std::string_view, 7> DisplayTypeLabels = {
    "Value", "Connection", "Column", "Index", "Column - Index", "Connection - Column", "Nothing"};

struct Listener {
  /// The display type was set; 0 is none.
  std::function<void(std::int32_t code)> DisplayType;
  /// Connections have come, gone or been read: other commands may be of use now.
  std::function<void()> Changed;
};

/// Who listens from now on; an empty one ends that.
void ToldTo(Listener listener);

void TellDisplayType(std::int32_t code);
void TellChanged();

}  // namespace LF2000::modCommandState
