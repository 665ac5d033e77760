// What a database offers, listed in the dialog of databases.

#include <algorithm>
#include <utility>

#include "addin/support/modErrors.h"
#include "addin/support/modGlobalFunctions.h"
#include "addin/support/modJobs.h"
#include "basic/Strings.h"
#include "pages/frmDatabaseConnection.h"

namespace LF2000 {

namespace {

/// A job that lists something of a database, which ends with the dialog.
template <typename List>
host::Job ListingJob(const std::string& what, const std::shared_ptr<DatabaseCatalog>& catalog, List list) {
  host::Job job;
  job.Caption = "Listing " + what;
  job.Work = std::move(list);
  job.Cancel = [catalog] { catalog->Close(); };
  job.Deadline = ConnectionTrial::Deadline;
  return job;
}

void Cancel(std::shared_ptr<host::RunningJob>& job) {
  if (const auto running = std::exchange(job, nullptr)) running->Cancel();
}

}  // namespace

void frmDatabaseConnection::EndTrials() {
  Cancel(listing_);
  Cancel(columnsListing_);
}

void frmDatabaseConnection::SourceChanged() {
  NoteChange();
  Cancel(listing_);
  Cancel(columnsListing_);
  listedOf_.clear();
  tables_.clear();
  cmbTable_.Items({});
  cmbTable_.State(Forms::ListState::Ready);
  lblColumns_.Text("");
}

void frmDatabaseConnection::Look() {
  // A server is asked only when its author says so.
  if (IsFile() && !Edited()) ListTables(true);
}

void frmDatabaseConnection::ListTables(bool takesFirst) {
  if (!CheckSource()) return;
  const std::string asked = modGlobalFunctions::ResolveConnectionString(
      WholeConnectionString(), Presentation()->ActivePresentation()->FullName());
  if (asked == listedOf_) return;
  Cancel(listing_);
  listedOf_ = asked;
  cmbTable_.State(Forms::ListState::Loading);
  const auto catalog = std::make_shared<DatabaseCatalog>(asked);
  const auto tables = std::make_shared<std::vector<DatabaseTable>>();
  host::Job job = ListingJob("tables", catalog, [catalog, tables] { *tables = catalog->Tables(); });
  job.Done = [this, weak = weak_from_this(), asked, tables, takesFirst](const host::JobEnd& end) {
    const auto form = weak.lock();
    if (!form || !IsShown() || asked != listedOf_) return;
    Update([&] {
      if (end.How == host::JobEnd::Kind::Done) return ShowTables(*tables, takesFirst);
      listedOf_.clear();
      const bool isLate = end.How == host::JobEnd::Kind::TimedOut;
      cmbTable_.State(Forms::ListState::Failed, isLate ? "There was no answer within 15 seconds."
                                                       : modErrors::ForEverybody(end.Description));
    });
  };
  listing_ = modJobs::Start(std::move(job));
}

void frmDatabaseConnection::ShowTables(const std::vector<DatabaseTable>& tables, bool takesFirst) {
  tables_ = tables;
  Forms::Items items;
  for (const DatabaseTable& table : tables_) {
    items.push_back({table.FullName(), table.Type == "VIEW" ? "view" : ""});
  }
  cmbTable_.Items(std::move(items));
  cmbTable_.State(Forms::ListState::Ready);
  if (!takesFirst || tables_.empty() || !txtSQL_.Text().empty()) return;
  cmbTable_.Text(tables_.front().FullName());
  TableChosen();
  Test();
}

void frmDatabaseConnection::TableChosen() {
  NoteChange();
  const std::string& chosen = cmbTable_.Text();
  const auto table = std::find_if(tables_.begin(), tables_.end(),
                                  [&](const auto& each) { return each.FullName() == chosen; });
  if (table == tables_.end()) return;
  txtSQL_.Text(chosen);
  Complain(txtSQL_, "");
  ListColumns(*table);
}

void frmDatabaseConnection::ListColumns(const DatabaseTable& table) {
  Cancel(columnsListing_);
  lblColumns_.Text("");
  const auto catalog = std::make_shared<DatabaseCatalog>(listedOf_);
  const auto columns = std::make_shared<std::vector<std::string>>();
  host::Job job =
      ListingJob("columns", catalog, [catalog, columns, table] { *columns = catalog->Columns(table); });
  job.Done = [this, weak = weak_from_this(), columns, name = table.FullName()](const host::JobEnd& end) {
    const auto form = weak.lock();
    if (!form || !IsShown() || end.How != host::JobEnd::Kind::Done || cmbTable_.Text() != name) return;
    Update([&] {
      std::string text;
      for (const std::string& column : *columns) text += (text.empty() ? "Columns: " : ", ") + column;
      lblColumns_.Text(text);
    });
  };
  columnsListing_ = modJobs::Start(std::move(job));
}

}  // namespace LF2000
