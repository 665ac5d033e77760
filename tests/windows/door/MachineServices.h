#pragma once

#include <memory>
#include <string>

#include "host/file_watch.h"
#include "host/services.h"
#include "windows/com/Object.h"

/// The ports to a test's machine, which is called by name.
namespace door {

using windows::com::Object;

class Clock final : public host::Clock {
 public:
  explicit Clock(Object machine) : machine_(std::move(machine)) {}
  basic::Date Now() const override;
  float Timer() const override { return static_cast<float>(machine_.real(L"Timer")); }
  std::int64_t TickCount() const override { return static_cast<std::int64_t>(machine_.real(L"TickCount")); }

 private:
  Object machine_;
};

class Loop final : public host::Loop {
 public:
  explicit Loop(Object machine) : machine_(std::move(machine)) {}
  std::unique_ptr<host::Timer> CreateTimer(std::function<void()> handler) override;
  void DoEvents() override { machine_.call(L"DoEvents"); }

 private:
  Object machine_;
};

class Files final : public host::Files {
 public:
  explicit Files(Object machine) : machine_(std::move(machine)) {}
  std::unique_ptr<host::InputFile> OpenForInput(std::string_view path) override;
  void Append(std::string_view path, std::string_view text) override { machine_.call(L"Append", path, text); }
  void Kill(std::string_view path) override { machine_.call(L"Kill", path); }
  void Name(std::string_view path, std::string_view newPath) override {
    machine_.call(L"Name", path, newPath);
  }
  basic::Date FileDateTime(std::string_view path) const override;
  std::string LocalPath(std::string_view path) const override { return machine_.text(L"LocalPath", path); }
  std::string FileWithin(std::string_view folder, std::string_view name) const override {
    return machine_.text(L"FileWithin", folder, name);
  }
  std::string TempPath() const override { return machine_.text(L"TempPath"); }
  std::string TempFileName(std::string_view folder, std::string_view prefix) override {
    return machine_.call(L"TempFileName", folder, prefix).text();
  }

 private:
  Object machine_;
};

class Module final : public host::Module {
 public:
  explicit Module(Object machine) : machine_(std::move(machine)) {}
  std::string Title() const override { return machine_.text(L"Title"); }
  std::string EXEName() const override { return machine_.text(L"EXEName"); }
  std::string Path() const override { return machine_.text(L"Path"); }
  std::int32_t Major() const override { return machine_.number(L"Major"); }
  std::int32_t Minor() const override { return machine_.number(L"Minor"); }
  std::int32_t Revision() const override { return machine_.number(L"Revision"); }
  std::string Licences() const override { return machine_.text(L"Licences"); }

 private:
  Object machine_;
};

class Settings final : public host::Settings {
 public:
  explicit Settings(Object machine) : machine_(std::move(machine)) {}
  std::string GetSetting(std::string_view application, std::string_view section,
                         std::string_view key) const override {
    return machine_.text(L"GetSetting", application, section, key);
  }
  std::string Location() const override { return machine_.text(L"Location"); }

 private:
  Object machine_;
};

class MessageBox final : public host::MessageBox {
 public:
  explicit MessageBox(Object machine) : machine_(std::move(machine)) {}
  host::MsgBoxResult MsgBox(std::string_view text, std::int32_t style, std::string_view title) override {
    return static_cast<host::MsgBoxResult>(machine_.call(L"MsgBox", text, style, title).number());
  }

 private:
  Object machine_;
};

class ProgressMeter final : public host::ProgressMeter {
 public:
  explicit ProgressMeter(Object machine) : machine_(std::move(machine)) {}
  void Show(std::string_view caption, std::int32_t maximum) override {
    machine_.call(L"ShowMeter", caption, maximum);
  }
  void Text(std::string_view text) override { machine_.call(L"MeterText", text); }
  void Step() override { machine_.call(L"StepMeter"); }
  void Close() override { machine_.call(L"CloseMeter"); }

 private:
  Object machine_;
};

/// Its dialogs are asked for from forms alone, which a test's machine does not have.
class Shell final : public host::Shell {
 public:
  explicit Shell(Object machine) : machine_(std::move(machine)) {}
  bool ShellExecute(std::string_view verb, std::string_view file, std::int32_t showCommand) override {
    return machine_.call(L"ShellExecute", verb, file, showCommand).flag();
  }
  std::int64_t HtmlHelp(std::int64_t owner, std::string_view file, std::uint32_t command,
                        std::uint32_t data) override;
  std::optional<std::string> ComputerName() const override { return machine_.text(L"ComputerName"); }
  std::optional<Browsed> BrowseForFolder(std::int64_t, std::string_view, std::optional<std::int32_t>,
                                         std::uint32_t) override;

 private:
  Object machine_;
};

class FileWatcher final : public host::FileWatcher {
 public:
  explicit FileWatcher(Object machine) : machine_(std::move(machine)) {}
  std::unique_ptr<host::FileWatch> CreateWatch(std::function<void(const std::string&)> changed) override;

 private:
  Object machine_;
};

}  // namespace door
