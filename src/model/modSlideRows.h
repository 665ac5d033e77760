#pragma once

#include <cstdint>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "model/clsPresentation.h"
#include "model/clsSlide.h"

/// Why a slide that hides when it has no data hides now, or does not.
namespace LF2000::modSlideRows {

/// How many rows a connection holds.
struct ConnectionRows {
  std::string Number;
  /// Nothing while that is not known, and for a connection that is not there.
  std::optional<std::int64_t> Rows;
};

/// The numbers of the connections that the slide's shapes show.
[[nodiscard]] std::set<std::string> ConnectionNumbers(PowerPoint::Slide& slide);
/// In the order of their numbers; as shapes see them, also while another preview of them is looked at
/// (clsConnection::Preview). Waits for nothing.
[[nodiscard]] std::vector<ConnectionRows> RowsOf(const clsPresentation& presentation,
                                                 const std::set<std::string>& numbers);
/// Whether a slide that shows these connections would hide. One without any never does, nor one of which a
/// connection is unknown.
[[nodiscard]] bool Hides(const clsSlide& properties, const std::vector<ConnectionRows>& connections);

}  // namespace LF2000::modSlideRows
