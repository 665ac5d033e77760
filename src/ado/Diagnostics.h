#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace ado {

enum class HandleKind { Environment, Connection, Statement };

/// What a driver says about the last call on a handle.
struct Diagnosis {
  std::string state;  // SQLSTATE of the first record
  std::string words;  // all records with SQLSTATE and native code
};
[[nodiscard]] Diagnosis diagnosisOf(HandleKind kind, void* handle);

/// The text with "***" for every secret in it.
[[nodiscard]] std::string withoutSecrets(std::string text, const std::vector<std::string>& secrets);

}  // namespace ado
