#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "host/powerpoint.h"

/// The way from a presentation to what makes copies of it, which stands above the model and enters itself
/// here.
namespace LF2000::modOfflineCopy {

struct Options {
  /// Clocks stay clocks, as fields of the host; otherwise they show the moment in which the copy was made.
  bool KeepClocks = false;
  /// Asked between slides; null: nobody cancels.
  std::function<bool()> IsCancelled = {};
};

/// A copy of a linked presentation as it was saved, and the file that becomes of it.
struct Files {
  std::string Saved;
  std::string Copy;
};

using Maker = std::function<std::vector<std::string>(const Files& files, const Options& options)>;

/// Who makes copies; an empty one ends that.
void MadeBy(Maker maker);

/// Makes the copy, while OfflineGenerationActive is set. Raises what kept it from that, and Cancelled.
/// Answers what stays outside of it, as its author has linked it: films and sounds, a sentence each.
std::vector<std::string> Make(const Files& files, const Options& options);

/// What is raised when the making was cancelled.
class Cancelled final : public std::exception {
 public:
  [[nodiscard]] const char* what() const noexcept override { return "The making of the copy was cancelled."; }
};

}  // namespace LF2000::modOfflineCopy
