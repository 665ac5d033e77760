#pragma once

#include <string>
#include <vector>

namespace support {

/// What PowerPoint would want repaired in a deck: parts without a content type,
/// types and relationships of parts that are not there, parts that nothing leads
/// to, references to missing relationships, ids that stand twice.
std::vector<std::string> faultsOf(const std::string& deck);

}  // namespace support
