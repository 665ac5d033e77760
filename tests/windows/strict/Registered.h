#pragma once

#include <functional>
#include <string>

#include "windows/strict/Object.h"

namespace strict {

/// A class of objects that this process alone hands out by the name of its program ("ADODB.Recordset"), as
/// long as this lives.
class Registered {
 public:
  using Make = std::function<Ptr<IDispatch>()>;

  /// `make` may throw basic::Error: the object cannot be created then.
  Registered(std::wstring progId, const CLSID& id, Make make);
  Registered(const Registered&) = delete;
  Registered& operator=(const Registered&) = delete;
  ~Registered();

 private:
  /// What was entered into the registry; empty where the name was there.
  std::wstring key_;
  DWORD cookie_ = 0;
};

}  // namespace strict
