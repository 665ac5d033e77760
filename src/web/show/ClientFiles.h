#pragma once

#include <string_view>

namespace web {

/// A file of src/web/client/, or what the build makes of several: charts.js of
/// src/web/bundles/, desk/desk.js and desk/desk.css. Built into the program.
struct ClientFile {
  /// "core/slides.js", "charts.js"
  std::string_view name;
  std::string_view bytes;
  /// By gzip.
  bool isCompressed = false;
};

/// Null when there is none of that name.
const ClientFile* clientFile(std::string_view name);

/// Changes whenever one of the files changes. Pages and scripts carry it, so a
/// screen notices that the server has newer ones.
std::string_view clientVersion();

}  // namespace web
