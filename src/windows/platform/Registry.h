#pragma once

#include "host/services.h"

namespace windows::platform {

/// The system's registry. Roots are its handles, of 32 bits or of its own size. Texts of values
/// (REG_SZ, REG_EXPAND_SZ) come and go as UTF-8, with their NUL.
class Registry final : public host::Registry {
 public:
  std::int32_t OpenKey(Key root, std::string_view subkey, std::uint32_t access, Key& opened) override;
  std::int32_t CreateKey(Key root, std::string_view subkey, Key& opened) override;
  std::int32_t DeleteKey(Key root, std::string_view subkey) override;
  std::int32_t CloseKey(Key key) override;
  std::int32_t QueryValue(Key key, std::string_view name, std::uint32_t& type,
                          std::vector<unsigned char>* data, std::uint32_t& size) override;
  std::int32_t SetValue(Key key, std::string_view name, std::uint32_t type,
                        const std::vector<unsigned char>& data) override;
  std::int32_t DeleteValue(Key key, std::string_view name) override;
};

}  // namespace windows::platform
