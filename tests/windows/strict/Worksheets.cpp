// Excel's application, workbooks, sheets and ranges.

#include <cstddef>
#include <string>
#include <utility>
#include <vector>

#include "windows/strict/Members.h"

namespace strict {
namespace {

/// A cell, as it was when its range was walked through.
struct Cell {
  std::int32_t row;
  std::int32_t column;
  std::string text;
  basic::Variant value;
  std::string numberFormat;
};

const Class<Cell>& cellClass() {
  static const Class<Cell> type{
      "Range",
      {get<Cell>(L"Row", [](const auto& it) { return it->row; }),
       get<Cell>(L"Column", [](const auto& it) { return it->column; }),
       get<Cell>(L"Text", [](const auto& it) { return it->text; }),
       get<Cell>(L"Value", [](const auto& it) { return it->value; }),
       get<Cell>(L"NumberFormat", [](const auto& it) { return it->numberFormat; })}};
  return type;
}

/// What "For Each" goes through.
class CellsInTurn final : public windows::com::Counted<IEnumVARIANT> {
 public:
  explicit CellsInTurn(Excel::Range& range) : Counted({IID_IUnknown, IID_IEnumVARIANT}) {
    range.ForEach([this](const Excel::Cell& cell) {
      cells_.push_back(std::make_shared<Cell>(
          Cell{cell.Row(), cell.Column(), cell.Text(), cell.Value(), cell.NumberFormat()}));
      return true;
    });
  }
  HRESULT STDMETHODCALLTYPE Next(ULONG count, VARIANT* cells, ULONG* fetched) override {
    ULONG taken = 0;
    for (; taken < count && at_ < cells_.size(); ++taken) {
      Variant cell = handedOut(dispatchOf(cells_[at_++], cellClass()));
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
  std::vector<std::shared_ptr<Cell>> cells_;
  std::size_t at_ = 0;
};

const Class<Excel::Range>& rangeClass() {
  using Target = Excel::Range;
  static const Class<Target> type{"Range", {get<Target>(L"_NewEnum", [](const auto& it) {
                                    Variant cells;
                                    VARIANT* raw = cells.out();
                                    raw->vt = VT_UNKNOWN;
                                    raw->punkVal = new CellsInTurn(*it);
                                    return cells;
                                  })}};
  return type;
}

/// The program that a sheet belongs to, as its sheets know it.
struct SheetsProgram {};

const Class<SheetsProgram>& sheetsProgramClass() {
  static const Class<SheetsProgram> type{
      "Application",
      {call<SheetsProgram>(L"Intersect", {Kind::Object, Kind::Object},
                           [](const auto&, const Arguments& arguments) { return arguments.at(0); })}};
  return type;
}

/// The fakes' ranges are their whole sheets.
struct UsedRange {};

const Class<Excel::Worksheet>& sheetClass() {
  using Target = Excel::Worksheet;
  static const Class<UsedRange> used{"Range", {}};
  static const Class<Target> type{
      "Worksheet",
      {get<Target>(L"Name", [](const auto& it) { return it->Name(); }),
       call<Target>(L"Range", {Kind::Text, optional(Kind::Text)},
                    [](const auto& it, const Arguments& arguments) {
                      return dispatchOf(it->Range(arguments.text(0)), rangeClass());
                    }),
       get<Target>(L"UsedRange", [](const auto&) { return dispatchOf(std::make_shared<UsedRange>(), used); }),
       get<Target>(L"Application", [](const auto&) {
         return dispatchOf(std::make_shared<SheetsProgram>(), sheetsProgramClass());
       })}};
  return type;
}

const Class<Excel::Sheets>& sheetsClass() {
  using Target = Excel::Sheets;
  static const Class<Target> type{
      "Sheets",
      {get<Target>(L"Count", [](const auto& it) { return it->Count(); }),
       call<Target>(L"Item", {Kind::TextOrNumber}, [](const auto& it, const Arguments& arguments) {
         return dispatchOf(arguments.isText(0) ? it->Item(arguments.text(0)) : it->Item(arguments.number(0)),
                           sheetClass());
       })}};
  return type;
}

const Class<Excel::Workbook>& workbookClass() {
  using Target = Excel::Workbook;
  static const Class<Target> type{
      "Workbook",
      {get<Target>(L"Sheets", [](const auto& it) { return dispatchOf(it->Sheets(), sheetsClass()); }),
       put<Target>(L"Saved", Kind::Flag,
                   [](const auto& it, const Arguments& arguments) { it->Saved(arguments.flag(0)); }),
       action<Target>(L"Close", [](const auto& it) { it->Close(); })}};
  return type;
}

const Class<Excel::Workbooks>& workbooksClass() {
  using Target = Excel::Workbooks;
  static const Class<Target> type{
      "Workbooks",
      {call<Target>(L"Open", {Kind::Text, optional(Kind::Number), optional(Kind::Flag)},
                    [](const auto& it, const Arguments& arguments) {
                      return dispatchOf(it->Open(arguments.text(0), arguments.number(1), arguments.flag(2)),
                                        workbookClass());
                    })}};
  return type;
}

const Class<Excel::Application>& applicationClass() {
  using Target = Excel::Application;
  static const Class<Target> type{"Excel.Application",
                                  {put<Target>(L"IgnoreRemoteRequests", Kind::Flag,
                                               [](const auto& it, const Arguments& arguments) {
                                                 it->IgnoreRemoteRequests(arguments.flag(0));
                                               }),
                                   get<Target>(L"Visible", [](const auto& it) { return it->Visible(); }),
                                   action<Target>(L"Quit", [](const auto& it) { it->Quit(); }),
                                   get<Target>(L"Workbooks", [](const auto& it) {
                                     return dispatchOf(it->Workbooks(), workbooksClass());
                                   })}};
  return type;
}

}  // namespace

Ptr<IDispatch> of(const std::shared_ptr<Excel::Application>& target) {
  return dispatchOf(target, applicationClass());
}

}  // namespace strict
