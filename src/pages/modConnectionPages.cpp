#include "pages/modConnectionPages.h"

#include <utility>

#include "addin/support/modGlobalFunctions.h"
#include "basic/Error.h"
#include "model/modConnections.h"
#include "pages/frmDatabaseConnection.h"
#include "pages/frmExcelConnection.h"
#include "pages/frmTextConnection.h"

namespace LF2000::modConnectionPages {

namespace {

/// Null for an unknown kind.
std::shared_ptr<frmConnection> DialogOf(ConnectionKind kind,
                                        const std::shared_ptr<clsPresentation>& presentation,
                                        const std::shared_ptr<clsConnection>& edited, std::string_view path,
                                        Stored stored) {
  switch (kind) {
    case ConnectionKind::TextFile:
      return std::make_shared<frmTextConnection>(presentation, edited, path, std::move(stored));
    case ConnectionKind::Database:
      return std::make_shared<frmDatabaseConnection>(presentation, edited, path, std::move(stored));
    case ConnectionKind::Excel:
      return std::make_shared<frmExcelConnection>(presentation, edited, path, std::move(stored));
  }
  return nullptr;
}

[[noreturn]] void Fail(const std::string& description) {
  throw basic::Error(basic::AdapterError, basic::DefaultSource, description);
}

}  // namespace

void OpenNew(ConnectionKind kind, std::string_view path, const std::shared_ptr<clsPresentation>& presentation,
             Stored stored) {
  static_cast<void>(modConnections::NewNumber(*presentation));
  const std::string file =
      modGlobalFunctions::ShortenPath(path, presentation->ActivePresentation()->FullName());
  const auto dialog = DialogOf(kind, presentation, nullptr, file, std::move(stored));
  if (!dialog) Fail("There are no connections of this kind.");
  dialog->OpenAndLook(!path.empty());
}

void OpenExisting(std::string_view number, const std::shared_ptr<clsPresentation>& presentation,
                  Stored stored) {
  const auto connection = presentation->FindConnection(number);
  if (!connection) Fail("The presentation has no connection " + std::string(number) + ".");
  if (connection->IsSample())
    Fail("Sample data have no source. Connect data of your own; they take the links over.");
  const auto kind = static_cast<ConnectionKind>(connection->ConnectionType());
  const auto dialog = DialogOf(kind, presentation, connection, {}, std::move(stored));
  if (!dialog) Fail("Connection " + std::string(number) + " is of a kind that cannot be changed here.");
  dialog->OpenAndLook(false);
}

}  // namespace LF2000::modConnectionPages
