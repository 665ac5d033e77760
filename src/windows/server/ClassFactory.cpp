#include "windows/server/ClassFactory.h"

#include "windows/com/Guard.h"
#include "windows/com/Ptr.h"

namespace windows::server {

HRESULT ClassFactory::CreateInstance(IUnknown* outer, REFIID iid, void** object) {
  if (object == nullptr) return E_POINTER;
  *object = nullptr;
  if (outer != nullptr) return CLASS_E_NOAGGREGATION;
  return com::answered([&] {
    const auto addIn = com::Ptr<AddIn>::taking(new AddIn(make_));
    return addIn->QueryInterface(iid, object);
  });
}

HRESULT ClassFactory::LockServer(BOOL lock) {
  com::liveObjects += lock != FALSE ? 1 : -1;
  return S_OK;
}

}  // namespace windows::server
