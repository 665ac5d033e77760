// What the module exports: the class of the add-in, and its registration.

#include <cstddef>
#include <new>
#include <string>

#include "windows/com/Counted.h"
#include "windows/com/Guard.h"
#include "windows/com/Ptr.h"
#include "windows/platform/Library.h"
#include "windows/server/ClassFactory.h"
#include "windows/server/Registration.h"
#include "windows/server/WindowsSurroundings.h"

namespace {

std::wstring moduleFile() {
  constexpr std::size_t LongestPath = 32767;
  std::wstring file(LongestPath, L'\0');
  file.resize(
      GetModuleFileNameW(windows::platform::thisModule(), file.data(), static_cast<DWORD>(file.size())));
  return file;
}

/// No exception leaves the module.
template <typename Body>
HRESULT answered(Body&& body) noexcept {
  try {
    return body();
  } catch (const std::bad_alloc&) {
    return E_OUTOFMEMORY;
  } catch (...) {
    return E_UNEXPECTED;
  }
}

}  // namespace

extern "C" {

BOOL WINAPI DllMain(HINSTANCE module, DWORD reason, LPVOID processEnds) {
  if (reason == DLL_PROCESS_ATTACH) DisableThreadLibraryCalls(module);
  if (reason == DLL_PROCESS_DETACH && processEnds != nullptr) windows::com::isProcessEnding = true;
  return TRUE;
}

STDAPI DllGetClassObject(REFCLSID classId, REFIID iid, LPVOID* object) {
  using windows::server::ClassFactory;
  if (object == nullptr) return E_POINTER;
  *object = nullptr;
  if (classId != windows::server::CLSID_Connect) return CLASS_E_CLASSNOTAVAILABLE;
  return answered([&] {
    const auto factory = windows::com::Ptr<ClassFactory>::taking(
        new ClassFactory([] { return windows::server::makeWindowsSurroundings(); }));
    return factory->QueryInterface(iid, object);
  });
}

STDAPI DllCanUnloadNow() { return windows::com::liveObjects == 0 ? S_OK : S_FALSE; }

STDAPI DllRegisterServer() {
  return answered([] { return windows::server::enter(moduleFile()); });
}

STDAPI DllUnregisterServer() { return answered(windows::server::remove); }

/// "user" is all that it can do.
STDAPI DllInstall(BOOL install, LPCWSTR /*commandLine*/) {
  return install != FALSE ? DllRegisterServer() : DllUnregisterServer();
}

}  // extern "C"
