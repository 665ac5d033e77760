#include "PageCheck.h"

#include <algorithm>
#include <cctype>
#include <cstdio>
#include <cstdlib>
#include <vector>

#include "basic/Strings.h"

namespace {

[[noreturn]] void fail(std::string_view html, std::size_t at, const char* what) {
  const auto from = at < 200 ? 0 : at - 200;
  const auto around = html.substr(from, 400);
  std::fprintf(stderr, "%s at %zu: %.*s\n", what, at, static_cast<int>(around.size()), around.data());
  std::abort();
}

bool isVoid(std::string_view name) { return name == "br" || name == "img" || name == "col"; }

/// The place of the bracket that ends the tag begun at `at`; quotes are what hides one.
std::size_t endOfTag(std::string_view html, std::size_t at) {
  bool quoted = false;
  for (auto i = at; i < html.size(); ++i) {
    if (html[i] == '"') quoted = !quoted;
    if (html[i] == '<' && i != at) fail(html, i, "bracket within a tag");
    if (html[i] == '>' && !quoted) return i;
  }
  fail(html, at, "tag without an end");
}

}  // namespace

void checkMarkup(std::string_view html) {
  if (!basic::IsValidUtf8(html)) fail(html, 0, "no UTF-8");
  std::vector<std::string_view> open;
  for (std::size_t at = 0; at < html.size(); ++at) {
    const auto c = static_cast<unsigned char>(html[at]);
    if (c == 0x7F || (c < 0x20 && c != '\t' && c != '\n')) fail(html, at, "control character");
    if (c != '<') continue;
    const auto end = endOfTag(html, at);
    auto tag = html.substr(at + 1, end - at - 1);
    const bool closes = !tag.empty() && tag.front() == '/';
    if (closes) tag.remove_prefix(1);
    const auto name = tag.substr(0, std::min(tag.size(), tag.find_first_of(" /")));
    if (name.empty() || std::isalpha(static_cast<unsigned char>(name.front())) == 0) fail(html, at, "no tag");
    if (closes) {
      if (open.empty() || open.back() != name) fail(html, at, "closed what was not open");
      open.pop_back();
    } else if (!isVoid(name) && tag.back() != '/') {
      open.push_back(name);
    }
    at = end;
  }
  if (!open.empty()) fail(html, html.size(), "left open");
}
