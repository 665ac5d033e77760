// Pages, scripts and assets as answers, and the refusals that all servers have in common.
#include "web/show/Answers.h"

#include <algorithm>
#include <boost/asio/ip/host_name.hpp>
#include <utility>

#include "web/http/ByteRange.h"
#include "web/show/ClientFiles.h"

namespace web {
namespace {

constexpr std::string_view pagePolicy =
    "default-src 'none'; script-src 'self'; style-src 'self' 'unsafe-inline'; img-src 'self' data:; "
    "font-src 'self'; media-src 'self'; base-uri 'none'; form-action 'none'; "
    "frame-ancestors 'none'; require-trusted-types-for 'script'; trusted-types slides charts default; "
    "connect-src 'self'";
// An asset comes out of a deck: opened by itself (an SVG picture), it may do nothing.
constexpr std::string_view assetPolicy =
    "default-src 'none'; style-src 'unsafe-inline'; img-src data:; sandbox";
constexpr std::string_view immutable = "public, max-age=31536000, immutable";

std::string_view contentType(std::string_view file) {
  return file.ends_with(".js")    ? "text/javascript; charset=utf-8"
         : file.ends_with(".css") ? "text/css; charset=utf-8"
                                  : "text/html; charset=utf-8";
}

/// Content types come out of decks, and a line break would end the header.
std::string safeType(const std::string& type) {
  const bool isPlain = std::all_of(type.begin(), type.end(), [](char c) { return c >= ' ' && c < 127; });
  return isPlain && !type.empty() ? type : "application/octet-stream";
}

/// The part of a whole answer that a Range header asks for.
Response partOf(Response whole, std::string_view range) {
  const std::string size = std::to_string(whole.body->size());
  const RangeWanted wanted = rangeWanted(range, whole.body->size());
  switch (wanted.kind) {
    case RangeWanted::Kind::Whole:
      break;
    case RangeWanted::Kind::Part: {
      const auto& [first, length] = wanted.range;
      whole.status = 206;
      whole.range = wanted.range;
      whole.headers.emplace_back("Content-Range", "bytes " + std::to_string(first) + '-' +
                                                      std::to_string(first + length - 1) + '/' + size);
      break;
    }
    case RangeWanted::Kind::Unsatisfiable: {
      Response response = Response::error(416, "The range lies behind the end.");
      response.headers.emplace_back("Content-Range", "bytes */" + size);
      return response;
    }
  }
  return whole;
}

bool isListed(std::string_view tags, std::string_view tag) {
  return tags == "*" || tags.find(tag) != std::string_view::npos;
}

}  // namespace

std::string machineName() {
  boost::system::error_code nameless;
  return boost::asio::ip::host_name(nameless);
}

Response pageAnswer(std::string html, const std::vector<std::string>& origins) {
  Response response = Response::fresh(200, "text/html; charset=utf-8", std::move(html));
  std::string policy(pagePolicy);
  for (const std::string& origin : origins) policy.append(" ").append(origin);
  response.headers.emplace_back("Content-Security-Policy", std::move(policy));
  return response;
}

Response clientFileAnswer(std::string_view path) {
  const std::size_t slash = path.find('/');
  if (slash == std::string_view::npos || path.substr(0, slash) != clientVersion()) return notFound();
  const ClientFile* file = clientFile(path.substr(slash + 1));
  if (file == nullptr || file->name.ends_with(".html")) return notFound();
  Response response;
  response.headers = {{"Content-Type", std::string(contentType(file->name))},
                      {"Cache-Control", std::string(immutable)}};
  if (file->isCompressed) response.headers.emplace_back("Content-Encoding", "gzip");
  response.body = std::make_shared<const std::string>(file->bytes);
  return response;
}

Response assetAnswer(const Request& request, std::string_view name, const std::optional<Asset>& asset) {
  if (!asset) return notFound();
  const std::string tag = '"' + std::string(name) + '"';
  Response response;
  response.headers = {{"ETag", tag},
                      {"Cache-Control", std::string(immutable)},
                      {"Content-Security-Policy", std::string(assetPolicy)}};
  if (isListed(request.ifNoneMatch, tag)) {
    response.status = 304;
    return response;
  }
  response.headers.emplace_back("Accept-Ranges", "bytes");
  response.headers.emplace_back("Content-Type", safeType(asset->contentType));
  response.body = asset->bytes;
  const bool isForRange = request.method == "GET" && (request.ifRange.empty() || request.ifRange == tag);
  return isForRange ? partOf(std::move(response), request.range) : response;
}

Response notFound() { return Response::error(404, "There is nothing at this address."); }

Response wrongMethod(std::string_view allowed) {
  Response response = Response::error(405, "Only " + std::string(allowed) + " is possible here.");
  response.headers.emplace_back("Allow", allowed);
  return response;
}

Response unauthorised() {
  Response response = Response::error(
      401, "This needs the token that the program printed at its start: \"Authorization: Bearer TOKEN\".");
  response.headers.emplace_back("WWW-Authenticate", "Bearer");
  return response;
}

}  // namespace web
