#pragma once

#include <string>

namespace bench {

/// A deck as a busy screen has it: every slide with linked text shapes, each with
/// its tags in a part of its own, all on connection 001, the file data.txt beside
/// the deck (header: Item, Price). 100 slides of 20 shapes make 2,101 tag parts.
std::string linkedDeck(int slides, int shapesPerSlide);

/// The data for it: a row per shape; `round` is part of the first `changing` prices.
std::string linkedData(int rows, int changing, int round);

/// A deck of one slide with a linked table, a header above so many rows, on the same connection.
std::string tableDeck(int rows, int columns);

/// The data for it; `round` is part of the first `changing` cells.
std::string tableData(int rows, int columns, int changing, int round);

}  // namespace bench
