#pragma once

#include <filesystem>
#include <map>
#include <string>

#include "json/Json.h"

namespace app {

/// The data files that lie beside a deck, for who has connected none yet. No database is contacted.
class NearbyFiles {
 public:
  /// `deck` is its full name.
  explicit NearbyFiles(std::string deck) : deck_(std::move(deck)) {}

  /// Looks at the folder; at a file that it knows no more than whether that has changed.
  void look();
  /// docs/desk-protocol.md, nearby; as of the last look.
  [[nodiscard]] const json::Json& toJson() const { return json_; }

 private:
  struct Known {
    std::filesystem::file_time_type changed;
    std::string note;
  };

  std::string deck_;
  std::map<std::string, Known> known_;
  json::Json json_ = json::Json::array();
};

}  // namespace app
