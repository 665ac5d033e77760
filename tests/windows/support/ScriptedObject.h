#pragma once

#include <concepts>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include "windows/com/Counted.h"
#include "windows/com/Object.h"
#include "windows/com/Variant.h"
#include "windows/support/EventSource.h"

namespace support {

/// Of objects whose class is of no matter.
inline windows::com::Class anyClass{"Any"};
/// An object as a call hands it out.
inline windows::com::Variant handedOut(windows::com::Ptr<IDispatch> object) {
  return windows::com::Variant(windows::com::Object(std::move(object), anyClass));
}

/// An automation object whose members a test writes down. It counts how often a name is looked up.
class ScriptedObject final : public windows::com::Counted<IDispatch> {
 public:
  using Arguments = std::vector<windows::com::Variant>;

  /// What a member answers: a value, an object, or what a function of the arguments (or of none) says.
  class Member {
   public:
    template <typename Answer>
    requires(!std::same_as<Answer, Member>) Member(Answer answer)
        : run_([answer = std::move(answer)](const Arguments& arguments) {
            if constexpr (std::invocable<const Answer&, const Arguments&>) {
              return said([&] { return answer(arguments); });
            } else if constexpr (std::invocable<const Answer&>) {
              return said(answer);
            } else {
              return said([&] { return answer; });
            }
          }) {}
    windows::com::Variant operator()(const Arguments& arguments) const { return run_(arguments); }

   private:
    template <typename Say>
    static windows::com::Variant said(const Say& say) {
      using Said = decltype(say());
      if constexpr (std::is_void_v<Said>) {
        say();
        return {};
      } else if constexpr (std::same_as<Said, windows::com::Ptr<IDispatch>>) {
        return handedOut(say());
      } else {
        return windows::com::Variant(say());
      }
    }
    std::function<windows::com::Variant(const Arguments&)> run_;
  };

  explicit ScriptedObject(std::vector<std::pair<std::wstring, Member>> members)
      : Counted({IID_IUnknown, IID_IDispatch}), members_(std::move(members)) {}

  /// Without a reference of the caller's: who wraps it has the only one.
  static windows::com::Ptr<IDispatch> make(std::vector<std::pair<std::wstring, Member>> members) {
    return windows::com::Ptr<IDispatch>::taking(new ScriptedObject(std::move(members)));
  }

  /// Makes it a source of these events.
  EventSource& withEvents(REFIID events) { return source_.emplace(*this, events); }

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override {
    if (source_ && iid == IID_IConnectionPointContainer) {
      *object = static_cast<IConnectionPointContainer*>(&*source_);
      AddRef();
      return S_OK;
    }
    return Counted::QueryInterface(iid, object);
  }
  HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR* names, UINT, LCID, DISPID* ids) override {
    ++lookups;
    *ids = idOf(*names);
    return find(*ids) == nullptr ? DISP_E_UNKNOWNNAME : S_OK;
  }
  HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID, WORD kind, DISPPARAMS* parameters,
                                   VARIANT* result, EXCEPINFO* said, UINT*) override {
    kinds.push_back(kind);
    if (FAILED(failure)) {
      if (failure == DISP_E_EXCEPTION) *said = exception;
      return failure;
    }
    Arguments arguments;
    for (UINT i = parameters->cArgs; i > 0; --i) {
      arguments.push_back(windows::com::Variant::copyOf(parameters->rgvarg[i - 1]));
    }
    const Member* member = find(id);
    if (member == nullptr) return DISP_E_MEMBERNOTFOUND;
    const windows::com::Variant value = (*member)(arguments);
    return result == nullptr ? S_OK : VariantCopy(result, const_cast<VARIANT*>(&value.raw()));
  }

  int lookups = 0;
  std::vector<WORD> kinds;
  /// What every call answers, if it is one.
  HRESULT failure = S_OK;
  EXCEPINFO exception{};

 private:
  /// A name has the same number in all objects, whatever else they have.
  static DISPID idOf(const std::wstring& name) {
    static std::map<std::wstring, DISPID> ids;
    return ids.emplace(name, static_cast<DISPID>(ids.size()) + 1).first->second;
  }
  [[nodiscard]] const Member* find(DISPID id) const {
    for (const auto& [name, member] : members_) {
      if (idOf(name) == id) return &member;
    }
    return nullptr;
  }

  std::optional<EventSource> source_;
  std::vector<std::pair<std::wstring, Member>> members_;
};

}  // namespace support
