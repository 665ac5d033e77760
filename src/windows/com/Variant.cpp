// Values as automation passes them, and as the system does.

#include "windows/com/Variant.h"

#include <algorithm>
#include <cstring>
#include <limits>
#include <type_traits>
#include <variant>

#include "basic/Error.h"
#include "windows/com/Bstr.h"
#include "windows/com/Failure.h"
#include "windows/com/Object.h"
#include "windows/com/Text.h"

namespace windows::com {
namespace {

constexpr VARTYPE ByteArray = VT_ARRAY | VT_UI1;

void setText(VARIANT& value, std::string_view text) {
  value.vt = VT_BSTR;
  value.bstrVal = Bstr(text).release();
}

void setDecimal(VARIANT& value, const std::string& digits) {
  value.vt = VT_DECIMAL;
  DECIMAL decimal;
  std::wstring text = wide(digits);
  if (SUCCEEDED(VarDecFromStr(text.data(), LOCALE_INVARIANT, LOCALE_NOUSEROVERRIDE, &decimal))) {
    value.decVal = decimal;  // over its own type, too
    value.vt = VT_DECIMAL;
  } else {
    setText(value, digits);
  }
}

void setBytes(VARIANT& value, const basic::Binary& bytes) {
  SAFEARRAY* array = SafeArrayCreateVector(VT_UI1, 0, static_cast<ULONG>(bytes.size()));
  if (array == nullptr) raise(E_OUTOFMEMORY, "bytes");
  if (!bytes.empty()) std::memcpy(array->pvData, bytes.data(), bytes.size());
  value.vt = ByteArray;
  value.parray = array;
}

basic::Binary bytesOf(SAFEARRAY* array) {
  LONG lower = 0;
  LONG upper = -1;
  void* data = nullptr;
  if (SafeArrayGetDim(array) != 1 || FAILED(SafeArrayGetLBound(array, 1, &lower)) ||
      FAILED(SafeArrayGetUBound(array, 1, &upper)) || FAILED(SafeArrayAccessData(array, &data))) {
    basic::Raise(basic::RuntimeError::TypeMismatch);
  }
  const auto* first = static_cast<const unsigned char*>(data);
  basic::Binary bytes(first, first + (upper - lower + 1));
  SafeArrayUnaccessData(array);
  return bytes;
}

/// Excel's numbers for what cells show (XlCVError).
std::string errorText(SCODE code) {
  switch (HRESULT_CODE(code)) {
    case 2000:
      return "#NULL!";
    case 2007:
      return "#DIV/0!";
    case 2015:
      return "#VALUE!";
    case 2023:
      return "#REF!";
    case 2029:
      return "#NAME?";
    case 2036:
      return "#NUM!";
    case 2042:
      return "#N/A";
    default:
      return "Error " + std::to_string(HRESULT_CODE(code));
  }
}

Variant changed(const VARIANT& value, VARTYPE type) {
  Variant result;
  // Numbers become text, and text numbers, with a point: what is the user's is converted by the system.
  if (FAILED(VariantChangeTypeEx(result.out(), const_cast<VARIANT*>(&value), LOCALE_INVARIANT,
                                 VARIANT_ALPHABOOL, type))) {
    basic::Raise(basic::RuntimeError::TypeMismatch);
  }
  return result;
}

}  // namespace

Variant::Variant(Missing) : Variant() {
  value_.vt = VT_ERROR;
  value_.scode = DISP_E_PARAMNOTFOUND;
}

Variant::Variant(bool value) : Variant() {
  value_.vt = VT_BOOL;
  value_.boolVal = value ? VARIANT_TRUE : VARIANT_FALSE;
}

Variant::Variant(std::int32_t value) : Variant() {
  value_.vt = VT_I4;
  value_.lVal = value;
}

Variant::Variant(double value) : Variant() {
  value_.vt = VT_R8;
  value_.dblVal = value;
}

Variant::Variant(std::string_view text) : Variant() { setText(value_, text); }

Variant::Variant(const std::vector<std::int32_t>& numbers) : Variant() {
  SAFEARRAY* array = SafeArrayCreateVector(VT_I4, 0, static_cast<ULONG>(numbers.size()));
  if (array == nullptr) raise(E_OUTOFMEMORY, "numbers");
  std::copy(numbers.begin(), numbers.end(), static_cast<LONG*>(array->pvData));
  value_.vt = VT_ARRAY | VT_I4;
  value_.parray = array;
}

Variant::Variant(const Object& object) : Variant() {
  value_.vt = VT_DISPATCH;
  value_.pdispVal = Ptr<IDispatch>(object.dispatch()).release();
}

Variant::Variant(const basic::Variant& value) : Variant() {
  std::visit(
      [this](const auto& held) {
        using Kind = std::decay_t<decltype(held)>;
        if constexpr (std::is_same_v<Kind, basic::Null>) {
          value_.vt = VT_NULL;
        } else if constexpr (std::is_same_v<Kind, std::int64_t>) {
          if (held >= std::numeric_limits<std::int32_t>::min() &&
              held <= std::numeric_limits<std::int32_t>::max()) {
            *this = Variant(static_cast<std::int32_t>(held));
          } else {
            setDecimal(value_, std::to_string(held));
          }
        } else if constexpr (std::is_same_v<Kind, basic::Decimal>) {
          setDecimal(value_, held.digits);
        } else if constexpr (std::is_same_v<Kind, basic::Date>) {
          value_.vt = VT_DATE;
          value_.date = held.serial;
        } else if constexpr (std::is_same_v<Kind, basic::Binary>) {
          setBytes(value_, held);
        } else if constexpr (!std::is_same_v<Kind, basic::Empty>) {
          *this = Variant(held);
        }
      },
      value);
}

Variant Variant::array(std::vector<Variant> values) {
  SAFEARRAY* elements = SafeArrayCreateVector(VT_VARIANT, 0, static_cast<ULONG>(values.size()));
  if (elements == nullptr) raise(E_OUTOFMEMORY, "array");
  auto* place = static_cast<VARIANT*>(elements->pvData);
  for (Variant& value : values) std::swap(*place++, value.value_);
  Variant array;
  array.value_.vt = VT_ARRAY | VT_VARIANT;
  array.value_.parray = elements;
  return array;
}

Variant Variant::copyOf(const VARIANT& value) {
  Variant copy;
  check(VariantCopyInd(&copy.value_, const_cast<VARIANT*>(&value)), "VariantCopyInd");
  return copy;
}

VARIANT* Variant::out() {
  VariantClear(&value_);
  return &value_;
}

std::string Variant::text() const {
  if (value_.vt == VT_EMPTY) return {};
  if (value_.vt != VT_BSTR) return changed(value_, VT_BSTR).text();
  return value_.bstrVal == nullptr ? std::string() : narrow({value_.bstrVal, SysStringLen(value_.bstrVal)});
}

std::int32_t Variant::number() const {
  return value_.vt == VT_I4 ? value_.lVal : changed(value_, VT_I4).raw().lVal;
}

double Variant::real() const {
  return value_.vt == VT_R8 ? value_.dblVal : changed(value_, VT_R8).raw().dblVal;
}

bool Variant::flag() const {
  return value_.vt == VT_BOOL ? value_.boolVal != VARIANT_FALSE
                              : changed(value_, VT_BOOL).raw().boolVal != VARIANT_FALSE;
}

Ptr<IUnknown> Variant::unknown() const {
  if (value_.vt == VT_DISPATCH) return Ptr<IUnknown>::sharing(value_.pdispVal);
  if (value_.vt == VT_UNKNOWN) return Ptr<IUnknown>::sharing(value_.punkVal);
  basic::Raise(basic::RuntimeError::TypeMismatch);
}

Ptr<IDispatch> Variant::object() const {
  if (value_.vt == VT_DISPATCH) return Ptr<IDispatch>::sharing(value_.pdispVal);
  return unknown().as<IDispatch>(IID_IDispatch);
}

std::vector<std::int32_t> Variant::numbers() const {
  VARTYPE kind = VT_EMPTY;
  LONG lower = 0;
  LONG upper = -1;
  if ((value_.vt & VT_ARRAY) == 0 || FAILED(SafeArrayGetVartype(value_.parray, &kind)) ||
      FAILED(SafeArrayGetLBound(value_.parray, 1, &lower)) ||
      FAILED(SafeArrayGetUBound(value_.parray, 1, &upper))) {
    basic::Raise(basic::RuntimeError::TypeMismatch);
  }
  std::vector<std::int32_t> numbers;
  for (LONG i = lower; i <= upper; ++i) {
    Variant element;
    void* place = kind == VT_VARIANT ? static_cast<void*>(element.out()) : &element.value_.byref;
    check(SafeArrayGetElement(value_.parray, &i, place), "SafeArrayGetElement");
    if (kind != VT_VARIANT) element.value_.vt = kind;
    numbers.push_back(element.number());
  }
  return numbers;
}

basic::Variant Variant::value() const {
  switch (value_.vt) {
    case VT_EMPTY:
      return basic::Empty{};
    case VT_NULL:
      return basic::Null{};
    case VT_BOOL:
      return flag();
    case VT_I1:
    case VT_UI1:
    case VT_I2:
    case VT_UI2:
    case VT_I4:
    case VT_INT:
      return number();
    case VT_UI4:
    case VT_UINT:
      return static_cast<std::int64_t>(value_.ulVal);
    case VT_I8:
      return static_cast<std::int64_t>(value_.llVal);
    case VT_R4:
    case VT_R8:
      return real();
    case VT_CY:
    case VT_DECIMAL:
    case VT_UI8:
      return basic::Decimal{changed(value_, VT_BSTR).text()};
    case VT_DATE:
      return basic::Date{value_.date};
    case VT_BSTR:
      return text();
    case VT_ERROR:
      return errorText(value_.scode);
    case ByteArray:
      return bytesOf(value_.parray);
    default:
      basic::Raise(basic::RuntimeError::TypeMismatch);
  }
}

}  // namespace windows::com
