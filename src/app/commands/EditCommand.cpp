// The verb edit: a deck at the desk, for its authors in browsers.

#include <CLI/CLI.hpp>
#include <boost/asio/ip/address.hpp>
#include <filesystem>
#include <iostream>
#include <memory>
#include <string>
#include <vector>

#include "app/commands/Commands.h"
#include "app/desk/DeckLock.h"
#include "app/desk/Desk.h"
#include "app/wiring/Environment.h"
#include "app/wiring/Failure.h"
#include "app/wiring/Token.h"
#include "platform/Console.h"
#include "platform/UserFolders.h"
#include "web/desk/DeskServer.h"

namespace app {

namespace {

struct EditOptions {
  std::string deck;
  std::uint16_t port = 2001;
  std::string bind = "127.0.0.1";
  std::vector<std::string> names;
  std::string tokenFile;
  std::vector<std::string> allowed;
  bool open = false;
};

bool isLoopback(const std::string& address) {
  boost::system::error_code malformed;
  return boost::asio::ip::make_address(address, malformed).is_loopback();
}

/// Whoever holds the token may read and change the deck, so it is not made up and printed for a network.
void requireSafety(const EditOptions& options) {
  if (isLoopback(options.bind)) return;
  if (options.tokenFile.empty()) {
    throw UsageError("--bind " + options.bind + " opens the desk to other machines; that takes --token-file");
  }
  std::cerr << "lumenfold: the desk answers other machines without encryption; put a server in front of it "
               "that speaks TLS.\n";
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
    const Token token = obtainToken(options_.tokenFile);
    web::Options web;
    web.address = options_.bind;
    web.port = options_.port;
    web.token = token.value;
    web.allowedNames = options_.names;
    constexpr std::size_t connections = 200;
    web.maxConnections = connections;
    web.maxPerAddress = connections / 2;
    web.queueBytes = std::size_t{16} << 20U;
    web.onError = [](const basic::Error& error) {
      std::cerr << "lumenfold: a request failed: " << platform::forTerminal(error.description) << '\n';
    };
    web::DeskServer server(environment_.loop().context(), desk_, web);
    desk_.connect(&server);
    finish_ = environment_.loop().CreateTimer([&] { finishWhenTold(server); });
    environment_.loop().onSignal([this](int) {
      desk_.shutDown();
      constexpr std::int32_t soon = 1;
      finish_->Interval(soon);
      finish_->Enabled(true);
    });
    announce(server, token);
    environment_.loop().run();
    desk_.connect(nullptr);
  }

 private:
  void announce(const web::DeskServer& server, const Token& token) const {
    const std::string address = server.url() + (token.isNew ? "#token=" + token.value : std::string());
    lock_.tell(address);
    if (!lock_.problem().empty()) std::cerr << "lumenfold: " << lock_.problem() << '\n';
    std::cout << "Editing " << platform::forTerminal(desk_.presentation().FullName()) << '\n'
              << "Desk: " << address << '\n'
              << std::flush;
    if (options_.open && !environment_.shell().ShellExecute("open", address, 1)) {
      std::cerr << "lumenfold: no browser could be started; open " << server.url() << " yourself.\n";
    }
  }

  /// The pages are told before the doors close.
  void finishWhenTold(web::DeskServer& server) {
    constexpr std::int32_t timeToTell = 200;
    constexpr int longestWait = 10;
    if (waited_ == 0) {
      server.stop();
      finish_->Interval(timeToTell);
    }
    if (server.windows() == 0 || ++waited_ >= longestWait) environment_.loop().stop();
  }

  const EditOptions& options_;
  Environment& environment_;
  DeckLock& lock_;
  Desk desk_;
  std::unique_ptr<host::Timer> finish_;
  int waited_ = 0;
};

void edit(const EditOptions& options, Environment& environment) {
  requireSafety(options);
  const auto deck = std::filesystem::absolute(options.deck).lexically_normal().string();
  DeckLock lock(deskFolder(), deck);
  if (!lock.isTaken()) return EditRun(options, environment, lock).run();
  std::cout << platform::forTerminal(deck) << " is being edited already.\n";
  if (!lock.theirAddress().empty()) std::cout << "Desk: " << lock.theirAddress() << '\n';
}

}  // namespace

void addEditCommand(CLI::App& program, Environment& environment) {
  auto options = std::make_shared<EditOptions>();
  CLI::App* verb = program.add_subcommand("edit", "Link a deck to data, in a browser");
  verb->add_option("DECK", options->deck, "The deck")->required();
  verb->add_option("--port", options->port, "Port of the desk's address")->capture_default_str();
  verb->add_option("--bind", options->bind, "Address to listen on; beyond this machine with --token-file")
      ->capture_default_str();
  verb->add_option("--name", options->names, "A further host name under which browsers may ask");
  verb->add_option("--token-file", options->tokenFile,
                   "File with the token that the desk takes (else LUMENFOLD_TOKEN, else a new one)");
  verb->add_option("--allow", options->allowed, "A further folder in which data files may be chosen");
  verb->add_flag("--open", options->open, "Start a browser on the desk");
  verb->callback([options, &environment] { edit(*options, environment); });
}

}  // namespace app
