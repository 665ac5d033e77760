#include "app/desk/ConnectionSecrets.h"

#include <algorithm>
#include <cstddef>
#include <vector>

#include "basic/ConnectionString.h"
#include "basic/Strings.h"
#include "connections/StoredPassword.h"
#include "model/modTags.h"

namespace app {
namespace {

constexpr std::size_t ConnectionString = 2;

std::string fieldWithoutSecrets(std::size_t index, const std::string& field) {
  if (!basic::MayHoldSecret(field)) return field;
  return index == ConnectionString ? LF2000::StoredPassword(field).Shown() : std::string();
}

std::string joined(const std::vector<std::string>& fields) {
  std::string text;
  for (std::size_t i = 0; i < fields.size(); ++i) {
    if (i > 0) text += LF2000::modTags::FieldSeparator;
    text += fields[i];
  }
  return text;
}

}  // namespace

std::string withoutSecrets(std::string_view tag) {
  auto fields = basic::Split(tag, LF2000::modTags::FieldSeparator);
  for (std::size_t i = 0; i < fields.size(); ++i) fields[i] = fieldWithoutSecrets(i, fields[i]);
  return joined(fields);
}

std::string withSecretsOf(std::string_view known, std::string_view tag) {
  const auto source = basic::Split(known, LF2000::modTags::FieldSeparator);
  auto fields = basic::Split(tag, LF2000::modTags::FieldSeparator);
  for (std::size_t i = 0; i < std::min(fields.size(), source.size()); ++i) {
    if (fieldWithoutSecrets(i, source[i]) == fields[i]) fields[i] = source[i];
  }
  return joined(fields);
}

}  // namespace app
