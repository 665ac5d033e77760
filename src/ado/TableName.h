#pragma once

#include <string>
#include <string_view>

namespace ado {

/// Whether a source is a statement rather than the name of a table: its first
/// word begins one, and more follows.
[[nodiscard]] bool isStatement(std::string_view source);

/// The name of a table as it stands in a statement: its parts (schema.table)
/// each in the quotes given. Parts that are quoted already, in any of the usual
/// ways ("a", `a`, [a]), are quoted anew; without quotes the name stays as it is.
[[nodiscard]] std::string quotedTableName(std::string_view name, std::string_view quote);

/// Whether the name consists of letters, digits, underscores and points, so that
/// it can stand in a statement without quotes.
[[nodiscard]] bool isPlainName(std::string_view name);

}  // namespace ado
