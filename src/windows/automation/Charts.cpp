// Charts in shapes: those of Graph, and those whose data lie in a workbook.

#include "windows/automation/Charts.h"

#include <string>
#include <utility>

#include "basic/CellReference.h"
#include "basic/Error.h"
#include "basic/Strings.h"
#include "windows/automation/Classes.h"
#include "windows/automation/Datasheet.h"
#include "windows/automation/Optional.h"

namespace windows::automation {
namespace {

namespace graph {
com::Class Chart{"Graph.Chart"};
com::Class Application{"Graph.Application"};
com::Class DataSheet{"Graph.DataSheet"};
com::Class Range{"Graph.Range"};
}  // namespace graph

namespace excel {
com::Class Workbook{"Workbook"};
com::Class Worksheets{"Worksheets"};
com::Class Worksheet{"Worksheet"};
com::Class Range{"Range"};
}  // namespace excel

/// Cells that are ranges of one cell each.
class RangeCells : public ChartCells {
 public:
  [[nodiscard]] basic::Variant cell(std::size_t row, std::size_t column) const final {
    return range(row, column).get(L"Value").value();
  }
  void cell(std::size_t row, std::size_t column, const basic::Variant& value) final {
    if (std::holds_alternative<basic::Empty>(value)) {
      range(row, column).call(L"ClearContents");
    } else {
      range(row, column).put(L"Value", value);
    }
  }

 private:
  [[nodiscard]] virtual com::Object range(std::size_t row, std::size_t column) const = 0;
};

/// Opens the cells of a chart by the object that has them.
template <typename Cells>
class SourceOf final : public CellSource {
 public:
  explicit SourceOf(com::Object object) : object_(std::move(object)) {}
  [[nodiscard]] std::unique_ptr<ChartCells> open() override { return std::make_unique<Cells>(object_); }

 private:
  com::Object object_;
};

/// In a datasheet the names of columns stand in row "0", the categories in column "0": "A0", "01", "00".
class GraphCells final : public RangeCells {
 public:
  explicit GraphCells(com::Object application)
      : application_(std::move(application)), sheet_(application_.object(graph::DataSheet, L"DataSheet")) {}
  void show(std::size_t, std::size_t) override { application_.call(L"Update"); }

 private:
  [[nodiscard]] com::Object range(std::size_t row, std::size_t column) const override {
    const std::string name = column == 0 ? "0" : basic::ColumnLetters(static_cast<std::uint32_t>(column));
    return sheet_.object(graph::Range, L"Range", name + std::to_string(row));
  }

  com::Object application_;
  com::Object sheet_;
};

/// The first sheet of the workbook behind a chart, which is closed when this goes.
class WorkbookCells final : public RangeCells {
 public:
  explicit WorkbookCells(com::Object chart) : chart_(std::move(chart)) {
    const com::Object data = chart_.object(classes::ChartData, L"ChartData");
    data.call(L"Activate");
    workbook_ = data.object(excel::Workbook, L"Workbook");
    sheet_ = workbook_.object(excel::Worksheets, L"Worksheets").object(excel::Worksheet, L"Item", 1);
  }
  WorkbookCells(const WorkbookCells&) = delete;
  WorkbookCells& operator=(const WorkbookCells&) = delete;
  ~WorkbookCells() override {
    try {
      workbook_.call(L"Close");
    } catch (const basic::Error&) {  // NOLINT(bugprone-empty-catch): the user has closed it
    }
  }
  void show(std::size_t rows, std::size_t columns) override {
    constexpr std::int32_t SeriesInColumns = 2;  // xlColumns
    const std::string sheet = basic::Replace(sheet_.text(L"Name"), "'", "''");
    chart_.call(L"SetSourceData", "='" + sheet + "'!A1:" + cellName(rows - 1, columns - 1), SeriesInColumns);
  }

 private:
  [[nodiscard]] com::Object range(std::size_t row, std::size_t column) const override {
    return sheet_.object(excel::Range, L"Range", cellName(row, column));
  }

  com::Object chart_;
  com::Object workbook_;
  com::Object sheet_;
};

class GraphChart final : public MSGraph::Chart,
                         public MSGraph::Application,
                         public std::enable_shared_from_this<GraphChart> {
 public:
  GraphChart(com::Object chart, std::shared_ptr<AuthorsOwn> own, AuthorsOwn::Place place)
      : chart_(std::move(chart)), own_(std::move(own)), place_(place) {}
  [[nodiscard]] std::shared_ptr<MSGraph::Application> Application() override { return shared_from_this(); }
  [[nodiscard]] std::shared_ptr<MSGraph::DataSheet> DataSheet() override {
    auto source = std::make_unique<SourceOf<GraphCells>>(chart_.object(graph::Application, L"Application"));
    return std::make_shared<automation::DataSheet>(std::move(source), own_, place_);
  }
  /// Its datasheet is its own.
  [[nodiscard]] bool IsLinked() const override { return false; }
  void BreakLink() override {}

 private:
  com::Object chart_;
  std::shared_ptr<AuthorsOwn> own_;
  AuthorsOwn::Place place_;
};

class WorkbookChart final : public PowerPoint::OLEFormat,
                            public MSGraph::Chart,
                            public MSGraph::Application,
                            public std::enable_shared_from_this<WorkbookChart> {
 public:
  WorkbookChart(com::Object chart, std::shared_ptr<AuthorsOwn> own, AuthorsOwn::Place place)
      : chart_(std::move(chart)), own_(std::move(own)), place_(place) {}
  [[nodiscard]] std::string ProgID() const override { return "MSGraph.Chart.8"; }
  [[nodiscard]] std::shared_ptr<MSGraph::Chart> Object() override { return shared_from_this(); }
  [[nodiscard]] std::shared_ptr<MSGraph::Application> Application() override { return shared_from_this(); }
  [[nodiscard]] std::shared_ptr<MSGraph::DataSheet> DataSheet() override {
    return std::make_shared<automation::DataSheet>(std::make_unique<SourceOf<WorkbookCells>>(chart_), own_,
                                                   place_);
  }
  [[nodiscard]] bool IsLinked() const override {
    return chart_.object(classes::ChartData, L"ChartData").flag(L"IsLinked");
  }
  void BreakLink() override {
    if (IsLinked()) chart_.object(classes::ChartData, L"ChartData").call(L"BreakLink");
  }

 private:
  com::Object chart_;
  std::shared_ptr<AuthorsOwn> own_;
  AuthorsOwn::Place place_;
};

class OLEFormat final : public PowerPoint::OLEFormat {
 public:
  OLEFormat(com::Object format, std::shared_ptr<AuthorsOwn> own, AuthorsOwn::Place place)
      : format_(std::move(format)), own_(std::move(own)), place_(place) {}
  [[nodiscard]] std::string ProgID() const override { return format_.text(L"ProgID"); }
  [[nodiscard]] std::shared_ptr<MSGraph::Chart> Object() override {
    return std::make_shared<GraphChart>(format_.object(graph::Chart, L"Object"), own_, place_);
  }

 private:
  com::Object format_;
  std::shared_ptr<AuthorsOwn> own_;
  AuthorsOwn::Place place_;
};

}  // namespace

std::shared_ptr<PowerPoint::OLEFormat> oleFormat(const com::Object& shape, std::shared_ptr<AuthorsOwn> own,
                                                 AuthorsOwn::Place place) {
  if (whereThere([&] { return shape.flag(L"HasChart"); }, false)) {
    return std::make_shared<WorkbookChart>(shape.object(classes::Chart, L"Chart"), std::move(own), place);
  }
  return std::make_shared<OLEFormat>(shape.object(classes::OLEFormat, L"OLEFormat"), std::move(own), place);
}

}  // namespace windows::automation
