#include "ado/Factory.h"

#include <chrono>
#include <utility>

#include "ado/Connection.h"
#include "ado/Recordset.h"

namespace ado {

Factory::Factory(PathTranslator translatePath)
    : ending_(std::make_shared<EndingWorkers>()), translatePath_(std::move(translatePath)) {}

Factory::~Factory() { ending_->waitFor(std::chrono::seconds(2)); }

std::shared_ptr<ADODB::Connection> Factory::CreateConnection() {
  return std::make_shared<Connection>(ending_, translatePath_);
}

std::shared_ptr<ADODB::Recordset> Factory::CreateRecordset() { return std::make_shared<Recordset>(); }

}  // namespace ado
