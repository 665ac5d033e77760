#include "host/text_table.h"

namespace host {

std::optional<std::string_view> TextTable::field(std::size_t, std::size_t) const { return std::nullopt; }

}  // namespace host
