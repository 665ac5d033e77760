#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <utility>

#include "windows/com/Ptr.h"
#include "windows/com/Variant.h"

namespace windows::com {

/// A class of an object model. Its objects agree on the numbers of their members, so that each is looked up
/// once.
class Class {
 public:
  /// The name is for messages.
  explicit Class(const char* name) : name_(name) {}
  Class(const Class&) = delete;
  Class& operator=(const Class&) = delete;

  [[nodiscard]] const char* name() const { return name_; }
  /// The number of a member. Raises 438 for one that the object does not have.
  [[nodiscard]] DISPID member(IDispatch& object, const wchar_t* name);
  /// "Shape.TextFrame"
  [[nodiscard]] std::string describe(const wchar_t* member) const;

 private:
  const char* name_;
  std::map<std::wstring, DISPID, std::less<>> members_;
};

/// An object that is called late bound (IDispatch). Arguments and results are converted as com::Variant says,
/// failures thrown as com::raise does.
class Object {
 public:
  /// Nothing.
  Object() = default;
  Object(Ptr<IDispatch> dispatch, Class& type) : dispatch_(std::move(dispatch)), class_(&type) {}
  /// CreateObject: raises 429 where the component is not there.
  [[nodiscard]] static Object create(const wchar_t* progId, Class& type);

  [[nodiscard]] const Ptr<IDispatch>& dispatch() const { return dispatch_; }
  explicit operator bool() const { return static_cast<bool>(dispatch_); }

  /// A property's value, or what a method of a collection hands out (Item).
  template <typename... Arguments>
  Variant get(const wchar_t* member, const Arguments&... arguments) const {
    return pass(DISPATCH_PROPERTYGET | DISPATCH_METHOD, member, arguments...);
  }
  template <typename... Arguments>
  Variant call(const wchar_t* member, const Arguments&... arguments) const {
    return pass(DISPATCH_METHOD, member, arguments...);
  }
  /// The last argument is the new value, those before it name the place.
  template <typename... Arguments>
  void put(const wchar_t* member, const Arguments&... arguments) const {
    pass(DISPATCH_PROPERTYPUT, member, arguments...);
  }
  /// Lets a property refer to another object (Set).
  void set(const wchar_t* member, const Object& object) const {
    pass(DISPATCH_PROPERTYPUTREF, member, object);
  }

  template <typename... Arguments>
  [[nodiscard]] std::string text(const wchar_t* member, const Arguments&... arguments) const {
    return get(member, arguments...).text();
  }
  template <typename... Arguments>
  [[nodiscard]] std::int32_t number(const wchar_t* member, const Arguments&... arguments) const {
    return get(member, arguments...).number();
  }
  [[nodiscard]] double real(const wchar_t* member) const { return get(member).real(); }
  [[nodiscard]] bool flag(const wchar_t* member) const { return get(member).flag(); }
  /// The object behind a property; raises 91 where there is none.
  template <typename... Arguments>
  [[nodiscard]] Object object(Class& type, const wchar_t* member, const Arguments&... arguments) const {
    return {required(get(member, arguments...), member), type};
  }

 private:
  template <typename... Arguments>
  Variant pass(WORD kind, const wchar_t* member, const Arguments&... arguments) const {
    return passAll(kind, member, asVariant(arguments)...);
  }
  static const Variant& asVariant(const Variant& argument) { return argument; }
  template <typename Argument>
  static Variant asVariant(const Argument& argument) {
    return Variant(argument);
  }
  template <typename... Variants>
  Variant passAll(WORD kind, const wchar_t* member, const Variants&... variants) const {
    // They come reversed. These are views of values that live as long as the call.
    std::array<VARIANT, sizeof...(Variants)> reversed;
    [[maybe_unused]] auto place = reversed.rbegin();
    ((*place++ = variants.raw()), ...);
    return invoke(kind, member, reversed.data(), reversed.size());
  }
  Variant invoke(WORD kind, const wchar_t* member, VARIANT* reversed, std::size_t count) const;
  [[nodiscard]] Ptr<IDispatch> required(const Variant& value, const wchar_t* member) const;

  Ptr<IDispatch> dispatch_;
  Class* class_ = nullptr;
};

}  // namespace windows::com
