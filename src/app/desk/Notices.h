#pragma once

#include <cstddef>
#include <functional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "host/services.h"
#include "json/Json.h"

namespace app {

/// What authors are told and keep until they put it away; the windows of a desk show it above their data.
/// Also the system's message boxes: what they tell becomes a notice, and nobody waits for an answer.
class Notices final : public host::MessageBox {
 public:
  enum class Level { Info, Warning, Error };
  struct Action {
    std::string id;
    std::string caption;
    std::function<void()> run;
    /// The notice stays when it is pressed.
    bool isKept = false;
  };

  /// `changed` is called whenever a notice comes or goes; must not throw.
  explicit Notices(std::function<void()> changed) : changed_(std::move(changed)) {}

  /// Answers its id. Of a text that stands already the rest is changed, and it keeps its id. Of more than the
  /// newest 20 the oldest go.
  int tell(Level level, std::string text, std::string details = {}, std::vector<Action> actions = {});
  /// As tell(), in the place of the notice `id`, which keeps its id if it has not been put away.
  int tellAgain(int id, Level level, std::string text, std::string details, std::vector<Action> actions);
  void dismiss(int id);
  [[nodiscard]] bool isTold(int id) const;
  /// Puts the notice away, unless the action keeps it, and does what the action means; an error for what is
  /// not there. Nothing for one that was answered already: by the first of two clicks, or in another window.
  void press(int id, std::string_view action);
  /// docs/desk-protocol.md, notices.
  [[nodiscard]] json::Json toJson() const;

  /// Message boxes of these texts are told otherwise.
  void passOver(std::function<bool(std::string_view text)> isToldOtherwise) {
    isToldOtherwise_ = std::move(isToldOtherwise);
  }

  /// OK; of a question with Yes and No, No.
  host::MsgBoxResult MsgBox(std::string_view text, std::int32_t style, std::string_view title) override;

 private:
  struct Notice {
    int id = 0;
    Level level = Level::Info;
    std::string text;
    std::string details;
    std::vector<Action> actions;
  };

  std::function<void()> changed_;
  std::function<bool(std::string_view)> isToldOtherwise_;
  std::vector<Notice> all_;
  /// Those that an action has put away.
  std::set<int> answered_;
  int lastId_ = 0;
};

}  // namespace app
