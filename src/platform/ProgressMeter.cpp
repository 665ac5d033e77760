#include "platform/ProgressMeter.h"

#include <sys/ioctl.h>
#include <unistd.h>

#include <algorithm>

#include "basic/Strings.h"
#include "platform/Console.h"

namespace platform {
namespace {

constexpr std::string_view ClearLine = "\r\x1b[K";

std::string oneLine(std::string_view text) {
  const std::string line = basic::Replace(forTerminal(text), "\n", " ");
  return std::string(basic::Trim(line));
}

/// Characters that fit before the line would break, after which it could not be
/// written over.
std::size_t widthOf(int terminal) {
  winsize size{};
  constexpr std::size_t Usual = 80;
  const bool isKnown = ::ioctl(terminal, TIOCGWINSZ, &size) == 0 && size.ws_col > 1;
  return (isKnown ? size.ws_col : Usual) - 1;
}

}  // namespace

void ProgressMeter::Show(std::string_view caption, std::int32_t maximum) {
  isTerminal_ = ::isatty(output_) == 1;
  progress_ = Progress{0, maximum, oneLine(caption), {}};
  changed();
}

void ProgressMeter::Text(std::string_view text) {
  if (!progress_) return;
  progress_->text = oneLine(text);
  changed();
}

void ProgressMeter::Step() {
  if (!progress_) return;
  progress_->step = std::min(progress_->step + 1, progress_->maximum);
  changed();
}

void ProgressMeter::Close() {
  if (!progress_) return;
  progress_.reset();
  if (isTerminal_) writeTo(output_, ClearLine);
  if (watcher_) watcher_(nullptr);
}

void ProgressMeter::changed() const {
  if (isTerminal_) draw();
  if (watcher_) watcher_(&*progress_);
}

void ProgressMeter::draw() const {
  std::string line =
      progress_->caption + " " + std::to_string(progress_->step) + "/" + std::to_string(progress_->maximum);
  if (!progress_->text.empty()) line += " " + progress_->text;
  writeTo(output_, std::string(ClearLine).append(basic::Left(line, widthOf(output_))));
}

}  // namespace platform
