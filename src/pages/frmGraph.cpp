// What the columns of a connection become in a chart or a table, and what they do not fit.

#include "pages/frmGraph.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "addin/support/modErrors.h"
#include "basic/Conversion.h"
#include "basic/Error.h"
#include "connections/DisplayTypes.h"
#include "model/clsShape.h"
#include "model/modFieldNames.h"
#include "model/modGraph.h"
#include "model/modTable.h"
#include "pages/modLastUsed.h"

namespace LF2000 {

namespace {

/// What a column holds in its first rows.
struct Contents {
  std::int64_t Numbers = 0;
  std::int64_t Texts = 0;

  [[nodiscard]] std::string Kind() const {
    if (Numbers > 0 && Texts > 0) return "numbers and texts";
    if (Numbers > 0) return "numbers";
    return Texts > 0 ? "texts" : "nothing";
  }
};

bool IsNumber(std::string_view text) try {
  static_cast<void>(basic::CDbl(text));
  return true;
} catch (const basic::Error&) {
  return false;
}

Contents ContentsOf(clsConnection& connection, const std::string& column) {
  constexpr double MostRowsRead = 200;
  Contents contents;
  for (double row = 1; row <= std::min(connection.RecordCount(), MostRowsRead); ++row) {
    bool noValue = true;
    const std::string text =
        connection.GetValueDatabase(row, column, DisplayValue, /*showMarkers=*/false, noValue);
    if (noValue) continue;
    ++(IsNumber(text) ? contents.Numbers : contents.Texts);
  }
  return contents;
}

void Append(std::string& sentences, const std::string& sentence) {
  sentences += (sentences.empty() ? "" : "\n") + sentence;
}

}  // namespace

frmGraph::frmGraph(Forms::Placement placement, std::shared_ptr<clsPresentation> presentation,
                   modSelected::Selected selected)
    : frmShapesPage("frmGraph", selected.Shapes.front()->HasTable() ? "Table" : "Chart", placement,
                    std::move(presentation), selected),
      cmbConnection_(Add<Forms::ComboBox>("cmbConnection")),
      cmdManage_(Add<Forms::CommandButton>("cmdManage", "&Manage…")),
      grdMapping_(Add<Forms::Grid>("grdMapping")),
      lblWarning_(Add<Forms::Label>("lblWarning")),
      lblFresh_(Add<Forms::Label>("lblFresh")),
      cmdLink_(Add<Forms::CommandButton>("cmdLink", "&Link")),
      cmdUnlink_(Add<Forms::CommandButton>("cmdUnlink", "&Unlink")) {
  cmbConnection_.Change = [this] { cmbConnection_Change(); };
  cmdManage_.Click = [this] { Manage(); };
  cmdLink_.Click = [this] {
    if (Apply()) Reload();
  };
  cmdUnlink_.Click = [this] { Unlink(); };
  AddLeftOut();
  AddRow("&Connection", {&cmbConnection_, &cmdManage_});
  AddRow("Columns", {&grdMapping_});
  AddRow("", {&lblWarning_});
  AddRow("", {&lblFresh_});
  AddRow("", {&cmdLink_, &cmdUnlink_});
  AddOKCancel();
  Read();
  Look();
}

void frmGraph::Read() {
  clsShape link;
  number_.clear();
  areAllLinked_ = true;
  for (const auto& shape : Shapes()) {
    link.ShapeItem(shape);
    const bool isLinked = link.SourceType() == static_cast<std::int32_t>(SourceType::Graph);
    areAllLinked_ = areAllLinked_ && isLinked;
    if (!isLinked) continue;
    if (number_.empty()) number_ = link.ConnectionTagNumber();
    if (number_ != link.ConnectionTagNumber()) number_ = Various;
  }
  if (number_.empty()) number_ = ProposedConnection();
}

void frmGraph::Reload() {
  if (IsDocked()) Read();
  mapped_.clear();
  ShowState();
}

void frmGraph::ShowState() {
  ShowConnections(cmbConnection_);
  cmbConnection_.Text(number_ == Various ? number_ : ConnectionText(number_));
  cmdLink_.Visible(IsDocked() && !areAllLinked_);
  cmdUnlink_.Enabled(AnyLinked(), "Nothing here is linked.");
  ShowNow();
}

void frmGraph::cmbConnection_Change() {
  const std::string number = NumberIn(cmbConnection_.Text());
  if (number.empty()) return;
  number_ = number;
  if (IsDocked()) {
    Write();
    Read();
  }
  ShowState();
}

bool frmGraph::Apply() {
  if (number_.empty() || number_ == Various) {
    Complain(cmbConnection_, "Choose a connection.");
    Focus(cmbConnection_);
    return false;
  }
  Write();
  return true;
}

void frmGraph::Write() {
  constexpr auto Graph = static_cast<std::int32_t>(SourceType::Graph);
  const bool isWritten = Relink(
      "Link " + ShapesName(), {},
      [&](const clsShape& link) {
        return link.SourceType() != Graph || link.ConnectionTagNumber() != number_;
      },
      [&](clsShape& link) {
        link.SourceType(Graph);
        link.NewConnectionTagNumber(number_);
      });
  if (isWritten) modLastUsed::Connection = number_;
}

void frmGraph::ShowNow() {
  ShowFreshness(lblFresh_, number_);
  std::string why;
  const auto connection = Readable(number_, why);
  const std::string shown = connection ? number_ + " " + std::to_string(connection->DataVersion()) : why;
  if (shown == mapped_) return;
  mapped_ = shown;
  ShowMapping();
}

void frmGraph::ShowMapping() try {
  std::string why;
  const auto connection = number_ == Various ? nullptr : Readable(number_, why);
  grdMapping_.Visible(connection != nullptr);
  lblWarning_.Text(why, Forms::Severity::Warning);
  if (!connection) return;
  if (Shapes().front()->HasTable()) {
    ShowTable(*connection);
  } else {
    ShowChart(*connection);
  }
} catch (...) {
  modErrors::SetLastError();
  lblWarning_.Text(modErrors::LastError.Description, Forms::Severity::Warning);
}

void frmGraph::ShowChart(clsConnection& connection) {
  Forms::Rows rows;
  std::string warnings;
  const std::vector<std::string> columns = connection.Columns();
  for (std::size_t i = 1; i < columns.size(); ++i) {
    const Contents contents = ContentsOf(connection, columns[i]);
    const std::string becomes = i == 1 ? "categories or X" : "series " + std::to_string(i - 1);
    rows.Cells.push_back({columns[i], becomes, contents.Kind()});
    if (i == 1 || contents.Texts == 0) continue;
    Append(warnings, contents.Numbers == 0
                         ? "Column '" + columns[i] + "' holds text and no number."
                         : "Column '" + columns[i] + "' holds texts among its numbers, which become gaps.");
  }
  grdMapping_.Columns({{"Column"}, {"Becomes"}, {"Holds"}});
  grdMapping_.Total(static_cast<std::int64_t>(rows.Cells.size()));
  grdMapping_.Rows(std::move(rows));
  lblWarning_.Text(warnings, Forms::Severity::Warning);
  // Raises what keeps the chart from taking the data.
  static_cast<void>(modGraph::PrepareGraph(*Shapes().front(), connection));
}

void frmGraph::ShowTable(clsConnection& connection) {
  const auto table = Shapes().front()->Table();
  const modFieldNames::ColumnNames names(connection.Columns());
  const std::vector<std::string> columns = connection.Columns();
  const std::vector<std::string> headers = modTable::HeaderTexts(*table);
  Forms::Rows rows;
  for (std::size_t i = 1; i < headers.size(); ++i) {
    if (!table->FirstRow()) {
      rows.Cells.push_back({std::to_string(i), i < columns.size() ? columns[i] : "(none)"});
    } else if (headers[i].empty()) {
      rows.Cells.push_back({std::to_string(i), "stays as it is"});
    } else {
      const std::string* column = names.Find(headers[i]);
      rows.Cells.push_back({headers[i], column != nullptr ? *column : "(not there)"});
    }
  }
  grdMapping_.Columns({{"Column of the table"}, {"Column of the data"}});
  grdMapping_.Total(static_cast<std::int64_t>(rows.Cells.size()));
  grdMapping_.Rows(std::move(rows));
  const std::int32_t room = modTable::BodyRows(*table);
  const bool isShort = connection.RecordCount() > room;
  lblWarning_.Text(isShort ? "The table has room for " + std::to_string(room) + " of " +
                                 basic::CStr(connection.RecordCount()) + " rows; it can scroll through them."
                           : "",
                   Forms::Severity::Warning);
  static_cast<void>(modTable::ColumnsOf(*table, columns, "Connection " + number_));
}

}  // namespace LF2000
