#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include "windows/strict/Classes.h"

/// Lines of the tables of classes.
namespace strict {

/// MsoTriState.
[[nodiscard]] inline Variant triState(bool value) { return std::int32_t{value ? -1 : 0}; }

inline Variant asResult(Variant value) { return value; }
inline Variant asResult(Ptr<IDispatch> object) { return handedOut(std::move(object)); }
template <typename Target>
Variant asResult(const std::shared_ptr<Target>& target) {
  return given(target);
}
template <typename Value>
requires std::is_enum_v<Value> Variant asResult(Value value) { return static_cast<std::int32_t>(value); }
template <typename Value>
requires(!std::is_enum_v<Value> && std::is_constructible_v<Variant, Value>) Variant
    asResult(const Value& value) {
  return Variant(value);
}

/// What can be called with these arguments; the function takes the target, by pointer, and the arguments.
template <typename Target, typename Function>
Member<Target> member(const wchar_t* name, Use use, std::vector<Parameter> parameters, Function run) {
  return {name, use, std::move(parameters),
          [run](const std::shared_ptr<Target>& target, const Arguments& arguments) -> Variant {
            if constexpr (std::is_void_v<decltype(run(target, arguments))>) {
              run(target, arguments);
              return {};
            } else {
              return asResult(run(target, arguments));
            }
          }};
}
/// A property's value; the function takes the target.
template <typename Target, typename Function>
Member<Target> get(const wchar_t* name, Function read) {
  return member<Target>(name, Get, {}, [read](const auto& target, const Arguments&) { return read(target); });
}
template <typename Target, typename Function>
Member<Target> put(const wchar_t* name, Kind kind, Function write) {
  return member<Target>(name, Put, {kind}, write);
}
/// A method without arguments.
template <typename Target, typename Function>
Member<Target> action(const wchar_t* name, Function act) {
  return member<Target>(name, Call, {}, [act](const auto& target, const Arguments&) { return act(target); });
}
template <typename Target, typename Function>
Member<Target> call(const wchar_t* name, std::vector<Parameter> parameters, Function run) {
  return member<Target>(name, Call, std::move(parameters), run);
}

/// A collection that was made for one call.
template <typename Item>
struct List {
  std::vector<std::shared_ptr<Item>> items;
};

template <typename Item>
Ptr<IDispatch> listOf(const Class<List<Item>>& type, std::vector<std::shared_ptr<Item>> items) {
  return dispatchOf(std::make_shared<List<Item>>(List<Item>{std::move(items)}), type);
}

/// "Count" and "Item", from 1.
template <typename Item>
Class<List<Item>> listClass(const char* name) {
  using Target = List<Item>;
  return {name,
          {get<Target>(L"Count", [](const auto& it) { return static_cast<std::int32_t>(it->items.size()); }),
           call<Target>(L"Item", {Kind::Number}, [](const auto& it, const Arguments& arguments) {
             return it->items.at(static_cast<std::size_t>(arguments.number(0)) - 1);
           })}};
}

}  // namespace strict
