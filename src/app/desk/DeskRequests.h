#pragma once

#include <functional>
#include <string_view>
#include <vector>

#include "app/desk/DeskFindings.h"
#include "app/desk/DeskForms.h"
#include "app/desk/DeskWindow.h"
#include "app/desk/EditedDeck.h"
#include "app/desk/Notices.h"
#include "app/desk/OpenDeck.h"
#include "app/desk/Roots.h"
#include "connections/DataPreview.h"
#include "deck/objects/Application.h"
#include "json/Json.h"
#include "platform/jobs/JobQueue.h"

namespace app {

/// What requests reach of a desk.
struct DeskParts {
  deck::Application& application;
  OpenDeck& open;
  EditedDeck& edited;
  DeskForms& forms;
  DeskFindings& findings;
  Notices& notices;
  platform::JobQueue& jobs;
  const Roots& roots;
  LF2000::DataPreview& preview;
  /// Writes the deck's file.
  std::function<void()> save;
  /// Begins a show of the file; answers its address.
  std::function<std::string()> show;
  /// A sentence for the window's live region.
  std::function<void(const DeskWindow& window, const std::string& text)> say;
};

/// What pages ask of a desk (docs/desk-protocol.md), handed to the parts that do it. Made for one request.
class DeskRequests {
 public:
  explicit DeskRequests(DeskParts parts) : parts_(std::move(parts)) {}

  /// POST windows/W/PATH; the window is the active one. Null for {"ok": true}.
  [[nodiscard]] json::Json act(DeskWindow& window, std::string_view path, const json::Json& body) const;
  /// GET PATH
  [[nodiscard]] json::Json look(std::string_view path, std::string_view query) const;

 private:
  using Words = std::vector<std::string_view>;

  void select(DeskWindow& window, const json::Json& body) const;
  void press(DeskWindow& window, std::string_view id, const json::Json& body) const;
  [[nodiscard]] json::Json command(DeskWindow& window, std::string_view name) const;
  void setCursor(DeskWindow& window, const json::Json& body) const;
  void link(DeskWindow& window, const json::Json& body) const;
  void fill(DeskWindow& window, const json::Json& body) const;
  void rename(DeskWindow& window, const json::Json& body) const;
  void connect(DeskWindow& window, const json::Json& body) const;
  void trySample(DeskWindow& window, const json::Json& body) const;
  void setPreview(DeskWindow& window, const json::Json& body) const;
  [[nodiscard]] json::Json form(DeskWindow& window, const Words& words, const json::Json& body) const;
  void choose(DeskWindow& window, int choice, const json::Json& body) const;
  void pressNotice(const Words& words) const;
  [[nodiscard]] int slideOf(const json::Json& body) const;
  [[nodiscard]] json::Json slide(std::string_view id) const;
  [[nodiscard]] json::Json data(std::string_view number, std::string_view query) const;
  [[nodiscard]] json::Json files(std::string_view root, std::string_view query) const;

  DeskParts parts_;
};

}  // namespace app
