#pragma once

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

#include "render/Color.h"
#include "render/DateField.h"

namespace render {

struct FontStack;

/// What the text of a page asks for beyond markup.
struct TextUse {
  /// Each once, in the order of their first use.
  std::vector<const FontStack*> fonts;
  TimeShown timeShown = TimeShown::None;

  void add(const FontStack& font) {
    if (std::find(fonts.begin(), fonts.end(), &font) == fonts.end()) fonts.push_back(&font);
  }
  void add(TimeShown shown) { timeShown = std::max(timeShown, shown); }
};

/// Collects the text of a page. Everything that comes from a deck goes through
/// text(); what is appended with << is the program's own.
class HtmlOut {
 public:
  HtmlOut& operator<<(std::string_view markup) {
    out_ += markup;
    return *this;
  }
  HtmlOut& operator<<(char c) {
    out_ += c;
    return *this;
  }
  /// At most two decimals, in the shortest form.
  HtmlOut& operator<<(double value) { return number(value, 2); }
  /// At most four decimals, for factors.
  HtmlOut& precise(double value) { return number(value, 4); }
  HtmlOut& operator<<(int value) { return *this << static_cast<double>(value); }
  HtmlOut& operator<<(const Color& color);

  /// Escaped for contents and double-quoted attributes; control characters are dropped.
  HtmlOut& text(std::string_view value);

  [[nodiscard]] TextUse& textUse() { return textUse_; }
  [[nodiscard]] const std::string& str() const { return out_; }
  [[nodiscard]] std::string take() { return std::move(out_); }
  [[nodiscard]] std::size_t size() const { return out_.size(); }

 private:
  HtmlOut& number(double value, int decimals);

  std::string out_;
  TextUse textUse_;
};

}  // namespace render
