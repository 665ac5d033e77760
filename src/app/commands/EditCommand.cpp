// The verb edit: a deck at the desk, for its authors in browsers.

#include <boost/asio/ip/address.hpp>
#include <filesystem>
#include <iostream>
#include <memory>
#include <string>
#include <vector>

#include "app/commands/Commands.h"
#include "app/commands/ServerEnd.h"
#include "app/commands/ServerOptions.h"
#include "app/commands/SettingsFile.h"
#include "app/desk/DeckLock.h"
#include "app/desk/Desk.h"
#include "app/wiring/Environment.h"
#include "app/wiring/Failure.h"
#include "app/wiring/Token.h"
#include "platform/Console.h"
#include "platform/Log.h"
#include "platform/UserFolders.h"
#include "web/desk/DeskServer.h"

namespace app {

namespace {

struct EditOptions {
  std::string deck;
  ServerOptions server;
  std::vector<std::string> allowed;
};

bool isLoopback(const std::string& address) {
  boost::system::error_code malformed;
  return boost::asio::ip::make_address(address, malformed).is_loopback();
}

/// Whoever holds the token may read and change the deck, so it is not made up and printed for a network.
void requireSafety(const ServerOptions& options) {
  if (isLoopback(options.bind)) return;
  if (options.tokenFile.empty()) {
    throw UsageError("--bind " + options.bind + " opens the desk to other machines; that takes --token-file");
  }
  platform::tell(
      platform::Priority::Warning, "program",
      "the desk answers other machines without encryption; put a server in front of it that speaks TLS.");
}

std::string deskFolder() { return (std::filesystem::path(platform::stateFolder()) / "desk").string(); }

class EditRun {
 public:
  EditRun(const EditOptions& options, Environment& environment, DeckLock& lock)
      : options_(options),
        environment_(environment),
        lock_(lock),
        desk_(environment, {options.deck, options.allowed, deskFolder(), &lock}) {}

  void run() {
    const Token token = obtainToken(options_.server.tokenFile);
    constexpr std::size_t Connections = 200;
    web::Options web = serverOf(options_.server, token, Connections);
    web.queueBytes = std::size_t{16} << 20U;
    web::DeskServer server(environment_.loop().context(), desk_, web);
    desk_.connect(&server);
    // The pages are told before the doors close.
    ServerEnd end(
        environment_.loop(), [&server] { server.stop(); }, [&server] { return server.windows(); });
    environment_.loop().onSignal([this, &end](int) {
      desk_.shutDown();
      constexpr std::int32_t Soon = 1;
      end.beginIn(Soon);
    });
    announce(server, token);
    environment_.loop().run();
    desk_.connect(nullptr);
  }

 private:
  void announce(const web::DeskServer& server, const Token& token) const {
    const std::string address = server.url() + (token.isNew ? "#token=" + token.value : std::string());
    lock_.tell(address);
    if (!lock_.problem().empty()) platform::tell(platform::Priority::Warning, "program", lock_.problem());
    app::announce("Editing " + desk_.presentation().FullName());
    if (token.isNew) {
      announceSecret("Desk: ", server.url(), token);
    } else {
      app::announce("Desk: " + server.url());
    }
    openWhenWanted(options_.server, environment_, address);
  }

  const EditOptions& options_;
  Environment& environment_;
  DeckLock& lock_;
  Desk desk_;
};

void edit(const EditOptions& options, Environment& environment) {
  requireGiven("DECK", options.deck);
  beginLog(options.server);
  requireSafety(options.server);
  const auto deck = std::filesystem::absolute(options.deck).lexically_normal().string();
  DeckLock lock(deskFolder(), deck);
  if (!lock.isTaken()) return EditRun(options, environment, lock).run();
  std::cout << platform::forTerminal(deck) << " is being edited already.\n";
  if (!lock.theirAddress().empty()) std::cout << "Desk: " << lock.theirAddress() << '\n';
}

void define(CLI::App& verb, EditOptions& options) {
  verb.add_option("DECK", options.deck, "The deck");
  addServerOptions(verb, options.server);
  verb.get_option("--bind")->description("Address to listen on; beyond this machine with --token-file");
  verb.add_option("--allow", options.allowed, "A further folder in which data files may be chosen");
}

}  // namespace

void addEditCommand(CLI::App& program, Environment& environment) {
  auto options = std::make_shared<EditOptions>();
  CLI::App* verb = program.add_subcommand("edit", "Link a deck to data, in a browser");
  constexpr std::uint16_t Port = 2001;
  options->server.port = Port;
  define(*verb, *options);
  verb->callback([options, verb, &environment] {
    beginLog(options->server);
    edit(withSettings(*options, optionsGiven(*verb), define), environment);
  });
}

}  // namespace app
