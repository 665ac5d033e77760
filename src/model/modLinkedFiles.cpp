#include "model/modLinkedFiles.h"

#include "addin/support/modGlobalFunctions.h"
#include "basic/Strings.h"
#include "host/services.h"

namespace LF2000::modLinkedFiles {

namespace {

std::string FolderOf(std::string_view objectFolder, std::string_view presentationFullName) {
  if (!basic::Trim(objectFolder).empty()) {
    return modGlobalFunctions::ResolvePath(objectFolder, presentationFullName);
  }
  const std::size_t end = presentationFullName.find_last_of("/\\");
  return end == std::string_view::npos ? "." : std::string(presentationFullName.substr(0, end + 1));
}

}  // namespace

std::string FindFile(std::string_view name, std::string_view objectFolder,
                     std::string_view presentationFullName) {
  const std::string prefix = std::string(objectFolder) + "\\";
  if (!objectFolder.empty() && basic::StartsWith(name, prefix)) name.remove_prefix(prefix.size());
  return host::Current().files->FileWithin(FolderOf(objectFolder, presentationFullName), name);
}

void ShowFile(PowerPoint::Shape& shape, std::string_view path) {
  const auto link = shape.LinkFormat();
  link->SourceFullName(path);
  link->Update();
}

void ShowOwnContent(PowerPoint::Shape& shape) { ShowFile(shape, {}); }

}  // namespace LF2000::modLinkedFiles
