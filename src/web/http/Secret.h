#pragma once

#include <string>

namespace web {

/// A name that nobody guesses: 128 bits from the system's generator, as up to 32 hexadecimal digits.
std::string newSecret();

}  // namespace web
