#include "app/show/DeckTaker.h"

#include <exception>
#include <filesystem>
#include <memory>
#include <utility>

#include "addin/support/modErrors.h"
#include "host/drives.h"
#include "opc/Files.h"

namespace app {

void DeckTaker::watch() {
  const deck::Presentation& deck = *stage_.deck();
  goesOn_ = true;
  lookAt(deck.FullName(), deck.fileState().value(), deck.package().fingerprint());
}

void DeckTaker::take(const std::string& file, bool goesOn, std::function<void()> done) {
  const std::string path = std::filesystem::absolute(file).lexically_normal().string();
  if (const std::string why = whatHinders(path); !why.empty()) {
    tellOf(path, why);
    return done();
  }
  done_ = std::move(done);
  goesOn_ = goesOn;
  // As if nothing had been read before.
  lookAt(path, {}, 0);
}

std::string DeckTaker::whatHinders(const std::string& path) {
  try {
    const auto look = [path](const auto&) { return opc::stateOfFile(path).has_value(); };
    return host::OnDrive(path, look) ? "" : "the file cannot be found.";
  } catch (const basic::Error& error) {
    return error.description;
  }
}

void DeckTaker::lookAt(const std::string& path, const opc::FileState& shown, std::size_t fingerprint) {
  path_ = path;
  watch_.emplace(loop_, path, shown, fingerprint,
                 DeckWatch::Hearer{[this](DeckVersion version) { takeUp(std::move(version)); },
                                   [this](const std::string& why) { leaveAlone(why); }});
}

void DeckTaker::takeUp(DeckVersion version) {
  if (path_ != stage_.deck()->FullName()) {
    // Not within a change of the stage that waits for its sources.
    const auto other = std::make_shared<DeckVersion>(std::move(version));
    return loop_.postOutermost([this, other] {
      carryOut([&] {
        const auto deck = host_.application().open(std::move(other->package), other->state);
        stage_.follow(deck, stage_.showOptions(), false);
      });
    });
  }
  carryOut([&] { stage_.change(std::move(version)); });
}

void DeckTaker::carryOut(const std::function<void()>& change) {
  try {
    change();
  } catch (const std::exception& error) {
    return leaveAlone(error.what());
  }
  finish();
}

void DeckTaker::leaveAlone(const std::string& why) {
  tellOf(path_, why);
  finish();
}

void DeckTaker::tellOf(const std::string& path, const std::string& why) const {
  const std::string shown = stage_.deck()->FullName();
  LF2000::modErrors::WriteErrorLog(
      (path == shown ? "A new version of " + shown + " is not shown, and the one before stays: "
                     : path + " is not shown, and " + shown + " stays: ") +
      why);
}

void DeckTaker::finish() {
  const auto done = std::exchange(done_, {});
  if (!done) return;
  // Not before the watch has told all that it has to, and not the watch of somebody who asked meanwhile.
  if (!goesOn_) {
    loop_.postOutermost([this] {
      if (!done_) stop();
    });
  }
  done();
}

}  // namespace app
