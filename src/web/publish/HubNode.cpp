// Addresses of hubs as people write them: where to publish, and where browsers go.

#include "web/publish/HubNode.h"

#include <curl/curl.h>

#include <algorithm>
#include <cctype>
#include <memory>

#include "basic/Error.h"
#include "basic/Quotes.h"

namespace web {
namespace {

struct CleanUp {
  void operator()(CURLU* address) const { curl_url_cleanup(address); }
  void operator()(char* text) const { curl_free(text); }
};

[[noreturn]] void refuse(std::string_view address, const std::string& why) {
  throw basic::Error(basic::AdapterError, "web", basic::InQuotes(address) + " " + why);
}

/// An address of the web, taken apart.
class Address {
 public:
  /// `example` is how such an address is written.
  Address(std::string_view text, const std::string& example) : text_(text), parts_(curl_url()) {
    const bool isClean = std::all_of(text.begin(), text.end(), [](char c) { return c > ' ' && c < 127; });
    if (!isClean || !parts_ || curl_url_set(parts_.get(), CURLUPART_URL, text_.c_str(), 0) != CURLUE_OK) {
      refuse(text, "is no address: it is written like " + example + ".");
    }
    const std::string scheme = part(CURLUPART_SCHEME);
    if (scheme != "http" && scheme != "https") refuse(text, "begins with neither http:// nor https://.");
    if (!part(CURLUPART_USER).empty() || !part(CURLUPART_PASSWORD).empty()) {
      refuse(withoutUser(), "names a user; a token in a file tells who may publish.");
    }
    if (!part(CURLUPART_QUERY).empty() || !part(CURLUPART_FRAGMENT).empty()) {
      refuse(text, "has more than a path behind the host.");
    }
  }
  [[nodiscard]] std::string part(CURLUPart part, unsigned flags = 0) const {
    char* text = nullptr;
    if (curl_url_get(parts_.get(), part, &text, flags) != CURLUE_OK) return {};
    const std::unique_ptr<char, CleanUp> owned(text);
    return text;
  }

 private:
  [[nodiscard]] std::string withoutUser() const {
    curl_url_set(parts_.get(), CURLUPART_USER, nullptr, 0);
    curl_url_set(parts_.get(), CURLUPART_PASSWORD, nullptr, 0);
    return part(CURLUPART_URL);
  }

  std::string text_;
  std::unique_ptr<CURLU, CleanUp> parts_;
};

std::string withSlash(std::string url) {
  if (!url.ends_with('/')) url += '/';
  return url;
}

}  // namespace

HubNode hubNodeAt(std::string_view address) {
  constexpr const char* example = "http://hub.example.org:8090/publish";
  constexpr std::string_view local = "unix:";
  if (!address.starts_with(local)) {
    return {std::string(address), withSlash(Address(address, example).part(CURLUPART_URL)), {}};
  }
  const std::string_view rest = address.substr(local.size());
  const std::size_t colon = rest.find(':');
  const std::string_view socket = rest.substr(0, colon);
  const std::string_view path = colon == std::string_view::npos ? "/" : rest.substr(colon + 1);
  constexpr std::size_t longestSocket = 107;  // sockaddr_un
  if (!socket.starts_with('/') || socket.size() > longestSocket || !path.starts_with('/')) {
    refuse(address, "names no socket: it is written like unix:/run/lumenfold/hub.sock:/publish.");
  }
  const std::string url = "http://localhost" + std::string(path);
  return {std::string(address), withSlash(Address(url, example).part(CURLUPART_URL)), std::string(socket)};
}

std::string hubOriginOf(std::string_view address) {
  const Address parts(address, "http://hub.example.org:8080");
  const std::string path = parts.part(CURLUPART_PATH);
  if (!path.empty() && path != "/") refuse(address, "has a path; screens are served from the root.");
  std::string origin = parts.part(CURLUPART_SCHEME) + "://" + parts.part(CURLUPART_HOST);
  const std::string port = parts.part(CURLUPART_PORT, CURLU_NO_DEFAULT_PORT);
  if (!port.empty()) origin += ":" + port;
  std::transform(origin.begin(), origin.end(), origin.begin(),
                 [](char c) { return static_cast<char>(std::tolower(static_cast<unsigned char>(c))); });
  return origin;
}

}  // namespace web
