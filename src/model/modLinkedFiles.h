#pragma once

#include <string>
#include <string_view>

#include "host/powerpoint.h"

/// The files that pictures and linked objects show when a connection's data name
/// them.
namespace LF2000::modLinkedFiles {

/// The path of the file that `name` means, as GetValueObject of a connection puts
/// it together for a shape's object folder. A name without the folder is looked
/// for there all the same; without a folder, beside the presentation. Only what
/// lies in the folder is found: a name that leads out of it is an error.
[[nodiscard]] std::string FindFile(std::string_view name, std::string_view objectFolder,
                                   std::string_view presentationFullName);

/// The shape shows the file.
void ShowFile(PowerPoint::Shape& shape, std::string_view path);
/// The shape shows its own content again.
void ShowOwnContent(PowerPoint::Shape& shape);

}  // namespace LF2000::modLinkedFiles
