#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "connections/clsConnection.h"
#include "model/clsPresentation.h"

/// The dialogs of connections.
namespace LF2000::modConnectionPages {

/// Hears the number under which the connection was stored; nothing when the dialog is cancelled.
using Stored = std::function<void(const std::string& number)>;

/// Shows the dialog of a new connection, filled in as far as `path` tells (a file of the machine or relative
/// to the presentation's folder; empty for none), and begins to look into it. Raises why there is no number
/// left for one.
void OpenNew(ConnectionKind kind, std::string_view path, const std::shared_ptr<clsPresentation>& presentation,
             Stored stored = {});

/// Shows the dialog of an existing connection. Raises that there is none of that number, or none for its
/// kind.
void OpenExisting(std::string_view number, const std::shared_ptr<clsPresentation>& presentation,
                  Stored stored = {});

}  // namespace LF2000::modConnectionPages
