#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>

#include "model/clsPresentation.h"

/// Sample data: a connection of rows that are made up (modSampleRows), so that shapes can be linked before
/// there are data. It lives as long as the presentation is open and is stored nowhere; links to it are tags
/// like all others while the presentation is edited, and hosts keep them out of its file. The first
/// connection that an author adds takes them over.
namespace LF2000::modSample {

/// Its tag number; real ones count from 001.
inline constexpr std::string_view Number = "000";

/// Null while there is none.
[[nodiscard]] std::shared_ptr<clsConnection> Find(const clsPresentation& presentation);
/// How many shapes show it.
[[nodiscard]] std::size_t CountLinks(const clsPresentation& presentation);

/// Begins with sample data. No step to undo, as nothing is stored. Raises why not where there are data.
void Begin(clsPresentation& presentation);

/// To be called when links have changed: sample data are there again when links ask for them (an undo, a
/// recovery), and go when none do and there is a connection.
void Follow(clsPresentation& presentation);

/// Leads links of the sample data to a connection that has been read, charts and tables and what finds its
/// column there, and says how many and what is left. The step goes on one of the same run and is called
/// alike. Nothing without sample data.
void TakeOver(clsPresentation& presentation, std::string_view number, std::string_view label,
              std::string_view run);

/// Raises that shapes show sample data, for what is made for others; `cannot` begins the sentence.
void RequireNone(const clsPresentation& presentation, std::string_view cannot);

}  // namespace LF2000::modSample
