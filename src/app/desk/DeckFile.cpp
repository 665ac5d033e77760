#include "app/desk/DeckFile.h"

#include <unistd.h>

#include <filesystem>
#include <utility>

#include "app/wiring/Failure.h"
#include "basic/Quotes.h"
#include "deck/objects/Repair.h"
#include "host/drives.h"
#include "opc/Files.h"
#include "opc/PackageFile.h"

namespace app {
namespace {

namespace fs = std::filesystem;

opc::FileContent read(const std::string& path) {
  return host::OnDrive(path, [path](const auto& gettingOn) { return opc::readPackageFile(path, gettingOn); });
}

void requireWhole(opc::Package& package) {
  package.verify();
  if (const auto damages = deck::repair(package); !damages.empty()) {
    fail(basic::InQuotes(package.name()) + " is damaged: " + damages.front().text + ".");
  }
}

}  // namespace

std::optional<std::string> DeckFile::whyReadOnly() const {
  std::error_code error;
  const fs::path file = fs::weakly_canonical(path_, error);
  if (fs::exists(file, error) && ::access(file.c_str(), W_OK) != 0) return "The file is write-protected.";
  if (::access(file.parent_path().c_str(), W_OK) != 0)
    return "Nothing can be written into the deck's folder.";
  return std::nullopt;
}

std::optional<std::string> DeckFile::ownerFile() const {
  const fs::path file(path_);
  std::error_code error;
  for (const std::string& name :
       {"~$" + file.filename().string(), ".~lock." + file.filename().string() + "#"}) {
    if (const fs::path owner = file.parent_path() / name; fs::exists(owner, error)) return owner.string();
  }
  return std::nullopt;
}

DeckFile::Look DeckFile::look(deck::Presentation& presentation) {
  const auto state = opc::stateOfFile(path_);
  if (!state) return Look::Gone;
  if (state == presentation.fileState()) return Look::Same;
  opc::FileContent content = read(path_);
  auto package = opc::Package::fromBytes(std::move(content.bytes), path_);
  if (package->fingerprint() == presentation.package().fingerprint()) {
    presentation.acceptFileState(content.state);
    return Look::Same;
  }
  version_ = DeckVersion{std::move(package), content.state};
  return Look::Changed;
}

DeckVersion DeckFile::takeVersion() {
  DeckVersion version = std::move(version_.value());
  version_.reset();
  requireWhole(*version.package);
  return version;
}

DeckVersion DeckFile::replaceBy(const std::string& file, const deck::Presentation& presentation) {
  // One after the other, for a deck may be large; its own name would tell nobody anything.
  const auto sent = [&file] { return opc::readFile(file, opc::MaximumPackageBytes).bytes; };
  requireWhole(*opc::Package::fromBytes(sent(), "The uploaded deck"));
  std::string bytes = sent();
  const auto& known = presentation.fileState();
  const opc::FileState state = opc::replaceFile(path_, bytes, known ? &*known : nullptr);
  return {opc::Package::fromBytes(std::move(bytes), path_), state};
}

}  // namespace app
