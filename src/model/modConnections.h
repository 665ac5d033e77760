#pragma once

#include <cstddef>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "model/clsPresentation.h"

/// What an author does to the connections of a presentation. Each operation is one step to undo; what it
/// leaves is stored in the tags, and read in the background.
namespace LF2000::modConnections {

/// The shapes that show a connection.
struct Uses {
  std::size_t Shapes = 0;
  std::size_t Slides = 0;
  /// By column, how many; none for charts and tables, which take the connection as a whole.
  std::map<std::string, std::size_t> Columns;
  /// "slide 2: p1 Price", in the order of the slides.
  std::vector<std::string> Places;

  /// "12 shapes on 3 slides"
  [[nodiscard]] std::string Text() const;
};
[[nodiscard]] Uses UsesOf(const clsPresentation& presentation, std::string_view number);

/// The same for all connections, by number.
[[nodiscard]] std::map<std::string, Uses> AllUses(const clsPresentation& presentation);

/// Another connection of the same description, not opened, for what may fail.
[[nodiscard]] std::shared_ptr<clsConnection> CopyOf(const clsConnection& connection);

/// The columns that shapes use and the connection, whose data must be open, does not have.
[[nodiscard]] std::vector<std::string> MissingColumns(const Uses& uses, const clsConnection& connection);

/// The number of a connection that is added. Raises why there is none: numbers follow the largest and end at
/// 999.
[[nodiscard]] std::string NewNumber(const clsPresentation& presentation);

/// Takes a description in as a new connection, and returns its number.
std::string Add(clsPresentation& presentation, const std::shared_ptr<clsConnection>& described);

/// Gives the connection of that number another description. One that only its name has changed of keeps its
/// data. Nothing when it is the one that it has.
void Change(clsPresentation& presentation, std::string_view number,
            const std::shared_ptr<clsConnection>& described);

/// Takes it out, and the links to it.
void Remove(clsPresentation& presentation, std::string_view number);

/// Has the shapes of one connection show another, with the columns and rows that they have.
void MoveLinks(clsPresentation& presentation, std::string_view from, std::string_view to);

}  // namespace LF2000::modConnections
