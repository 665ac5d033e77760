#include "app/desk/ShowProcess.h"

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <utility>

#include "app/wiring/Failure.h"

namespace app {

namespace {

/// What stands behind the label of its line; empty without one that is whole.
std::string lineOf(const std::string& text, const std::string& label) {
  const std::size_t begin = text.find(label);
  const std::size_t end = begin == std::string::npos ? begin : text.find('\n', begin);
  if (end == std::string::npos) return {};
  return text.substr(begin + label.size(), end - begin - label.size());
}

}  // namespace

ShowProcess::ShowProcess(std::string outputFile, host::Loop& loop)
    : outputFile_(std::move(outputFile)), loop_(loop) {}

ShowProcess::~ShowProcess() {
  std::error_code ignored;
  std::filesystem::remove(outputFile_, ignored);
}

std::string ShowProcess::output() const {
  std::ifstream file(outputFile_);
  std::ostringstream text;
  text << file.rdbuf();
  return std::move(text).str();
}

std::string ShowProcess::url(const std::string& deck) {
  const std::string label = "Screen:   ";
  if (show_ && !show_->exitStatus()) {
    if (std::string known = lineOf(output(), label); !known.empty()) return known;
  }
  if (std::exchange(isBeginning_, true)) fail("The show is being begun.");
  const std::string program = std::filesystem::read_symlink("/proc/self/exe").string();
  show_.reset();
  show_ = std::make_unique<process::ChildProcess>(
      std::vector<std::string>{program, "show", deck, "--port", "0"}, outputFile_);
  constexpr std::int64_t patience = 10'000;
  const std::int64_t begun = host::Current().clock->TickCount();
  std::string url;
  while (url.empty() && !show_->exitStatus() && host::Current().clock->TickCount() - begun < patience) {
    loop_.DoEvents();
    url = lineOf(output(), label);
  }
  isBeginning_ = false;
  if (!url.empty()) return url;
  const std::string said = output();
  show_.reset();
  fail("The show did not begin. " + said);
}

}  // namespace app
