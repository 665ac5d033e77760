#pragma once

#include <string>
#include <string_view>

namespace web {

/// Where a node of a hub takes messages.
struct HubNode {
  /// As it was given, for people.
  std::string name;
  /// What a channel's name is put behind: "http://127.0.0.1:8090/publish/".
  std::string url;
  /// The path of a socket of this machine; empty for a node in the network.
  std::string socket;
};

/// Reads "http://HOST[:PORT]/PATH", "https://…" or "unix:/run/hub.sock:/PATH" (without a path: "/"). Throws
/// basic::Error, saying why, for anything else, and for an address with a user name: that is what the token
/// is for.
HubNode hubNodeAt(std::string_view address);

/// The origin (RFC 6454) of an address at which browsers find a hub or a show, "http://hub.example.org:8080",
/// in small letters. Throws basic::Error for what is no such address, and for one with a path: pages are
/// found below the root.
std::string hubOriginOf(std::string_view address);

}  // namespace web
