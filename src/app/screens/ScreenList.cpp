// The text of a list of screens: read with its notes, and changed line by line.

#include "app/screens/ScreenList.h"

#include <algorithm>

#include "app/wiring/Failure.h"
#include "basic/Strings.h"
#include "basic/Utf8.h"

namespace app {

namespace {

constexpr std::size_t DigestSize = 64;
constexpr std::size_t LongestName = 100;
constexpr std::string_view Blanks = " \t";

/// Those of ASCII and Latin-1, line ends of their own, and what turns the direction of writing.
bool isControl(char32_t c) {
  return c < 0x20 || (c >= 0x7F && c <= 0x9F) || (c >= 0x200E && c <= 0x200F) ||
         (c >= 0x2028 && c <= 0x202E) || (c >= 0x2066 && c <= 0x2069) || c == 0xFEFF;
}

bool hasControl(std::string_view text) {
  for (std::size_t at = 0; at < text.size();) {
    if (isControl(basic::DecodeUtf8(text, at))) return true;
  }
  return false;
}

std::string_view trimmed(std::string_view text) {
  text.remove_prefix(std::min(text.find_first_not_of(Blanks), text.size()));
  return text.substr(0, text.find_last_not_of(Blanks) + 1);
}

bool isDigest(std::string_view text) {
  return text.size() == DigestSize &&
         text.find_first_not_of("0123456789abcdefABCDEF") == std::string_view::npos;
}

std::string lowered(std::string_view digest) {
  std::string text(digest);
  for (char& c : text) {
    if (c >= 'A' && c <= 'F') c = static_cast<char>(c - 'A' + 'a');
  }
  return text;
}

std::string place(std::size_t line) { return "line " + std::to_string(line); }

}  // namespace

void requireScreenName(std::string_view name) {
  if (name.empty()) fail("A screen needs a name.");
  if (name.size() > LongestName) {
    fail("The name of a screen has at most " + std::to_string(LongestName) + " bytes.");
  }
  if (!basic::IsValidUtf8(name)) fail("The name of a screen must be UTF-8.");
  if (hasControl(name)) fail("The name of a screen has a control character in it.");
  if (trimmed(name) != name) fail("The name of a screen begins or ends with a blank.");
}

ScreenList::ScreenList(const std::string& text) {
  std::string_view rest = text;
  if (rest.starts_with(basic::Utf8Mark)) rest.remove_prefix(basic::Utf8Mark.size());
  while (!rest.empty()) {
    std::string_view line = rest.substr(0, rest.find('\n'));
    rest.remove_prefix(std::min(rest.size(), line.size() + 1));
    if (line.ends_with('\r')) line.remove_suffix(1);
    take(std::string(line));
  }
}

void ScreenList::take(const std::string& line) {
  lines_.push_back(line);
  const std::string_view content = trimmed(line);
  if (content.empty() || content.starts_with('#')) return;
  const std::string here = place(lines_.size()) + ": ";
  const std::string_view digest = content.substr(0, content.find_first_of(Blanks));
  if (!isDigest(digest)) {
    fail(here + "a screen's line is the SHA-256 of its token, 64 hexadecimal digits, and its name.");
  }
  Screen screen{std::string(trimmed(content.substr(digest.size()))), lowered(digest), lines_.size()};
  try {
    requireScreenName(screen.name);
  } catch (const basic::Error& error) {
    fail(here + error.description);
  }
  if (const Screen* same = withName(screen.name)) {
    fail(here + "the name " + screen.name + " stands in " + place(same->line) + " already.");
  }
  if (const Screen* twin = withDigest(screen.digest)) {
    fail(here + screen.name + " has the token of " + twin->name + " (" + place(twin->line) +
         "); each screen needs its own.");
  }
  names_.emplace(basic::UCase(screen.name), screens_.size());
  digests_.emplace(screen.digest, screens_.size());
  screens_.push_back(std::move(screen));
}

const ScreenList::Screen* ScreenList::at(const Index& index, const std::string& key) const {
  const auto found = index.find(key);
  return found == index.end() ? nullptr : &screens_[found->second];
}

const ScreenList::Screen* ScreenList::withName(std::string_view name) const {
  return at(names_, basic::UCase(name));
}

const ScreenList::Screen* ScreenList::withDigest(const std::string& digest) const {
  return at(digests_, digest);
}

void ScreenList::add(std::string_view name, std::string_view digest) {
  requireScreenName(name);
  if (withName(name) != nullptr) {
    fail("There is a screen " + std::string(name) +
         " already; revoke it first if it is to have another token.");
  }
  take(std::string(digest) + "  " + std::string(name));
}

void ScreenList::remove(std::string_view name) {
  const Screen* screen = withName(name);
  if (screen == nullptr) fail("There is no screen " + std::string(name) + ".");
  lines_.erase(lines_.begin() + static_cast<std::ptrdiff_t>(screen->line) - 1);
  *this = ScreenList(text());
}

std::string ScreenList::text() const {
  std::string text;
  for (const std::string& line : lines_) text.append(line).append("\n");
  return text;
}

}  // namespace app
