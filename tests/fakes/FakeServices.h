#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "fakes/FakeFiles.h"
#include "fakes/FakeLoop.h"
#include "fakes/FakeRecordset.h"
#include "fakes/FakeRegistry.h"
#include "host/services.h"

/// Everything that the system asks of a machine, in memory and on virtual time.
namespace fakes {

class Module final : public host::Module {
 public:
  std::string Title() const override { return "Corvane Lumenfold 2000"; }
  std::string EXEName() const override { return "lumenfold"; }
  std::string Path() const override { return "/addin"; }
  std::int32_t Major() const override { return 1; }
  std::int32_t Minor() const override { return 2; }
  std::int32_t Revision() const override { return 3; }
  std::string Licences() const override { return "a library (its licence)"; }
};

class Settings final : public host::Settings {
 public:
  std::string GetSetting(std::string_view application, std::string_view section,
                         std::string_view key) const override {
    if (application != "Corvane Lumenfold 2000" || section != "Info") return {};
    const auto found = info.find(std::string(key));
    return found == info.end() ? std::string() : found->second;
  }
  std::string Location() const override { return "/home/settings.ini"; }
  std::map<std::string, std::string> info;
};

class MessageBox final : public host::MessageBox {
 public:
  struct Shown {
    std::string text;
    std::int32_t style;
    std::string title;
  };
  host::MsgBoxResult MsgBox(std::string_view text, std::int32_t style, std::string_view title) override {
    shown.push_back({std::string(text), style, std::string(title)});
    return answer;
  }
  std::vector<Shown> shown;
  host::MsgBoxResult answer = host::MsgBoxResult::Yes;
};

class Meter final : public host::ProgressMeter {
 public:
  void Show(std::string_view caption, std::int32_t maximum) override {
    log.push_back("show " + std::string(caption) + " " + std::to_string(maximum));
  }
  void Text(std::string_view text) override { log.emplace_back(text); }
  void Step() override { log.emplace_back("step"); }
  void Close() override { log.emplace_back("close"); }
  std::vector<std::string> log;
};

class Shell final : public host::Shell {
 public:
  bool ShellExecute(std::string_view verb, std::string_view file, std::int32_t showCommand) override {
    executed.push_back(std::string(verb) + " " + std::string(file) + " " + std::to_string(showCommand));
    return true;
  }
  std::int64_t HtmlHelp(std::int64_t, std::string_view file, std::uint32_t command,
                        std::uint32_t data) override {
    executed.push_back("help " + std::string(file) + " " + std::to_string(command) + " " +
                       std::to_string(data));
    return 7;
  }
  std::optional<std::string> ComputerName() const override { return computer; }
  std::optional<Browsed> BrowseForFolder(std::int64_t, std::string_view, std::optional<std::int32_t>,
                                         std::uint32_t flags) override {
    browseFlags = flags;
    return browsed;
  }
  std::vector<std::string> executed;
  std::optional<std::string> computer = "GATE7";
  std::optional<Browsed> browsed;
  std::uint32_t browseFlags = 0;
};

/// One of each, in force while the machine lives. Starts the system afresh.
class Machine {
 public:
  Machine();
  ~Machine();
  Machine(const Machine&) = delete;
  Machine& operator=(const Machine&) = delete;

  Loop loop;
  Clock clock{loop};
  Files files;
  Module module;
  Settings settings;
  MessageBox messageBox;
  Meter meter;
  Shell shell;
  Registry registry;
  DataObjects ado;

  /// Replaces the data components, for a test that brings its own.
  void UseAdo(ADODB::Factory* factory);
  void UseExcel(Excel::Factory* factory);
  /// A machine that tells of changes of files.
  void UseFileWatcher(host::FileWatcher* watcher);
  /// One that queues what may wait.
  void UseJobs(host::Jobs* jobs);
  /// One with somebody who looks at forms.
  void UseForms(Forms::View* view);

 private:
  host::Services services_;
};

}  // namespace fakes
