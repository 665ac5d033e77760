#pragma once

#include <string>
#include <vector>

#include "app/inspect/FilledDeck.h"
#include "app/inspect/HeadlessBrowser.h"

namespace app {

/// Writes a PDF with a page for each of these slides. Answers what of them could not be drawn.
std::vector<std::string> printSlides(FilledDeck& filled, const std::vector<int>& slides,
                                     HeadlessBrowser& browser, const std::string& pdf, int width = 960);

/// Those that shows do not pass over.
std::vector<int> visibleSlides(FilledDeck& filled);

}  // namespace app
