#pragma once

#include <sys/types.h>

#include <cstdint>
#include <ctime>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "host/services.h"
#include "platform/IniFile.h"

namespace platform {

/// The user's settings file (IniFile.h has its form), read anew when it has
/// changed. An environment variable LUMENFOLD_<SECTION>_<KEY>, in capital
/// letters, goes before the file. Lines that cannot be understood, and a file
/// that cannot be read, are reported on standard error, each once.
class Settings final : public host::Settings {
 public:
  /// Over settings.ini in configFolder().
  Settings();
  explicit Settings(std::string file);

  /// Knows the one application only: ApplicationName.
  [[nodiscard]] std::string GetSetting(std::string_view application, std::string_view section,
                                       std::string_view key) const override;

  [[nodiscard]] std::string Location() const override { return file_; }

  /// Keys and values of a section, in the order of the file.
  [[nodiscard]] std::vector<std::pair<std::string, std::string>> entries(std::string_view section) const;

  [[nodiscard]] const std::string& file() const { return file_; }

 private:
  struct Version {
    dev_t device = 0;
    ino_t inode = 0;
    off_t size = -1;
    std::timespec changed{};
    bool operator==(const Version& other) const;
  };
  [[nodiscard]] Version present() const;
  const IniFile& content() const;
  void reportOnce(const std::string& problem) const;

  std::string file_;
  mutable Version read_;
  mutable IniFile content_;
  mutable std::vector<std::string> reported_;
};

}  // namespace platform
