#pragma once

#include <string>
#include <string_view>

namespace app {

// The tag of a connection (docs/tags.md) without what nobody but the deck is to keep: passwords and tokens in
// its connection string, and every other field that could hold one.

[[nodiscard]] std::string withoutSecrets(std::string_view tag);

/// A tag that was kept without its secrets, with those of one that has them, field by field, where the fields
/// are the same but for them. Others stay without.
[[nodiscard]] std::string withSecretsOf(std::string_view known, std::string_view tag);

}  // namespace app
