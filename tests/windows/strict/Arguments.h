#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "windows/com/Variant.h"

namespace strict {

/// What an argument must be. Nothing is converted: programs of other languages would, and hide what is wrong.
enum class Kind { Text, Number, Real, Flag, TriState, TextOrNumber, Numbers, Array, Object, Any };

struct Parameter {
  Parameter(Kind itsKind, bool mayBeLeftOut = false) : kind(itsKind), isOptional(mayBeLeftOut) {}
  Kind kind;
  bool isOptional;
};
[[nodiscard]] inline Parameter optional(Kind kind) { return {kind, true}; }

/// The arguments of one call, in the order of their declaration.
class Arguments {
 public:
  explicit Arguments(const DISPPARAMS& parameters) {
    for (UINT i = parameters.cArgs; i > 0; --i) values_.push_back(&parameters.rgvarg[i - 1]);
  }

  [[nodiscard]] std::size_t count() const { return values_.size(); }
  [[nodiscard]] bool isMissing(std::size_t place) const {
    return place >= values_.size() ||
           (values_[place]->vt == VT_ERROR && values_[place]->scode == DISP_E_PARAMNOTFOUND);
  }
  [[nodiscard]] bool isText(std::size_t place) const { return values_[place]->vt == VT_BSTR; }
  [[nodiscard]] const VARIANT& raw(std::size_t place) const { return *values_[place]; }
  [[nodiscard]] windows::com::Variant at(std::size_t place) const {
    return windows::com::Variant::copyOf(*values_[place]);
  }
  [[nodiscard]] std::string text(std::size_t place) const { return at(place).text(); }
  [[nodiscard]] std::int32_t number(std::size_t place) const { return at(place).number(); }
  [[nodiscard]] double real(std::size_t place) const { return at(place).real(); }
  [[nodiscard]] bool flag(std::size_t place) const { return at(place).flag(); }
  [[nodiscard]] std::vector<std::int32_t> numbers(std::size_t place) const { return at(place).numbers(); }
  [[nodiscard]] basic::Variant value(std::size_t place) const { return at(place).value(); }

  /// Why they are not what is declared: a result of automation, S_OK where they are.
  [[nodiscard]] HRESULT check(const std::vector<Parameter>& declared) const;

 private:
  std::vector<const VARIANT*> values_;
};

}  // namespace strict
