#pragma once

#include <string>
#include <string_view>

#include "web/desk/Desk.h"
#include "web/http/Guard.h"
#include "web/http/Handler.h"
#include "web/http/Options.h"

namespace web {

class DeskWindows;

/// Every address of a desk's server; docs/desk-protocol.md says what stands there. All but the empty page,
/// its scripts and the assets, whose addresses hold a secret of this run, takes the token, also for reading.
class DeskRoutes : public Handler {
 public:
  static constexpr std::size_t MostBody = std::size_t{1} << 20;
  static constexpr std::size_t MostDeck = std::size_t{200} << 20;

  /// All outlive it.
  DeskRoutes(Desk& desk, DeskWindows& windows, const Options& options);

  /// A failure of the desk is reported and answered with 500.
  [[nodiscard]] Response answer(const Request& request) override;
  /// Who holds the token is heard, others get 503.
  [[nodiscard]] Response answerGuest(const Request& request) override;
  /// A long body is for who holds the token.
  [[nodiscard]] std::size_t bodyLimit(const Request& head) const override;

 private:
  Response dispatch(const Request& request);
  Response api(const Request& request, std::string_view path);
  Response window(const Request& request, std::string_view path);
  Response stream(const Request& request, const std::string& window);
  Response helpAnswer(std::string_view name);
  static Response download(Download file);
  Response upload(const Request& request);

  Desk& desk_;
  DeskWindows& windows_;
  const Options& options_;
  Guard guard_;
  const std::string assets_;
};

}  // namespace web
