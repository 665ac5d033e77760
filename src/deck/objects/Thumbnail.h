#pragma once

#include <pugixml.hpp>
#include <string>

#include "opc/Package.h"

namespace deck {

/// Takes the thumbnail out of a package while it lives (ECMA-376 part 2, 10.4): the program that drew it saw
/// other values than those that a copy shows, and perhaps some that its readers must not see.
class ThumbnailAbsence {
 public:
  explicit ThumbnailAbsence(opc::Package& package);
  ~ThumbnailAbsence();
  ThumbnailAbsence(const ThumbnailAbsence&) = delete;
  ThumbnailAbsence& operator=(const ThumbnailAbsence&) = delete;

 private:
  opc::Package& package_;
  /// What the package held of it; empty without one.
  pugi::xml_document relationship_;
  std::string name_;
  std::string contentType_;
  std::string bytes_;
};

}  // namespace deck
