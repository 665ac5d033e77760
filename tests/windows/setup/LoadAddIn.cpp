// Creates the add-in by the entries that the presentation program finds it by, and prints where its module
// lies.

#include <array>
#include <cstdio>
#include <string>

#include "windows/com/Failure.h"
#include "windows/com/Ptr.h"
#include "windows/com/Text.h"
#include "windows/support/Windows.h"

namespace {

using windows::com::check;
using windows::com::Ptr;

/// An entry of the user's classes. Windows looks there by itself; Wine 8 does not.
std::wstring entry(const std::wstring& key) {
  std::array<wchar_t, 1024> text{};
  auto size = static_cast<DWORD>(sizeof text);
  const LSTATUS result = RegGetValueW(HKEY_CURRENT_USER, (L"Software\\Classes\\" + key).c_str(), nullptr,
                                      RRF_RT_REG_SZ, nullptr, text.data(), &size);
  check(HRESULT_FROM_WIN32(static_cast<DWORD>(result)), windows::com::narrow(key));
  return text.data();
}

void load() {
  const std::wstring id = entry(L"LF2000.Connect\\CLSID");
  const std::wstring file = entry(L"CLSID\\" + id + L"\\InprocServer32");
  CLSID connect;
  check(CLSIDFromString(id.c_str(), &connect), "CLSID");
  HMODULE module = CoLoadLibrary(const_cast<wchar_t*>(file.c_str()), FALSE);
  if (module == nullptr) check(HRESULT_FROM_WIN32(GetLastError()), windows::com::narrow(file));
  const auto getClassObject =
      windows::test::exported<decltype(&DllGetClassObject)>(module, "DllGetClassObject");

  Ptr<IClassFactory> factory;
  check(getClassObject(connect, IID_IClassFactory, reinterpret_cast<void**>(factory.out())), "class");
  Ptr<IDispatch> addIn;
  check(factory->CreateInstance(nullptr, IID_IDispatch, reinterpret_cast<void**>(addIn.out())), "object");
  wchar_t name[] = L"OnStartupComplete";
  LPOLESTR names[] = {name};
  DISPID member = DISPID_UNKNOWN;
  check(addIn->GetIDsOfNames(IID_NULL, names, 1, LOCALE_NEUTRAL, &member), "OnStartupComplete");
  (void)std::printf("%s\n", windows::com::narrow(file).c_str());
}

}  // namespace

int main() {
  if (FAILED(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED))) return 1;
  int result = 0;
  try {
    load();
  } catch (const std::exception& error) {
    (void)std::printf("%s\n", error.what());
    result = 1;
  }
  CoUninitialize();
  return result;
}
