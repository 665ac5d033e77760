#pragma once

#include "host/powerpoint.h"
#include "windows/com/Object.h"

namespace windows::automation {

class Tags final : public PowerPoint::Tags {
 public:
  explicit Tags(com::Object tags) : tags_(std::move(tags)) {}
  [[nodiscard]] std::int32_t Count() const override { return tags_.number(L"Count"); }
  [[nodiscard]] std::string Name(std::int32_t index) const override { return tags_.text(L"Name", index); }
  [[nodiscard]] std::string Value(std::int32_t index) const override { return tags_.text(L"Value", index); }
  void Add(std::string_view name, std::string_view value) override { tags_.call(L"Add", name, value); }
  void Delete(std::string_view name) override { tags_.call(L"Delete", name); }

 private:
  com::Object tags_;
};

}  // namespace windows::automation
