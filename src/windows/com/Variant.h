#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "basic/Variant.h"
#include "windows/com/Ptr.h"

namespace windows::com {

class Object;

/// An argument that a call leaves out.
struct Missing {};

/// A VARIANT, cleared when it goes. Made of what calls take, read as what they give.
class Variant {
 public:
  Variant() { VariantInit(&value_); }
  Variant(Missing);
  Variant(bool value);
  Variant(std::int32_t value);
  Variant(double value);
  Variant(std::string_view text);
  Variant(const char* text) : Variant(std::string_view(text)) {}
  Variant(const std::string& text) : Variant(std::string_view(text)) {}
  /// An array, as ids of slides go.
  Variant(const std::vector<std::int32_t>& numbers);
  /// Null stands for Nothing.
  Variant(const Object& object);
  /// A 64-bit integer that needs more than 32 bits goes as a decimal number, which every component knows.
  Variant(const basic::Variant& value);
  /// Any other pointer would count as true.
  Variant(const void*) = delete;
  Variant(const Variant&) = delete;
  Variant(Variant&& other) noexcept : Variant() { std::swap(value_, other.value_); }
  Variant& operator=(const Variant&) = delete;
  Variant& operator=(Variant&& other) noexcept {
    std::swap(value_, other.value_);
    return *this;
  }
  ~Variant() { VariantClear(&value_); }

  /// An array of these values.
  [[nodiscard]] static Variant array(std::vector<Variant> values);
  /// A copy of what somebody else keeps, with references in it followed.
  [[nodiscard]] static Variant copyOf(const VARIANT& value);

  [[nodiscard]] const VARIANT& raw() const { return value_; }
  /// Where a call puts its result.
  [[nodiscard]] VARIANT* out();

  // What does not convert raises TypeMismatch.
  [[nodiscard]] std::string text() const;
  [[nodiscard]] std::int32_t number() const;
  [[nodiscard]] double real() const;
  /// Of a number (MsoTriState too), whether it is not 0.
  [[nodiscard]] bool flag() const;
  /// Null for Nothing.
  [[nodiscard]] Ptr<IDispatch> object() const;
  /// What is handed out as no more than an object; null for Nothing.
  [[nodiscard]] Ptr<IUnknown> unknown() const;
  /// Of an array of numbers, whatever the kind of its elements is.
  [[nodiscard]] std::vector<std::int32_t> numbers() const;
  /// An error value of a cell is the text that cells show for it ("#N/A").
  [[nodiscard]] basic::Variant value() const;

 private:
  VARIANT value_;
};

}  // namespace windows::com
