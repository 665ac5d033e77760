#pragma once

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

#include "render/geometry/Decimal.h"
#include "render/paint/Color.h"
#include "render/text/DateField.h"

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
  /// Bytes; no browser shows a page of this size at ease, and a small deck may ask for any.
  static constexpr std::size_t LargestPage = 32U << 20U;

  /// What would grow beyond `most` bytes is an error.
  explicit HtmlOut(std::size_t most = LargestPage) : most_(most) {}

  HtmlOut& operator<<(std::string_view markup) {
    reserve(markup.size());
    out_ += markup;
    return *this;
  }
  HtmlOut& operator<<(char c) {
    out_ += c;
    return *this;
  }
  /// At most two decimals, in the shortest form.
  HtmlOut& operator<<(double value) { return decimal(value, 2); }
  /// At most four decimals, for factors.
  HtmlOut& precise(double value) { return decimal(value, 4); }
  HtmlOut& operator<<(int value) { return *this << static_cast<double>(value); }
  HtmlOut& operator<<(const Color& color);

  /// Escaped for contents and double-quoted attributes; control characters are dropped, broken UTF-8
  /// replaced.
  HtmlOut& text(std::string_view value);

  [[nodiscard]] TextUse& textUse() { return textUse_; }
  [[nodiscard]] const std::string& str() const { return out_; }
  [[nodiscard]] std::string take() { return std::move(out_); }
  /// Drops what stands behind `size`.
  void cut(std::size_t size) { out_.resize(std::min(size, out_.size())); }
  /// Takes any more, for what has to stand even in a page that is full.
  void lift() { most_ = std::string::npos; }
  [[nodiscard]] std::size_t size() const { return out_.size(); }

 private:
  HtmlOut& decimal(double value, int decimals) {
    appendDecimal(out_, value, decimals);
    return *this;
  }
  void reserve(std::size_t more) const {
    if (more > most_ || out_.size() > most_ - more) overflow();
  }
  [[noreturn]] static void overflow();

  std::size_t most_;
  std::string out_;
  TextUse textUse_;
};

}  // namespace render
