#pragma once

#include <functional>
#include <string>

#include "opc/Files.h"

namespace opc {

/// What a package's file may have. A show holds the deck on show and the next version of it at the
/// same time.
inline constexpr std::uint64_t MaximumPackageBytes = 1ULL << 30;

/// Reads the file of a package as readFile() does. A large one must end as an archive does (or be an OLE
/// compound file, whose kind Package tells), which is looked at before the memory for it is taken.
FileContent readPackageFile(
    const std::string& path, const std::function<void()>& gettingOn = [] {});

}  // namespace opc
