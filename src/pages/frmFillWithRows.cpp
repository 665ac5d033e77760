// Which columns, which rows, in which order: the plan is made anew with every change and shown.

#include "pages/frmFillWithRows.h"

#include <algorithm>
#include <cstdlib>
#include <utility>
#include <vector>

#include "basic/Conversion.h"
#include "basic/Strings.h"
#include "model/clsShape.h"
#include "model/modFieldNames.h"
#include "model/modFillRows.h"
#include "pages/modLastUsed.h"

namespace LF2000 {

frmFillWithRows::frmFillWithRows(std::shared_ptr<clsPresentation> presentation,
                                 modSelected::Selected selected)
    : frmShapesPage("frmFillWithRows", "Fill with rows", Forms::Placement::Dialog, std::move(presentation),
                    std::move(selected)),
      cmbConnection_(Add<Forms::ComboBox>("cmbConnection")),
      lstColumns_(Add<Forms::ListBox>("lstColumns", std::vector<std::string>(), true)),
      txtStart_(Add<Forms::TextBox>("txtStart")),
      udStart_(Add<Forms::UpDown>("udStart", txtStart_, 1, modManyLinks::MostRows)),
      txtStep_(Add<Forms::TextBox>("txtStep")),
      optPlaces_(Add<Forms::OptionButton>("optPlaces", "as they stand, line by &line", "order")),
      optNumbers_(Add<Forms::OptionButton>("optNumbers", "by the &number in their names", "order")),
      lstPlan_(Add<Forms::ListBox>("lstPlan", std::vector<std::string>{"Shape", "Column", "Row", "Shows"})),
      lblWhy_(Add<Forms::Label>("lblWhy")) {
  cmbConnection_.Change = [this] {
    number_ = NumberIn(cmbConnection_.Text());
    ShowColumns();
    ShowPlan();
  };
  for (Forms::Control* control : std::initializer_list<Forms::Control*>{&lstColumns_, &txtStart_, &txtStep_,
                                                                        &optPlaces_, &optNumbers_}) {
    control->Change = [this] { ShowPlan(); };
  }
  const std::size_t across = modFillRows::CountAcross(Shapes());
  if (across > 1) {
    lstColumns_.Hint("One for all shapes, or " + std::to_string(across) + " for the " +
                     std::to_string(across) + " shapes of each line.");
  }
  const bool areNumbered = modFillRows::AreNumbered(Shapes());
  optPlaces_.Value(!areNumbered);
  optNumbers_.Value(areNumbered);
  optNumbers_.Enabled(areNumbered, "The names differ in more than a number.");
  AddRow("&Connection", {&cmbConnection_});
  AddRow("C&olumns across", {&lstColumns_});
  AddRow("First &row", {&txtStart_, &udStart_});
  AddRow("&Step", {&txtStep_});
  AddRow("Order", {&optPlaces_, &optNumbers_});
  AddRow("", {&lstPlan_});
  AddRow("", {&lblWhy_});
  AddOKCancel();
  Propose();
}

/// As the first shape is linked, or as its name suggests.
void frmFillWithRows::Propose() {
  clsShape link;
  link.ShapeItem(Shapes().front());
  number_ = link.ConnectionTagNumber().empty() ? ProposedConnection() : link.ConnectionTagNumber();
  std::string column = link.ColumnName();
  double row = link.Row() > 0 ? link.Row() : modLastUsed::Row + 1.0;
  ShowColumns();
  std::string why;
  const auto connection = Readable(number_, why);
  if (connection && column.empty()) {
    const auto field =
        modFieldNames::Suggest(Shapes().front()->Name(), modFieldNames::ColumnNames(connection->Columns()));
    if (field) column = field->Column;
    if (field && field->Row > 0) row = field->Row;
  }
  const Forms::Items& items = lstColumns_.Items();
  for (std::size_t i = 0; i < items.size(); ++i) {
    if (basic::EqualsIgnoreCase(items[i].Text, column)) lstColumns_.Selected({static_cast<std::int64_t>(i)});
  }
  txtStart_.Text(basic::CStr(row));
  txtStep_.Text("1");
}

void frmFillWithRows::Reload() {
  ShowConnections(cmbConnection_);
  cmbConnection_.Text(ConnectionText(number_));
  ShowPlan();
}

void frmFillWithRows::ShowNow() { ShowPlan(); }

/// Columns that are chosen stay so where the connection has them.
void frmFillWithRows::ShowColumns() {
  std::vector<std::string> chosen;
  for (const std::int64_t place : lstColumns_.Selected()) {
    chosen.push_back(basic::UCase(lstColumns_.Items()[static_cast<std::size_t>(place)].Text));
  }
  std::string why;
  const auto connection = Readable(number_, why);
  Forms::Items items;
  Forms::Places places;
  const std::vector<std::string> columns = connection ? connection->Columns() : std::vector<std::string>(1);
  for (std::size_t i = 1; i < columns.size(); ++i) {
    if (columns[i].empty() || !modFieldNames::CanBeLinked(columns[i])) continue;
    const bool isChosen = std::find(chosen.begin(), chosen.end(), basic::UCase(columns[i])) != chosen.end();
    if (isChosen) places.push_back(static_cast<std::int64_t>(items.size()));
    items.push_back({columns[i]});
  }
  lstColumns_.Items(std::move(items));
  lstColumns_.Selected(std::move(places));
}

bool frmFillWithRows::MakePlan(modManyLinks::Plan& plan) {
  const auto start = WholeNumber(txtStart_.Text());
  const auto step = WholeNumber(txtStep_.Text());
  const bool isRow = start && *start >= 1 && *start <= modManyLinks::MostRows;
  const bool isStep = step && std::abs(*step) <= modManyLinks::MostRows;
  if (!isRow) Complain(txtStart_, "Rows count from 1 to " + std::to_string(modManyLinks::MostRows) + ".");
  if (!isStep) Complain(txtStep_, "How many rows from one shape to the next, such as 1, 0 or -1.");
  if (!isRow || !isStep) return false;
  modFillRows::Wish wish;
  for (const std::int64_t place : lstColumns_.Selected()) {
    wish.Columns.push_back(lstColumns_.Items()[static_cast<std::size_t>(place)].Text);
  }
  wish.FirstRow = static_cast<std::int32_t>(*start);
  wish.Step = static_cast<std::int32_t>(*step);
  wish.By = optNumbers_.Value() ? modFillRows::Order::Numbers : modFillRows::Order::Places;
  modFillRows::Plan(plan, Slide(), Shapes(), wish, modLinkEdits::SourceOf(*Presentation(), number_));
  return true;
}

void frmFillWithRows::ShowPlan() {
  modManyLinks::Plan plan;
  std::string why;
  static_cast<void>(MakePlan(plan));
  static_cast<void>(Readable(number_, why));
  if (why.empty() && lstColumns_.Selected().empty()) why = "Choose a column.";
  Forms::Items items;
  for (const modManyLinks::PlannedLink& link : plan.Links) {
    items.push_back({link.Shape->Name(),
                     "",
                     true,
                     {link.Value.Column, std::to_string(link.Value.Row),
                      PresentValue(number_, link.Value.Column, link.Value.Row)}});
  }
  lstPlan_.Items(std::move(items));
  for (const std::string& sentence : plan.Hindrances) why += (why.empty() ? "" : "\n") + sentence;
  lblWhy_.Text(why, Forms::Severity::Warning);
}

bool frmFillWithRows::Apply() {
  modManyLinks::Plan plan;
  if (!MakePlan(plan)) return false;
  if (lstColumns_.Selected().empty()) {
    Complain(lstColumns_, "Choose a column.");
    return false;
  }
  // What hinders has been shown; a part of the shapes alone is not what was asked for.
  if (!plan.Hindrances.empty()) {
    ShowPlan();
    return false;
  }
  modLinkEdits::Link(*Presentation(), plan);
  modLastUsed::Connection = number_;
  modLastUsed::Row = plan.Links.back().Value.Row;
  return true;
}

}  // namespace LF2000
