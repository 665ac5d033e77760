#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "host/table.h"
#include "windows/automation/OpenPresentation.h"
#include "windows/com/Object.h"

namespace windows::automation {

class Table final : public PowerPoint::Table {
 public:
  Table(com::Object table, std::shared_ptr<AuthorsOwn> own, AuthorsOwn::Place place)
      : table_(std::move(table)), own_(std::move(own)), place_(place) {}
  [[nodiscard]] std::int32_t RowCount() const override;
  [[nodiscard]] std::int32_t ColumnCount() const override;
  [[nodiscard]] bool FirstRow() const override;
  [[nodiscard]] bool LastRow() const override;
  [[nodiscard]] bool IsCovered(std::int32_t row, std::int32_t column) const override;
  [[nodiscard]] std::string Text(std::int32_t row, std::int32_t column) const override;
  void Text(std::int32_t row, std::int32_t column, std::string_view text) override;
  void Restore() override;

 private:
  [[nodiscard]] com::Object cellShape(std::int32_t row, std::int32_t column) const;
  [[nodiscard]] com::Object textRange(std::int32_t row, std::int32_t column) const;

  com::Object table_;
  std::shared_ptr<AuthorsOwn> own_;
  AuthorsOwn::Place place_;
};

}  // namespace windows::automation
