#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "host/powerpoint.h"

/// Links that are led to another connection or column together: after a column was renamed in a source, or
/// when another source takes the place of one.
namespace LF2000::modRelink {

/// A shape that is linked to a connection.
struct Linked {
  std::int32_t SlideIndex = 0;
  std::shared_ptr<PowerPoint::Shape> Shape;
  /// Empty for a chart or a table, which takes the connection as a whole.
  std::string Column;
};

/// All links by the tag numbers of their connections, each in slide and drawing order.
[[nodiscard]] std::map<std::string, std::vector<Linked>> LinksByConnection(
    PowerPoint::Presentation& presentation);

/// The links to a connection by its tag number; only those to one column (in any case of letters) unless it
/// is empty.
[[nodiscard]] std::vector<Linked> FindLinks(PowerPoint::Presentation& presentation,
                                            std::string_view connection, std::string_view column = {});

/// Leads the links to another connection, and to another column unless it is empty. Everything else of them
/// stays.
void Relink(const std::vector<Linked>& links, const std::string& connection, const std::string& column = {});

/// Which of the columns (from index 1, as clsConnection::Columns() gives them) is likest to a name that is
/// not among them: those that it contains or that contain it before those with the fewest letters changed.
/// Sorted, the likest first.
[[nodiscard]] std::vector<std::string> ByLikeness(std::string_view name,
                                                  const std::vector<std::string>& columns);

}  // namespace LF2000::modRelink
