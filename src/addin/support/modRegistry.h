#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "host/services.h"

/// A small layer over the registry. Every operation raises ErrorBase + 9000 with
/// its own name as the source; a key that it opened is closed by then.
namespace LF2000::modRegistry {

inline constexpr std::int32_t RegistryError = -2147212504;

using Key = host::Registry::Key;

void CreateKey(Key root, std::string_view subkey);
void DeleteKey(Key root, std::string_view subkey);
void DeleteKeyEntry(Key root, std::string_view subkey, std::string_view name);
/// At most 254 characters. Without a root key the empty string.
[[nodiscard]] std::string GetEntryString(Key root, std::string_view subkey, std::string_view name);
void SaveEntryString(Key root, std::string_view subkey, std::string_view name, std::string_view value);
[[nodiscard]] std::int32_t GetEntryLong(Key root, std::string_view subkey, std::string_view name);
void SaveEntryLong(Key root, std::string_view subkey, std::string_view name, std::int32_t value);
[[nodiscard]] std::vector<unsigned char> GetEntryBinary(Key root, std::string_view subkey,
                                                        std::string_view name);
void SaveEntryBinary(Key root, std::string_view subkey, std::string_view name,
                     const std::vector<unsigned char>& value);

}  // namespace LF2000::modRegistry
