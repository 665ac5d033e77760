#include "platform/Settings.h"

#include <sys/stat.h>

#include <algorithm>
#include <cstdlib>

#include "basic/Error.h"
#include "basic/Strings.h"
#include "platform/InputFile.h"
#include "platform/Log.h"
#include "platform/UserFolders.h"

namespace platform {
namespace {

IniFile parse(const host::Bytes& bytes) { return parseIniFile({bytes.data.get(), bytes.size}); }

}  // namespace

Settings::Settings() : Settings(configFolder() + "/settings.ini") {}

Settings::Settings(std::string file) : file_(std::move(file)) {}

std::string Settings::GetSetting(std::string_view application, std::string_view section,
                                 std::string_view key) const {
  if (!basic::EqualsIgnoreCase(application, ApplicationName)) return {};
  const std::string variable = "LUMENFOLD_" + basic::UCase(section) + "_" + basic::UCase(key);
  if (const char* const value = std::getenv(variable.c_str())) return value;

  const auto& entries = content().entries;
  const auto found = std::find_if(entries.rbegin(), entries.rend(), [&](const IniFile::Entry& entry) {
    return basic::EqualsIgnoreCase(entry.section, section) && basic::EqualsIgnoreCase(entry.key, key);
  });
  return found == entries.rend() ? std::string() : found->value;
}

std::vector<std::pair<std::string, std::string>> Settings::entries(std::string_view section) const {
  std::vector<std::pair<std::string, std::string>> found;
  for (const IniFile::Entry& entry : content().entries) {
    if (basic::EqualsIgnoreCase(entry.section, section)) found.emplace_back(entry.key, entry.value);
  }
  return found;
}

bool Settings::Version::operator==(const Version& other) const {
  return device == other.device && inode == other.inode && size == other.size &&
         changed.tv_sec == other.changed.tv_sec && changed.tv_nsec == other.changed.tv_nsec;
}

/// The default version stands for a file that is not there.
Settings::Version Settings::present() const {
  struct stat status {};
  if (stat(file_.c_str(), &status) != 0) return {};
  return {status.st_dev, status.st_ino, status.st_size, status.st_mtim};
}

const IniFile& Settings::content() const {
  const Version now = present();
  if (now == read_) return content_;
  try {
    content_ = now == Version{} ? IniFile{} : parse(InputFile(file_).ReadAll());
    read_ = now;
  } catch (const basic::Error& error) {
    // What was read before stays in force, and the next call tries again.
    reportOnce(error.description);
    return content_;
  }
  for (const IniFile::BrokenLine& line : content_.broken) {
    reportOnce(file_ + ", line " + std::to_string(line.number) + " is ignored: " + line.reason + ".");
  }
  return content_;
}

void Settings::reportOnce(const std::string& problem) const {
  if (std::find(reported_.begin(), reported_.end(), problem) != reported_.end()) return;
  reported_.push_back(problem);
  tell(Priority::Warning, "settings", problem);
}

}  // namespace platform
