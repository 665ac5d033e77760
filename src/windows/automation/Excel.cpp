// Worksheets by way of Excel. Its objects lie in another process: a cell is asked for no more than is used.

#include "windows/automation/Excel.h"

#include <string>
#include <string_view>
#include <utility>

#include "windows/com/Failure.h"
#include "windows/com/Object.h"

namespace windows::automation {
namespace {

namespace books {
com::Class Application{"Excel.Application"};
com::Class Workbooks{"Workbooks"};
com::Class Workbook{"Workbook"};
com::Class Sheets{"Sheets"};
com::Class Worksheet{"Worksheet"};
com::Class Range{"Range"};
}  // namespace books

class Cell final : public Excel::Cell {
 public:
  explicit Cell(com::Object cell) : cell_(std::move(cell)) {}
  [[nodiscard]] std::int32_t Column() const override { return cell_.number(L"Column"); }
  [[nodiscard]] std::int32_t Row() const override { return cell_.number(L"Row"); }
  [[nodiscard]] std::string Text() const override { return cell_.text(L"Text"); }
  [[nodiscard]] basic::Variant Value() const override { return cell_.get(L"Value").value(); }
  [[nodiscard]] std::string NumberFormat() const override { return cell_.text(L"NumberFormat"); }

 private:
  com::Object cell_;
};

class Range final : public Excel::Range {
 public:
  explicit Range(com::Object range) : range_(std::move(range)) {}
  void ForEach(const std::function<bool(const Excel::Cell&)>& visit) override {
    const auto cells = range_.get(L"_NewEnum").unknown().as<IEnumVARIANT>(IID_IEnumVARIANT);
    if (!cells) com::raise(E_NOINTERFACE, "Range._NewEnum");
    while (true) {
      com::Variant cell;
      const HRESULT result = cells->Next(1, cell.out(), nullptr);
      com::check(result, "Range._NewEnum");
      if (result != S_OK || !visit(Cell({cell.object(), books::Range}))) return;
    }
  }

 private:
  com::Object range_;
};

class Worksheet final : public Excel::Worksheet {
 public:
  explicit Worksheet(com::Object sheet) : sheet_(std::move(sheet)) {}
  [[nodiscard]] std::string Name() const override { return sheet_.text(L"Name"); }
  [[nodiscard]] std::shared_ptr<Excel::Range> Range(std::string_view reference) override {
    com::Object range = sheet_.object(books::Range, L"Range", reference);
    if (isWhole(reference)) {  // a whole column is a million of cells: it ends with the data
      const com::Object used = sheet_.object(books::Range, L"UsedRange");
      const com::Object excel = sheet_.object(books::Application, L"Application");
      const com::Ptr<IDispatch> inUse = excel.get(L"Intersect", range, used).object();
      if (inUse) range = com::Object(inUse, books::Range);
    }
    return std::make_shared<automation::Range>(std::move(range));
  }

 private:
  /// "A:C", "1:5": without columns or without rows.
  static bool isWhole(std::string_view reference) {
    const auto has = [&](std::string_view any) { return reference.find_first_of(any) != reference.npos; };
    return has(":") && (!has("0123456789") || !has("ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz"));
  }

  com::Object sheet_;
};

class Sheets final : public Excel::Sheets {
 public:
  explicit Sheets(com::Object sheets) : sheets_(std::move(sheets)) {}
  [[nodiscard]] std::int32_t Count() const override { return sheets_.number(L"Count"); }
  [[nodiscard]] std::shared_ptr<Excel::Worksheet> Item(std::int32_t index) override {
    return std::make_shared<Worksheet>(sheets_.object(books::Worksheet, L"Item", index));
  }
  [[nodiscard]] std::shared_ptr<Excel::Worksheet> Item(std::string_view name) override {
    return std::make_shared<Worksheet>(sheets_.object(books::Worksheet, L"Item", name));
  }

 private:
  com::Object sheets_;
};

class Workbook final : public Excel::Workbook {
 public:
  explicit Workbook(com::Object workbook) : workbook_(std::move(workbook)) {}
  [[nodiscard]] std::shared_ptr<Excel::Sheets> Sheets() override {
    return std::make_shared<automation::Sheets>(workbook_.object(books::Sheets, L"Sheets"));
  }
  void Saved(bool saved) override { workbook_.put(L"Saved", saved); }
  void Close() override { workbook_.call(L"Close"); }

 private:
  com::Object workbook_;
};

class Workbooks final : public Excel::Workbooks {
 public:
  explicit Workbooks(com::Object workbooks) : workbooks_(std::move(workbooks)) {}
  [[nodiscard]] std::shared_ptr<Excel::Workbook> Open(std::string_view path, std::int32_t updateLinks,
                                                      bool readOnly) override {
    return std::make_shared<Workbook>(
        workbooks_.object(books::Workbook, L"Open", path, updateLinks, readOnly));
  }

 private:
  com::Object workbooks_;
};

class ExcelApplication final : public Excel::Application {
 public:
  explicit ExcelApplication(com::Object application) : application_(std::move(application)) {}
  void IgnoreRemoteRequests(bool ignore) override { application_.put(L"IgnoreRemoteRequests", ignore); }
  [[nodiscard]] bool Visible() const override { return application_.flag(L"Visible"); }
  void Quit() override { application_.call(L"Quit"); }
  [[nodiscard]] std::shared_ptr<Excel::Workbooks> Workbooks() override {
    return std::make_shared<automation::Workbooks>(application_.object(books::Workbooks, L"Workbooks"));
  }

 private:
  com::Object application_;
};

}  // namespace

std::shared_ptr<Excel::Application> ExcelFactory::CreateApplication() {
  return std::make_shared<ExcelApplication>(com::Object::create(L"Excel.Application", books::Application));
}

}  // namespace windows::automation
