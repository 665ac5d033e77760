#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "opc/Package.h"
#include "render/paint/PictureConversion.h"

namespace render {

/// A picture that the deck refers to and that browsers can show.
struct Asset {
  /// Made from the content, so equal pictures share it and it tells nothing else:
  /// sixteen hexadecimal digits and an extension.
  std::string name;
  std::string contentType;  // a media type (RFC 6838)
  /// Natural size in CSS px at the file's own resolution; 0 when unknown.
  double width = 0;
  double height = 0;
};

/// The pictures, films and sounds met so far, by part and by name. Assets live as long as this object, but
/// for those of parts whose bytes are replaced: these stand until two others have followed. One thread.
class Assets {
 public:
  /// The converter makes pictures of those that browsers do not show; it may be null.
  explicit Assets(opc::Package& package, PictureConversions* converter = nullptr)
      : package_(package), converter_(converter) {}

  /// Null when the part holds no picture that browsers show, or none yet. A part
  /// whose bytes were replaced becomes another asset; the one before it can still be
  /// had, for screens that are about to ask for it.
  const Asset* add(opc::Part& part);
  /// The same for a film or sound.
  const Asset* addMedia(opc::Part& part);
  /// While it lives, the name of every picture that add() gives is noted, each once,
  /// and why it gave none.
  class Collecting {
   public:
    Collecting(Assets& assets, std::vector<std::string>& names, std::vector<std::string>& problems)
        : assets_(assets) {
      assets_.collected_ = &names;
      assets_.problems_ = &problems;
    }
    ~Collecting() {
      assets_.collected_ = nullptr;
      assets_.problems_ = nullptr;
    }
    Collecting(const Collecting&) = delete;
    Collecting& operator=(const Collecting&) = delete;

   private:
    Assets& assets_;
  };
  /// By name; null unless a slide rendered so far uses it.
  [[nodiscard]] const Asset* find(std::string_view name) const;
  /// Shared with the package, as films are large. Null for an unknown name.
  [[nodiscard]] std::shared_ptr<const std::string> bytes(std::string_view name) const;

 private:
  /// An asset with its bytes; equal ones share it.
  struct Held {
    Asset asset;
    std::shared_ptr<const std::string> bytes;
  };
  struct Known {
    /// Null while there is none to show.
    std::unique_ptr<Asset> asset;
    /// Of what is or was to be converted.
    std::string foreignName;
    /// Instead of the part's own bytes.
    std::shared_ptr<const std::string> converted;
    std::string problem;
    /// Of a part whose bytes are replaced now and then: what it was when it was
    /// added last, and before.
    std::uint64_t version = 0;
    std::shared_ptr<const Held> held;
    std::shared_ptr<const Held> heldBefore;
  };

  void hold(Known& known, opc::Part& part);
  void read(Known& known, opc::Part& part);
  void convert(Known& known, const std::string& name, std::string_view bytes, double width, double height);
  void note(const Known& known, const opc::Part& part);

  opc::Package& package_;
  PictureConversions* converter_;
  std::unordered_map<std::string, Known> byPart_;
  std::unordered_map<std::string, std::string> partByName_;
  std::unordered_map<std::string, std::weak_ptr<const Held>> heldByName_;
  std::vector<std::string>* collected_ = nullptr;
  std::vector<std::string>* problems_ = nullptr;
};

}  // namespace render
