#include "windows/platform/Module.h"

#include "windows/com/Text.h"
#include "windows/platform/Library.h"

namespace windows::platform {

namespace {

std::string file() {
  std::wstring path(MAX_PATH, L'\0');
  for (;;) {
    const DWORD length = ::GetModuleFileNameW(thisModule(), path.data(), static_cast<DWORD>(path.size()));
    if (length < path.size()) {
      path.resize(length);
      return com::narrow(path);
    }
    path.resize(path.size() * 2);
  }
}

}  // namespace

std::string Module::Title() const { return "Corvane Lumenfold 2000"; }

std::string Module::EXEName() const {
  std::string name = file();
  name.erase(0, name.find_last_of('\\') + 1);
  return name.substr(0, name.rfind('.'));
}

std::string Module::Path() const {
  const std::string path = file();
  return path.substr(0, path.find_last_of('\\'));
}

std::int32_t Module::Major() const { return LUMENFOLD_VERSION_MAJOR; }
std::int32_t Module::Minor() const { return LUMENFOLD_VERSION_MINOR; }
std::int32_t Module::Revision() const { return LUMENFOLD_VERSION_REVISION; }

std::string Module::Licences() const {
  return "Parts of the compiler's libraries are in it: GNU C++ Standard Library and GCC runtime library (GPL "
         "3 with the GCC Runtime Library Exception 3.1), MinGW-w64 runtime (public domain, ZPL 2.1), "
         "winpthreads (MIT; BSD, 3 clauses). licences.txt, which was installed with it, tells more.";
}

}  // namespace windows::platform
