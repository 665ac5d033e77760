#include "app/inspect/Standstill.h"

#include <vector>

namespace app {

namespace {

/// "2", "2 and 4", "2, 4 and 5".
std::string listed(const std::vector<std::int32_t>& slides) {
  std::string list;
  for (std::size_t i = 0; i < slides.size(); ++i) {
    if (i > 0) list += i + 1 == slides.size() ? " and " : ", ";
    list += std::to_string(slides[i]);
  }
  return list;
}

}  // namespace

std::optional<std::string> standstillOf(const deck::ShowCourse& course) {
  const std::vector<std::int32_t> visible = course.visible();
  if (!course.loops() || visible.size() < 2) return std::nullopt;
  std::vector<std::int32_t> waiting;
  for (const std::int32_t slide : visible) {
    if (!course.stay(slide)) waiting.push_back(slide);
  }
  if (waiting.empty()) return std::nullopt;
  const std::string where =
      waiting.size() == visible.size() ? "no slide goes on by itself, so it stays on its first one"
      : waiting.size() == 1 ? "slide " + listed(waiting) + " does not go on by itself, so it stays there"
                            : "slides " + listed(waiting) + " do not go on by themselves, so it stays there";
  return "The show loops, but " + where +
         " until somebody steers it. 'show --seconds N' gives such slides a time, as do timings in "
         "PowerPoint "
         "(Transitions, Advance Slide, After).";
}

}  // namespace app
