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

/// Numbers controls by their targets; a control keeps its number.
std::int32_t instanceId(const void* control) {
  static std::map<const void*, std::int32_t> numbers;
  return numbers.try_emplace(control, static_cast<std::int32_t>(numbers.size()) + 1).first->second;
}

/// What every kind of control has.
template <typename Target>
Table<Target> controlTable(const char* name) {
  return Table<Target>(name)
      .get(L"Type", &Target::Type)
      .get(L"InstanceId", [](const auto& it) { return instanceId(ControlPtr(it).get()); })
      .property(L"Caption", Kind::Text, &Target::Caption, &Target::Caption)
      .property(L"Enabled", Kind::Flag, &Target::Enabled, &Target::Enabled)
      .property(L"TooltipText", Kind::Text, &Target::TooltipText, &Target::TooltipText)
      .property(L"Tag", Kind::Text, &Target::Tag, &Target::Tag)
      .property(L"BeginGroup", Kind::Flag, &Target::BeginGroup, &Target::BeginGroup)
      .call(L"Delete", {optional(Kind::Flag)}, &Target::Delete);
}

/// A table with the event whose argument is the control; `advise` subscribes to the port's.
template <typename Target>
Table<Target>& withEvent(Table<Target>& table, unsigned long interfaceNumber,
                         void (Target::*advise)(std::function<void()>)) {
  const IID events = {interfaceNumber, 0x0000, 0x0000, {0xC0, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x46}};
  return table.raises(events, [events, advise](const std::shared_ptr<Target>& control) {
    const std::weak_ptr<Target> weak = control;
    auto* point = new EventPoint(events, [advise, weak](EventPoint& self, bool isSubscribed) {
      const auto target = weak.lock();
      if (!target) return;
      if (!isSubscribed) return ((*target).*advise)({});
      ((*target).*advise)([&self, weak] {
        const auto source = weak.lock();
        const auto held = Ptr<EventPoint>::sharing(&self);
        std::vector<Variant> arguments;
        arguments.push_back(given<Office::CommandBarControl>(source));
        self.raise(1, std::move(arguments));
      });
    });
    return Ptr<IConnectionPoint>::taking(point);
  });
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

}  // namespace

Class<Office::CommandBarButton> describe(Tag<Office::CommandBarButton>) {
  using Button = Office::CommandBarButton;
  return withEvent(controlTable<Button>("CommandBarButton")
                       .property(L"State", Kind::Number, &Button::State, &Button::State)
                       .put(L"Style", Kind::Number, [](const auto&, const Arguments&) {})
                       .property(L"ShortcutText", Kind::Text, &Button::ShortcutText, &Button::ShortcutText),
                   0x000C0351, &Button::OnClick);
}

Class<Office::CommandBarComboBox> describe(Tag<Office::CommandBarComboBox>) {
  using Box = Office::CommandBarComboBox;
  return withEvent(controlTable<Box>("CommandBarComboBox")
                       .call(L"AddItem", {Kind::Text, optional(Kind::Number)}, &Box::AddItem)
                       .get(L"ListCount", &Box::ListCount)
                       .get(L"List", Kind::Number, &Box::List)
                       .property(L"ListIndex", Kind::Number, &Box::ListIndex, &Box::ListIndex),
                   0x000C0354, &Box::OnChange);
}

Class<Office::CommandBarPopup> describe(Tag<Office::CommandBarPopup>) {
  using Popup = Office::CommandBarPopup;
  return controlTable<Popup>("CommandBarPopup").get(L"Controls", &Popup::Controls);
}

Ptr<IDispatch> of(const ControlPtr& control) {
  if (const auto button = std::dynamic_pointer_cast<Office::CommandBarButton>(control)) return of(button);
  if (const auto box = std::dynamic_pointer_cast<Office::CommandBarComboBox>(control)) return of(box);
  return of(std::dynamic_pointer_cast<Office::CommandBarPopup>(control));
}

Class<Office::CommandBarControls> describe(Tag<Office::CommandBarControls>) {
  using Controls = Office::CommandBarControls;
  return Table<Controls>("CommandBarControls")
      .get(L"Count", &Controls::Count)
      .call(L"Item", {Kind::Number}, &Controls::Item)
      .call(L"Add",
            {Kind::Number, optional(Kind::Number), optional(Kind::Any), optional(Kind::Number),
             optional(Kind::Flag)},
            [](const auto& it, const Arguments& arguments) { return add(*it, arguments.number(0)); });
}

Class<Office::CommandBar> describe(Tag<Office::CommandBar>) {
  using Bar = Office::CommandBar;
  return Table<Bar>("CommandBar")
      .get(L"Name", &Bar::Name)
      .get(L"Position", &Bar::Position)
      .property(L"Visible", Kind::Flag, &Bar::Visible, &Bar::Visible)
      .get(L"Controls", &Bar::Controls)
      .call(L"Delete", &Bar::Delete);
}

Class<Office::CommandBars> describe(Tag<Office::CommandBars>) {
  using Bars = Office::CommandBars;
  return Table<Bars>("CommandBars")
      .collection()
      .call(L"Add",
            {optional(Kind::Text), optional(Kind::Number), optional(Kind::Flag), optional(Kind::Flag)},
            &Bars::Add);
}

}  // namespace strict
