// A test's machine as an automation object.

#include "windows/loaded/MachineObject.h"

#include <memory>
#include <set>
#include <string>
#include <utility>

#include "host/file_watch.h"
#include "host/services.h"
#include "windows/strict/Members.h"

namespace loaded {
namespace {

using strict::Arguments;
using strict::Kind;
using windows::com::Ptr;
using windows::com::Variant;

/// Calls member 0 of what the module has handed in.
void callBack(const Ptr<IDispatch>& handler, const std::string* text) {
  Variant argument = text == nullptr ? Variant() : Variant(*text);
  VARIANT raw = argument.raw();
  DISPPARAMS parameters{&raw, nullptr, text == nullptr ? 0U : 1U, 0};
  handler->Invoke(DISPID_VALUE, IID_NULL, 0, DISPATCH_METHOD, &parameters, nullptr, nullptr, nullptr);
}

struct Timer {
  std::unique_ptr<host::Timer> timer;
};

const strict::Class<Timer>& timerClass() {
  static const strict::Class<Timer> type{
      "Timer",
      {strict::get<Timer>(L"Interval", [](const auto& it) { return it->timer->Interval(); }),
       strict::put<Timer>(L"Interval", Kind::Number,
                          [](const auto& it, const Arguments& a) { it->timer->Interval(a.number(0)); }),
       strict::get<Timer>(L"Enabled", [](const auto& it) { return it->timer->Enabled(); }),
       strict::put<Timer>(L"Enabled", Kind::Flag,
                          [](const auto& it, const Arguments& a) { it->timer->Enabled(a.flag(0)); })},
      {},
      strict::Role::Machine};
  return type;
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

const strict::Class<Watch>& watchClass() {
  static const strict::Class<Watch> type{
      "Watch",
      {strict::call<Watch>(L"Files", {Kind::Array},
                           [](const auto& it, const Arguments& a) { it->watch->Files(textsOf(a.raw(0))); })},
      {},
      strict::Role::Machine};
  return type;
}

struct Machine {};

template <typename Function>
auto value(const wchar_t* name, Function read) {
  return strict::get<Machine>(name, [read](const auto&) { return read(host::Current()); });
}
template <typename Function>
auto call(const wchar_t* name, std::vector<strict::Parameter> parameters, Function run) {
  return strict::call<Machine>(name, std::move(parameters), [run](const auto&, const Arguments& arguments) {
    return run(host::Current(), arguments);
  });
}
using On = const host::Services&;
using Given = const Arguments&;

Ptr<IDispatch> createTimer(On on, Given a) {
  auto timer = on.loop->CreateTimer([handler = a.at(0).object()] { callBack(handler, nullptr); });
  return strict::dispatchOf(std::make_shared<Timer>(Timer{std::move(timer)}), timerClass());
}

Ptr<IDispatch> createWatch(On on, Given a) {
  auto watch = on.fileWatcher->CreateWatch(
      [handler = a.at(0).object()](const std::string& path) { callBack(handler, &path); });
  return strict::dispatchOf(std::make_shared<Watch>(Watch{std::move(watch)}), watchClass());
}

Variant read(On on, Given a) {
  const host::Bytes bytes = on.files->OpenForInput(a.text(0))->ReadAll();
  return Variant(basic::Variant(basic::Binary(bytes.data.get(), bytes.data.get() + bytes.size)));
}

Variant moment(basic::Date date) { return Variant(basic::Variant(date)); }

const strict::Class<Machine>& machineClass() {
  constexpr Kind Text = Kind::Text;
  constexpr Kind Number = Kind::Number;
  static const strict::Class<Machine> type{
      "Machine",
      {value(L"Now", [](On on) { return moment(on.clock->Now()); }),
       value(L"Timer", [](On on) { return double{on.clock->Timer()}; }),
       value(L"TickCount", [](On on) { return static_cast<double>(on.clock->TickCount()); }),
       call(L"DoEvents", {}, [](On on, Given) { on.loop->DoEvents(); }),
       call(L"CreateTimer", {Kind::Object}, createTimer),
       value(L"WatchesFiles", [](On on) { return on.fileWatcher != nullptr; }),
       call(L"CreateWatch", {Kind::Object}, createWatch),
       call(L"Read", {Text}, read),
       call(L"Append", {Text, Text}, [](On on, Given a) { on.files->Append(a.text(0), a.text(1)); }),
       call(L"Kill", {Text}, [](On on, Given a) { on.files->Kill(a.text(0)); }),
       call(L"Name", {Text, Text}, [](On on, Given a) { on.files->Name(a.text(0), a.text(1)); }),
       call(L"FileDateTime", {Text},
            [](On on, Given a) { return moment(on.files->FileDateTime(a.text(0))); }),
       call(L"LocalPath", {Text}, [](On on, Given a) { return on.files->LocalPath(a.text(0)); }),
       call(L"FileWithin", {Text, Text},
            [](On on, Given a) { return on.files->FileWithin(a.text(0), a.text(1)); }),
       value(L"TempPath", [](On on) { return on.files->TempPath(); }),
       call(L"TempFileName", {Text, Text},
            [](On on, Given a) { return on.files->TempFileName(a.text(0), a.text(1)); }),
       value(L"Title", [](On on) { return on.module->Title(); }),
       value(L"EXEName", [](On on) { return on.module->EXEName(); }),
       value(L"Path", [](On on) { return on.module->Path(); }),
       value(L"Major", [](On on) { return on.module->Major(); }),
       value(L"Minor", [](On on) { return on.module->Minor(); }),
       value(L"Revision", [](On on) { return on.module->Revision(); }),
       call(L"GetSetting", {Text, Text, Text},
            [](On on, Given a) { return on.settings->GetSetting(a.text(0), a.text(1), a.text(2)); }),
       value(L"Location", [](On on) { return on.settings->Location(); }),
       call(L"MsgBox", {Text, Number, Text},
            [](On on, Given a) { return on.messageBox->MsgBox(a.text(0), a.number(1), a.text(2)); }),
       call(L"ShowMeter", {Text, Number},
            [](On on, Given a) { on.progressMeter->Show(a.text(0), a.number(1)); }),
       call(L"MeterText", {Text}, [](On on, Given a) { on.progressMeter->Text(a.text(0)); }),
       call(L"StepMeter", {}, [](On on, Given) { on.progressMeter->Step(); }),
       call(L"CloseMeter", {}, [](On on, Given) { on.progressMeter->Close(); }),
       call(L"ShellExecute", {Text, Text, Number},
            [](On on, Given a) { return on.shell->ShellExecute(a.text(0), a.text(1), a.number(2)); }),
       call(L"HtmlHelp", {Number, Text, Number, Number},
            [](On on, Given a) {
              return static_cast<std::int32_t>(on.shell->HtmlHelp(a.number(0), a.text(1),
                                                                  static_cast<std::uint32_t>(a.number(2)),
                                                                  static_cast<std::uint32_t>(a.number(3))));
            }),
       value(L"ComputerName", [](On on) { return on.shell->ComputerName().value_or(""); })},
      {},
      strict::Role::Machine};
  return type;
}

}  // namespace

Ptr<IDispatch> machineObject() { return strict::dispatchOf(std::make_shared<Machine>(), machineClass()); }

}  // namespace loaded
