// Which files are read at a desk, and which sources of a deck its author is asked about.

#include "app/desk/DeskAccess.h"

#include <algorithm>
#include <filesystem>

#include "addin/support/modGlobalFunctions.h"
#include "basic/ConnectionString.h"
#include "basic/Error.h"
#include "basic/Names.h"
#include "basic/Strings.h"

namespace app {

namespace {

bool looksLikePath(std::string_view text) {
  return text.find_first_of("/\\") != std::string_view::npos || text.starts_with('.');
}

std::string localPath(const std::string& path) try {
  return host::Current().files->LocalPath(path);
} catch (const basic::Error&) {
  return path;
}

void add(std::vector<ForeignSource>& sources, ForeignSource source) {
  const bool isKnown = std::any_of(sources.begin(), sources.end(),
                                   [&](const ForeignSource& each) { return each.name == source.name; });
  if (!isKnown) sources.push_back(std::move(source));
}

void addFile(std::vector<ForeignSource>& sources, const std::string& path, const Roots& roots) {
  const std::string local = localPath(path);
  if (!local.empty() && !roots.hold(local)) add(sources, {local, local});
}

/// Database files by their paths, everything else by its server.
void addDatabase(std::vector<ForeignSource>& sources, const std::string& text, const Roots& roots) {
  for (const basic::ConnectionSetting& setting : basic::ReadConnectionString(text)) {
    if (basic::EqualsIgnoreCase(setting.key, "Extended Properties")) {
      addDatabase(sources, setting.value, roots);
    } else if (basic::HasName({"Data Source", "Database", "DBQ"}, setting.key) &&
               looksLikePath(setting.value)) {
      addFile(sources, setting.value, roots);
    } else if (basic::HasName({"Server", "Servername", "Host", "Address", "DSN", "Data Source"},
                              setting.key)) {
      add(sources, {setting.value, {}});
    }
  }
}

}  // namespace

std::vector<ForeignSource> foreignSources(LF2000::clsPresentation& deck,
                                          const std::vector<std::string>& folders,
                                          const std::vector<std::string>& pictures, const Roots& roots) {
  std::vector<ForeignSource> sources;
  for (const auto& connection : deck.Connections()) {
    const auto kind = static_cast<LF2000::ConnectionKind>(connection->ConnectionType());
    if (kind == LF2000::ConnectionKind::Database) {
      addDatabase(sources,
                  LF2000::modGlobalFunctions::ResolveConnectionString(connection->ConnectionString(),
                                                                      connection->ActivePresentationName()),
                  roots);
    } else if (const std::string file = connection->ResolvedFile(); !file.empty()) {
      addFile(sources, file, roots);
    }
  }
  for (const std::string& folder : folders) {
    if (folder.empty()) continue;
    addFile(sources, LF2000::modGlobalFunctions::ResolvePath(folder, deck.ActivePresentation()->FullName()),
            roots);
  }
  for (const std::string& picture : pictures) addFile(sources, picture, roots);
  return sources;
}

void DeskAccess::require(const std::string& path) const {
  if (roots_.hold(path)) return;
  const bool isGranted = std::any_of(granted_.begin(), granted_.end(), [&](const std::string& granted) {
    return path == granted || Roots::isIn(path, granted);
  });
  if (isGranted) return;
  constexpr std::int32_t permissionDenied = 70;
  throw basic::Error(permissionDenied, "Lumenfold",
                     "Outside the folders of this desk. Start it with --allow " +
                         std::filesystem::path(path).parent_path().string() + ".");
}

std::unique_ptr<host::InputFile> DeskFiles::OpenForInput(std::string_view path) {
  access_.require(usual_.LocalPath(path));
  return usual_.OpenForInput(path);
}

basic::Date DeskFiles::FileDateTime(std::string_view path) const {
  access_.require(usual_.LocalPath(path));
  return usual_.FileDateTime(path);
}

std::string DeskFiles::TempFileName(std::string_view folder, std::string_view prefix) {
  if (folder != usual_.TempPath()) access_.require(usual_.LocalPath(folder));
  return usual_.TempFileName(folder, prefix);
}

std::string DeskFiles::FileWithin(std::string_view folder, std::string_view name) const {
  access_.require(usual_.LocalPath(folder));
  return usual_.FileWithin(folder, name);
}

}  // namespace app
