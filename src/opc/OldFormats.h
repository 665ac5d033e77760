#pragma once

#include <string>
#include <string_view>

namespace opc {

/// Says what an OLE compound file ([MS-CFB]) that was taken for a deck is: an
/// encrypted one, one of the binary format, something else. Empty for other
/// bytes.
std::string describeOldFormat(std::string_view bytes);

/// Why bytes that begin so are no package that can be read, where the archive's reader says `detail`.
std::string describeNoPackage(std::string_view beginning, std::string_view detail);

}  // namespace opc
