#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "connections/ConnectionParts.h"
#include "connections/DatabaseCatalog.h"
#include "connections/StoredPassword.h"
#include "host/adodb.h"
#include "pages/frmConnection.h"

namespace LF2000 {

/// A database, by a connection string. Its parts (server, database, user) and its text are two views of one
/// value, of which the text holds. A password that was stored never stands in a control, and is used for no
/// other place than the one that it was stored for.
class frmDatabaseConnection final : public frmConnection {
 public:
  /// `edited` is null for a new connection, `path` the database file of a new one where it is one.
  frmDatabaseConnection(const std::shared_ptr<clsPresentation>& presentation,
                        const std::shared_ptr<clsConnection>& edited, std::string_view path, Stored stored);

 private:
  enum class Password { None, Stored, Typed };

  void AddControls();
  void SetHandlers();
  void SetPartHandlers();
  void Describe(clsConnection& connection) const override;
  bool Check() override;
  void Look() override;
  void EndTrials() override;

  // The source: frmDatabaseConnectionSource.cpp.
  void FillProviders();
  [[nodiscard]] bool IsFile() const;
  [[nodiscard]] const ADODB::Provider* ProviderOf(const std::string& name) const;
  void ProviderChosen();
  void PartChanged(ConnectionPart part, const Forms::TextBox& control);
  void ShowParts();
  void TextLeft();
  void ShowPassword();
  bool CheckSource();
  [[nodiscard]] std::string WholeConnectionString() const;

  // What it offers: frmDatabaseConnectionTables.cpp.
  void SourceChanged();
  void ListTables(bool takesFirst);
  void ShowTables(const std::vector<DatabaseTable>& tables, bool takesFirst);
  void TableChosen();
  void ListColumns(const DatabaseTable& table);

  Forms::ComboBox& cmbProvider_;
  Forms::TextBox& txtServer_;
  Forms::TextBox& txtPort_;
  Forms::TextBox& txtDatabase_;
  Forms::CommandButton& cmdBrowse_;
  Forms::TextBox& txtUser_;
  Forms::TextBox& txtPassword_;
  Forms::CommandButton& cmdReplacePassword_;
  Forms::CommandButton& cmdRemovePassword_;
  Forms::TextBox& txtConnectionString_;
  Forms::ComboBox& cmbTable_;
  Forms::TextBox& txtSQL_;
  Forms::Label& lblColumns_;
  Forms::TextBox& txtRefreshRate_;
  Forms::UpDown& udRefreshRate_;

  std::vector<ADODB::Provider> providers_;
  StoredPassword stored_;
  Password password_ = Password::None;
  std::vector<DatabaseTable> tables_;
  /// What the list was asked of.
  std::string listedOf_;
  std::shared_ptr<host::RunningJob> listing_;
  std::shared_ptr<host::RunningJob> columnsListing_;
};

}  // namespace LF2000
