#pragma once

#include <string>

namespace web {

/// 128 bits from the system's generator as up to 32 hexadecimal digits: a name that nobody guesses.
std::string newSecret();

}  // namespace web
