#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "web/http/Request.h"
#include "web/http/Response.h"
#include "web/show/Show.h"

namespace web {

// Answers that every server of the program gives, be it a show's or a desk's.

/// The name of this machine, as Guard asks for it; empty when it has none.
std::string machineName();

/// A page, under a policy that lets it load nothing but what this server has, and ask `origins` besides.
Response pageAnswer(std::string html, const std::vector<std::string>& origins = {});
/// A file of ClientFiles.h by VERSION/NAME; pages are none.
Response clientFileAnswer(std::string_view path);
/// What slides refer to, or the range of its bytes that is asked for; 404 without an asset.
Response assetAnswer(const Request& request, std::string_view name, const std::optional<Asset>& asset);

/// 404, 405 and 401.
Response notFound();
Response wrongMethod(std::string_view allowed);
Response unauthorised();

}  // namespace web
