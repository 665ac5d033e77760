// Results of calls as errors of the system: numbers, sources and texts.

#include "windows/com/Failure.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdio>
#include <string>

#include "basic/Error.h"
#include "windows/com/Text.h"

namespace windows::com {
namespace {

/// Results that the host language has numbers of its own for (Visual Basic, trappable errors).
struct Known {
  HRESULT result;
  std::int32_t number;
  const char* text;
};
constexpr std::array KnownResults = {
    Known{E_INVALIDARG, 5, "Invalid procedure call or argument"},
    Known{DISP_E_OVERFLOW, 6, "Overflow"},
    Known{E_OUTOFMEMORY, 7, "Out of memory"},
    Known{DISP_E_BADINDEX, 9, "Subscript out of range"},
    Known{DISP_E_TYPEMISMATCH, 13, "Type mismatch"},
    Known{REGDB_E_CLASSNOTREG, 429, "ActiveX component can't create object"},
    Known{CO_E_CLASSSTRING, 429, "ActiveX component can't create object"},
    Known{DISP_E_UNKNOWNNAME, 438, "Object doesn't support this property or method"},
    Known{DISP_E_MEMBERNOTFOUND, 438, "Object doesn't support this property or method"},
    Known{E_NOTIMPL, 445, "Object doesn't support this action"},
    Known{DISP_E_PARAMNOTFOUND, 448, "Named argument not found"},
    Known{DISP_E_PARAMNOTOPTIONAL, 449, "Argument not optional"},
    Known{DISP_E_BADPARAMCOUNT, 450, "Wrong number of arguments or invalid property assignment"},
    Known{HRESULT_FROM_WIN32(RPC_S_SERVER_UNAVAILABLE), 462,
          "The remote server machine does not exist or is unavailable"},
};

const Known* known(HRESULT result) {
  const auto* found = std::find_if(KnownResults.begin(), KnownResults.end(),
                                   [result](const Known& each) { return each.result == result; });
  return found == KnownResults.end() ? nullptr : found;
}

std::int32_t number(HRESULT result) {
  if (const Known* standard = known(result)) return standard->number;
  // Objects raise the host language's numbers in this facility.
  return HRESULT_FACILITY(result) == FACILITY_CONTROL ? HRESULT_CODE(result) : result;
}

std::string systemText(HRESULT result) {
  std::array<wchar_t, 512> buffer{};
  const DWORD length = FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr,
                                      static_cast<DWORD>(result), 0, buffer.data(),
                                      static_cast<DWORD>(buffer.size()), nullptr);
  std::string text = narrow({buffer.data(), length});
  text.erase(std::find_if(text.rbegin(), text.rend(), [](char c) { return c > ' '; }).base(), text.end());
  if (!text.empty()) return text;
  std::array<char, 32> hex{};
  (void)std::snprintf(hex.data(), hex.size(), "error 0x%08lX", static_cast<unsigned long>(result));
  return hex.data();
}

std::string description(HRESULT result, std::string_view what) {
  const Known* standard = known(result);
  return std::string(what) + ": " + (standard != nullptr ? standard->text : systemText(result));
}

/// The text, which is freed.
std::string taken(BSTR& text) {
  const std::string utf8 = text == nullptr ? std::string() : narrow({text, SysStringLen(text)});
  SysFreeString(text);
  text = nullptr;
  return utf8;
}

}  // namespace

void raise(HRESULT result, std::string_view what) {
  throw basic::Error(number(result), basic::DefaultSource, description(result, what));
}

void raise(HRESULT result, EXCEPINFO& said, std::string_view what) {
  if (result == DISP_E_EXCEPTION && said.pfnDeferredFillIn != nullptr) said.pfnDeferredFillIn(&said);
  const std::string source = taken(said.bstrSource);
  const std::string text = taken(said.bstrDescription);
  taken(said.bstrHelpFile);
  if (result != DISP_E_EXCEPTION) raise(result, what);
  const std::int32_t raised = said.scode != 0 ? number(said.scode) : static_cast<std::int32_t>(said.wCode);
  throw basic::Error(raised, source.empty() ? basic::DefaultSource : source,
                     text.empty() ? description(said.scode != 0 ? said.scode : result, what) : text);
}

}  // namespace windows::com
