#pragma once

#include <concepts>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

#include "windows/strict/Classes.h"

/// Tables of classes. Arguments and results of a port's members become those of automation by their types.
namespace strict {

/// MsoTriState.
[[nodiscard]] inline Variant triState(bool value) { return std::int32_t{value ? -1 : 0}; }

/// A collection that was made for one call.
template <typename Item>
struct List {
  std::vector<std::shared_ptr<Item>> items;
};

inline Variant asResult(Variant value) { return value; }
inline Variant asResult(Ptr<IDispatch> object) { return handedOut(std::move(object)); }
inline Variant asResult(std::int64_t number) { return static_cast<std::int32_t>(number); }
inline Variant asResult(basic::Date date) { return Variant(basic::Variant(date)); }
template <typename Target>
Variant asResult(const std::shared_ptr<Target>& target) {
  return given(target);
}
template <typename Item>
Variant asResult(std::vector<std::shared_ptr<Item>> items) {
  return given(std::make_shared<List<Item>>(List<Item>{std::move(items)}));
}
template <typename Value>
requires std::is_enum_v<Value> Variant asResult(Value value) { return static_cast<std::int32_t>(value); }
template <typename Value>
requires(!std::is_enum_v<Value> && std::is_constructible_v<Variant, Value>) Variant
    asResult(const Value& value) {
  return Variant(value);
}

/// An argument as a port takes it; the value of its type that is empty where it is left out.
template <typename Taken>
auto argument(const Arguments& arguments, std::size_t place) {
  using Value = std::decay_t<Taken>;
  using Held = std::conditional_t<std::same_as<Value, std::string_view>, std::string, Value>;
  if (arguments.isMissing(place)) return Held{};
  if constexpr (std::same_as<Held, bool>) {
    return arguments.flag(place);
  } else if constexpr (std::is_enum_v<Held> || std::is_integral_v<Held>) {
    return static_cast<Held>(arguments.number(place));
  } else if constexpr (std::is_floating_point_v<Held>) {
    return static_cast<Held>(arguments.real(place));
  } else if constexpr (std::same_as<Held, basic::Variant>) {
    return arguments.value(place);
  } else {
    return arguments.text(place);
  }
}

/// Calls a port's member with as many of the arguments as it takes.
template <typename Target, typename Member, typename... Taken>
Variant callMember(Target& target, Member run, const Arguments& arguments) {
  return [&]<std::size_t... Place>(std::index_sequence<Place...>)->Variant {
    if constexpr (std::is_void_v<decltype((target.*run)(argument<Taken>(arguments, Place)...))>) {
      (target.*run)(argument<Taken>(arguments, Place)...);
      return {};
    } else {
      return asResult((target.*run)(argument<Taken>(arguments, Place)...));
    }
  }
  (std::index_sequence_for<Taken...>());
}

/// A class, written down member by member. What a member does is a member of the target's or a function that
/// takes the target, by pointer, and maybe the arguments.
template <typename Target>
class Table {
 public:
  using TargetPtr = std::shared_ptr<Target>;

  explicit Table(const char* name, Role role = Role::Host) : written_{name, {}, {}, role} {}
  operator const Class<Target>&() const { return written_; }

  template <typename Result, typename Port>
  Table& get(const wchar_t* name, Result (Port::*read)() const) {
    return member(name, Get, {}, read);
  }
  template <typename Result, typename Port>
  Table& get(const wchar_t* name, Result (Port::*read)()) {
    return member(name, Get, {}, read);
  }
  template <std::invocable<TargetPtr> Function>
  Table& get(const wchar_t* name, Function read) {
    return member(name, Get, {}, read);
  }
  /// A property whose value needs an index.
  template <typename Result, typename Port, typename Index>
  Table& get(const wchar_t* name, Kind index, Result (Port::*read)(Index) const) {
    return member(name, Get, {index}, read);
  }
  template <typename Port>
  Table& triState(const wchar_t* name, bool (Port::*read)() const) {
    return get(name, [read](const TargetPtr& it) { return strict::triState(((*it).*read)()); });
  }

  template <typename Port, typename Value>
  Table& put(const wchar_t* name, Kind kind, void (Port::*write)(Value)) {
    return member(name, Put, {kind}, write);
  }
  template <std::invocable<TargetPtr, Arguments> Function>
  Table& put(const wchar_t* name, Kind kind, Function write) {
    return member(name, Put, {kind}, write);
  }

  /// What can be read and let.
  template <typename Result, typename Port, typename Value>
  Table& property(const wchar_t* name, Kind kind, Result (Port::*read)() const, void (Port::*write)(Value)) {
    if constexpr (std::same_as<Result, bool>) {
      if (kind == Kind::TriState) return triState(name, read).put(name, kind, write);
    }
    return get(name, read).put(name, kind, write);
  }

  template <typename Function>
  Table& call(const wchar_t* name, Function run) {
    return member(name, Call, {}, run);
  }
  template <typename Result, typename Port, typename... Taken>
  Table& call(const wchar_t* name, std::vector<Parameter> parameters, Result (Port::*run)(Taken...)) {
    return member(name, Call, std::move(parameters), run);
  }
  template <typename Result, typename Port, typename... Taken>
  Table& call(const wchar_t* name, std::vector<Parameter> parameters, Result (Port::*run)(Taken...) const) {
    return member(name, Call, std::move(parameters), run);
  }
  template <std::invocable<TargetPtr, Arguments> Function>
  Table& call(const wchar_t* name, std::vector<Parameter> parameters, Function run) {
    return member(name, Call, std::move(parameters), run);
  }
  /// "Count", and "Item" by name or number.
  Table& collection() {
    return get(L"Count", [](const TargetPtr& it) { return it->Count(); })
        .call(L"Item", {Kind::TextOrNumber}, [](const TargetPtr& it, const Arguments& arguments) {
          return arguments.isText(0) ? it->Item(arguments.text(0)) : it->Item(arguments.number(0));
        });
  }

  Table& raises(REFIID events, std::function<Ptr<IConnectionPoint>(const TargetPtr&)> make) {
    written_.events.push_back({events, std::move(make)});
    return *this;
  }

  template <typename Result, typename Port, typename... Taken>
  Table& member(const wchar_t* name, Use use, std::vector<Parameter> parameters,
                Result (Port::*run)(Taken...)) {
    return add(name, use, std::move(parameters), [run](const TargetPtr& it, const Arguments& arguments) {
      return callMember<Port, decltype(run), Taken...>(*it, run, arguments);
    });
  }
  template <typename Result, typename Port, typename... Taken>
  Table& member(const wchar_t* name, Use use, std::vector<Parameter> parameters,
                Result (Port::*run)(Taken...) const) {
    return add(name, use, std::move(parameters), [run](const TargetPtr& it, const Arguments& arguments) {
      return callMember<const Port, decltype(run), Taken...>(*it, run, arguments);
    });
  }
  template <typename Function>
  requires(!std::is_member_function_pointer_v<Function>) Table& member(const wchar_t* name, Use use,
                                                                       std::vector<Parameter> parameters,
                                                                       Function run) {
    return add(name, use, std::move(parameters),
               [run](const TargetPtr& it, const Arguments& arguments) -> Variant {
                 const auto result = [&] {
                   if constexpr (std::invocable<Function, const TargetPtr&>) {
                     return run(it);
                   } else {
                     return run(it, arguments);
                   }
                 };
                 if constexpr (std::is_void_v<decltype(result())>) {
                   result();
                   return {};
                 } else {
                   return asResult(result());
                 }
               });
  }

 private:
  Table& add(const wchar_t* name, Use use, std::vector<Parameter> parameters,
             std::function<Variant(const TargetPtr&, const Arguments&)> run) {
    written_.members.push_back({name, use, std::move(parameters), std::move(run)});
    return *this;
  }

  Class<Target> written_;
};

template <typename Item>
Class<List<Item>> describe(Tag<List<Item>>) {
  using Target = std::shared_ptr<List<Item>>;
  return Table<List<Item>>("Range")
      .get(L"Count", [](const Target& it) { return static_cast<std::int32_t>(it->items.size()); })
      .call(L"Item", {Kind::Number}, [](const Target& it, const Arguments& arguments) {
        return it->items.at(static_cast<std::size_t>(arguments.number(0)) - 1);
      });
}

}  // namespace strict
