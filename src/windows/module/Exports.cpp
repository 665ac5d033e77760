// What the module exports: the class of the add-in, and its registration.

#include <cstddef>
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
  return windows::com::answered([&] {
    const auto factory = windows::com::Ptr<ClassFactory>::taking(
        new ClassFactory([] { return windows::server::makeWindowsSurroundings(); }));
    return factory->QueryInterface(iid, object);
  });
}

STDAPI DllCanUnloadNow() { return windows::com::liveObjects == 0 ? S_OK : S_FALSE; }

STDAPI DllRegisterServer() {
  return windows::com::answered([] { return windows::server::enter(moduleFile()); });
}

STDAPI DllUnregisterServer() { return windows::com::answered(windows::server::remove); }

/// "user" is all that it can do.
STDAPI DllInstall(BOOL install, LPCWSTR /*commandLine*/) {
  return install != FALSE ? DllRegisterServer() : DllUnregisterServer();
}

}  // extern "C"
