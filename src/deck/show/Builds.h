#pragma once

#include <cstddef>
#include <cstdint>
#include <set>
#include <string>
#include <vector>

#include "opc/Package.h"

namespace deck {

/// One shape that comes or goes.
struct BuildEffect {
  std::uint32_t shapeId = 0;
  bool isEntrance = true;
  /// "appear", "fade", "wipe" or "fly"; any other effect of the file is a fade.
  std::string kind;
  /// Where the movement of a wipe or flight goes, as TransitionEffect::direction.
  std::string direction;
  std::int32_t milliseconds = 0;
};

/// What clicks build up on a slide: the entrances and exits of the main sequence of its
/// p:timing (ECMA-376 part 1, 19.5), one step for each click. What starts by itself
/// before the first click has happened already; a text that comes paragraph by paragraph
/// comes whole, with its first one.
class Builds {
 public:
  Builds() = default;
  explicit Builds(opc::Part& slide);

  [[nodiscard]] std::size_t steps() const { return steps_.size(); }
  /// What the step does, from 0.
  [[nodiscard]] const std::vector<BuildEffect>& step(std::size_t index) const { return steps_[index]; }
  /// The shapes that are not there after so many steps.
  [[nodiscard]] std::set<std::uint32_t> hiddenAfter(std::size_t steps) const;

 private:
  void add(std::vector<BuildEffect> effects, bool startsByItself);

  std::vector<std::vector<BuildEffect>> steps_;
  /// At the beginning.
  std::set<std::uint32_t> hidden_;
  std::set<std::uint32_t> known_;
};

}  // namespace deck
