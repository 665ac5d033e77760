// Excel's application, workbooks, sheets and ranges.

#include <cstddef>
#include <string>
#include <utility>
#include <vector>

#include "windows/strict/Members.h"

namespace strict {
namespace {

/// A cell, as it was when its range was walked through.
struct SheetCell {
  std::int32_t row;
  std::int32_t column;
  std::string text;
  basic::Variant value;
  std::string numberFormat;
};

}  // namespace

Class<SheetCell> describe(Tag<SheetCell>) {
  return Table<SheetCell>("Range")
      .get(L"Row", [](const auto& it) { return it->row; })
      .get(L"Column", [](const auto& it) { return it->column; })
      .get(L"Text", [](const auto& it) { return it->text; })
      .get(L"Value", [](const auto& it) { return it->value; })
      .get(L"NumberFormat", [](const auto& it) { return it->numberFormat; });
}

namespace {

/// What "For Each" goes through.
class CellsInTurn final : public windows::com::Counted<IEnumVARIANT> {
 public:
  explicit CellsInTurn(Excel::Range& range) : Counted({IID_IUnknown, IID_IEnumVARIANT}) {
    range.ForEach([this](const Excel::Cell& cell) {
      cells_.push_back(std::make_shared<SheetCell>(
          SheetCell{cell.Row(), cell.Column(), cell.Text(), cell.Value(), cell.NumberFormat()}));
      return true;
    });
  }
  HRESULT STDMETHODCALLTYPE Next(ULONG count, VARIANT* cells, ULONG* fetched) override {
    ULONG taken = 0;
    for (; taken < count && at_ < cells_.size(); ++taken) {
      Variant cell = given(cells_[at_++]);
      VariantInit(&cells[taken]);
      VariantCopy(&cells[taken], const_cast<VARIANT*>(&cell.raw()));
    }
    if (fetched != nullptr) *fetched = taken;
    return taken == count ? S_OK : S_FALSE;
  }
  HRESULT STDMETHODCALLTYPE Skip(ULONG) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE Reset() override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE Clone(IEnumVARIANT**) override { return E_NOTIMPL; }

 private:
  std::vector<std::shared_ptr<SheetCell>> cells_;
  std::size_t at_ = 0;
};

/// The program that a sheet belongs to, as its sheets know it.
struct SheetsProgram {};

/// The fakes' ranges are their whole sheets.
struct UsedRange {};

}  // namespace

Class<Excel::Range> describe(Tag<Excel::Range>) {
  return Table<Excel::Range>("Range").get(L"_NewEnum", [](const auto& it) {
    Variant cells;
    VARIANT* raw = cells.out();
    raw->vt = VT_UNKNOWN;
    raw->punkVal = new CellsInTurn(*it);
    return cells;
  });
}

Class<SheetsProgram> describe(Tag<SheetsProgram>) {
  return Table<SheetsProgram>("Application")
      .call(L"Intersect", {Kind::Object, Kind::Object},
            [](const auto&, const Arguments& arguments) { return arguments.at(0); });
}

Class<UsedRange> describe(Tag<UsedRange>) { return Table<UsedRange>("Range"); }

Class<Excel::Worksheet> describe(Tag<Excel::Worksheet>) {
  using Excel::Worksheet;
  return Table<Worksheet>("Worksheet")
      .get(L"Name", &Worksheet::Name)
      .call(L"Range", {Kind::Text, optional(Kind::Text)}, &Worksheet::Range)
      .get(L"UsedRange", [](const auto&) { return std::make_shared<UsedRange>(); })
      .get(L"Application", [](const auto&) { return std::make_shared<SheetsProgram>(); });
}

Class<Excel::Sheets> describe(Tag<Excel::Sheets>) { return Table<Excel::Sheets>("Sheets").collection(); }

Class<Excel::Workbook> describe(Tag<Excel::Workbook>) {
  using Excel::Workbook;
  return Table<Workbook>("Workbook")
      .get(L"Sheets", &Workbook::Sheets)
      .put(L"Saved", Kind::Flag, &Workbook::Saved)
      .call(L"Close", &Workbook::Close);
}

Class<Excel::Workbooks> describe(Tag<Excel::Workbooks>) {
  return Table<Excel::Workbooks>("Workbooks")
      .call(L"Open", {Kind::Text, optional(Kind::Number), optional(Kind::Flag)}, &Excel::Workbooks::Open);
}

Class<Excel::Application> describe(Tag<Excel::Application>) {
  using Excel::Application;
  return Table<Application>("Excel.Application")
      .put(L"IgnoreRemoteRequests", Kind::Flag, &Application::IgnoreRemoteRequests)
      .get(L"Visible", &Application::Visible)
      .call(L"Quit", &Application::Quit)
      .get(L"Workbooks", &Application::Workbooks);
}

}  // namespace strict
