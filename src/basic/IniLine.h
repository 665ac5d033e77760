#pragma once

#include <cstdint>
#include <string_view>

namespace basic {

/// One line of a settings file of sections, `[Section]` and `Key = value`, and comments that begin with ; or
/// #. Blanks, TABs and a CR at the ends of what it says do not count. Views into the line.
struct IniLine {
  enum class Kind : std::uint8_t {
    Nothing,      ///< empty, or a comment
    Section,      ///< `name`
    Entry,        ///< `name` and `value`
    OpenSection,  ///< a section without its closing bracket
    NoKey,        ///< a value alone
    NoEquals,     ///< anything else
  };
  Kind kind = Kind::Nothing;
  std::string_view name;
  std::string_view value;
};

[[nodiscard]] IniLine ReadIniLine(std::string_view line);

}  // namespace basic
