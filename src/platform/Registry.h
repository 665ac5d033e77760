#pragma once

#include "host/services.h"

namespace platform {

/// There is no registry on this system: every call answers 120
/// (ERROR_CALL_NOT_IMPLEMENTED).
class Registry final : public host::Registry {
 public:
  static constexpr std::int32_t NotImplemented = 120;

  std::int32_t OpenKey(Key, std::string_view, std::uint32_t, Key&) override { return NotImplemented; }
  std::int32_t CreateKey(Key, std::string_view, Key&) override { return NotImplemented; }
  std::int32_t DeleteKey(Key, std::string_view) override { return NotImplemented; }
  std::int32_t CloseKey(Key) override { return NotImplemented; }
  std::int32_t QueryValue(Key, std::string_view, std::uint32_t&, std::vector<unsigned char>*,
                          std::uint32_t&) override {
    return NotImplemented;
  }
  std::int32_t SetValue(Key, std::string_view, std::uint32_t, const std::vector<unsigned char>&) override {
    return NotImplemented;
  }
  std::int32_t DeleteValue(Key, std::string_view) override { return NotImplemented; }
};

}  // namespace platform
