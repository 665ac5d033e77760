#include "ado/Factory.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <utility>

#include "ado/Connection.h"
#include "ado/Recordset.h"

namespace ado {

Factory::Factory(PathTranslator translatePath)
    : ending_(std::make_shared<EndingWorkers>()), translatePath_(std::move(translatePath)) {}

Factory::~Factory() { ending_->waitFor(std::chrono::seconds(2)); }

std::vector<ADODB::Provider> Factory::Providers() const {
  struct Known {
    const KnownDriver& driver;
    const char* provider;
    bool isFile;
  };
  const std::array known = {Known{SqliteDriver, "SQLite", true}, Known{PostgresDriver, "PostgreSQL", false},
                            Known{MariaDriver, "MariaDB", false}, Known{TdsDriver, "MSOLEDBSQL", false},
                            Known{MdbDriver, "Microsoft.ACE.OLEDB.12.0", true}};
  std::vector<ADODB::Provider> providers;
  for (const Known& each : known) {
    ADODB::Provider provider{each.provider, std::string(each.driver.database), each.isFile};
    if (!isInstalled(each.driver)) {
      provider.Missing = "Its driver is not installed. On Debian it is in the package " +
                         std::string(each.driver.package) + ".";
    }
    providers.push_back(std::move(provider));
  }
  std::stable_partition(providers.begin(), providers.end(),
                        [](const ADODB::Provider& each) { return each.Missing.empty(); });
  return providers;
}

std::shared_ptr<ADODB::Connection> Factory::CreateConnection() {
  return std::make_shared<Connection>(ending_, translatePath_, isReadOnly_);
}

std::shared_ptr<ADODB::Recordset> Factory::CreateRecordset() { return std::make_shared<Recordset>(); }

}  // namespace ado
