#pragma once

#include <cstdint>
#include <string>
#include <unordered_map>

#include "host/services.h"
#include "windows/com/WindowsApi.h"

namespace windows::platform {

/// Files of this system, with paths of any length. Every error says which file and why (Paths.h).
class Files final : public host::Files {
 public:
  [[nodiscard]] std::unique_ptr<host::InputFile> OpenForInput(std::string_view path) override;
  void Append(std::string_view path, std::string_view text) override;
  void Kill(std::string_view path) override;
  void Name(std::string_view path, std::string_view newPath) override;
  /// Of the last change, in the user's time zone.
  [[nodiscard]] basic::Date FileDateTime(std::string_view path) const override;
  [[nodiscard]] std::string LocalPath(std::string_view path) const override;
  [[nodiscard]] std::string FileWithin(std::string_view folder, std::string_view name) const override;
  [[nodiscard]] std::string TempPath() const override;
  /// The system takes three characters of the prefix.
  [[nodiscard]] std::string TempFileName(std::string_view folder, std::string_view prefix) override;

 private:
  /// What tells one state of a file from another that has the same time.
  struct State {
    std::uint64_t written = 0;
    std::uint64_t changed = 0;
    std::uint64_t size = 0;
    std::uint64_t file = 0;
    /// By how many steps its time is moved.
    std::int64_t moves = 0;
  };
  mutable std::unordered_map<std::string, State> states_;
};

}  // namespace windows::platform
