#pragma once

#include "host/powerpoint.h"

/// The installation check.
namespace LF2000::modVersionSpecific {

/// True when the add-in must not run.
inline bool StartupFailure = false;

/// Puts the module's state back to what it is when the add-in is loaded.
inline void Reset() { StartupFailure = false; }

/// Whether the add-in may run in this host: its major version is 9, or one that the setting
/// "AcceptedVersions" lists ("14,16"), and ADO is there. Sets StartupFailure.
[[nodiscard]] bool InstallationOK(const PowerPoint::Application& hostApplication);

}  // namespace LF2000::modVersionSpecific
