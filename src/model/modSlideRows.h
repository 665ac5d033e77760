#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "model/clsPresentation.h"
#include "model/clsSlide.h"

/// Why a slide that hides when it has no data hides now, or does not.
namespace LF2000::modSlideRows {

/// What a shape of a slide shows of a connection.
struct ShownData {
  std::string Number;
  std::string Column;
  double Row = 0;
  /// All of it, as a chart or a table does.
  bool IsWhole = false;
};

/// What a slide has of a connection.
struct ConnectionRows {
  std::string Number;
  /// Nothing while that is not known, and for a connection that is not there.
  std::optional<std::int64_t> Rows;
  /// Some shape of the slide shows a value of it.
  bool HasValue = false;
  /// Some shape of the slide shows what it does not have, such as a column that is gone.
  bool IsFaulty = false;
};

/// What the slide's shapes show.
[[nodiscard]] std::vector<ShownData> ShownOn(PowerPoint::Slide& slide);
/// In the order of their numbers; as shapes see them, also while another preview of them is looked at
/// (clsConnection::Preview). What scrolls is where it starts. Waits for nothing.
[[nodiscard]] std::vector<ConnectionRows> RowsOf(const clsPresentation& presentation,
                                                 const std::vector<ShownData>& shown);
/// Whether a show would hide a slide that shows these connections: it has no value, and there is nothing of
/// which that is unknown. One without any connection never hides.
[[nodiscard]] bool Hides(const clsSlide& properties, const std::vector<ConnectionRows>& connections);

}  // namespace LF2000::modSlideRows
