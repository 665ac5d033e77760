#pragma once

#include <functional>
#include <map>
#include <string>
#include <utility>

#include "app/desk/Notices.h"
#include "app/desk/OpenDeck.h"
#include "app/inspect/LinkRepair.h"

namespace app {

/// Columns that shapes show and that their connections no longer have: each is told in a notice, with what
/// could be used instead, for as long as it is so.
class MissingColumns {
 public:
  struct Surroundings {
    /// Leads the links to the choice.
    std::function<void(const LinkRepair& repair, const std::string& choice)> mend;
    /// Looks the deck over, for the choices that the notice has no room for.
    std::function<void()> check;
  };
  /// `notices` outlives this object.
  MissingColumns(Notices& notices, Surroundings around) : notices_(notices), around_(std::move(around)) {}

  /// To be called when links or columns may be others than before.
  void look(const OpenDeck& open);

 private:
  /// Connection and column, in capitals.
  using Key = std::pair<std::string, std::string>;
  struct Told {
    int notice = 0;
    std::string text;
  };

  [[nodiscard]] static std::map<Key, LinkRepair> find(const OpenDeck& open);
  [[nodiscard]] int tell(const LinkRepair& repair, int notice);

  Notices& notices_;
  const Surroundings around_;
  std::map<Key, Told> told_;
};

}  // namespace app
