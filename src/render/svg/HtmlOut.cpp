#include "render/svg/HtmlOut.h"

#include <algorithm>
#include <cmath>

#include "basic/Error.h"
#include "basic/Markup.h"
#include "basic/Strings.h"
#include "basic/Utf8.h"

namespace render {

namespace {

/// What is no UTF-8 would make programs stumble that pages are sent to.
std::string repaired(std::string_view text) {
  std::string whole;
  for (std::size_t at = 0; at < text.size();) basic::AppendUtf8(whole, basic::DecodeUtf8(text, at));
  return whole;
}

}  // namespace

void HtmlOut::overflow() {
  throw basic::Error(basic::AdapterError, "render", "it would make the page too large");
}

HtmlOut& HtmlOut::operator<<(const Color& color) {
  const auto channel = [](double v) {
    return static_cast<unsigned>(std::lround(std::clamp(v, 0.0, 1.0) * 255));
  };
  const auto hex = [&](unsigned v) {
    out_ += "0123456789abcdef"[v >> 4];
    out_ += "0123456789abcdef"[v & 15U];
  };
  out_ += '#';
  for (const double v : {color.r, color.g, color.b}) hex(channel(v));
  if (color.a < 1) hex(channel(color.a));
  return *this;
}

HtmlOut& HtmlOut::text(std::string_view value) {
  reserve(value.size());
  if (!basic::IsValidUtf8(value)) return text(repaired(value));
  basic::AppendEscaped(out_, value);
  return *this;
}

}  // namespace render
