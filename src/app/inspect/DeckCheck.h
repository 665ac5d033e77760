#pragma once

#include <string>

#include "app/inspect/Finding.h"
#include "platform/EventLoop.h"

namespace app {

/// Looks a deck over as a show that begins now would meet it: its links and their sources, what the show
/// would log, what is not drawn as PowerPoint draws it, slides that are hidden, texts that do not fit.
/// Whether texts fit is measured where Chromium is installed, and noted as unknown elsewhere. Throws
/// basic::Error when the deck cannot be opened. The loop may run meanwhile; no message box comes up and
/// nothing is logged.
Findings checkDeck(const std::string& path, platform::EventLoop& loop);

}  // namespace app
