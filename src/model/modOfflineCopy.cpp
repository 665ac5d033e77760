#include "model/modOfflineCopy.h"

#include <utility>

#include "basic/Error.h"

namespace LF2000::modOfflineCopy {

namespace {
Maker maker;
}

void MadeBy(Maker by) { maker = std::move(by); }

std::vector<std::string> Make(const Files& files, const Options& options) {
  const Maker make = maker;
  if (!make) throw basic::Error(basic::AdapterError, "modOfflineCopy", "Nobody makes copies here.");
  return make(files, options);
}

}  // namespace LF2000::modOfflineCopy
