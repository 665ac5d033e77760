#include "windows/strict/Registered.h"

#include <array>
#include <utility>

#include "basic/Error.h"
#include "windows/com/Failure.h"

namespace strict {
namespace {

class Factory final : public windows::com::Counted<IClassFactory> {
 public:
  explicit Factory(Registered::Make make)
      : Counted({IID_IUnknown, IID_IClassFactory}), make_(std::move(make)) {}
  HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown* outer, REFIID iid, void** object) override {
    if (outer != nullptr) return CLASS_E_NOAGGREGATION;
    try {
      return make_()->QueryInterface(iid, object);
    } catch (const basic::Error&) {
      return E_FAIL;
    }
  }
  HRESULT STDMETHODCALLTYPE LockServer(BOOL) override { return S_OK; }

 private:
  Registered::Make make_;
};

}  // namespace

Registered::Registered(std::wstring progId, const CLSID& id, Make make) : key_(std::move(progId)) {
  CLSID known;
  if (SUCCEEDED(CLSIDFromProgID(key_.c_str(), &known))) {
    key_.clear();  // the system has it, under the same number
  } else {
    // Not below the user: Wine looks up no classes there.
    std::array<wchar_t, 39> text{};  // braces, 36 characters, NUL
    StringFromGUID2(id, text.data(), static_cast<int>(text.size()));
    RegSetKeyValueW(HKEY_CLASSES_ROOT, (key_ + L"\\CLSID").c_str(), nullptr, REG_SZ, text.data(),
                    static_cast<DWORD>(sizeof text));
  }
  const auto factory = Ptr<IClassFactory>::taking(new Factory(std::move(make)));
  windows::com::check(
      CoRegisterClassObject(id, factory.get(), CLSCTX_INPROC_SERVER, REGCLS_MULTIPLEUSE, &cookie_),
      "CoRegisterClassObject");
}

Registered::~Registered() {
  CoRevokeClassObject(cookie_);
  if (!key_.empty()) RegDeleteTreeW(HKEY_CLASSES_ROOT, key_.c_str());
}

}  // namespace strict
