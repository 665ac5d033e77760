// A test's machine as an automation object.

#include "windows/loaded/MachineObject.h"

#include <memory>
#include <set>
#include <string>
#include <utility>
#include <variant>
#include <vector>

#include "host/file_watch.h"
#include "host/forms.h"
#include "host/services.h"
#include "windows/strict/Members.h"

namespace loaded {
namespace {

using strict::Arguments;
using strict::Class;
using strict::Kind;
using strict::Table;
using strict::Tag;
using windows::com::Ptr;
using windows::com::Variant;

/// The forms of the module that is loaded.
Ptr<IDispatch> forms;

/// Calls member 0 of what the module has handed in.
Variant callBack(const Ptr<IDispatch>& handler, const std::vector<Variant>& arguments) {
  std::vector<VARIANT> raw;
  for (auto each = arguments.rbegin(); each != arguments.rend(); ++each) raw.push_back(each->raw());
  DISPPARAMS parameters{raw.data(), nullptr, static_cast<UINT>(raw.size()), 0};
  Variant answer;
  handler->Invoke(DISPID_VALUE, IID_NULL, 0, DISPATCH_METHOD, &parameters, answer.out(), nullptr, nullptr);
  return answer;
}
Variant callBack(const Ptr<IDispatch>& handler) { return callBack(handler, std::vector<Variant>()); }
Variant callBack(const Ptr<IDispatch>& handler, const std::string& text) {
  std::vector<Variant> arguments;
  arguments.emplace_back(text);
  return callBack(handler, arguments);
}

struct Timer {
  std::unique_ptr<host::Timer> timer;
};

Class<Timer> describe(Tag<Timer>) {
  return Table<Timer>("Timer", strict::Role::Machine)
      .get(L"Interval", [](const auto& it) { return it->timer->Interval(); })
      .put(L"Interval", Kind::Number,
           [](const auto& it, const Arguments& a) { it->timer->Interval(a.number(0)); })
      .get(L"Enabled", [](const auto& it) { return it->timer->Enabled(); })
      .put(L"Enabled", Kind::Flag, [](const auto& it, const Arguments& a) { it->timer->Enabled(a.flag(0)); });
}

struct Watch {
  std::unique_ptr<host::FileWatch> watch;
};

std::set<std::string> textsOf(const VARIANT& array) {
  std::set<std::string> texts;
  const auto* first = static_cast<const VARIANT*>(array.parray->pvData);
  for (ULONG i = 0; i < array.parray->rgsabound[0].cElements; ++i) {
    texts.insert(Variant::copyOf(first[i]).text());
  }
  return texts;
}

Class<Watch> describe(Tag<Watch>) {
  return Table<Watch>("Watch", strict::Role::Machine)
      .call(L"Files", {Kind::Array},
            [](const auto& it, const Arguments& a) { it->watch->Files(textsOf(a.raw(0))); });
}

struct Machine {};

using On = const host::Services&;
using Given = const Arguments&;

/// What a function does with the services in force and the arguments.
template <typename Function>
auto here(Function run) {
  return [run](const std::shared_ptr<Machine>&, Given arguments) { return run(host::Current(), arguments); };
}
/// A member of one of the services in force.
template <typename Port, typename Owner, typename Result, typename... Taken>
auto at(Port* host::Services::*port, Result (Owner::*run)(Taken...)) {
  return here([port, run](On on, Given a) {
    return strict::callMember<Port, decltype(run), Taken...>(*(on.*port), run, a);
  });
}
template <typename Port, typename Owner, typename Result, typename... Taken>
auto at(Port* host::Services::*port, Result (Owner::*run)(Taken...) const) {
  return here([port, run](On on, Given a) {
    return strict::callMember<const Port, decltype(run), Taken...>(*(on.*port), run, a);
  });
}

std::shared_ptr<Timer> createTimer(On on, Given a) {
  auto timer = on.loop->CreateTimer([handler = a.at(0).object()] { callBack(handler); });
  return std::make_shared<Timer>(Timer{std::move(timer)});
}

std::shared_ptr<Watch> createWatch(On on, Given a) {
  auto watch = on.fileWatcher->CreateWatch(
      [handler = a.at(0).object()](const std::string& path) { callBack(handler, path); });
  return std::make_shared<Watch>(Watch{std::move(watch)});
}

Variant read(On on, Given a) {
  const host::Bytes bytes = on.files->OpenForInput(a.text(0))->ReadAll();
  return Variant(basic::Variant(basic::Binary(bytes.data.get(), bytes.data.get() + bytes.size)));
}

Class<Machine> describe(Tag<Machine>) {
  using host::Services;
  constexpr Kind Text = Kind::Text;
  constexpr Kind Number = Kind::Number;
  Table<Machine> table("Machine", strict::Role::Machine);
  const auto get = [&table](const wchar_t* name, auto read) { table.member(name, strict::Get, {}, read); };

  get(L"Now", at(&Services::clock, &host::Clock::Now));
  get(L"Timer", at(&Services::clock, &host::Clock::Timer));
  get(L"TickCount", here([](On on, Given) { return static_cast<double>(on.clock->TickCount()); }));

  table.call(L"DoEvents", at(&Services::loop, &host::Loop::DoEvents));
  table.call(L"CreateTimer", {Kind::Object}, here(createTimer));
  get(L"ShowsForms", here([](On on, Given) { return on.forms != nullptr; }));
  table.call(L"UseForms", {Kind::Object}, here([](On, Given a) { forms = a.at(0).object(); }));
  get(L"WatchesFiles", here([](On on, Given) { return on.fileWatcher != nullptr; }));
  table.call(L"CreateWatch", {Kind::Object}, here(createWatch));

  table.call(L"Read", {Text}, here(read))
      .call(L"Append", {Text, Text}, at(&Services::files, &host::Files::Append))
      .call(L"Kill", {Text}, at(&Services::files, &host::Files::Kill))
      .call(L"Name", {Text, Text}, at(&Services::files, &host::Files::Name))
      .call(L"FileDateTime", {Text}, at(&Services::files, &host::Files::FileDateTime))
      .call(L"LocalPath", {Text}, at(&Services::files, &host::Files::LocalPath))
      .call(L"FileWithin", {Text, Text}, at(&Services::files, &host::Files::FileWithin))
      .call(L"TempFileName", {Text, Text}, at(&Services::files, &host::Files::TempFileName));
  get(L"TempPath", at(&Services::files, &host::Files::TempPath));

  get(L"Title", at(&Services::module, &host::Module::Title));
  get(L"EXEName", at(&Services::module, &host::Module::EXEName));
  get(L"Path", at(&Services::module, &host::Module::Path));
  get(L"Major", at(&Services::module, &host::Module::Major));
  get(L"Minor", at(&Services::module, &host::Module::Minor));
  get(L"Revision", at(&Services::module, &host::Module::Revision));
  get(L"Licences", at(&Services::module, &host::Module::Licences));

  table.call(L"GetSetting", {Text, Text, Text}, at(&Services::settings, &host::Settings::GetSetting));
  get(L"Location", at(&Services::settings, &host::Settings::Location));

  table.call(L"MsgBox", {Text, Number, Text}, at(&Services::messageBox, &host::MessageBox::MsgBox))
      .call(L"ShowMeter", {Text, Number}, at(&Services::progressMeter, &host::ProgressMeter::Show))
      .call(L"MeterText", {Text}, at(&Services::progressMeter, &host::ProgressMeter::Text))
      .call(L"StepMeter", at(&Services::progressMeter, &host::ProgressMeter::Step))
      .call(L"CloseMeter", at(&Services::progressMeter, &host::ProgressMeter::Close));

  table.call(L"ShellExecute", {Text, Text, Number}, at(&Services::shell, &host::Shell::ShellExecute))
      .call(L"HtmlHelp", {Number, Text, Number, Number}, at(&Services::shell, &host::Shell::HtmlHelp));
  get(L"ComputerName", here([](On on, Given) { return on.shell->ComputerName().value_or(""); }));
  return table;
}

}  // namespace

std::string ModuleForms::TopName() const { return callBack(forms).text(); }

std::string ModuleForms::Raise(const Forms::Event& event) const {
  std::vector<Variant> arguments;
  arguments.emplace_back(event.Control);
  arguments.emplace_back(static_cast<std::int32_t>(event.Kind));
  arguments.emplace_back();
  if (event.NewValue) {
    if (const auto* text = std::get_if<std::string>(&*event.NewValue)) arguments.back() = Variant(*text);
    if (const auto* flag = std::get_if<bool>(&*event.NewValue)) arguments.back() = Variant(*flag);
  }
  return callBack(forms, arguments).text();
}

void ModuleForms::giveBack() { forms = {}; }

Ptr<IDispatch> machineObject() { return strict::of(std::make_shared<Machine>()); }

}  // namespace loaded
