#pragma once

#include <cstdint>
#include <memory>
#include <pugixml.hpp>
#include <string>
#include <unordered_map>
#include <vector>

#include "opc/Package.h"
#include "pictures/PictureFile.h"

namespace deck {

/// Pictures that shapes show for the time being in place of their own, in their
/// frame, with their crop and effects. Each shape has one media part for it,
/// whose bytes are replaced: the package does not grow with the pictures shown. A
/// drawing (SVG) stands beside the shape's own picture as PowerPoint wants it
/// ([MS-ODRAWXML] 2.3.3.6), any other picture in its place.
class LivePictures {
 public:
  explicit LivePictures(opc::Package& package) : package_(package) {}

  /// Why a shape shows another picture.
  enum class Reason : std::uint8_t {
    /// Its link's file is read (a linked picture).
    OwnLink,
    /// Data name it.
    Data,
  };

  /// The shape of the slide's part shows the picture. Answers whether that
  /// changed what it shows. The shape must have a place for a picture (pictureOf).
  bool show(opc::Part& slide, pugi::xml_node shape, pictures::PictureFile picture, Reason reason);
  /// The shape shows its own picture again. Answers whether it showed another.
  bool showOwn(pugi::xml_node shape);
  /// Whether the shape shows a picture for this reason.
  [[nodiscard]] bool shows(pugi::xml_node shape, Reason reason) const;
  /// The shape keeps the picture that it shows as its own.
  void adopt(pugi::xml_node shape) { byShape_.erase(shape.internal_object()); }
  /// The slide goes away: its shapes show their own pictures.
  void forget(const opc::Part& slide);

 private:
  struct Live {
    opc::Part* slide = nullptr;
    pugi::xml_node shape;
    Reason reason = Reason::Data;
    opc::Part* part = nullptr;
    std::string relationshipId;
    /// A copy of the shape's own a:blip.
    std::unique_ptr<pugi::xml_document> own;
  };

 public:
  /// Takes every live picture out of the package while it lives, unless they are to stay: for saving. Of
  /// those that stay none that data name is linked to another file.
  class Absence {
   public:
    Absence(LivePictures& pictures, bool theyStay);
    ~Absence();
    Absence(const Absence&) = delete;
    Absence& operator=(const Absence&) = delete;

   private:
    struct Taken;
    LivePictures& pictures_;
    std::vector<Taken> taken_;
    std::vector<Live*> staying_;
  };

 private:
  void put(Live& live, std::string name, pictures::PictureFile picture);
  void take(Live& live);

  opc::Package& package_;
  std::unordered_map<const void*, Live> byShape_;  // by element
};

/// The full type of a relationship to a picture.
inline constexpr std::string_view ImageRelationship =
    "http://schemas.openxmlformats.org/officeDocument/2006/relationships/image";

/// Has an a:blip show the picture of a relationship of its part; a drawing beside the picture that it embeds,
/// if there is one.
void showPicture(pugi::xml_node blip, const std::string& relationshipId, bool isSvg);

/// The a:blip of the picture that a shape shows: of a picture, of an object's
/// preview, of a shape filled with a picture. Null when it shows none.
pugi::xml_node pictureOf(pugi::xml_node shape);

}  // namespace deck
