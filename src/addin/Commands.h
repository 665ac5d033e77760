#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "addin/CommandSelection.h"

namespace LF2000 {

/// Where and how a command stands, to be added together.
enum CommandPlace : std::uint32_t {
  OnMenu = 1,          // the menu "Lumenfold"
  OnBar = 2,           // the bar "Lumenfold"
  OnShapes = 4,        // the context menu of shapes
  OnSlides = 8,        // the context menu of slides
  OnDisplayMenu = 16,  // the menu of display types within the menu
  NewGroup = 32        // a line stands before it
};

/// A command of the system, wherever it stands.
struct Command {
  /// Its controls bear it as their tag: "cbrDataField".
  std::string_view Tag;
  /// "&" before its access key.
  std::string_view Caption;
  /// As menus show them; whoever hears the keys presses the command.
  std::string_view Keys;
  /// A sum of CommandPlace.
  std::uint32_t Places = 0;
  /// Why it is of no use for what is selected, a sentence; empty when it is.
  std::function<std::string(const CommandSelection&)> WhyNot;
  std::function<void(const CommandSelection&)> Run;
  /// What the debug line of a click says behind its name; null for nothing.
  std::function<std::string()> Detail = {};
  /// The display type that it sets, 0 for none: pressed while that one is in force.
  std::int32_t DisplayType = 0;
};

/// All of them, in the order in which they stand.
[[nodiscard]] const std::vector<Command>& AllCommands();

/// The list of display types.
inline constexpr std::string_view DisplayTypeList = "cmbDisplayType";
/// Lets all linked shapes of the presentation show what the code means.
void ShowDisplayType(const CommandSelection& selection, std::int32_t code);
/// Why a display type cannot be chosen.
[[nodiscard]] std::string WhyNoDisplayType(const CommandSelection& selection);

}  // namespace LF2000
