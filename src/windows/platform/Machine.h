#pragma once

#include "host/services.h"
#include "platform/jobs/JobQueue.h"
#include "windows/platform/Files.h"
#include "windows/platform/MessageBox.h"
#include "windows/platform/MessageLoop.h"
#include "windows/platform/Module.h"
#include "windows/platform/Registry.h"
#include "windows/platform/Settings.h"
#include "windows/platform/Shell.h"
#include "windows/platform/SystemClock.h"

namespace windows::platform {

/// One of each: what this system supplies to an add-in. Made and used on the host's thread.
struct Machine {
  SystemClock clock;
  MessageLoop loop;
  Files files;
  Module module;
  Settings settings;
  MessageBox messageBox;
  Shell shell;
  Registry registry;
  ::platform::JobQueue jobs{
      loop, clock, [this](std::function<void()> handler) { loop.postOutermost(std::move(handler)); }};

  /// Enters them; what other rooms supply (data, forms, progress) is left as it is.
  void supply(host::Services& services) {
    services.clock = &clock;
    services.loop = &loop;
    services.files = &files;
    services.module = &module;
    services.settings = &settings;
    services.messageBox = &messageBox;
    services.shell = &shell;
    services.registry = &registry;
    services.jobs = &jobs;
  }
};

}  // namespace windows::platform
