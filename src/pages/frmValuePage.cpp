// How a page for values reads the links of its shapes, proposes what is missing, and writes what was touched.

#include "pages/frmValuePage.h"

#include <algorithm>
#include <cstdlib>
#include <utility>

#include "basic/Conversion.h"
#include "basic/Strings.h"
#include "model/modRelink.h"
#include "pages/modLastUsed.h"

namespace LF2000 {

using modManyLinks::MostRows;

frmValuePage::frmValuePage(std::string name, std::string caption, Forms::Placement placement,
                           std::shared_ptr<clsPresentation> presentation, modSelected::Selected selected,
                           SourceType type)
    : frmShapesPage(std::move(name), std::move(caption), placement, std::move(presentation),
                    std::move(selected)),
      type_(type),
      cmbConnection_(Add<Forms::ComboBox>("cmbConnection")),
      cmdManage_(Add<Forms::CommandButton>("cmdManage", "&Manage…")),
      cmbColumn_(Add<Forms::ComboBox>("cmbColumn", true)),
      cmdNearest_(Add<Forms::CommandButton>("cmdNearest", "")),
      txtRow_(Add<Forms::TextBox>("txtRow")),
      udRow_(Add<Forms::UpDown>("udRow", txtRow_, 1, MostRows)),
      txtStep_(Add<Forms::TextBox>("txtStep")),
      lblNow_(Add<Forms::Label>("lblNow")),
      lblFresh_(Add<Forms::Label>("lblFresh")),
      lblFill_(Add<Forms::Label>("lblFill")),
      cmdFill_(Add<Forms::CommandButton>("cmdFill", "")),
      cmdLink_(Add<Forms::CommandButton>("cmdLink", "&Link")),
      cmdUnlink_(Add<Forms::CommandButton>("cmdUnlink", "&Unlink")) {
  cmbConnection_.Change = [this] { cmbConnection_Change(); };
  cmdManage_.Click = [this] { Manage(); };
  cmbColumn_.Change = [this] { TakeColumn(/*isLeft=*/false); };
  cmbColumn_.LostFocus = [this] { TakeColumn(/*isLeft=*/true); };
  cmdNearest_.Click = [this] { cmdNearest_Click(); };
  txtRow_.Change = [this] { txtRow_Change(); };
  txtRow_.LostFocus = [this] { ShowAll(nullptr); };
  txtStep_.Change = [this] { txtStep_Change(); };
  txtStep_.LostFocus = [this] { ShowAll(nullptr); };
  cmdFill_.Click = [this] { cmdFill_Click(); };
  cmdLink_.Click = [this] {
    if (Apply()) Reload();
  };
  cmdUnlink_.Click = [this] { Unlink(); };
  Read();
}

void frmValuePage::AddSourceRows() {
  AddLeftOut();
  AddRow("&Connection", {&cmbConnection_, &cmdManage_});
  AddRow("C&olumn", {&cmbColumn_, &cmdNearest_});
  AddRow("&Row", {&txtRow_, &udRow_});
  AddRow("Count up &by", {&txtStep_});
  txtStep_.Visible(Shapes().size() > 1);
}

void frmValuePage::AddStateRows() {
  AddRow("Shows now", {&lblNow_});
  AddRow("", {&lblFresh_});
  AddRow("", {&lblFill_, &cmdFill_});
  AddRow("", {&cmdLink_, &cmdUnlink_});
}

void frmValuePage::Read() {
  drafts_.clear();
  clsShape link;
  for (const auto& shape : Shapes()) {
    link.ShapeItem(shape);
    Draft draft;
    draft.Shape = shape;
    draft.IsLinked = link.SourceType() == static_cast<std::int32_t>(type_);
    if (draft.IsLinked) {
      draft.Connection = link.ConnectionTagNumber();
      draft.Column = link.ColumnName();
      draft.Row = link.Row();
      draft.Folder = link.ObjectFolder();
      draft.Extension = link.ObjectExtension();
    }
    drafts_.push_back(std::move(draft));
  }
  stored_ = drafts_;
  std::size_t place = 0;
  for (Draft& draft : drafts_) {
    if (!draft.IsLinked) Propose(draft, place++);
  }
}

void frmValuePage::Propose(Draft& draft, std::size_t place) {
  const auto linked =
      std::find_if(drafts_.begin(), drafts_.end(), [](const Draft& each) { return each.IsLinked; });
  if (linked != drafts_.end()) {
    draft.Connection = linked->Connection;
    draft.Folder = linked->Folder;
    draft.Extension = linked->Extension;
  } else {
    draft.Connection = ProposedConnection();
  }
  draft.Row = static_cast<double>(modLastUsed::Row) + 1 + static_cast<double>(place);
  SuggestColumn(draft);
}

void frmValuePage::SuggestColumn(Draft& draft) const {
  std::string why;
  const auto connection = Readable(draft.Connection, why);
  if (!connection) return;
  const auto field =
      modFieldNames::Suggest(draft.Shape->Name(), modFieldNames::ColumnNames(connection->Columns()));
  if (!field) return;
  draft.Column = field->Column;
  if (field->Row > 0) draft.Row = field->Row;
}

void frmValuePage::Reload() {
  if (IsDocked()) Read();
  ShowAll(nullptr);
}

std::string frmValuePage::Common(std::string Draft::*field) const {
  const std::string& first = drafts_.front().*field;
  const bool isCommon =
      std::all_of(drafts_.begin(), drafts_.end(), [&](const Draft& draft) { return draft.*field == first; });
  return isCommon ? first : std::string(Various);
}

void frmValuePage::cmbConnection_Change() {
  const std::string number = NumberIn(cmbConnection_.Text());
  if (number.empty()) return;
  std::string why;
  const auto connection = Readable(number, why);
  const modFieldNames::ColumnNames columns(connection ? connection->Columns() : std::vector<std::string>(1));
  for (Draft& draft : drafts_) {
    draft.Connection = number;
    if (const std::string* column = columns.Find(draft.Column)) {
      draft.Column = *column;
    } else if (!draft.IsLinked) {
      SuggestColumn(draft);
    }
  }
  Complain(cmbColumn_, "");
  Changed("Link " + ShapesName(), cmbConnection_);
}

/// A name that has only begun is nothing to complain about until the box is left.
void frmValuePage::TakeColumn(bool isLeft) {
  const std::string text = cmbColumn_.Text();
  if (text == Various || text == Common(&Draft::Column)) return;
  if (!modFieldNames::CanBeLinked(text)) {
    return Complain(cmbColumn_,
                    "A column whose name holds a tab or another control character cannot be linked.");
  }
  if (basic::Trim(text).empty()) {
    if (isLeft) Complain(cmbColumn_, "Choose a column.");
    return;
  }
  std::vector<std::string> columns;
  for (const Draft& draft : drafts_) {
    std::string why;
    const auto connection = Readable(draft.Connection, why);
    const modFieldNames::ColumnNames names(connection ? connection->Columns() : std::vector<std::string>(1));
    const std::string* column = names.Find(text);
    if (connection && column == nullptr) {
      const bool hasBegun =
          !isLeft &&
          std::any_of(cmbColumn_.Items().begin(), cmbColumn_.Items().end(), [&](const Forms::Item& item) {
            return basic::UCase(item.Text).starts_with(basic::UCase(text));
          });
      if (!hasBegun) Complain(cmbColumn_, "'" + text + "' is not in " + draft.Connection + ".");
      return ShowNearest();
    }
    columns.push_back(column != nullptr ? *column : text);
  }
  for (std::size_t i = 0; i < drafts_.size(); ++i) drafts_[i].Column = columns[i];
  Complain(cmbColumn_, "");
  Changed("Link " + ShapesName(), cmbColumn_);
}

void frmValuePage::cmdNearest_Click() {
  cmbColumn_.Text(nearest_);
  TakeColumn(/*isLeft=*/true);
}

bool frmValuePage::SetRows(Forms::TextBox& box, const std::function<double(std::size_t)>& row) {
  for (std::size_t i = 0; i < drafts_.size(); ++i) {
    if (row(i) >= 1 && row(i) <= MostRows) continue;
    Complain(box, "Rows count from 1 to " + std::to_string(MostRows) + ".");
    return false;
  }
  std::vector<double> rows;
  for (std::size_t i = 0; i < drafts_.size(); ++i) rows.push_back(row(i));
  for (std::size_t i = 0; i < drafts_.size(); ++i) drafts_[i].Row = rows[i];
  return true;
}

void frmValuePage::txtRow_Change() {
  if (txtRow_.Text() == RowText()) return;
  const auto first = WholeNumber(txtRow_.Text());
  if (!first) return Complain(txtRow_, "A row is a number from 1 to " + std::to_string(MostRows) + ".");
  const double delta = static_cast<double>(*first) - drafts_.front().Row;
  if (!SetRows(txtRow_, [&](std::size_t i) { return drafts_[i].Row + delta; })) return;
  Changed((drafts_.size() == 1 ? "Row of " : "Rows of ") + ShapesName(), txtRow_);
}

void frmValuePage::txtStep_Change() {
  if (txtStep_.Text() == StepText()) return;
  const auto step = WholeNumber(txtStep_.Text());
  if (!step || std::abs(*step) > MostRows)
    return Complain(txtStep_, "How many rows from one shape to the next, such as 1, 0 or -1.");
  const double first = drafts_.front().Row;
  const auto steps = static_cast<double>(*step);
  if (!SetRows(txtStep_, [&](std::size_t i) { return first + steps * static_cast<double>(i); })) return;
  Changed("Rows of " + ShapesName(), txtStep_);
}

const Forms::Control* frmValuePage::Incomplete(std::string& why) const {
  for (const Draft& draft : drafts_) {
    if (draft.Connection.empty()) {
      why = "Choose a connection.";
      return &cmbConnection_;
    }
    if (draft.Column.empty()) {
      why = "Choose a column.";
      return &cmbColumn_;
    }
  }
  return nullptr;
}

void frmValuePage::Changed(const std::string& label, const Forms::Control& control) {
  std::string why;
  if (IsDocked() && Incomplete(why) == nullptr) {
    Write(label, modLinkEdits::RunOf(control.Name(), Shapes()));
    Read();
  }
  ShowAll(&control);
}

bool frmValuePage::Apply() {
  TakeColumn(/*isLeft=*/true);
  for (Forms::Control* control : std::initializer_list<Forms::Control*>{&cmbColumn_, &txtRow_, &txtStep_}) {
    if (control->Problem().empty()) continue;
    Focus(*control);
    return false;
  }
  std::string why;
  if (const Forms::Control* control = Incomplete(why)) {
    Complain(*Find(control->Name()), why);
    Focus(*Find(control->Name()));
    return false;
  }
  Write("Link " + ShapesName(), "");
  return true;
}

void frmValuePage::Write(const std::string& label, const std::string& run) {
  std::vector<const Draft*> changed;
  bool areAllLinked = true;
  for (std::size_t i = 0; i < drafts_.size(); ++i) {
    areAllLinked = areAllLinked && drafts_[i].IsLinked;
    if (!drafts_[i].IsLinked || drafts_[i] != stored_[i]) changed.push_back(&drafts_[i]);
  }
  if (changed.empty()) return;
  modLinkEdits::Begin(*Presentation(), areAllLinked ? label : "Link " + ShapesName(),
                      areAllLinked ? run : "");
  clsShape link;
  modLinkEdits::Shapes shapes;
  for (const Draft* draft : changed) {
    link.ShapeItem(draft->Shape);
    link.KeepCurrent();
    link.SourceType(static_cast<std::int32_t>(type_));
    link.NewConnectionTagNumber(draft->Connection);
    link.NewColumnName(draft->Column);
    link.NewRow(draft->Row);
    link.NewObjectFolder(draft->Folder);
    link.NewObjectExtension(draft->Extension);
    link.SetShapeTags();
    shapes.push_back(draft->Shape);
  }
  modLastUsed::Connection = drafts_.back().Connection;
  modLastUsed::Row = static_cast<std::int32_t>(drafts_.back().Row);
  modLinkEdits::Show(*Presentation(), Slide(), shapes);
}

void frmValuePage::cmdFill_Click() {
  const modLinkEdits::Shapes below = modFillRows::ShapesBelow(Slide(), Shapes());
  const Fill fill = FillBelow(below.size());
  modManyLinks::Plan plan;
  modFillRows::Plan(plan, Slide(), below,
                    {{drafts_.front().Column}, fill.First, fill.Step, modFillRows::Order::Places},
                    modLinkEdits::SourceOf(*Presentation(), drafts_.front().Connection));
  if (!plan.Links.empty()) {
    modLastUsed::Row = plan.Links.back().Value.Row;
    modLinkEdits::Link(*Presentation(), plan);
  }
  Reload();
}

}  // namespace LF2000
