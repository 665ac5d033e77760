#pragma once

#include <string_view>

namespace basic {

/// Whether the bytes begin an OLE compound file ([MS-CFB]): the binary office
/// formats, and the envelope of encrypted packages.
bool IsCompoundFile(std::string_view bytes);

/// Whether a compound file's directory has an entry of an ASCII name.
bool HasCompoundEntry(std::string_view bytes, std::string_view name);

}  // namespace basic
