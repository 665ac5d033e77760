// The files that a show reads: looked at before their time when they change, and those of linked objects.

#include <algorithm>
#include <string>

#include "basic/Conversion.h"
#include "model/clsShape.h"
#include "runtime/FrmRuntimeTimer.h"

namespace LF2000 {

using modDebug::DebugKind;

namespace {

/// Of an entry of LinkedOLEObjects.
std::string PathOf(const std::string& entry) { return entry.substr(0, entry.find('\t')); }

}  // namespace

std::set<std::string> FrmRuntimeTimer::FilesInSight() const {
  std::set<std::string> files;
  ConnectionFlags used;
  for (const std::int32_t slide : SlidesToRequery()) {
    const auto index = static_cast<std::size_t>(slide);
    used |= usedConnections_[index];
    for (const clsRTShapeInfo& shape : shapes_[index]) {
      if (shape.SourceType != static_cast<std::int32_t>(SourceType::LinkedObject)) continue;
      if (std::string file = shape.Text.value_or(""); !file.empty()) files.insert(std::move(file));
    }
  }
  for (const auto& [key, connection] : connections_) {
    if (!used[static_cast<std::size_t>(basic::CLng(key))]) continue;
    if (std::string file = connection->ResolvedFile(); !file.empty()) files.insert(std::move(file));
  }
  for (const std::string& entry : linkedObjects_) files.insert(PathOf(entry));
  return files;
}

/// Before they are looked at, so that no change falls in between.
void FrmRuntimeTimer::WatchFiles() {
  if (!watch_) return;
  const std::set<std::string> files = FilesInSight();
  earlyLooks_.KeepOnly(files);
  // The show may end in there.
  const std::shared_ptr<host::FileWatch> watch = watch_;
  watch->Files(files);
}

void FrmRuntimeTimer::FileChanged(const std::string& path) {
  const std::int64_t now = host::Current().clock->TickCount();
  if (!earlyLooks_.IsWorthwhile(path, now)) return;
  for (std::string& entry : linkedObjects_) {
    // Without its date it counts as changed: dates of linked files are whole seconds.
    if (PathOf(entry) == path) entry = path;
  }
  if (tmrChangedFiles_->Enabled()) return;
  tmrChangedFiles_->Interval(static_cast<std::int32_t>(earlyLooks_.Pause(now)));
  tmrChangedFiles_->Enabled(true);
}

void FrmRuntimeTimer::TakeUpEarlyLook() {
  if (!isEarlyLookPutOff_ || requerying_ || refreshing_ || unloaded_) return;
  isEarlyLookPutOff_ = false;
  tmrChangedFiles_->Interval(
      static_cast<std::int32_t>(earlyLooks_.Pause(host::Current().clock->TickCount())));
  tmrChangedFiles_->Enabled(true);
}

void FrmRuntimeTimer::tmrRefreshLinkedObjects_Timer() try {
  if (unloaded_) return;
  Log(DebugKind::Information, "Start refresh linked objects");
  std::string changed;
  for (std::string& entry : linkedObjects_) {
    const std::string path = PathOf(entry);
    try {
      std::string present = path + "\t" + basic::CStr(host::Current().files->FileDateTime(path));
      if (present != entry) changed = present;
      entry = std::move(present);
      NoteSuccess(path);
    } catch (...) {
      Report(path, "tmrRefreshLinkedObjects_Timer");
    }
    if (unloaded_) return;
  }
  if (!changed.empty()) {
    Log(DebugKind::Information, "Refresh linked object: " + changed);
    presentation_->UpdateLinks();
  }
  Log(DebugKind::Information, "Stop refresh linked objects");
  NoteSuccess("tmrRefreshLinkedObjects");
} catch (...) {
  Report("tmrRefreshLinkedObjects", "tmrRefreshLinkedObjects_Timer");
}

void FrmRuntimeTimer::tmrChangedFiles_Timer() {
  tmrChangedFiles_->Enabled(false);
  isEarlyLookPutOff_ = requerying_ || refreshing_;
  if (isEarlyLookPutOff_) return;
  if (!tmrData_->Enabled()) return;
  const bool isLinkChanged = std::any_of(linkedObjects_.begin(), linkedObjects_.end(), [](const auto& entry) {
    return entry.find('\t') == std::string::npos;
  });
  if (isLinkChanged) tmrRefreshLinkedObjects_Timer();
  if (scrolling_) tmrConnections_Timer();
  tmrData_Timer();
}

}  // namespace LF2000
