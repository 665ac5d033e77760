#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "deck/Package.h"

namespace render {

/// A picture that the deck refers to and that browsers can show.
struct Asset {
  /// Made from the content, so equal pictures share it and it tells nothing else:
  /// sixteen hexadecimal digits and an extension.
  std::string name;
  std::string contentType;
  /// Natural size in CSS px at the file's own resolution; 0 when unknown.
  double width = 0;
  double height = 0;
};

/// The pictures met so far, by part and by name.
class Assets {
 public:
  explicit Assets(deck::Package& package) : package_(package) {}

  /// Null when the part holds no picture that browsers show (metafiles, TIFF).
  const Asset* add(deck::Part& part);
  /// While it lives, the name of every picture that add() gives is noted, each once.
  class Collecting {
   public:
    Collecting(Assets& assets, std::vector<std::string>& names) : assets_(assets) {
      assets_.collected_ = &names;
    }
    ~Collecting() { assets_.collected_ = nullptr; }
    Collecting(const Collecting&) = delete;
    Collecting& operator=(const Collecting&) = delete;

   private:
    Assets& assets_;
  };
  /// By name; null unless a slide rendered so far uses it.
  [[nodiscard]] const Asset* find(std::string_view name) const;
  /// Valid until the part changes. Empty for an unknown name.
  [[nodiscard]] std::string_view bytes(std::string_view name) const;

 private:
  deck::Package& package_;
  std::unordered_map<std::string, std::unique_ptr<Asset>> byPart_;
  std::unordered_map<std::string, std::string> partByName_;
  std::vector<std::string>* collected_ = nullptr;
};

}  // namespace render
