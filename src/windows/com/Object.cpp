// Calls of automation objects by name.

#include "windows/com/Object.h"

#include "basic/Error.h"
#include "windows/com/Failure.h"
#include "windows/com/Text.h"

namespace windows::com {
namespace {

/// Names and formats in English, whatever the user's language is.
constexpr LCID English = MAKELCID(MAKELANGID(LANG_ENGLISH, SUBLANG_ENGLISH_US), SORT_DEFAULT);

}  // namespace

std::string Class::describe(const wchar_t* member) const { return std::string(name_) + "." + narrow(member); }

DISPID Class::member(IDispatch& object, const wchar_t* name) {
  const auto found = members_.find(std::wstring_view(name));
  if (found != members_.end()) return found->second;
  auto* text = const_cast<wchar_t*>(name);
  DISPID id = DISPID_UNKNOWN;
  check(object.GetIDsOfNames(IID_NULL, &text, 1, English, &id), describe(name));
  members_.emplace(name, id);
  return id;
}

Object Object::create(const wchar_t* progId, Class& type) {
  CLSID id;
  check(CLSIDFromProgID(progId, &id), type.name());
  Ptr<IDispatch> object;
  check(CoCreateInstance(id, nullptr, CLSCTX_INPROC_SERVER | CLSCTX_LOCAL_SERVER, IID_IDispatch,
                         reinterpret_cast<void**>(object.out())),
        type.name());
  return {std::move(object), type};
}

Variant Object::invoke(WORD kind, const wchar_t* member, VARIANT* reversed, std::size_t count) const {
  if (!dispatch_) basic::Raise(basic::RuntimeError::ObjectVariableNotSet);
  const Ptr<IDispatch> held = dispatch_;  // the call may let other handlers in
  DISPPARAMS parameters{reversed, nullptr, static_cast<UINT>(count), 0};
  DISPID newValue = DISPID_PROPERTYPUT;
  const bool isPut = (kind & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF)) != 0;
  if (isPut) {
    parameters.rgdispidNamedArgs = &newValue;
    parameters.cNamedArgs = 1;
  }
  Variant result;
  EXCEPINFO said{};
  const HRESULT failure = held->Invoke(class_->member(*held.get(), member), IID_NULL, English, kind,
                                       &parameters, isPut ? nullptr : result.out(), &said, nullptr);
  if (FAILED(failure)) raise(failure, said, class_->describe(member));
  return result;
}

Ptr<IDispatch> Object::required(const Variant& value, const wchar_t* member) const {
  Ptr<IDispatch> object = value.object();
  if (!object) {
    throw basic::Error(static_cast<std::int32_t>(basic::RuntimeError::ObjectVariableNotSet),
                       basic::DefaultSource, class_->describe(member) + " is Nothing");
  }
  return object;
}

}  // namespace windows::com
