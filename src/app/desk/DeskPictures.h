#pragma once

#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <string_view>

#include "web/show/Show.h"

namespace app {

/// Picture files that forms show, under names that tell nothing of where they lie.
class DeskPictures {
 public:
  /// The name under which the file can be had as it is now; empty for what cannot be shown.
  [[nodiscard]] std::string nameOf(const std::string& path);
  /// Nothing for a name that was never given, and for a file that is no picture any more.
  [[nodiscard]] std::optional<web::Asset> asset(std::string_view name) const;

 private:
  std::map<std::string, std::string, std::less<>> paths_;
};

}  // namespace app
