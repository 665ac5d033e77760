#pragma once

#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>

#include "json/Json.h"
#include "web/show/Show.h"

namespace web {

/// Thrown by a desk to answer a request with another status than 200. What else it throws as basic::Error
/// is a reason for which something cannot be done now (409).
class Refusal : public std::runtime_error {
 public:
  /// `why` is a sentence.
  Refusal(int status, const std::string& why) : std::runtime_error(why), status_(status) {}
  [[nodiscard]] int status() const { return status_; }

 private:
  int status_;
};

/// A file for downloading.
struct Download {
  std::string name;
  std::shared_ptr<const std::string> bytes;
};

/// The open deck that authors work on in browsers, as the server sees it; docs/desk-protocol.md has what is
/// asked and told. A window is a page, named by itself. The program implements it.
///
/// Every function is called on the thread of the server's io_context and must not block; requests that it
/// lets in carry the token. A window's changes go to DeskServer::send(), which may be called at any time.
class Desk {
 public:
  virtual ~Desk() = default;

  /// A page opens its stream, perhaps again. The state is asked for next.
  virtual void opened(const std::string& window) = 0;
  /// It has been away for so long that nothing of it need be kept.
  virtual void forget(const std::string& window) = 0;
  /// Every key of the state that the window shows.
  virtual json::Json state(const std::string& window) = 0;
  /// What was said to the window and waits for its answer, to be said once more to one that comes back.
  virtual void repeat(const std::string& window) = 0;

  /// POST windows/WINDOW/PATH. Null answers {"ok": true}.
  virtual json::Json act(const std::string& window, std::string_view path, const json::Json& body) = 0;
  /// GET PATH.
  virtual json::Json look(std::string_view path, std::string_view query) = 0;
  /// What stands before an asset's name in its address, "assets/SECRET/": whoever knows it may read them.
  [[nodiscard]] virtual std::string assets() const = 0;
  /// What slides and forms refer to, by its name; see Show::asset().
  virtual std::optional<Asset> asset(std::string_view name) = 0;
  /// A page of the help and what it refers to, by its name of letters, digits, "-" and one "."; it holds
  /// nothing of the deck.
  virtual std::optional<Asset> help(std::string_view name) = 0;
  /// The deck as it was saved last.
  virtual Download deck() = 0;
  /// A copy of it that was made here, by the name under which it was offered.
  virtual Download copy(std::string_view name) = 0;
  /// A newer version of it.
  virtual void takeDeck(std::string bytes) = 0;
};

}  // namespace web
