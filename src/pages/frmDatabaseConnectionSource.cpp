// The connection string in the dialog of databases: as text, in its parts, and with its password.

#include <algorithm>
#include <utility>

#include "basic/ConnectionString.h"
#include "basic/Strings.h"
#include "host/services.h"
#include "pages/frmDatabaseConnection.h"

namespace LF2000 {

namespace {

constexpr const char* AsText = "As the connection string says";
constexpr std::string_view SourcePrefix = "Data source ";

}  // namespace

void frmDatabaseConnection::FillProviders() {
  const ADODB::Factory& ado = *host::Current().ado;
  providers_ = ado.Providers();
  Forms::Items items;
  for (const std::string& source : ado.DataSources()) {
    items.push_back({std::string(SourcePrefix) + source, "set up on this computer, with its password"});
  }
  for (const ADODB::Provider& provider : providers_) {
    items.push_back({provider.Description, provider.Missing, provider.Missing.empty()});
  }
  items.push_back({AsText, {}});
  cmbProvider_.Items(std::move(items));
}

const ADODB::Provider* frmDatabaseConnection::ProviderOf(const std::string& name) const {
  const auto found = std::find_if(providers_.begin(), providers_.end(), [&](const ADODB::Provider& each) {
    return basic::EqualsIgnoreCase(each.Name, name);
  });
  return found == providers_.end() ? nullptr : &*found;
}

bool frmDatabaseConnection::IsFile() const {
  const ADODB::Provider* provider = ProviderOf(ReadParts(txtConnectionString_.Text()).Provider);
  return provider != nullptr && provider->IsFile;
}

void frmDatabaseConnection::SetPartHandlers() {
  cmbProvider_.Change = [this] { ProviderChosen(); };
  txtServer_.Change = [this] { PartChanged(ConnectionPart::Server, txtServer_); };
  txtPort_.Change = [this] { PartChanged(ConnectionPart::Port, txtPort_); };
  txtDatabase_.Change = [this] { PartChanged(ConnectionPart::Database, txtDatabase_); };
  txtUser_.Change = [this] { PartChanged(ConnectionPart::User, txtUser_); };
  txtConnectionString_.Change = [this] {
    ShowParts();
    SourceChanged();
  };
  txtConnectionString_.LostFocus = [this] { TextLeft(); };
}

void frmDatabaseConnection::ProviderChosen() {
  const std::string& chosen = cmbProvider_.Text();
  if (chosen == AsText) return Focus(txtConnectionString_);
  ConnectionParts parts = ReadParts(txtConnectionString_.Text());
  const bool wasFile = IsFile();
  parts.Provider.clear();
  parts.DataSource.clear();
  bool isFile = false;
  if (basic::StartsWith(chosen, SourcePrefix)) {
    parts.DataSource = chosen.substr(SourcePrefix.size());
  } else {
    const auto provider = std::find_if(providers_.begin(), providers_.end(),
                                       [&](const auto& each) { return each.Description == chosen; });
    if (provider == providers_.end()) return;
    parts.Provider = provider->Name;
    isFile = provider->IsFile;
  }
  if (wasFile != isFile) parts.Database.clear();
  txtConnectionString_.Text(BuildConnectionString(parts, isFile));
  ShowParts();
  SourceChanged();
}

void frmDatabaseConnection::PartChanged(ConnectionPart part, const Forms::TextBox& control) {
  txtConnectionString_.Text(WithPart(txtConnectionString_.Text(), part, control.Text(), IsFile()));
  if (part == ConnectionPart::Database) {
    if (IsFile()) {
      SuggestFileDescription(control.Text());
    } else {
      SuggestDescription(control.Text());
    }
  }
  SourceChanged();
}

void frmDatabaseConnection::ShowParts() {
  const ConnectionParts parts = ReadParts(txtConnectionString_.Text());
  const ADODB::Provider* provider = ProviderOf(parts.Provider);
  const bool isFile = provider != nullptr && provider->IsFile;
  const bool isSource = !parts.DataSource.empty();
  cmbProvider_.Text(isSource              ? std::string(SourcePrefix) + parts.DataSource
                    : provider != nullptr ? provider->Description
                                          : std::string(AsText));
  txtServer_.Text(parts.Server);
  txtPort_.Text(parts.Port);
  txtDatabase_.Text(parts.Database);
  txtUser_.Text(parts.User);
  txtServer_.Visible(provider != nullptr && !isFile);
  txtPort_.Visible(provider != nullptr && !isFile);
  txtDatabase_.Visible(provider != nullptr);
  cmdBrowse_.Visible(isFile);
  txtUser_.Visible(provider != nullptr && !isFile);
  txtPassword_.Visible(!isFile || stored_.IsSet());
}

void frmDatabaseConnection::TextLeft() {
  StoredPassword typed(txtConnectionString_.Text());
  if (!typed.IsSet() || typed.IsWithheld()) return;
  // From here on it is kept as one that was stored.
  stored_ = std::move(typed);
  password_ = Password::Stored;
  txtPassword_.Text("");
  txtConnectionString_.Text(stored_.Shown());
  ShowPassword();
}

void frmDatabaseConnection::ShowPassword() {
  const bool isStored = password_ == Password::Stored;
  txtPassword_.Enabled(!isStored, "A password is set. Press Replace to type another.");
  txtPassword_.Placeholder(isStored ? "set" : "");
  txtPassword_.Hint(password_ == Password::None
                        ? "It is kept in the presentation. Better is a data source of this computer."
                        : "");
  cmdReplacePassword_.Caption(isStored ? "Re&place" : "&Keep the one that is set");
  cmdReplacePassword_.Visible(stored_.IsSet());
  cmdRemovePassword_.Visible(password_ != Password::None && stored_.IsSet());
}

bool frmDatabaseConnection::CheckSource() {
  TextLeft();
  const std::string& text = txtConnectionString_.Text();
  const bool isWithheld = password_ == Password::Stored && stored_.IsWithheld() && text.empty();
  if (!isWithheld &&
      !Require(txtConnectionString_, text, "Choose the kind of database, or type a connection string.")) {
    return false;
  }
  if (password_ == Password::Typed && !txtPassword_.Text().empty() &&
      !Require(txtPassword_, txtPassword_.Text(), "A password is more than blanks.")) {
    return false;
  }
  const bool fits = stored_.Fits(text);
  if (password_ == Password::Stored && !fits) password_ = Password::Typed;
  // One that is set goes only when its author removes it.
  if (password_ != Password::Typed || !stored_.IsSet() || !txtPassword_.Text().empty()) return true;
  ShowPassword();
  Complain(txtPassword_,
           fits ? "Enter the new password, or press Remove." : "Enter the password for the new server.");
  Focus(txtPassword_);
  return false;
}

std::string frmDatabaseConnection::WholeConnectionString() const {
  const std::string& text = txtConnectionString_.Text();
  switch (password_) {
    case Password::Stored:
      // Where it does not fit nothing is signed in to: CheckSource has complained.
      return stored_.Fits(text) ? stored_.Join(text) : text;
    case Password::Typed:
      return WithPassword(text, txtPassword_.Text());
    case Password::None:
      break;
  }
  return text;
}

}  // namespace LF2000
