// A chart between its author's state and that of the data, with the workbook behind it.

#include "deck/charts/ChartStore.h"

#include <utility>

#include "deck/Failure.h"
#include "deck/charts/ChartBook.h"
#include "opc/Xml.h"
#include "presentationml/ShapeNode.h"

namespace deck {

RefillableChart::RefillableChart(opc::Part& part) : part_(part), author_(part.bytes()) {
  const ChartSpace chart(part.xml().document_element());
  authorsData_ = chart.data();
  data_ = authorsData_;
  categories_ = chart.categories();
  block_ = chart.block();
  findBook();

  std::string text = author_;
  const auto pattern = opc::xml::parse(text, [this] { return author_; });
  ChartSpace(pattern->document_element()).clear();
  pattern_ = opc::xml::serialize(*pattern);
}

void RefillableChart::findBook() {
  const pugi::xml_node external = part_.xml().document_element().child("c:externalData");
  const opc::Relationship* relationship =
      external ? part_.relationship(external.attribute("r:id").value()) : nullptr;
  if (relationship == nullptr) {
    if (external) fail("the relationship to its workbook is missing");
    if (!block_.sheet) block_.sheet = "Sheet1";
    return;
  }
  if (relationship->external) {
    fail("its data lie in another file, " + basic::InQuotes(relationship->target) +
         "; embed the workbook (in PowerPoint: File, Info, Edit Links to Files, Break Link, or paste it "
         "embedded)");
  }
  book_ = part_.target(*relationship);
  if (book_ == nullptr)
    fail("its embedded workbook " + basic::InQuotes(relationship->target) + " is missing");
  ChartBook book(std::string(book_->bytes()), book_->name(), block_);
  block_.sheet = book.sheet();
  // A workbook that would fail as the deck is saved fails now.
  static_cast<void>(book.filled(data_));
}

bool RefillableChart::fill(const MSGraph::Table& table) {
  ChartData data = chartData(table, categories_);
  if (data.shows(data_)) return false;
  if (data.shows(authorsData_)) return restore();

  std::string text = pattern_;
  const auto pattern = opc::xml::parse(text, [this] { return pattern_; });
  ChartSpace(pattern->document_element()).fill(data, block_);
  part_.package().setBytes(part_, opc::xml::serialize(*pattern));
  data_ = std::move(data);
  isFilled_ = true;
  isBookCurrent_ = false;
  return true;
}

bool RefillableChart::restore() {
  if (!isFilled_) return false;
  part_.package().setBytes(part_, author_);
  data_ = authorsData_;
  isFilled_ = false;
  isBookCurrent_ = false;
  return true;
}

void RefillableChart::write() {
  if (book_ == nullptr || isBookCurrent_) return;
  if (isFilled_) {
    if (!authorsBook_) authorsBook_ = std::string(book_->bytes());
    ChartBook book(*authorsBook_, book_->name(), block_);
    book_->package().setBytes(*book_, book.filled(data_));
  } else if (authorsBook_) {
    book_->package().setBytes(*book_, *std::exchange(authorsBook_, std::nullopt));
  }
  isBookCurrent_ = true;
}

RefillableChart& ChartStore::of(opc::Part& slide, pugi::xml_node frame) {
  const pugi::xml_node reference = presentationml::chartReference(frame);
  if (!reference) fail("it is a chart of a newer kind (chartex), which only PowerPoint can refill");
  const char* id = reference.attribute("r:id").value();
  opc::Part* part = slide.target(id);
  if (part == nullptr)
    fail("the part that the relationship " + basic::InQuotes(id) + " should lead to is missing");
  const auto known = charts_.find(part);
  if (known != charts_.end()) return *known->second;
  auto chart = std::make_unique<RefillableChart>(*part);
  for (const auto& [other, otherChart] : charts_) {
    if (chart->sharesBookWith(*otherChart)) {
      fail("its embedded workbook is that of another chart, " + other->name());
    }
  }
  return *charts_.emplace(part, std::move(chart)).first->second;
}

void ChartStore::write() {
  for (const auto& [part, chart] : charts_) chart->write();
}

}  // namespace deck
