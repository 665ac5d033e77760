#pragma once

#include <memory>
#include <vector>

#include "basic/Measure.h"
#include "deck/objects/Presentation.h"
#include "presentationml/Frame.h"

namespace deck {

/// The shapes of a slide in drawing order, numbered from 1: those that stand on the slide itself, a group
/// as one of them. Names may repeat; by its name the first is meant. An index or a name that is none is an
/// error.
class Shapes final : public PowerPoint::Shapes {
 public:
  Shapes(std::shared_ptr<Presentation> presentation, std::int32_t slideIndex)
      : presentation_(std::move(presentation)), slideIndex_(slideIndex) {}
  [[nodiscard]] std::int32_t Count() const override;
  [[nodiscard]] std::shared_ptr<PowerPoint::Shape> Item(std::int32_t index) override;
  [[nodiscard]] std::shared_ptr<PowerPoint::Shape> Item(std::string_view name) override;

 private:
  std::shared_ptr<Presentation> presentation_;
  std::int32_t slideIndex_;
};

/// One shape of a slide: p:sp, p:pic, p:graphicFrame, p:grpSp, p:cxnSp or p:contentPart (ECMA-376 part 1,
/// 19.3.1). What the kind does not have (a picture's TextFrame) is an error. `node` must live as long as
/// the object: as long as the slide's part is not replaced.
class Shape final : public PowerPoint::Shape {
 public:
  Shape(std::shared_ptr<Presentation> presentation, std::int32_t slideIndex, pugi::xml_node node)
      : presentation_(std::move(presentation)), slideIndex_(slideIndex), node_(node) {}

  [[nodiscard]] std::int32_t Id() const override {
    return static_cast<std::int32_t>(presentationml::shapeId(node_));
  }
  [[nodiscard]] std::string Name() const override { return std::string(presentationml::shapeName(node_)); }
  void Name(std::string_view name) override;
  [[nodiscard]] PowerPoint::ShapeType Type() const override { return presentationml::shapeType(node_); }
  [[nodiscard]] double Left() const override { return points(frame().left); }
  [[nodiscard]] double Top() const override { return points(frame().top); }
  [[nodiscard]] double Width() const override { return points(frame().width); }
  [[nodiscard]] double Height() const override { return points(frame().height); }
  [[nodiscard]] bool HasTextFrame() const override;
  [[nodiscard]] std::shared_ptr<PowerPoint::TextFrame> TextFrame() override;
  [[nodiscard]] std::shared_ptr<PowerPoint::Tags> Tags() override;
  [[nodiscard]] std::shared_ptr<PowerPoint::LinkFormat> LinkFormat() override;
  [[nodiscard]] std::shared_ptr<PowerPoint::OLEFormat> OLEFormat() override;
  [[nodiscard]] bool HasTable() const override;
  [[nodiscard]] std::shared_ptr<PowerPoint::Table> Table() override;
  [[nodiscard]] std::shared_ptr<PowerPoint::GroupShapes> GroupItems() override;

  /// The shape's element in the slide's part.
  [[nodiscard]] pugi::xml_node node() const { return node_; }

 private:
  [[nodiscard]] presentationml::Frame frame() const {
    return presentationml::frameOf(node_, presentation_->slidePart(slideIndex_));
  }
  [[nodiscard]] static double points(double emu) { return emu / basic::EmuPerPoint; }
  [[noreturn]] void failFor(const char* what) const;

  std::shared_ptr<Presentation> presentation_;
  std::int32_t slideIndex_;
  pugi::xml_node node_;
};

class GroupShapes final : public PowerPoint::GroupShapes {
 public:
  GroupShapes(std::shared_ptr<Presentation> presentation, std::int32_t slideIndex, pugi::xml_node group);
  [[nodiscard]] std::int32_t Count() const override { return static_cast<std::int32_t>(items_.size()); }
  [[nodiscard]] std::shared_ptr<PowerPoint::Shape> Item(std::int32_t index) override;

 private:
  void collect(pugi::xml_node group);

  std::shared_ptr<Presentation> presentation_;
  std::int32_t slideIndex_;
  std::vector<pugi::xml_node> items_;
};

/// A shape's frame and its text in one, for the frame has nothing else to offer.
class ShapeText final : public PowerPoint::TextFrame,
                        public PowerPoint::TextRange,
                        public std::enable_shared_from_this<ShapeText> {
 public:
  ShapeText(std::shared_ptr<Presentation> presentation, std::int32_t slideIndex, pugi::xml_node shape)
      : presentation_(std::move(presentation)), slideIndex_(slideIndex), shape_(shape) {}

  [[nodiscard]] bool HasText() const override { return !Text().empty(); }
  [[nodiscard]] std::shared_ptr<PowerPoint::TextRange> TextRange() override { return shared_from_this(); }
  /// Paragraphs are separated by CR, line breaks are VT.
  [[nodiscard]] std::string Text() const override;
  /// The first run's look stays for all of it. Listeners of the presentation are told.
  void Text(std::string_view text) override;
  void InsertDateTime(PowerPoint::DateTimeFormat format, bool insertAsField) override;

 private:
  std::shared_ptr<Presentation> presentation_;
  std::int32_t slideIndex_;
  pugi::xml_node shape_;
};

}  // namespace deck
