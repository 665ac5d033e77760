// Calls of strict objects: found, checked, made to fail, run.

#include "windows/strict/Object.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <exception>
#include <map>

#include "basic/Error.h"
#include "windows/com/Bstr.h"
#include "windows/com/Text.h"

namespace strict {
namespace {

/// The one thread that may call.
const DWORD Home = GetCurrentThreadId();

std::map<std::pair<const void*, const void*>, Object*>& known() {
  static std::map<std::pair<const void*, const void*>, Object*> objects;
  return objects;
}

/// Names of members by their numbers, from 1. All classes agree on them, as those do that are called alike (a
/// shape of a slide and one of a cell).
std::vector<std::wstring>& numbered() {
  static std::vector<std::wstring> names;
  return names;
}

DISPID numberOf(const wchar_t* name) {
  auto& names = numbered();
  const auto found = std::find_if(names.begin(), names.end(),
                                  [&](const auto& each) { return lstrcmpiW(each.c_str(), name) == 0; });
  if (found != names.end()) return static_cast<DISPID>(found - names.begin()) + 1;
  names.emplace_back(name);
  return static_cast<DISPID>(names.size());
}

bool is(const VARIANT& value, Kind kind) {
  const VARTYPE type = value.vt;
  switch (kind) {
    case Kind::Text:
      return type == VT_BSTR;
    case Kind::Number:
      return type == VT_I4 || type == VT_I2;
    case Kind::Real:
      return type == VT_R8 || type == VT_R4 || type == VT_I4;
    case Kind::Flag:
      return type == VT_BOOL;
    case Kind::TriState:
      return type == VT_I4 && (value.lVal == 0 || value.lVal == -1);
    case Kind::TextOrNumber:
      return type == VT_BSTR || type == VT_I4;
    case Kind::Numbers:
      return type == (VT_ARRAY | VT_I4) || type == (VT_ARRAY | VT_VARIANT);
    case Kind::Array:
      return type == (VT_ARRAY | VT_VARIANT);
    case Kind::Object:
      return type == VT_DISPATCH;
    case Kind::Any:
      return true;
  }
  return false;
}

HRESULT raise(EXCEPINFO* said, const basic::Error& error) {
  if (said == nullptr) return DISP_E_EXCEPTION;
  *said = {};
  // Numbers of the host language go in a facility of their own.
  const bool isNumber = error.number > 0 && error.number <= 0xFFFF;
  said->scode = isNumber ? MAKE_HRESULT(SEVERITY_ERROR, FACILITY_CONTROL, error.number) : error.number;
  said->bstrSource = windows::com::Bstr(error.source).release();
  said->bstrDescription = windows::com::Bstr(error.description).release();
  return DISP_E_EXCEPTION;
}

}  // namespace

World& world() {
  static World the;
  return the;
}

HRESULT Arguments::check(const std::vector<Parameter>& declared) const {
  if (count() > declared.size()) return DISP_E_BADPARAMCOUNT;
  for (std::size_t i = 0; i < declared.size(); ++i) {
    if (isMissing(i)) {
      if (!declared[i].isOptional) return i < count() ? DISP_E_PARAMNOTOPTIONAL : DISP_E_BADPARAMCOUNT;
    } else if (!is(raw(i), declared[i].kind)) {
      return DISP_E_TYPEMISMATCH;
    }
  }
  return S_OK;
}

Variant handedOut(Ptr<IDispatch> object) {
  Variant variant;
  VARIANT* raw = variant.out();
  raw->vt = VT_DISPATCH;
  raw->pdispVal = object.release();
  return variant;
}

/// Knows the places where one object raises events.
class Object::Container final : public windows::com::Counted<IConnectionPointContainer> {
 public:
  explicit Container(Object& owner)
      : Counted({IID_IConnectionPointContainer}), owner_(Ptr<Object>::sharing(&owner)) {}
  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override {
    if (iid != IID_IConnectionPointContainer) return owner_->QueryInterface(iid, object);
    return Counted::QueryInterface(iid, object);
  }
  HRESULT STDMETHODCALLTYPE EnumConnectionPoints(IEnumConnectionPoints**) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE FindConnectionPoint(REFIID events, IConnectionPoint** point) override {
    auto& points = owner_->points_;
    auto found =
        std::find_if(points.begin(), points.end(), [&](const auto& each) { return each.first == events; });
    if (found == points.end()) {
      auto made = owner_->makePoint(events);
      if (!made) {
        ADD_FAILURE() << owner_->className() << " has no such events";
        return CONNECT_E_NOCONNECTION;
      }
      found = points.emplace(points.end(), events, std::move(made));
    }
    *point = Ptr<IConnectionPoint>(found->second).release();
    return S_OK;
  }

 private:
  Ptr<Object> owner_;
};

Object::Object(const void* target, const void* type)
    : Counted({IID_IUnknown, IID_IDispatch}), identity_(target, type) {
  known()[identity_] = this;
  ++world().objects;
}

Object::~Object() {
  known().erase(identity_);
  --world().objects;
}

Ptr<IDispatch> Object::living(const void* target, const void* type) {
  const auto found = known().find({target, type});
  return found == known().end() ? Ptr<IDispatch>() : Ptr<IDispatch>::sharing(found->second);
}

HRESULT Object::QueryInterface(REFIID iid, void** object) {
  if (iid != IID_IConnectionPointContainer || !hasEvents()) return Counted::QueryInterface(iid, object);
  if (!isHere("events")) return RPC_E_WRONG_THREAD;
  *object = static_cast<IConnectionPointContainer*>(new Container(*this));
  return S_OK;
}

HRESULT Object::GetTypeInfoCount(UINT* count) {
  *count = 0;
  return S_OK;
}

bool Object::isHere(const char* what) const {
  if (GetCurrentThreadId() == Home) return true;
  ADD_FAILURE() << className() << "." << what << " was called from another thread";
  return false;
}

HRESULT Object::GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID, DISPID* ids) {
  if (!isHere("GetIDsOfNames")) return RPC_E_WRONG_THREAD;
  ids[0] = DISPID_UNKNOWN;
  for (std::size_t i = 0; count == 1 && i < memberCount(); ++i) {
    if (lstrcmpiW(memberName(i), names[0]) != 0) continue;
    ids[0] = numberOf(memberName(i));
    return S_OK;
  }
  ADD_FAILURE() << className() << " has no member " << windows::com::narrow(names[0]);
  return DISP_E_UNKNOWNNAME;
}

std::size_t Object::find(DISPID id, WORD kind) const {
  const auto named = static_cast<std::size_t>(id) - 1;
  if (named >= numbered().size()) return memberCount();
  for (std::size_t i = 0; i < memberCount(); ++i) {
    if ((memberUse(i) & kind) != 0 && lstrcmpiW(memberName(i), numbered()[named].c_str()) == 0) return i;
  }
  return memberCount();
}

std::string Object::described(std::size_t place) const {
  return className() + "." + windows::com::narrow(memberName(place));
}

HRESULT Object::Invoke(DISPID id, REFIID, LCID, WORD kind, DISPPARAMS* parameters, VARIANT* result,
                       EXCEPINFO* said, UINT*) {
  if (!isHere("Invoke")) return RPC_E_WRONG_THREAD;
  const std::size_t place = find(id, kind);
  if (place == memberCount()) {
    ADD_FAILURE() << className() << ": member " << id << " cannot be called in the way " << kind;
    return DISP_E_MEMBERNOTFOUND;
  }
  const Arguments arguments(*parameters);
  const HRESULT wrong = arguments.check(parametersOf(place));
  if (FAILED(wrong)) {
    ADD_FAILURE() << described(place) << " with " << arguments.count()
                  << " arguments that are not those declared";
    return wrong;
  }
  if (role() == Role::Host && ++world().calls == world().fault.call) {
    if (world().fault.result != DISP_E_EXCEPTION) return world().fault.result;
    return raise(said,
                 basic::Error(basic::AdapterError, "test host", described(place) + " was made to fail"));
  }
  const Ptr<IDispatch> held = Ptr<IDispatch>::sharing(this);
  try {
    Variant value = run(place, arguments);
    if (result != nullptr) {
      VariantInit(result);
      return VariantCopy(result, const_cast<VARIANT*>(&value.raw()));
    }
    return S_OK;
  } catch (const basic::Error& error) {
    return raise(said, error);
  } catch (const std::exception& error) {
    return raise(said,
                 basic::Error(basic::AdapterError, "test host", described(place) + ": " + error.what()));
  }
}

}  // namespace strict
