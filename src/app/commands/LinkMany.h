#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace app {

/// What the verb link is asked for many shapes at once.
struct LinkManyOptions {
  std::string deck;
  /// Every slide, where names or texts decide.
  std::optional<std::int32_t> slide;
  /// Its number or description; where there is one connection alone it may be left out.
  std::string connection;

  // One of these three ways.
  /// The shape at the upper left of a grid.
  std::string grid;
  bool byNames = false;
  bool byTexts = false;

  /// Of a grid, separated by commas; shapes under an empty one are left alone.
  std::string columns;
  std::int32_t rows = 0;
  std::int32_t firstRow = 1;

  /// Of pictures.
  std::string folder;
  std::string extension;

  /// Say what would be linked, and write nothing.
  bool isDryRun = false;
  /// See keepBackup().
  bool backup = false;

  [[nodiscard]] bool isAsked() const { return !grid.empty() || byNames || byTexts; }
};

/// Links all the shapes or, when one of them cannot be, none: throws basic::Error with all the reasons.
void linkMany(LinkManyOptions options);

}  // namespace app
