#pragma once

#include <cstddef>

#include "host/powerpoint.h"
#include "host/text_table.h"

/// Rows that are made up to fit a presentation, so that its shapes can be tried before there are data.
namespace LF2000::modSampleRows {

inline constexpr std::size_t RowCount = 20;

/// A column for each one that names of shapes speak of (modFieldNames::Guess), that headers of tables name
/// and that links to the sample data have; where there is none, columns that serve for anything. Rows have
/// the texts that the author wrote into these shapes and cells, and go on from them.
[[nodiscard]] host::TextTable MadeFor(PowerPoint::Presentation& presentation);

}  // namespace LF2000::modSampleRows
