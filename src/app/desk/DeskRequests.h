#pragma once

#include <string_view>
#include <vector>

#include "app/desk/DeskWindow.h"
#include "app/desk/Notices.h"
#include "app/desk/OpenDeck.h"
#include "deck/objects/Application.h"
#include "json/Json.h"
#include "platform/JobQueue.h"

namespace app {

/// What pages ask of a desk (docs/desk-protocol.md), handed to the parts that do it. Made for one request.
class DeskRequests {
 public:
  DeskRequests(deck::Application& application, OpenDeck& open, Notices& notices, platform::JobQueue& jobs)
      : application_(application), open_(open), notices_(notices), jobs_(jobs) {}

  /// POST windows/W/PATH; the window is the active one. Null for {"ok": true}.
  [[nodiscard]] json::Json act(DeskWindow& window, std::string_view path, const json::Json& body) const;
  /// GET PATH
  [[nodiscard]] json::Json look(std::string_view path, std::string_view query) const;

 private:
  using Words = std::vector<std::string_view>;

  void select(DeskWindow& window, const json::Json& body) const;
  void press(const Words& words, const json::Json& body) const;
  void setCursor(DeskWindow& window, const json::Json& body) const;
  void link(DeskWindow& window, const json::Json& body) const;
  [[nodiscard]] int slideOf(const json::Json& body) const;
  [[nodiscard]] json::Json slide(std::string_view id) const;
  [[nodiscard]] json::Json data(std::string_view number, std::string_view query) const;

  deck::Application& application_;
  OpenDeck& open_;
  Notices& notices_;
  platform::JobQueue& jobs_;
};

}  // namespace app
