#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "app/hub/HubValues.h"

namespace app::hub {

/// A web server between a show and its screens.
struct Hub {
  std::string site;
  Address show;
  std::vector<Listening> listening;
  /// Both empty: without TLS.
  std::string certificate, certificateKey;
  /// Other public addresses of this show: pages from there may read here.
  std::vector<Address> otherPages;
  /// Looking takes a token, which the show knows.
  bool screensAreKnown = false;
  /// The addresses for steering and for monitoring are passed on as well.
  bool passesOperators = false;
  /// Those of screens and those to the show, of each worker process; but for a plain one there is one.
  std::uint32_t connections = 0;
  std::string runFolder, cacheFolder;

  /// Passes everything on to the show, streams as well, and keeps what may be kept. The rest does not count
  /// then.
  bool isPlain = false;
  /// More than one: the nodes of a cluster. None: the hub is the only one.
  std::vector<std::string> redis;
  /// Names the channels of this show among others' of the same Redis.
  std::string channelGroup;
  Listening publishing;
  /// Empty: whoever reaches the socket file may publish.
  std::string publishToken;
};

/// The configuration of an nginx (1.22 or newer, with nchan 1.3 unless plain) that does nothing else: the
/// whole file.
std::string nginxConfig(const Hub& hub);

}  // namespace app::hub
