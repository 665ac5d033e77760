#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "basic/Variant.h"
#include "host/powerpoint.h"

// The host's add-in interface, as the type library of the add-in designer
// defines it (Microsoft Add-in Designer, IDTExtensibility2). Everything is called
// on one thread. The `custom` arrays of the interface carry nothing and are left out.

namespace AddInDesigner {

/// When the host loads the add-in (ext_ConnectMode).
enum class ConnectMode : std::int32_t { AfterStartup = 0, Startup = 1, External = 2, CommandLine = 3 };
/// Why it is let go (ext_DisconnectMode).
enum class RemoveMode : std::int32_t { HostShutdown = 0, UserClosed = 1 };

/// The add-in's own entry in the host, read late bound.
class AddIn {
 public:
  virtual ~AddIn() = default;
  /// A property by name; an unknown name is an error.
  [[nodiscard]] virtual basic::Variant Property(std::string_view name) const = 0;
};

/// What a host calls. No entry point throws.
class IDTExtensibility2 {
 public:
  virtual ~IDTExtensibility2() = default;
  /// The first call. The add-in may hold the application until OnDisconnection.
  virtual void OnConnection(const std::shared_ptr<PowerPoint::Application>& application, ConnectMode mode,
                            const std::shared_ptr<AddIn>& addInInst) = 0;
  /// The last call, until the add-in is connected anew.
  virtual void OnDisconnection(RemoveMode mode) = 0;
  /// The host's list of add-ins has changed.
  virtual void OnAddInsUpdate() = 0;
  /// The host has started; not called when the add-in is loaded later.
  virtual void OnStartupComplete() = 0;
  /// The host is about to end; not called when the add-in alone is let go.
  virtual void OnBeginShutdown() = 0;
};

}  // namespace AddInDesigner
