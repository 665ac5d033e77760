#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <utility>

#include "host/graph.h"
#include "windows/com/Object.h"

namespace windows::automation {

/// What shapes of their author's the system has replaced by live values, for as long as the presentation is
/// open: the object model keeps nothing of it.
struct AuthorsOwn {
  /// Slide and shape by their ids.
  using Place = std::pair<std::int32_t, std::int32_t>;
  struct Data {
    MSGraph::Table own;
    MSGraph::Table shown;
  };

  /// What linked pictures are linked to.
  std::map<Place, std::string> pictures;
  /// The linked pictures that lie over embedded ones.
  std::map<Place, com::Object> covers;
  /// Texts of cells by row and column.
  std::map<Place, std::map<std::pair<std::int32_t, std::int32_t>, std::string>> cells;
  std::map<Place, Data> charts;
};

/// Where a shape stands, as far as what replaces its content needs to know.
struct ShapePlace {
  std::shared_ptr<AuthorsOwn> own;
  std::int32_t slide = 0;
};

}  // namespace windows::automation
