// Shapes, their texts and what they are linked to.

#include "windows/automation/Shapes.h"

#include <utility>

#include "basic/Strings.h"
#include "windows/automation/Charts.h"
#include "windows/automation/Classes.h"
#include "windows/automation/Links.h"
#include "windows/automation/Table.h"
#include "windows/automation/Tags.h"
#include "windows/automation/TriState.h"

namespace windows::automation {
namespace {

class TextRange final : public PowerPoint::TextRange {
 public:
  explicit TextRange(com::Object range) : range_(std::move(range)) {}
  [[nodiscard]] std::string Text() const override { return range_.text(L"Text"); }
  void Text(std::string_view text) override {
    range_.put(L"Text", basic::Replace(basic::Replace(text, "\r\n", "\r"), "\n", "\r"));
  }
  void InsertDateTime(PowerPoint::DateTimeFormat format, bool insertAsField) override {
    range_.put(L"Text", "");  // it is inserted into what stands there
    range_.call(L"InsertDateTime", static_cast<std::int32_t>(format), triState(insertAsField));
  }

 private:
  com::Object range_;
};

class TextFrame final : public PowerPoint::TextFrame {
 public:
  explicit TextFrame(com::Object frame) : frame_(std::move(frame)) {}
  [[nodiscard]] bool HasText() const override { return frame_.flag(L"HasText"); }
  [[nodiscard]] std::shared_ptr<PowerPoint::TextRange> TextRange() override {
    return std::make_shared<automation::TextRange>(frame_.object(classes::TextRange, L"TextRange"));
  }

 private:
  com::Object frame_;
};

class GroupShapes final : public PowerPoint::GroupShapes {
 public:
  GroupShapes(com::Object shapes, ShapePlace place) : shapes_(std::move(shapes)), place_(std::move(place)) {}
  [[nodiscard]] std::int32_t Count() const override { return shapes_.number(L"Count"); }
  [[nodiscard]] std::shared_ptr<PowerPoint::Shape> Item(std::int32_t index) override {
    return std::make_shared<Shape>(shapes_.object(classes::Shape, L"Item", index), place_);
  }

 private:
  com::Object shapes_;
  ShapePlace place_;
};

}  // namespace

std::shared_ptr<PowerPoint::TextFrame> Shape::TextFrame() {
  return std::make_shared<automation::TextFrame>(shape_.object(classes::TextFrame, L"TextFrame"));
}

std::shared_ptr<PowerPoint::Tags> Shape::Tags() {
  return std::make_shared<automation::Tags>(shape_.object(classes::Tags, L"Tags"));
}

std::shared_ptr<PowerPoint::LinkFormat> Shape::LinkFormat() { return linkFormat(shape_, place_.own, key()); }

std::shared_ptr<PowerPoint::OLEFormat> Shape::OLEFormat() { return oleFormat(shape_, place_.own, key()); }

std::shared_ptr<PowerPoint::Table> Shape::Table() {
  return std::make_shared<automation::Table>(shape_.object(classes::Table, L"Table"), place_.own, key());
}

std::shared_ptr<PowerPoint::GroupShapes> Shape::GroupItems() {
  return std::make_shared<GroupShapes>(shape_.object(classes::GroupShapes, L"GroupItems"), place_);
}

std::shared_ptr<PowerPoint::Shape> Shapes::Item(std::int32_t index) {
  return std::make_shared<Shape>(shapes_.object(classes::Shape, L"Item", index), place_);
}

std::shared_ptr<PowerPoint::Shape> Shapes::Item(std::string_view name) {
  return std::make_shared<Shape>(shapes_.object(classes::Shape, L"Item", name), place_);
}

}  // namespace windows::automation
