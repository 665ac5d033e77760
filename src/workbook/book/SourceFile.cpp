// When the bytes of a workbook's file are worth reading as a workbook: other programs save while this one
// reads.

#include "workbook/book/SourceFile.h"

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <string_view>
#include <utility>

#include "basic/Error.h"
#include "host/drives.h"
#include "opc/Archive.h"
#include "workbook/Failure.h"

namespace workbook {
namespace {

/// As of text files.
constexpr std::uint64_t LargestFile = std::uint64_t{256} << 20U;

struct Reading {
  opc::FileContent source;
  bool isChanging = false;
};

Reading readOnce(const std::string& path, const host::Drives::GettingOn& gettingOn) try {
  opc::FileContent source = opc::readContent(path, LargestFile, gettingOn);
  const bool isChanging = opc::stateOfFile(path) != source.state;
  return {std::move(source), isChanging};
} catch (const basic::Error& error) {
  std::error_code unknown;
  const bool isThere = std::filesystem::exists(path, unknown) || unknown;
  failOpening(path, isThere ? error.description : "there is no such file");
}

bool isUnfinished(std::string_view bytes) {
  if (bytes.empty()) return true;
  if (!bytes.starts_with("PK")) return false;
  return !opc::Archive::hasEnd(bytes.substr(bytes.size() - std::min(bytes.size(), opc::Archive::LongestEnd)));
}

}  // namespace

opc::FileContent readSourceFile(const std::string& path, host::Loop& loop) {
  using Clock = std::chrono::steady_clock;
  constexpr std::chrono::milliseconds Patience{300};
  constexpr std::chrono::milliseconds Pause{30};
  const Clock::time_point end = Clock::now() + Patience;
  while (true) {
    auto [source, isChanging] =
        host::OnDrive(path, [path](const auto& gettingOn) { return readOnce(path, gettingOn); });
    const bool isWhole = !isChanging && !isUnfinished(source.bytes);
    if (isWhole || Clock::now() >= end) return std::move(source);
    for (const Clock::time_point again = Clock::now() + Pause; Clock::now() < again;) loop.DoEvents();
  }
}

}  // namespace workbook
