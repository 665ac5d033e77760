#pragma once

#include <algorithm>
#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "host/services.h"

namespace fakes {

/// Keys with typed values; a handle is a place in the list, plus one.
class Registry final : public host::Registry {
 public:
  struct Value {
    std::uint32_t type;
    std::vector<unsigned char> data;
  };
  static constexpr std::int32_t NotFound = 2;

  std::int32_t OpenKey(Key, std::string_view subkey, std::uint32_t, Key& opened) override {
    const auto found = std::find(names_.begin(), names_.end(), subkey);
    if (found == names_.end()) return NotFound;
    opened = static_cast<Key>(found - names_.begin()) + 1;
    ++openKeys;
    return 0;
  }
  std::int32_t CreateKey(Key root, std::string_view subkey, Key& opened) override {
    if (readOnly) return 5;
    if (std::find(names_.begin(), names_.end(), subkey) == names_.end()) names_.emplace_back(subkey);
    return OpenKey(root, subkey, 0, opened);
  }
  std::int32_t DeleteKey(Key, std::string_view subkey) override {
    return std::erase(names_, subkey) ? 0 : NotFound;
  }
  std::int32_t CloseKey(Key) override {
    --openKeys;
    return 0;
  }
  std::int32_t QueryValue(Key key, std::string_view name, std::uint32_t& type,
                          std::vector<unsigned char>* data, std::uint32_t& size) override {
    const auto found = values_.find({key, std::string(name)});
    if (found == values_.end()) return NotFound;
    type = found->second.type;
    if (data && size != 0 && found->second.data.size() > size) return 234;
    size = static_cast<std::uint32_t>(found->second.data.size());
    if (data) *data = found->second.data;
    return 0;
  }
  std::int32_t SetValue(Key key, std::string_view name, std::uint32_t type,
                        const std::vector<unsigned char>& data) override {
    values_[{key, std::string(name)}] = {type, data};
    return 0;
  }
  std::int32_t DeleteValue(Key key, std::string_view name) override {
    return values_.erase({key, std::string(name)}) ? 0 : NotFound;
  }

  bool readOnly = false;
  int openKeys = 0;

 private:
  std::vector<std::string> names_;
  std::map<std::pair<Key, std::string>, Value> values_;
};

}  // namespace fakes
