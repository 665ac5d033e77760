#pragma once

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <optional>
#include <string>

#include "support/ErrorOf.h"
#include "support/TemporaryFolder.h"

namespace platform {

using support::errorOf;

/// A folder of its own, which is the user's home, and an environment that is
/// put back at the end.
class Sandbox : public testing::Test {
 protected:
  Sandbox() {
    setVariable("HOME", folder_.c_str());
    for (const char* variable :
         {"XDG_CONFIG_HOME", "XDG_STATE_HOME", "LC_ALL", "LC_TIME", "LC_NUMERIC", "LANG"}) {
      setVariable(variable, nullptr);
    }
  }
  ~Sandbox() override {
    for (const auto& [variable, value] : before_) set(variable, value ? value->c_str() : nullptr);
  }

  /// Null removes it.
  void setVariable(const std::string& variable, const char* value) {
    const char* const present = std::getenv(variable.c_str());
    before_.try_emplace(variable, present != nullptr ? std::optional<std::string>(present) : std::nullopt);
    set(variable, value);
  }

  std::string write(const std::string& name, const std::string& text) {
    const std::filesystem::path path = std::filesystem::path(folder_) / name;
    std::filesystem::create_directories(path.parent_path());
    std::ofstream(path, std::ios::binary) << text;
    return path.string();
  }

  std::string read(const std::string& path) {
    std::ifstream stream(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
  }

 private:
  static void set(const std::string& variable, const char* value) {
    if (value != nullptr) {
      setenv(variable.c_str(), value, 1);
    } else {
      unsetenv(variable.c_str());
    }
  }

  support::TemporaryFolder temporary_;
  std::map<std::string, std::optional<std::string>> before_;

 protected:
  const std::string folder_ = temporary_.path().string();
};

}  // namespace platform
