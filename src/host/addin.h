#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "basic/Variant.h"
#include "host/powerpoint.h"

// The host's add-in interface, as the type library of the add-in designer
// defines it.

namespace AddInDesigner {

enum class ConnectMode : std::int32_t { AfterStartup = 0, Startup = 1, External = 2, CommandLine = 3 };
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
  virtual void OnConnection(const std::shared_ptr<PowerPoint::Application>& application, ConnectMode mode,
                            const std::shared_ptr<AddIn>& addInInst) = 0;
  virtual void OnDisconnection(RemoveMode mode) = 0;
  virtual void OnAddInsUpdate() = 0;
  virtual void OnStartupComplete() = 0;
  virtual void OnBeginShutdown() = 0;
};

}  // namespace AddInDesigner
