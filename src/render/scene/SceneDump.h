#pragma once

#include <string>
#include <string_view>

#include "render/scene/DumpWords.h"
#include "render/scene/Scene.h"

namespace render {

/// A scene as text, for people who ask why something is drawn as it is, and for comparisons: one line a box,
/// from the back to the front, with its kind, id, name, place, size, turn, outline, fill and line; below it,
/// indented, what else belongs to it (paths, effects, text, cells, children). What is as usual is not
/// mentioned.
///
/// Lengths are points, places are relative to the box around, angles are degrees clockwise, numbers have at
/// most two decimals. Apart from text that shrinks, which is measured with this machine's fonts, the same
/// deck gives the same text everywhere. Never fails.
class SceneDump {
 public:
  /// The first line. Width and height in px.
  void slide(int index, double width, double height, const Fill& background);
  /// What the boxes that follow belong to, in a word; a line when there are any.
  void section(std::string_view name) { section_ = name; }
  void add(const Box& box);
  /// A sentence on what could not be read.
  void problem(std::string_view sentence) { lines_.add(0, "problem " + inQuotes(sentence)); }

  /// Whether 4 MB are written; what is added from then on is left out.
  [[nodiscard]] bool isFull() const { return lines_.isFull(); }
  [[nodiscard]] std::string take() { return lines_.take(); }

 private:
  DumpLines lines_;
  std::string section_;
};

}  // namespace render
