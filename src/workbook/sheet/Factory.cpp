// The port's workbooks, sheets and ranges over the reader's.

#include "workbook/sheet/Factory.h"

#include <cstddef>
#include <utility>
#include <vector>

#include "workbook/Failure.h"
#include "workbook/book/Opener.h"
#include "workbook/sheet/SheetRange.h"

namespace workbook {
namespace {

using Translate = std::function<std::string(std::string_view)>;

class Worksheet final : public Excel::Worksheet {
 public:
  Worksheet(std::shared_ptr<Book> book, std::size_t sheet, std::shared_ptr<Opener> opener)
      : book_(std::move(book)), sheet_(sheet), opener_(std::move(opener)) {}

  [[nodiscard]] std::string Name() const override { return book_->sheets()[sheet_].name; }
  [[nodiscard]] std::shared_ptr<Excel::Range> Range(std::string_view reference) override {
    return std::make_shared<SheetRange>(book_, book_->resolve(sheet_, reference), opener_->loop());
  }

 private:
  std::shared_ptr<Book> book_;
  std::size_t sheet_;
  std::shared_ptr<Opener> opener_;
};

class Sheets final : public Excel::Sheets {
 public:
  Sheets(std::shared_ptr<Book> book, std::shared_ptr<Opener> opener)
      : book_(std::move(book)), opener_(std::move(opener)) {
    const std::vector<SheetEntry>& all = book_->sheets();
    for (std::size_t i = 0; i < all.size(); ++i) {
      if (all[i].isWorksheet) worksheets_.push_back(i);
    }
  }

  [[nodiscard]] std::int32_t Count() const override { return static_cast<std::int32_t>(worksheets_.size()); }
  [[nodiscard]] std::shared_ptr<Excel::Worksheet> Item(std::int32_t index) override {
    if (index < 1 || index > Count()) {
      fail("workbook " + basic::InQuotes(book_->parts().path()) + " has no worksheet " +
           std::to_string(index) + ", it has " + std::to_string(Count()));
    }
    return worksheet(worksheets_[static_cast<std::size_t>(index) - 1]);
  }
  [[nodiscard]] std::shared_ptr<Excel::Worksheet> Item(std::string_view name) override {
    return worksheet(book_->find(name));
  }

 private:
  [[nodiscard]] std::shared_ptr<Excel::Worksheet> worksheet(std::size_t sheet) const {
    return std::make_shared<Worksheet>(book_, sheet, opener_);
  }

  std::shared_ptr<Book> book_;
  std::shared_ptr<Opener> opener_;
  std::vector<std::size_t> worksheets_;
};

class Workbook final : public Excel::Workbook {
 public:
  Workbook(std::shared_ptr<Book> book, std::shared_ptr<Opener> opener)
      : book_(std::move(book)), opener_(std::move(opener)) {}

  [[nodiscard]] std::shared_ptr<Excel::Sheets> Sheets() override {
    if (!book_) fail("the workbook is closed");
    return std::make_shared<workbook::Sheets>(book_, opener_);
  }
  void Saved(bool) override {}
  void Close() override { book_.reset(); }

 private:
  std::shared_ptr<Book> book_;
  std::shared_ptr<Opener> opener_;
};

class Workbooks final : public Excel::Workbooks {
 public:
  Workbooks(std::shared_ptr<Opener> opener, Translate translate)
      : opener_(std::move(opener)), translate_(std::move(translate)) {}

  [[nodiscard]] std::shared_ptr<Excel::Workbook> Open(std::string_view path, std::int32_t, bool) override {
    return std::make_shared<Workbook>(opener_->open(translate_(path)), opener_);
  }

 private:
  std::shared_ptr<Opener> opener_;
  Translate translate_;
};

class Application final : public Excel::Application {
 public:
  Application(std::shared_ptr<Opener> opener, Translate translate)
      : opener_(std::move(opener)), translate_(std::move(translate)) {}

  void IgnoreRemoteRequests(bool) override {}
  [[nodiscard]] bool Visible() const override { return false; }
  void Quit() override {}
  [[nodiscard]] std::shared_ptr<Excel::Workbooks> Workbooks() override {
    return std::make_shared<workbook::Workbooks>(opener_, translate_);
  }

 private:
  std::shared_ptr<Opener> opener_;
  Translate translate_;
};

}  // namespace

Factory::Factory(host::Loop& loop, Translate translate, Converter::Options conversion)
    : opener_(std::make_shared<Opener>(loop, std::move(conversion))), translate_(std::move(translate)) {}

Factory::~Factory() = default;

std::shared_ptr<Excel::Application> Factory::CreateApplication() {
  return std::make_shared<Application>(opener_, translate_);
}

}  // namespace workbook
