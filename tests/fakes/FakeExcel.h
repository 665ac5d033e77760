#pragma once

#include <map>
#include <memory>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "basic/Error.h"
#include "host/excel.h"

namespace fakes {

/// An Excel whose one workbook has sheets of cells; ranges are whole sheets. It
/// can be missing, fail to open for some attempts, and be made visible.
class ExcelProgram final : public Excel::Factory {
 public:
  struct CellData {
    std::string text;
    basic::Variant value{};
    std::string numberFormat = "General";
  };
  using SheetData = std::vector<std::vector<CellData>>;

  std::shared_ptr<Excel::Application> CreateApplication() override {
    if (!installed || created >= mostCreated)
      throw basic::Error(429, "fake Excel", "cannot create the object");
    ++created;
    return std::make_shared<Program>(*this);
  }

  bool installed = true;
  /// Beyond these no further one starts.
  int mostCreated = 1000;
  bool visible = false;
  int failingOpens = 0;
  int created = 0;
  int opened = 0;
  int closed = 0;
  int quits = 0;
  /// How the last workbook was to be opened.
  std::int32_t updateLinks = 0;
  bool readOnly = false;
  bool ignoresRemoteRequests = false;
  std::vector<std::pair<std::string, SheetData>> sheets;
  /// The ranges that its sheets know.
  std::set<std::string> ranges = {"B3:D9"};

 private:
  struct OneCell final : Excel::Cell {
    OneCell(const CellData& shown, std::int32_t atRow, std::int32_t atColumn)
        : data(shown), row(atRow), column(atColumn) {}
    std::int32_t Column() const override { return column; }
    std::int32_t Row() const override { return row; }
    std::string Text() const override { return data.text; }
    basic::Variant Value() const override { return data.value; }
    std::string NumberFormat() const override { return data.numberFormat; }
    const CellData& data;
    std::int32_t row;
    std::int32_t column;
  };
  struct WholeSheet final : Excel::Range {
    explicit WholeSheet(const SheetData& cells) : data(cells) {}
    void ForEach(const std::function<bool(const Excel::Cell&)>& visit) override {
      for (std::size_t row = 0; row < data.size(); ++row) {
        for (std::size_t column = 0; column < data[row].size(); ++column) {
          // The range begins in the third row of the second column.
          const OneCell cell(data[row][column], static_cast<std::int32_t>(row) + 3,
                             static_cast<std::int32_t>(column) + 2);
          if (!visit(cell)) return;
        }
      }
    }
    const SheetData& data;
  };
  struct Sheet final : Excel::Worksheet {
    Sheet(const std::pair<std::string, SheetData>& sheet, const std::set<std::string>& known)
        : content(sheet), ranges(known) {}
    std::string Name() const override { return content.first; }
    std::shared_ptr<Excel::Range> Range(std::string_view reference) override {
      if (!ranges.contains(std::string(reference))) throw basic::Error(1004, "fake Excel", "no such range");
      return std::make_shared<WholeSheet>(content.second);
    }
    const std::pair<std::string, SheetData>& content;
    const std::set<std::string>& ranges;
  };
  struct Book final : Excel::Workbook, Excel::Sheets, std::enable_shared_from_this<Book> {
    explicit Book(ExcelProgram& owner) : program(owner) {}
    std::shared_ptr<Excel::Sheets> Sheets() override { return shared_from_this(); }
    void Saved(bool) override {}
    void Close() override { ++program.closed; }
    std::int32_t Count() const override { return static_cast<std::int32_t>(program.sheets.size()); }
    std::shared_ptr<Excel::Worksheet> Item(std::int32_t index) override {
      return std::make_shared<Sheet>(program.sheets.at(static_cast<std::size_t>(index) - 1), program.ranges);
    }
    std::shared_ptr<Excel::Worksheet> Item(std::string_view name) override {
      for (const auto& sheet : program.sheets) {
        if (sheet.first == name) return std::make_shared<Sheet>(sheet, program.ranges);
      }
      throw basic::Error(9, "fake Excel", "no sheet " + std::string(name));
    }
    ExcelProgram& program;
  };
  struct Program final : Excel::Application, Excel::Workbooks, std::enable_shared_from_this<Program> {
    explicit Program(ExcelProgram& owner) : program(owner) {}
    void IgnoreRemoteRequests(bool ignore) override { program.ignoresRemoteRequests = ignore; }
    bool Visible() const override { return program.visible; }
    void Quit() override { ++program.quits; }
    std::shared_ptr<Excel::Workbooks> Workbooks() override { return shared_from_this(); }
    std::shared_ptr<Excel::Workbook> Open(std::string_view, std::int32_t links, bool isReadOnly) override {
      ++program.opened;
      program.updateLinks = links;
      program.readOnly = isReadOnly;
      if (program.failingOpens > 0) {
        --program.failingOpens;
        throw basic::Error(1004, "fake Excel", "the file is in use");
      }
      return std::make_shared<Book>(program);
    }
    ExcelProgram& program;
  };
};

}  // namespace fakes
