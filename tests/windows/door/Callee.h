#pragma once

#include <vector>

#include "windows/com/Counted.h"
#include "windows/com/Guard.h"
#include "windows/com/Variant.h"

namespace door {

/// What the module hands out to be called as member 0. An error of it answers Empty.
class Callee : public windows::com::Counted<IDispatch> {
 public:
  HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override {
    return DISP_E_UNKNOWNNAME;
  }
  HRESULT STDMETHODCALLTYPE Invoke(DISPID, REFIID, LCID, WORD, DISPPARAMS* parameters, VARIANT* result,
                                   EXCEPINFO*, UINT*) override {
    using windows::com::Variant;
    return windows::com::guarded([&] {
      std::vector<Variant> arguments;
      for (UINT i = parameters->cArgs; i > 0; --i) {
        arguments.push_back(Variant::copyOf(parameters->rgvarg[i - 1]));
      }
      const Variant answer = called(arguments);
      if (result != nullptr) VariantCopy(result, const_cast<VARIANT*>(&answer.raw()));
    });
  }

 protected:
  Callee() : Counted({IID_IUnknown, IID_IDispatch}) {}

 private:
  virtual windows::com::Variant called(const std::vector<windows::com::Variant>& arguments) = 0;
};

}  // namespace door
