#pragma once

#include "windows/com/Counted.h"
#include "windows/server/AddIn.h"

namespace windows::server {

/// Makes add-in objects. With one reference, its maker's.
class ClassFactory final : public com::Counted<IClassFactory> {
 public:
  explicit ClassFactory(MakeSurroundings make)
      : Counted({IID_IUnknown, IID_IClassFactory}), make_(std::move(make)) {}

  HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown* outer, REFIID iid, void** object) override;
  HRESULT STDMETHODCALLTYPE LockServer(BOOL lock) override;

 private:
  MakeSurroundings make_;
};

}  // namespace windows::server
