#pragma once

#include <sys/stat.h>

#include <string>

#include "host/services.h"
#include "platform/FileDates.h"
#include "platform/Looks.h"
#include "platform/PathRules.h"

namespace platform {

/// Files of this system, under the paths that decks hold (PathRules.h). Every
/// error says which file and why; its number is that of the language's own
/// error where it has one (53 file not found, 70 permission denied). What is looked
/// at and read may lie on other machines (host/drives.h); what is written is taken
/// for local.
class Files final : public host::Files {
 public:
  explicit Files(const Settings& settings) : paths_(settings) {}

  /// An ordinary file that no other program has locked for itself (by flock or
  /// an open file description lock). It is not kept locked; one on another machine
  /// is not kept open either.
  [[nodiscard]] std::unique_ptr<host::InputFile> OpenForInput(std::string_view path) override;
  void Append(std::string_view path, std::string_view text) override;
  void Kill(std::string_view path) override;
  void Name(std::string_view path, std::string_view newPath) override;
  /// Of the last change, to a microsecond; see FileDates.h.
  [[nodiscard]] basic::Date FileDateTime(std::string_view path) const override;
  [[nodiscard]] std::string LocalPath(std::string_view path) const override;
  [[nodiscard]] std::string FileWithin(std::string_view folder, std::string_view name) const override;
  /// $TMPDIR or /tmp.
  [[nodiscard]] std::string TempPath() const override;
  [[nodiscard]] std::string TempFileName(std::string_view folder, std::string_view prefix) override;

 private:
  PathRules paths_;
  struct Seen {
    std::string file;
    struct stat status {};
  };
  mutable Looks<Seen> states_;
  mutable Looks<std::string> places_;
  mutable FileDates dates_;
};

}  // namespace platform
