#include "app/desk/NearbyFiles.h"

#include <algorithm>
#include <cstdint>
#include <system_error>
#include <vector>

#include "basic/Counted.h"
#include "basic/Error.h"
#include "connections/SourceKind.h"
#include "connections/TextFileGlance.h"
#include "connections/clsConnection.h"
#include "host/drives.h"
#include "host/services.h"

namespace app {

using json::Json;

namespace fs = std::filesystem;

namespace {

const char* nameOf(LF2000::ConnectionKind kind) {
  switch (kind) {
    case LF2000::ConnectionKind::Database:
      return "database";
    case LF2000::ConnectionKind::Excel:
      return "workbook";
    case LF2000::ConnectionKind::TextFile:
      break;
  }
  return "text";
}

/// "2 columns, 2 rows"; why not, where it cannot be read.
std::string noteOn(const fs::path& file, const std::string& deck) try {
  LF2000::clsConnection connection;
  connection.ActivePresentationName(deck);
  connection.ConnectionType(static_cast<std::int32_t>(LF2000::ConnectionKind::TextFile));
  connection.ConnectionFileString(file.string());
  connection.ConnectionFirstRowFieldNames(
      LF2000::GlanceAt(host::Current().files->OpenForInput(file.string())->ReadAll()).HasNames);
  connection.OpenConnection();
  connection.OpenRecordset();
  return basic::Counted(static_cast<std::int64_t>(connection.ColumnCount()), "column") + ", " +
         basic::Counted(static_cast<std::int64_t>(connection.RecordCount()), "row");
} catch (const basic::Error&) {
  return "cannot be read";
}

}  // namespace

void NearbyFiles::look() {
  constexpr std::size_t most = 20;
  constexpr std::uintmax_t largest = std::uintmax_t{1} << 20U;
  const fs::path folder = fs::path(deck_).parent_path();
  // A folder that hangs is nobody's offer.
  const host::Drives* drives = host::Current().drives;
  if (drives != nullptr && !drives->IsLocal(folder.string())) return;

  std::vector<fs::path> files;
  std::error_code failed;
  for (fs::directory_iterator at(folder, failed), end; !failed && at != end; at.increment(failed)) {
    std::error_code unknown;
    const std::string name = at->path().filename().string();
    if (name.starts_with('.') || name.starts_with('~') || !at->is_regular_file(unknown)) continue;
    if (LF2000::KindOfFile(name)) files.push_back(at->path());
  }
  std::sort(files.begin(), files.end());
  if (files.size() > most) files.resize(most);

  std::map<std::string, Known> before = std::exchange(known_, {});
  json_ = Json::array();
  for (const fs::path& file : files) {
    const std::string name = file.filename().string();
    const auto kind = LF2000::KindOfFile(name).value();
    const auto changed = fs::last_write_time(file, failed);
    const auto known = before.find(name);
    Known& entry = known_[name];
    if (known != before.end() && known->second.changed == changed) {
      entry = known->second;
    } else {
      const bool isSmall = fs::file_size(file, failed) <= largest;
      const bool isText = kind == LF2000::ConnectionKind::TextFile;
      entry = {changed, isText && isSmall ? noteOn(file, deck_) : std::string()};
    }
    json_.push_back({{"path", name}, {"kind", nameOf(kind)}, {"note", entry.note}});
  }
}

}  // namespace app
