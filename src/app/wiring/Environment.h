#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <utility>

#include "ado/Factory.h"
#include "app/wiring/ToldOnce.h"
#include "host/services.h"
#include "platform/EventLoop.h"
#include "platform/FileWatcher.h"
#include "platform/Files.h"
#include "platform/MessageBox.h"
#include "platform/Module.h"
#include "platform/MountTable.h"
#include "platform/NetworkDrives.h"
#include "platform/PathRules.h"
#include "platform/ProgressMeter.h"
#include "platform/Registry.h"
#include "platform/Settings.h"
#include "platform/Shell.h"
#include "platform/SystemClock.h"
#include "workbook/sheet/Factory.h"

namespace app {

/// The services of this machine, put together and in force for as long as this
/// object lives.
class Environment {
  class CountingMessageBox final : public host::MessageBox {
   public:
    explicit CountingMessageBox(host::Loop& loop) : box_(loop) {}
    host::MsgBoxResult MsgBox(std::string_view text, std::int32_t style, std::string_view title) override;
    [[nodiscard]] int errorsShown() const { return errorsShown_; }
    [[nodiscard]] const std::string& lastShown() const { return lastShown_; }

   private:
    platform::MessageBox box_;
    int errorsShown_ = 0;
    std::string lastShown_;
  };

 public:
  Environment();
  ~Environment();
  Environment(const Environment&) = delete;
  Environment& operator=(const Environment&) = delete;

  [[nodiscard]] platform::EventLoop& loop() { return loop_; }
  /// What is being opened and how far that has come.
  [[nodiscard]] platform::ProgressMeter& progressMeter() { return progressMeter_; }
  [[nodiscard]] platform::Shell& shell() { return shell_; }
  /// The path of a data file as this system knows it.
  [[nodiscard]] std::string localPath(std::string_view path) const { return paths_.translate(path); }
  /// Called with the path of every database and workbook before it is opened; what it throws is why it is
  /// not. An empty one ends that.
  void guardPaths(std::function<void(const std::string& path)> guard) { pathGuard_ = std::move(guard); }
  /// Databases opened from now on are read, never changed (ado::Factory::readOnly).
  void readDatabasesOnly(bool isReadOnly) { ado_.readOnly(isReadOnly); }
  /// How many errors the system has told the user so far.
  [[nodiscard]] int errorsShown() const { return messageBox_.errorsShown(); }
  /// The text of the last of them.
  [[nodiscard]] const std::string& lastShown() const { return messageBox_.lastShown(); }

 private:
  [[nodiscard]] std::string guarded(std::string path) const {
    if (pathGuard_) pathGuard_(path);
    return path;
  }
  /// Whether somebody sits at a terminal.
  [[nodiscard]] static bool isAttended();

  platform::EventLoop loop_;
  /// Of handlers on the loop.
  ToldOnce failures_;
  platform::SystemClock clock_;
  platform::MountTable mounts_;
  platform::NetworkDrives drives_{loop_, clock_,
                                  [this](const std::string& path) { return mounts_.networkMountOf(path); }};
  platform::Settings settings_;
  platform::PathRules paths_{settings_};
  platform::Files files_{settings_};
  platform::Module module_;
  CountingMessageBox messageBox_{loop_};
  platform::ProgressMeter progressMeter_;
  platform::Shell shell_{settings_, isAttended()};
  platform::Registry registry_;
  std::function<void(const std::string&)> pathGuard_;
  ado::Factory ado_{[this](std::string_view path) { return guarded(paths_.translate(path)); }};
  platform::FileWatcher watcher_{loop_,
                                 [this](std::string_view path) { return paths_.translateLocal(path); }};
  workbook::Factory excel_{loop_, [this](std::string_view path) { return guarded(paths_.translate(path)); }};
};

}  // namespace app
