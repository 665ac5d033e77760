// Bars, menus and what stands on them, with the events of controls.

#include <map>
#include <string>
#include <utility>

#include "basic/Error.h"
#include "windows/strict/Events.h"
#include "windows/strict/Members.h"

namespace strict {
namespace {

using ControlPtr = std::shared_ptr<Office::CommandBarControl>;

Ptr<IDispatch> controlOf(const ControlPtr& control);

/// Numbers controls by their targets; a control keeps its number.
std::int32_t instanceId(const void* control) {
  static std::map<const void*, std::int32_t> numbers;
  return numbers.try_emplace(control, static_cast<std::int32_t>(numbers.size()) + 1).first->second;
}

/// What every kind of control has, with what only some have.
template <typename Target>
std::vector<Member<Target>> controlMembers(std::vector<Member<Target>> others) {
  std::vector<Member<Target>> members{
      get<Target>(L"Type", [](const auto& it) { return it->Type(); }),
      get<Target>(L"InstanceId", [](const auto& it) { return instanceId(ControlPtr(it).get()); }),
      get<Target>(L"Caption", [](const auto& it) { return it->Caption(); }),
      put<Target>(L"Caption", Kind::Text,
                  [](const auto& it, const Arguments& arguments) { it->Caption(arguments.text(0)); }),
      get<Target>(L"Enabled", [](const auto& it) { return it->Enabled(); }),
      put<Target>(L"Enabled", Kind::Flag,
                  [](const auto& it, const Arguments& arguments) { it->Enabled(arguments.flag(0)); }),
      get<Target>(L"TooltipText", [](const auto& it) { return it->TooltipText(); }),
      put<Target>(L"TooltipText", Kind::Text,
                  [](const auto& it, const Arguments& arguments) { it->TooltipText(arguments.text(0)); }),
      get<Target>(L"Tag", [](const auto& it) { return it->Tag(); }),
      put<Target>(L"Tag", Kind::Text,
                  [](const auto& it, const Arguments& arguments) { it->Tag(arguments.text(0)); }),
      get<Target>(L"BeginGroup", [](const auto& it) { return it->BeginGroup(); }),
      put<Target>(L"BeginGroup", Kind::Flag,
                  [](const auto& it, const Arguments& arguments) { it->BeginGroup(arguments.flag(0)); }),
      call<Target>(L"Delete", {optional(Kind::Flag)},
                   [](const auto& it, const Arguments&) { it->Delete(); })};
  members.insert(members.end(), others.begin(), others.end());
  return members;
}

/// An event whose argument is the control; `advise` subscribes to the port's.
template <typename Target, typename Advise>
EventSource<Target> controlEvent(unsigned long interfaceNumber, Advise advise) {
  const IID events = {interfaceNumber, 0x0000, 0x0000, {0xC0, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x46}};
  return {events, [events, advise](const std::shared_ptr<Target>& control) {
            const std::weak_ptr<Target> weak = control;
            auto* point = new EventPoint(events, [advise, weak](EventPoint& self, bool isSubscribed) {
              const auto target = weak.lock();
              if (!target) return;
              if (!isSubscribed) return advise(*target, {});
              advise(*target, [&self, weak] {
                const auto source = weak.lock();
                const auto held = Ptr<EventPoint>::sharing(&self);
                std::vector<Variant> arguments;
                arguments.push_back(handedOut(controlOf(source)));
                self.raise(1, std::move(arguments));
              });
            });
            return Ptr<IConnectionPoint>::taking(point);
          }};
}

const Class<Office::CommandBarButton>& buttonClass() {
  using Target = Office::CommandBarButton;
  static const Class<Target> type{
      "CommandBarButton",
      controlMembers<Target>({get<Target>(L"State", [](const auto& it) { return it->State(); }),
                              put<Target>(L"State", Kind::Number,
                                          [](const auto& it, const Arguments& arguments) {
                                            it->State(static_cast<Office::ButtonState>(arguments.number(0)));
                                          }),
                              put<Target>(L"Style", Kind::Number, [](const auto&, const Arguments&) {}),
                              get<Target>(L"ShortcutText", [](const auto& it) { return it->ShortcutText(); }),
                              put<Target>(L"ShortcutText", Kind::Text,
                                          [](const auto& it, const Arguments& arguments) {
                                            it->ShortcutText(arguments.text(0));
                                          })}),
      {controlEvent<Target>(0x000C0351, [](Target& button, std::function<void()> handler) {
        button.OnClick(std::move(handler));
      })}};
  return type;
}

const Class<Office::CommandBarComboBox>& comboBoxClass() {
  using Target = Office::CommandBarComboBox;
  static const Class<Target> type{
      "CommandBarComboBox",
      controlMembers<Target>(
          {call<Target>(L"AddItem", {Kind::Text, optional(Kind::Number)},
                        [](const auto& it, const Arguments& arguments) { it->AddItem(arguments.text(0)); }),
           get<Target>(L"ListCount", [](const auto& it) { return it->ListCount(); }),
           member<Target>(
               L"List", Get, {Kind::Number},
               [](const auto& it, const Arguments& arguments) { return it->List(arguments.number(0)); }),
           get<Target>(L"ListIndex", [](const auto& it) { return it->ListIndex(); }),
           put<Target>(
               L"ListIndex", Kind::Number,
               [](const auto& it, const Arguments& arguments) { it->ListIndex(arguments.number(0)); })}),
      {controlEvent<Target>(
          0x000C0354, [](Target& box, std::function<void()> handler) { box.OnChange(std::move(handler)); })}};
  return type;
}

ControlPtr add(Office::CommandBarControls& controls, std::int32_t type) {
  switch (static_cast<Office::ControlType>(type)) {
    case Office::ControlType::Button:
      return controls.AddButton();
    case Office::ControlType::ComboBox:
      return controls.AddComboBox();
    case Office::ControlType::Popup:
      return controls.AddPopup();
  }
  basic::Raise(basic::RuntimeError::InvalidProcedureCall);
}

const Class<Office::CommandBarControls>& controlsClass() {
  using Target = Office::CommandBarControls;
  static const Class<Target> type{"CommandBarControls",
                                  {get<Target>(L"Count", [](const auto& it) { return it->Count(); }),
                                   call<Target>(L"Item", {Kind::Number},
                                                [](const auto& it, const Arguments& arguments) {
                                                  return controlOf(it->Item(arguments.number(0)));
                                                }),
                                   call<Target>(L"Add",
                                                {Kind::Number, optional(Kind::Number), optional(Kind::Any),
                                                 optional(Kind::Number), optional(Kind::Flag)},
                                                [](const auto& it, const Arguments& arguments) {
                                                  return controlOf(add(*it, arguments.number(0)));
                                                })}};
  return type;
}

const Class<Office::CommandBarPopup>& popupClass() {
  using Target = Office::CommandBarPopup;
  static const Class<Target> type{"CommandBarPopup",
                                  controlMembers<Target>({get<Target>(L"Controls", [](const auto& it) {
                                    return dispatchOf(it->Controls(), controlsClass());
                                  })})};
  return type;
}

Ptr<IDispatch> controlOf(const ControlPtr& control) {
  if (const auto button = std::dynamic_pointer_cast<Office::CommandBarButton>(control)) {
    return dispatchOf(button, buttonClass());
  }
  if (const auto box = std::dynamic_pointer_cast<Office::CommandBarComboBox>(control)) {
    return dispatchOf(box, comboBoxClass());
  }
  return dispatchOf(std::dynamic_pointer_cast<Office::CommandBarPopup>(control), popupClass());
}

const Class<Office::CommandBar>& barClass() {
  using Target = Office::CommandBar;
  static const Class<Target> type{
      "CommandBar",
      {get<Target>(L"Name", [](const auto& it) { return it->Name(); }),
       get<Target>(L"Position", [](const auto& it) { return it->Position(); }),
       get<Target>(L"Visible", [](const auto& it) { return it->Visible(); }),
       put<Target>(L"Visible", Kind::Flag,
                   [](const auto& it, const Arguments& arguments) { it->Visible(arguments.flag(0)); }),
       get<Target>(L"Controls", [](const auto& it) { return dispatchOf(it->Controls(), controlsClass()); }),
       action<Target>(L"Delete", [](const auto& it) { it->Delete(); })}};
  return type;
}

const Class<Office::CommandBars>& barsClass() {
  using Target = Office::CommandBars;
  static const Class<Target> type{
      "CommandBars",
      {get<Target>(L"Count", [](const auto& it) { return it->Count(); }),
       call<Target>(L"Item", {Kind::TextOrNumber},
                    [](const auto& it, const Arguments& arguments) {
                      return dispatchOf(
                          arguments.isText(0) ? it->Item(arguments.text(0)) : it->Item(arguments.number(0)),
                          barClass());
                    }),
       call<Target>(
           L"Add", {optional(Kind::Text), optional(Kind::Number), optional(Kind::Flag), optional(Kind::Flag)},
           [](const auto& it, const Arguments& arguments) {
             return dispatchOf(
                 it->Add(arguments.text(0), static_cast<Office::BarPosition>(arguments.number(1))),
                 barClass());
           })}};
  return type;
}

}  // namespace

Ptr<IDispatch> of(const std::shared_ptr<Office::CommandBars>& target) {
  return dispatchOf(target, barsClass());
}

}  // namespace strict
