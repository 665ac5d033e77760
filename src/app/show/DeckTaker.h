#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>

#include "app/show/DeckWatch.h"
#include "app/show/Stage.h"
#include "app/wiring/AddInHost.h"
#include "platform/EventLoop.h"

namespace app {

/// Brings new versions of a deck onto the stage, and another deck when one is asked for. What cannot be shown
/// is a line in the errors log, and what was on goes on.
class DeckTaker {
 public:
  /// All of them outlive this object.
  DeckTaker(AddInHost& host, platform::EventLoop& loop, Stage& stage)
      : host_(host), loop_(loop), stage_(stage) {}

  /// Takes each new version of the deck on the stage, from now on.
  void watch();
  /// Takes the deck of this file as it is now, also when it is the one on the stage and has not changed, and
  /// calls `done` when it is shown or was left alone. `goesOn` watches it afterwards.
  void take(const std::string& file, bool goesOn, std::function<void()> done);
  /// Takes nothing any more.
  void stop() { watch_.reset(); }

 private:
  /// Why the file cannot be taken; empty when it can be looked at.
  static std::string whatHinders(const std::string& path);
  void lookAt(const std::string& path, const opc::FileState& shown, std::size_t fingerprint);
  void takeUp(DeckVersion version);
  void carryOut(const std::function<void()>& change);
  void leaveAlone(const std::string& why);
  void tellOf(const std::string& path, const std::string& why) const;
  void finish();

  AddInHost& host_;
  platform::EventLoop& loop_;
  Stage& stage_;
  std::optional<DeckWatch> watch_;
  std::string path_;
  bool goesOn_ = true;
  std::function<void()> done_;
};

}  // namespace app
