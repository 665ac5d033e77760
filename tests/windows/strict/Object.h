#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "windows/com/Counted.h"
#include "windows/strict/Arguments.h"

/// A host's objects as automation knows them, strict: what a test's subject calls must be there under that
/// name, be called as declared, with as many arguments of those types, and on the one thread. Whatever is not
/// so fails the test.
namespace strict {

using windows::com::Ptr;
using windows::com::Variant;

/// How a member may be called.
enum Use : WORD {
  Call = DISPATCH_METHOD,
  Get = DISPATCH_PROPERTYGET,
  Put = DISPATCH_PROPERTYPUT,
  PutRef = DISPATCH_PROPERTYPUTREF
};

/// A member of a class; one that can be read and let has two.
template <typename Target>
struct Member {
  const wchar_t* name;
  Use use;
  std::vector<Parameter> parameters;
  std::function<Variant(const std::shared_ptr<Target>&, const Arguments&)> run;
};

/// Where objects of a class raise events.
template <typename Target>
struct EventSource {
  IID events;
  std::function<Ptr<IConnectionPoint>(const std::shared_ptr<Target>&)> make;
};

/// Whose objects they are. What is the machine's is no part of the host: calls of it are not counted, and
/// none is made to fail.
enum class Role { Host, Machine };

/// One class of an object model.
template <typename Target>
struct Class {
  const char* name;
  std::vector<Member<Target>> members;
  std::vector<EventSource<Target>> events = {};
  Role role = Role::Host;
};

/// A call that fails: the one of this number, counted from 1, and no other.
struct Fault {
  long call = 0;
  HRESULT result = S_OK;
};

/// What all objects have in common.
struct World {
  /// Calls so far.
  long calls = 0;
  /// Objects that somebody refers to.
  long objects = 0;
  Fault fault;
};
World& world();

class Object : public windows::com::Counted<IDispatch> {
 public:
  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) final;
  HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) final;
  HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) final { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID, DISPID* ids) final;
  HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID, WORD kind, DISPPARAMS* parameters,
                                   VARIANT* result, EXCEPINFO* said, UINT* wrongArgument) final;

  /// The object of this target and class that lives already, with a reference more; null if there is none.
  [[nodiscard]] static Ptr<IDispatch> living(const void* target, const void* type);

 protected:
  /// Both tell objects from one another.
  Object(const void* target, const void* type);
  ~Object() override;

  [[nodiscard]] virtual std::string className() const = 0;
  [[nodiscard]] virtual Role role() const = 0;
  [[nodiscard]] virtual std::size_t memberCount() const = 0;
  [[nodiscard]] virtual const wchar_t* memberName(std::size_t place) const = 0;
  [[nodiscard]] virtual Use memberUse(std::size_t place) const = 0;
  [[nodiscard]] virtual const std::vector<Parameter>& parametersOf(std::size_t place) const = 0;
  virtual Variant run(std::size_t place, const Arguments& arguments) = 0;
  [[nodiscard]] virtual bool hasEvents() const = 0;
  [[nodiscard]] virtual Ptr<IConnectionPoint> makePoint(REFIID events) = 0;

 private:
  class Container;
  [[nodiscard]] bool isHere(const char* what) const;
  /// A member's place by the number of its name and the way it is called; memberCount() for none.
  [[nodiscard]] std::size_t find(DISPID id, WORD kind) const;
  [[nodiscard]] std::string described(std::size_t place) const;

  std::pair<const void*, const void*> identity_;
  std::vector<std::pair<IID, Ptr<IConnectionPoint>>> points_;
};

template <typename Target>
class ObjectOf final : public Object {
 public:
  ObjectOf(std::shared_ptr<Target> target, const Class<Target>& type)
      : Object(target.get(), &type), target_(std::move(target)), type_(type) {}
  [[nodiscard]] const std::shared_ptr<Target>& target() const { return target_; }

 private:
  ~ObjectOf() override = default;
  std::string className() const override { return type_.name; }
  Role role() const override { return type_.role; }
  std::size_t memberCount() const override { return type_.members.size(); }
  const wchar_t* memberName(std::size_t place) const override { return type_.members[place].name; }
  Use memberUse(std::size_t place) const override { return type_.members[place].use; }
  const std::vector<Parameter>& parametersOf(std::size_t place) const override {
    return type_.members[place].parameters;
  }
  Variant run(std::size_t place, const Arguments& arguments) override {
    return type_.members[place].run(target_, arguments);
  }
  bool hasEvents() const override { return !type_.events.empty(); }
  Ptr<IConnectionPoint> makePoint(REFIID events) override {
    for (const auto& source : type_.events) {
      if (source.events == events) return source.make(target_);
    }
    return {};
  }

  std::shared_ptr<Target> target_;
  const Class<Target>& type_;
};

/// The one automation object of a target; Nothing for a null one.
template <typename Target>
Ptr<IDispatch> dispatchOf(const std::shared_ptr<Target>& target, const Class<Target>& type) {
  if (!target) return {};
  Ptr<IDispatch> living = Object::living(target.get(), &type);
  return living ? living : Ptr<IDispatch>::taking(new ObjectOf<Target>(target, type));
}

/// As a call hands it out.
[[nodiscard]] Variant handedOut(Ptr<IDispatch> object);

/// What stands behind an object that was handed in; null for Nothing and for a foreign one.
template <typename Target>
std::shared_ptr<Target> targetOf(const Variant& value) {
  const Ptr<IDispatch> object = value.object();
  auto* own = dynamic_cast<ObjectOf<Target>*>(object.get());
  return own == nullptr ? nullptr : own->target();
}

}  // namespace strict
