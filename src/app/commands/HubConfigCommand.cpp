// The verb hub-config: the configuration of a web server that stands between a show and many screens.

#include <CLI/CLI.hpp>
#include <iostream>
#include <memory>
#include <string>
#include <vector>

#include "app/commands/Commands.h"
#include "app/hub/NginxConfig.h"
#include "app/wiring/Failure.h"
#include "app/wiring/Token.h"

namespace app {

namespace {

struct HubConfigOptions {
  std::string site = "hub", show = "http://127.0.0.1:2000", group = "lumenfold";
  std::string publish = "unix:/run/lumenfold-hub/publish.sock", tokenFile;
  std::string certificate = "/etc/lumenfold/hub.crt", key = "/etc/lumenfold/hub.key";
  std::string run = "/run/lumenfold-hub", cache = "/var/cache/lumenfold-hub";
  std::vector<std::string> redis, listen, hubs;
  std::uint32_t connections = 20'000;
  bool tls = false, screens = false, operators = false, plain = false;
};

/// Whoever publishes is believed by every screen.
void guardPublishing(const hub::Hub& made) {
  if (!made.publishing.isSocketFile && made.publishToken.empty()) {
    throw UsageError(
        "--publish at a port needs --publish-token-file: others on the machine reach it as well.");
  }
  if (!made.publishing.isLoopback && made.certificate.empty()) {
    throw UsageError("--publish beyond this machine needs --tls, or the token could be read on the way.");
  }
}

hub::Hub hubOf(const HubConfigOptions& options) {
  hub::Hub made;
  made.site = hub::siteName(options.site);
  made.show = hub::webAddress(options.show);
  for (const std::string& place : options.listen) made.listening.push_back(hub::listening(place));
  if (made.listening.empty()) made.listening.push_back(hub::listening(options.tls ? "443" : "80"));
  if (options.tls) {
    made.certificate = hub::path(options.certificate);
    made.certificateKey = hub::path(options.key);
  }
  for (const std::string& page : options.hubs) made.otherPages.push_back(hub::webAddress(page));
  made.screensAreKnown = options.screens;
  made.passesOperators = options.operators;
  made.connections = options.connections;
  made.runFolder = hub::path(options.run);
  made.cacheFolder = hub::path(options.cache);
  made.isPlain = options.plain;
  if (options.plain) return made;
  for (const std::string& server : options.redis) made.redis.push_back(hub::redisUrl(server));
  made.channelGroup = hub::channelGroup(options.group);
  made.publishing = hub::listening(options.publish);
  if (!options.tokenFile.empty()) made.publishToken = hub::token(readToken(options.tokenFile));
  guardPublishing(made);
  return made;
}

}  // namespace

void addHubConfigCommand(CLI::App& program, Environment&) {
  const auto options = std::make_shared<HubConfigOptions>();
  CLI::App* verb =
      program.add_subcommand("hub-config", "Print the configuration of an nginx that serves many screens");
  verb->add_option("--site", options->site, "What this hub is called")->capture_default_str();
  verb->add_option("--show", options->show, "Where the hub reaches the show")->capture_default_str();
  CLI::Option* redis = verb->add_option("--redis", options->redis,
                                        "The Redis that all hubs of the show share; several are a cluster");
  CLI::Option* group =
      verb->add_option("--group", options->group, "Another one for each show that shares the Redis")
          ->capture_default_str();
  verb->add_option("--listen", options->listen,
                   "PORT, ADDRESS:PORT or [ADDRESS]:PORT for screens (else 80, with --tls 443)");
  CLI::Option* tls = verb->add_flag("--tls", options->tls, "Screens come by https");
  verb->add_option("--certificate", options->certificate, "For --tls")->capture_default_str()->needs(tls);
  verb->add_option("--certificate-key", options->key, "For --tls")->capture_default_str()->needs(tls);
  CLI::Option* publish =
      verb->add_option("--publish", options->publish, "Where the show publishes: unix:/PATH or ADDRESS:PORT")
          ->capture_default_str();
  CLI::Option* tokenFile = verb->add_option("--publish-token-file", options->tokenFile,
                                            "File with the token that publishing takes");
  verb->add_option("--hub", options->hubs,
                   "A public address of another hub or of the show, as the show is given it");
  verb->add_flag("--screens", options->screens, "The show runs with --screens: looking takes a token");
  verb->add_flag("--operators", options->operators,
                 "Pass on /remote, /status, /api/ and /metrics of the show as well");
  verb->add_option("--connections", options->connections,
                   "Connections that nginx takes, those to the show among them")
      ->capture_default_str()
      ->check(CLI::Range(512, 1'000'000));
  verb->add_option("--run-folder", options->run, "For the number of nginx's process")->capture_default_str();
  verb->add_option("--cache-folder", options->cache, "For what is kept of the show")->capture_default_str();
  CLI::Option* plain =
      verb->add_flag("--plain", options->plain,
                     "An nginx without the module nchan: streams are passed on, up to 2000 screens");
  for (CLI::Option* other : {redis, group, publish, tokenFile}) plain->excludes(other);
  verb->callback([options] { std::cout << hub::nginxConfig(hubOf(*options)); });
}

}  // namespace app
