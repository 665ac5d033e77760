#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "host/powerpoint.h"
#include "windows/automation/OpenPresentation.h"
#include "windows/com/Object.h"

namespace windows::automation {

/// A shape of a slide.
class Shape final : public PowerPoint::Shape {
 public:
  Shape(com::Object shape, ShapePlace place) : shape_(std::move(shape)), place_(std::move(place)) {}

  [[nodiscard]] std::int32_t Id() const override { return shape_.number(L"Id"); }
  [[nodiscard]] std::string Name() const override { return shape_.text(L"Name"); }
  void Name(std::string_view name) override { shape_.put(L"Name", name); }
  [[nodiscard]] PowerPoint::ShapeType Type() const override {
    return static_cast<PowerPoint::ShapeType>(shape_.number(L"Type"));
  }
  [[nodiscard]] double Left() const override { return shape_.real(L"Left"); }
  [[nodiscard]] double Top() const override { return shape_.real(L"Top"); }
  [[nodiscard]] double Width() const override { return shape_.real(L"Width"); }
  [[nodiscard]] double Height() const override { return shape_.real(L"Height"); }
  [[nodiscard]] bool HasTextFrame() const override { return shape_.flag(L"HasTextFrame"); }
  [[nodiscard]] std::shared_ptr<PowerPoint::TextFrame> TextFrame() override;
  [[nodiscard]] std::shared_ptr<PowerPoint::Tags> Tags() override;
  [[nodiscard]] std::shared_ptr<PowerPoint::LinkFormat> LinkFormat() override;
  [[nodiscard]] std::shared_ptr<PowerPoint::OLEFormat> OLEFormat() override;
  [[nodiscard]] bool HasTable() const override { return shape_.flag(L"HasTable"); }
  [[nodiscard]] std::shared_ptr<PowerPoint::Table> Table() override;
  [[nodiscard]] std::shared_ptr<PowerPoint::GroupShapes> GroupItems() override;

 private:
  [[nodiscard]] AuthorsOwn::Place key() const { return {place_.slide, Id()}; }

  com::Object shape_;
  ShapePlace place_;
};

class Shapes final : public PowerPoint::Shapes {
 public:
  Shapes(com::Object shapes, ShapePlace place) : shapes_(std::move(shapes)), place_(std::move(place)) {}
  [[nodiscard]] std::int32_t Count() const override { return shapes_.number(L"Count"); }
  [[nodiscard]] std::shared_ptr<PowerPoint::Shape> Item(std::int32_t index) override;
  [[nodiscard]] std::shared_ptr<PowerPoint::Shape> Item(std::string_view name) override;

 private:
  com::Object shapes_;
  ShapePlace place_;
};

}  // namespace windows::automation
