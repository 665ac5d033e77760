// Typed entries of the registry over the port's calls.

#include "addin/support/modRegistry.h"

#include <array>
#include <cstring>

#include "basic/Error.h"

namespace LF2000::modRegistry {

namespace {

constexpr std::int32_t Success = 0;
constexpr std::uint32_t KEY_QUERY_VALUE = 1;
constexpr std::uint32_t KEY_SET_VALUE = 2;
constexpr std::uint32_t REG_SZ = 1;
constexpr std::uint32_t REG_BINARY = 3;
constexpr std::uint32_t REG_DWORD = 4;
constexpr std::uint32_t StringBuffer = 255;

host::Registry& Registry() { return *host::Current().registry; }

[[noreturn]] void RaiseRegistryError(const char* operation, const char* text) {
  throw basic::Error(RegistryError, operation, text);
}

/// A key opened for the length of one operation.
class OpenedKey {
 public:
  OpenedKey() = default;
  ~OpenedKey() {
    if (key_ != 0) Registry().CloseKey(key_);
  }
  OpenedKey(const OpenedKey&) = delete;
  OpenedKey& operator=(const OpenedKey&) = delete;

  bool Open(Key root, std::string_view subkey, std::uint32_t access) {
    return Registry().OpenKey(root, subkey, access, key_) == Success;
  }
  bool Create(Key root, std::string_view subkey) {
    return Registry().CreateKey(root, subkey, key_) == Success;
  }
  [[nodiscard]] Key Handle() const { return key_; }

 private:
  Key key_ = 0;
};

void Save(const char* operation, Key root, std::string_view subkey, std::string_view name, std::uint32_t type,
          const std::vector<unsigned char>& data, const char* createText, const char* saveText) {
  OpenedKey key;
  if (!key.Create(root, subkey)) RaiseRegistryError(operation, createText);
  if (Registry().SetValue(key.Handle(), name, type, data) != Success) RaiseRegistryError(operation, saveText);
}

std::vector<unsigned char> Read(const char* operation, Key root, std::string_view subkey,
                                std::string_view name, std::uint32_t& type) {
  OpenedKey key;
  std::vector<unsigned char> data;
  std::uint32_t size = 0;
  if (!key.Open(root, subkey, KEY_QUERY_VALUE) ||
      Registry().QueryValue(key.Handle(), name, type, &data, size) != Success) {
    RaiseRegistryError(operation, "Registry entry could not be read");
  }
  return data;
}

}  // namespace

void CreateKey(Key root, std::string_view subkey) {
  OpenedKey key;
  if (!key.Create(root, subkey)) RaiseRegistryError("CreateKey", "Key could not be created");
}

void DeleteKey(Key root, std::string_view subkey) {
  if (subkey.empty()) RaiseRegistryError("DeleteKey", "No subkey specified");
  Registry().DeleteKey(root, subkey);
}

void DeleteKeyEntry(Key root, std::string_view subkey, std::string_view name) {
  if (name.empty()) RaiseRegistryError("DeleteKeyEntry", "Key entry not specified");
  OpenedKey key;
  if (!key.Open(root, subkey, KEY_SET_VALUE) || Registry().DeleteValue(key.Handle(), name) != Success) {
    RaiseRegistryError("DeleteKeyEntry", "Key entry could not be deleted due to an error");
  }
}

std::string GetEntryString(Key root, std::string_view subkey, std::string_view name) {
  if (root == 0) return {};
  constexpr const char* operation = "GetEntryString";
  OpenedKey key;
  if (!key.Open(root, subkey, KEY_QUERY_VALUE)) RaiseRegistryError(operation, "Key not found");
  std::uint32_t type = 0;
  std::uint32_t size = 0;
  if (Registry().QueryValue(key.Handle(), name, type, nullptr, size) != Success) {
    RaiseRegistryError(operation, "Key entry not found");
  }
  if (type != REG_SZ) RaiseRegistryError(operation, "Key entry type not string");
  std::vector<unsigned char> buffer;
  size = StringBuffer;
  if (Registry().QueryValue(key.Handle(), name, type, &buffer, size) != Success || size > StringBuffer) {
    RaiseRegistryError(operation, "Key entry could not be read");
  }
  const std::size_t length = size == 0 ? 0 : size - 1;
  return {buffer.begin(), buffer.begin() + static_cast<std::ptrdiff_t>(std::min(length, buffer.size()))};
}

void SaveEntryString(Key root, std::string_view subkey, std::string_view name, std::string_view value) {
  constexpr const char* operation = "SaveEntryString";
  if (name.find(' ') != std::string_view::npos) {
    RaiseRegistryError(operation, "No spaces allowed in the Entry name");
  }
  std::vector<unsigned char> data(value.begin(), value.end());
  data.push_back(0);
  Save(operation, root, subkey, name, REG_SZ, data, "Key could not be created",
       "Key entry could not be saved");
}

std::int32_t GetEntryLong(Key root, std::string_view subkey, std::string_view name) {
  constexpr const char* operation = "GetEntryLong";
  std::uint32_t type = 0;
  const std::vector<unsigned char> data = Read(operation, root, subkey, name, type);
  std::int32_t value = 0;
  if (type != REG_DWORD || data.size() != sizeof value) {
    RaiseRegistryError(operation, "Key entry not type long");
  }
  std::memcpy(&value, data.data(), sizeof value);
  return value;
}

void SaveEntryLong(Key root, std::string_view subkey, std::string_view name, std::int32_t value) {
  std::vector<unsigned char> data(sizeof value);
  std::memcpy(data.data(), &value, sizeof value);
  Save("SaveEntryLong", root, subkey, name, REG_DWORD, data, "Value could not be saved",
       "Value could not be saved");
}

std::vector<unsigned char> GetEntryBinary(Key root, std::string_view subkey, std::string_view name) {
  constexpr const char* operation = "GetEntryBinary";
  std::uint32_t type = 0;
  std::vector<unsigned char> data = Read(operation, root, subkey, name, type);
  if (type != REG_BINARY) RaiseRegistryError(operation, "Key entry not type long");
  return data;
}

void SaveEntryBinary(Key root, std::string_view subkey, std::string_view name,
                     const std::vector<unsigned char>& value) {
  Save("SaveEntryBinary", root, subkey, name, REG_BINARY, value, "Value could not be saved",
       "Value could not be saved");
}

}  // namespace LF2000::modRegistry
