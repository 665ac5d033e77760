#include "ado/Factory.h"

#include "ado/Recordset.h"
#include "basic/Error.h"

namespace ado {

std::shared_ptr<ADODB::Connection> Factory::CreateConnection() {
  throw basic::Error(basic::AdapterError, "ADODB.Connection",
                     "Database connections are not available in this build of Lumenfold.");
}

std::shared_ptr<ADODB::Recordset> Factory::CreateRecordset() { return std::make_shared<Recordset>(); }

}  // namespace ado
