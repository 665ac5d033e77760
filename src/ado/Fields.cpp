#include "ado/Fields.h"

#include <algorithm>
#include <cstring>
#include <limits>
#include <utility>

#include "ado/Errors.h"
#include "ado/Recordset.h"
#include "basic/Conversion.h"
#include "basic/Strings.h"

namespace ado {
namespace {

constexpr std::size_t AnySize = std::numeric_limits<std::size_t>::max();

}  // namespace

basic::Variant Field::Value() const { return recordset_.value(index_); }

void Field::Value(basic::Variant value) {
  if (!basic::IsNull(value)) {
    std::string text = basic::CStr(value);
    // Bytes are never fewer than characters.
    if (text.size() > definedSize_ && basic::Len(text) > definedSize_) {
      failTooLong(name_, basic::Len(text), definedSize_);
    }
    value = std::move(text);
  }
  recordset_.setValue(index_, std::move(value));
}

/// Takes eight bytes at a time, without the bit that tells small letters from
/// capital ones.
std::size_t Fields::AnyCaseHash::operator()(std::string_view name) const {
  constexpr std::uint64_t NoCase = 0xDFDFDFDFDFDFDFDFU;
  std::uint64_t hash = name.size();
  for (; !name.empty(); name.remove_prefix(std::min<std::size_t>(name.size(), 8))) {
    std::uint64_t word = 0;
    std::memcpy(&word, name.data(), std::min<std::size_t>(name.size(), sizeof word));
    hash = (hash ^ (word & NoCase)) * 0x9E3779B97F4A7C15U;
    hash ^= hash >> 32U;
  }
  return static_cast<std::size_t>(hash);
}

bool Fields::AnyCaseEqual::operator()(std::string_view a, std::string_view b) const {
  return a == b || basic::EqualsIgnoreCase(a, b);
}

ADODB::Field& Fields::Item(std::int32_t index) {
  if (index < 0 || index >= Count()) failItemNotFound(std::to_string(index));
  return *fields_[static_cast<std::size_t>(index)];
}

ADODB::Field& Fields::Item(std::string_view name) {
  const auto found = byName_.find(name);
  if (found == byName_.end()) failItemNotFound(name);
  return *fields_[found->second];
}

void Fields::Append(std::string_view name, ADODB::DataType type, std::int32_t definedSize) {
  recordset_.requireClosed();
  if (type != ADODB::adVarChar || definedSize <= 0) {
    failNotSupported("a field of a recordset in memory is text (adVarChar) of one character or more");
  }
  add(name, static_cast<std::size_t>(definedSize));
}

void Fields::add(std::string_view name, std::size_t definedSize) {
  if (!byName_.emplace(name, fields_.size()).second) failDuplicateField(name);
  fields_.push_back(std::make_unique<Field>(recordset_, fields_.size(), std::string(name), definedSize));
}

void Fields::assign(const std::vector<std::string>& names) {
  const bool same =
      std::equal(names.begin(), names.end(), fields_.begin(), fields_.end(),
                 [](const std::string& name, const auto& field) { return name == field->Name(); });
  if (same) return;
  clear();
  for (const std::string& name : names) {
    byName_.emplace(name, fields_.size());
    fields_.push_back(std::make_unique<Field>(recordset_, fields_.size(), name, AnySize));
  }
}

void Fields::clear() {
  fields_.clear();
  byName_.clear();
}

}  // namespace ado
