#pragma once

#include <optional>
#include <string>
#include <vector>

#include "web/http/Guard.h"
#include "web/http/KnownScreens.h"
#include "web/http/Request.h"
#include "web/http/Response.h"

namespace web {

/// 401: looking takes a token.
Response unknownVisitor();

/// Decides who may look, where screens are known (Options::screens): a screen by its token, which it presents
/// once and has in a cookie from then on, and who steers. A program sends either token as "Authorization:
/// Bearer TOKEN".
class Admission {
 public:
  /// All outlive it; without a list everybody may look. `hubs` are the origins of Options::hubs.
  Admission(const Guard& guard, const KnownScreens* screens, const std::vector<std::string>& hubs)
      : guard_(guard), screens_(screens), hubs_(hubs) {}

  /// Who looks: a screen, or somebody without a name; nothing when the request may not.
  [[nodiscard]] std::optional<KnownScreen> visitor(const Request& request) const;
  /// Whether looking takes a token.
  [[nodiscard]] bool isAsked() const { return screens_ != nullptr; }

  /// Of POST /screen/enter with {"token": "…"}: {"ok": true, "screen": NAME or null, "steers": …,
  /// "hubs": [ORIGIN, …]} with the cookie, or 401. Pages of the hubs may ask it from each other's, to set a
  /// screen up at all of them.
  [[nodiscard]] Response entered(const Request& request) const;
  /// Of GET /screen/check: 204 or 401, for hubs and for screens.
  [[nodiscard]] Response checked(const Request& request) const;

 private:
  const Guard& guard_;
  const KnownScreens* screens_;
  const std::vector<std::string>& hubs_;
};

}  // namespace web
