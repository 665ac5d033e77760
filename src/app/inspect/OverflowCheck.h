#pragma once

#include "app/inspect/FilledDeck.h"
#include "app/inspect/Finding.h"

namespace app {

/// Finds the linked shapes whose text of today is larger than they are, by the
/// measures of an installed Chromium. Throws basic::Error when there is none.
Findings checkOverflow(FilledDeck& filled);

}  // namespace app
