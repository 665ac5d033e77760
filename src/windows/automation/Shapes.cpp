// Shapes, their texts and what they are linked to.

#include "windows/automation/Shapes.h"

#include <utility>

#include "basic/Error.h"
#include "basic/Strings.h"
#include "windows/automation/Charts.h"
#include "windows/automation/Classes.h"
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

/// The object model changes what a picture is linked to, so the author's own source is kept aside. Embedded
/// pictures, which it cannot replace, have none.
class LinkFormat final : public PowerPoint::LinkFormat {
 public:
  LinkFormat(com::Object link, std::shared_ptr<AuthorsOwn> own, AuthorsOwn::Place key)
      : link_(std::move(link)), own_(std::move(own)), key_(key) {}
  [[nodiscard]] std::string SourceFullName() const override { return link_.text(L"SourceFullName"); }
  void SourceFullName(std::string_view path) override {
    auto& pictures = own_->pictures;
    const auto found = pictures.find(key_);
    if (!path.empty()) {
      if (found == pictures.end()) pictures.emplace(key_, SourceFullName());
      link_.put(L"SourceFullName", path);
    } else if (found != pictures.end()) {
      link_.put(L"SourceFullName", found->second);
      pictures.erase(found);
    }
  }
  void Update() override { link_.call(L"Update"); }
  void BreakLink() override {
    link_.call(L"BreakLink");
    own_->pictures.erase(key_);
  }

 private:
  com::Object link_;
  std::shared_ptr<AuthorsOwn> own_;
  AuthorsOwn::Place key_;
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

std::shared_ptr<PowerPoint::LinkFormat> Shape::LinkFormat() {
  return std::make_shared<automation::LinkFormat>(shape_.object(classes::LinkFormat, L"LinkFormat"),
                                                  place_.own, key());
}

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
