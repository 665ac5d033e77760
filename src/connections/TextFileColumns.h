#pragma once

#include <string>
#include <vector>

namespace LF2000 {

/// Column1, Column2 and so on.
std::vector<std::string> GeneratedColumnNames(std::size_t count);

/// Raises an error that says which name is empty, or appears twice in any case.
void CheckColumnNames(const std::vector<std::string>& names);

}  // namespace LF2000
