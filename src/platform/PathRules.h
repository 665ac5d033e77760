#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "platform/Settings.h"

namespace platform {

/// Turns the paths that decks hold into paths of this system.
///
/// A path that begins with "/" is one of this system. If it holds backslashes
/// and no file has that very name, they separate folders, since the system
/// joins folder and name with one; so they do in relative paths.
///
/// A path with a drive (`C:\data\x.txt`) or a share (`\\server\share\x.txt`) is
/// translated by the section Paths of the settings, whose lines have the form
/// `C:\data = /srv/data`: the longest that begins the path counts, in any case,
/// with "/" as good as "\". As the other system does not mind the case of
/// names, neither does what follows: where no file has the exact name, one that
/// differs only in case is taken.
///
/// Files that lie on other machines are looked for as host/drives.h says.
class PathRules {
 public:
  explicit PathRules(const Settings& settings) : settings_(settings) {}

  /// Fails, telling how to add a line to the settings, when there is no
  /// translation; and on an empty path and a web address.
  [[nodiscard]] std::string translate(std::string_view path) const;

  /// The same for who may not wait: nothing where the file lies on another machine.
  [[nodiscard]] std::optional<std::string> translateLocal(std::string_view path) const;

  /// What is left when the settings have been asked: looking for the file.
  struct Search {
    std::string path;                   // where that is, but for the case of letters
    std::function<std::string()> find;  // any thread may call it
    bool isNeeded = true;               // otherwise it is `path`
  };
  [[nodiscard]] Search search(std::string_view path) const;

  /// Finds the real path of a file that lies in the folder or below it, which is
  /// itself translated. In the name, too, "\\" separates folders and case may differ.
  /// Fails on a name that leads out of the folder, absolute, by "..", or through
  /// a symbolic link, and finds no file that is not there.
  [[nodiscard]] Search searchWithin(std::string_view folder, std::string_view name) const;

 private:
  const Settings& settings_;
};

}  // namespace platform
