#include "platform/ProgressMeter.h"

#include <unistd.h>

#include <algorithm>

#include "basic/Strings.h"
#include "platform/Console.h"

namespace platform {
namespace {

constexpr std::string_view ClearLine = "\r\x1b[K";

std::string oneLine(std::string_view text) { return basic::Replace(forTerminal(text), "\n", " "); }

}  // namespace

void ProgressMeter::Show(std::string_view caption, std::int32_t maximum) {
  shown_ = ::isatty(output_) == 1;
  caption_ = oneLine(caption);
  text_.clear();
  maximum_ = maximum;
  step_ = 0;
  draw();
}

void ProgressMeter::Text(std::string_view text) {
  text_ = oneLine(text);
  draw();
}

void ProgressMeter::Step() {
  step_ = std::min(step_ + 1, maximum_);
  draw();
}

void ProgressMeter::Close() {
  if (shown_) writeTo(output_, ClearLine);
  shown_ = false;
}

void ProgressMeter::draw() const {
  if (!shown_) return;
  std::string line(ClearLine);
  line += caption_ + " " + std::to_string(step_) + "/" + std::to_string(maximum_);
  if (!text_.empty()) line += " " + text_;
  writeTo(output_, line);
}

}  // namespace platform
