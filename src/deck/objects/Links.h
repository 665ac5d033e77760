#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "deck/objects/Presentation.h"

namespace deck {

/// Of a picture or a linked object. What it is given to show is of no lasting
/// effect: the deck's own file keeps the shape's own picture (LivePictures).
class LinkFormat final : public PowerPoint::LinkFormat {
 public:
  LinkFormat(std::shared_ptr<Presentation> presentation, std::int32_t slideIndex, pugi::xml_node shape)
      : presentation_(std::move(presentation)), slideIndex_(slideIndex), shape_(shape) {}
  [[nodiscard]] std::string SourceFullName() const override;
  void SourceFullName(std::string_view path) override { shown_ = path; }
  void Update() override;
  void BreakLink() override { presentation_->breakLink(slideIndex_, shape_); }

 private:
  std::shared_ptr<Presentation> presentation_;
  std::int32_t slideIndex_;
  pugi::xml_node shape_;
  std::optional<std::string> shown_;
};

class OLEFormat final : public PowerPoint::OLEFormat {
 public:
  explicit OLEFormat(std::string progId) : progId_(std::move(progId)) {}
  [[nodiscard]] std::string ProgID() const override { return progId_; }
  [[nodiscard]] std::shared_ptr<MSGraph::Chart> Object() override;

 private:
  std::string progId_;
};

/// The source of a shape that is linked to a file; empty when it is not.
std::string linkSource(const Presentation& presentation, std::int32_t slideIndex, pugi::xml_node shape);

/// The path that an external relationship's target means: of a file URL the
/// path, as its system writes it ("C:\data\book.xlsx!Sheet1!R1C1:R2C2",
/// "\\server\share\a.png", "/data/a.png"); a relative target lies beside the
/// deck; other URLs are themselves.
std::string sourcePath(std::string_view target, std::string_view deckPath);

}  // namespace deck
