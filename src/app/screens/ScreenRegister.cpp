// The list of screens while a show runs: looked at every second, and asked for tokens.

#include "app/screens/ScreenRegister.h"

#include <filesystem>
#include <utility>

#include "app/distribution/Digest.h"
#include "app/wiring/Failure.h"
#include "host/drives.h"

namespace app {

ScreenRegister::ScreenRegister(platform::EventLoop& loop, const std::string& path)
    : file_(std::filesystem::absolute(path).string()), looking_(loop.CreateTimer([this] { look(); })) {
  Found found = find();
  if (!found.list) fail(found.why);
  list_ = std::move(*found.list);
  read_ = found.state;
}

void ScreenRegister::watch(Hearer hearer) {
  constexpr std::int32_t TimeBetweenLooks = 1000;
  hearer_ = std::move(hearer);
  looking_->Interval(TimeBetweenLooks);
  looking_->Enabled(true);
}

/// On whatever drive it lies; what has been read is not read again.
ScreenRegister::Found ScreenRegister::find() const {
  try {
    return host::OnDrive(file_.path(), [file = file_, before = read_](const auto&) {
      Found found;
      found.state = file.state();
      try {
        if (!found.state || found.state != before) found.list = file.read();
      } catch (const basic::Error& error) {
        found.why = error.description;
      }
      return found;
    });
  } catch (const basic::Error& error) {
    return {std::nullopt, std::nullopt, error.description};
  }
}

void ScreenRegister::look() {
  Found found = find();
  if (!found.why.empty()) {
    const bool isSure = std::exchange(suspicion_, found.why) == found.why;
    if (isSure && std::exchange(complaint_, found.why) != found.why && hearer_.damaged) {
      hearer_.damaged(found.why);
    }
    return;
  }
  suspicion_.clear();
  complaint_.clear();
  if (!found.list) return;
  list_ = std::move(*found.list);
  read_ = found.state;
  if (hearer_.changed) hearer_.changed();
}

std::optional<web::KnownScreen> ScreenRegister::withToken(std::string_view token) const {
  // How long the search takes tells something of digests alone, which nobody can choose.
  const ScreenList::Screen* found = list_.withDigest(sha256(token));
  if (found == nullptr) return std::nullopt;
  return web::KnownScreen{found->name, found->digest};
}

std::optional<std::string> ScreenRegister::nameOf(std::string_view key) const {
  const ScreenList::Screen* found = list_.withDigest(std::string(key));
  return found == nullptr ? std::nullopt : std::optional(found->name);
}

std::vector<std::string> ScreenRegister::names() const {
  std::vector<std::string> names;
  for (const ScreenList::Screen& screen : list_.screens()) names.push_back(screen.name);
  return names;
}

}  // namespace app
