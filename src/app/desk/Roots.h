#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "json/Json.h"

namespace app {

/// The folders below which a desk's authors may choose files, and what is listed of them. What lies outside
/// of them and what is not there is refused with the same words.
class Roots {
 public:
  struct Root {
    std::string name;
    /// As this system knows it.
    std::string path;
  };

  /// Folders that are not there are left out, and those that another one holds.
  explicit Roots(const std::vector<Root>& folders);

  /// docs/desk-protocol.md, GET roots.
  [[nodiscard]] json::Json toJson() const;

  struct Wish {
    /// From 1.
    int root = 0;
    /// Below it, with "/"; empty for itself.
    std::string path;
    /// Endings of names, without points; empty for files of any kind.
    std::vector<std::string> kinds;
    bool isFoldersOnly = false;
  };
  /// At most 1,000 entries, folders first; nothing whose name begins with a point. docs/desk-protocol.md, GET
  /// roots/N/files.
  [[nodiscard]] json::Json list(const Wish& wish) const;

  /// The file or folder that somebody chose below a root; links that lead out of it lead nowhere.
  [[nodiscard]] std::string chosen(int root, std::string_view path) const;
  /// Whether a path, as this system knows it, is that of something below a root, links followed. Also for
  /// what is not there: what counts is where it would be.
  [[nodiscard]] bool hold(const std::string& path) const;
  /// The same for any folder.
  [[nodiscard]] static bool isIn(const std::string& path, const std::string& folder);

 private:
  [[nodiscard]] const Root& root(int number) const;

  std::vector<Root> roots_;
};

}  // namespace app
