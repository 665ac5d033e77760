#pragma once

#include <string>
#include <string_view>

namespace web {

/// A name that nobody guesses: 128 bits from the system's generator, as 32 hexadecimal digits.
std::string newSecret();

/// Compares in a time that tells nothing but whether the sizes are the same.
bool isSameSecret(std::string_view a, std::string_view b);

}  // namespace web
