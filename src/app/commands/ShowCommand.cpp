// The verb show: the deck as a running slide show on screens.

#include <CLI/CLI.hpp>
#include <iostream>
#include <memory>
#include <optional>

#include "addin/support/modErrors.h"
#include "addin/support/modGlobalFunctions.h"
#include "app/commands/Commands.h"
#include "app/inspect/Standstill.h"
#include "app/show/Stage.h"
#include "app/wiring/AddInHost.h"
#include "app/wiring/Environment.h"
#include "app/wiring/Failure.h"
#include "app/wiring/Language.h"
#include "app/wiring/Token.h"
#include "platform/Console.h"
#include "platform/Descriptors.h"
#include "web/show/Server.h"

namespace app {

namespace {

struct ShowOptions {
  std::string deck;
  std::uint16_t port = 2000;
  std::string bind = "127.0.0.1";
  std::vector<std::string> names;
  std::string tokenFile;
  std::optional<std::int32_t> slide;
  std::optional<std::int32_t> whenEmpty;
  std::string stale;
  std::optional<std::size_t> perAddress;
  std::optional<double> seconds;
  bool kiosk = false;
  bool loop = false;
  bool open = false;
  bool noReload = false;
};

/// The option goes before the setting.
StaleData staleData(const ShowOptions& options) {
  const std::string setting = LF2000::modGlobalFunctions::InfoSetting("StaleData");
  const std::string& name = options.stale.empty() ? setting : options.stale;
  if (name.empty()) return StaleData::Keep;
  if (const auto known = staleDataOf(name)) return *known;
  fail((options.stale.empty() ? "The setting StaleData" : "--stale") +
       std::string(" must be keep, mark or blank, not \"") + name + "\".");
}

/// Screens must not take the descriptors that data files, databases, their drivers and the logs need.
void limitConnections(web::Options& web, const ShowOptions& options) {
  constexpr std::size_t OwnFiles = 256;
  constexpr std::size_t Fewest = 16;
  const std::size_t wanted = web.maxConnections + web.beyond() + OwnFiles;
  const std::size_t allowed = platform::allowDescriptors(wanted);
  if (allowed < wanted) {
    const std::size_t kept = OwnFiles + web.beyond();
    web.maxConnections = allowed > kept + Fewest ? allowed - kept : Fewest;
    std::cerr << "lumenfold: the system lets this program open " << allowed << " files, so it takes "
              << web.maxConnections << " connections at a time; raise the hard limit (ulimit -Hn) to "
              << wanted << " for all of them.\n";
  }
  web.maxPerAddress = options.perAddress.value_or(web.maxConnections / 2);
}

/// Runs the loop until the show is over and the screens have been told.
class ShowRun {
 public:
  ShowRun(const ShowOptions& options, Environment& environment)
      : options_(options),
        environment_(environment),
        stage_(host_, environment.loop(), host_.open(options.deck, deck::Application::Damaged::Repaired),
               {{staleData(options), options.whenEmpty, {}},
                options.kiosk ? std::optional(true) : std::nullopt,
                options.loop ? std::optional(true) : std::nullopt,
                options.seconds}) {}

  void run() {
    const Token token = obtainToken(options_.tokenFile);
    // Listen first: a port in use is told before anything has begun.
    web::Options web;
    web.address = options_.bind;
    web.port = options_.port;
    web.token = token.value;
    web.allowedNames = options_.names;
    limitConnections(web, options_);
    web.onError = [](const basic::Error& error) {
      std::cerr << "lumenfold: a request failed: " << error.description << '\n';
    };
    web::Server server(environment_.loop().context(), stage_, web);
    finish_ = environment_.loop().CreateTimer([&] { finishWhenTold(server); });
    // Screens may come while the show is being opened.
    stage_.connect(&server);
    environment_.progressMeter().watch(
        [this](const platform::Progress* progress) { tellProgress(progress); });
    beginShow();
    environment_.progressMeter().watch({});
    // Before the address is told: whoever knows it may end the show.
    environment_.loop().onSignal([&](int) { stage_.shutDown(); });
    if (!options_.noReload) watchDeck();
    announce(server, token);
    environment_.loop().run();
    watch_.reset();
    stage_.connect(nullptr);
  }

 private:
  void beginShow() {
    requireSlide(options_.slide);
    requireSlide(options_.whenEmpty);
    // Before slides hide that have no data yet.
    const auto standstill = standstillOf(deck::ShowCourse(stage_.deck(), stage_.showOptions()));
    if (standstill) std::cerr << "lumenfold: " << *standstill << '\n';
    const std::string language = unknownLanguage();
    if (!language.empty()) std::cerr << "lumenfold: " << platform::forTerminal(language) << '\n';
    stage_.begin(options_.slide, [this] {
      watch_.reset();
      constexpr std::int32_t TimeToTell = 200;
      finish_->Interval(TimeToTell);
      finish_->Enabled(true);
    });
  }

  void watchDeck() {
    const deck::Presentation& deck = *stage_.deck();
    watch_.emplace(environment_.loop(), deck.FullName(), deck.fileState().value(),
                   deck.package().fingerprint(),
                   DeckWatch::Hearer{[this](DeckVersion version) { takeUp(std::move(version)); },
                                     [this](const std::string& why) { leaveAlone(why); }});
  }

  void takeUp(DeckVersion version) {
    try {
      stage_.change(std::move(version));
    } catch (const basic::Error& error) {
      leaveAlone(error.description);
    }
  }

  void leaveAlone(const std::string& why) {
    LF2000::modErrors::WriteErrorLog("A new version of " + stage_.deck()->FullName() +
                                     " is not shown, and the one before stays: " + why);
  }

  void tellProgress(const platform::Progress* progress) {
    if (progress == nullptr) {
      stage_.progress(std::nullopt);
    } else {
      stage_.progress(web::Progress{progress->caption, progress->text, progress->step, progress->maximum});
    }
  }

  void requireSlide(const std::optional<std::int32_t>& slide) const {
    if (!slide || (*slide >= 1 && *slide <= stage_.deck()->slideCount())) return;
    fail(options_.deck + ": there is no slide " + std::to_string(*slide) + "; the deck has " +
         std::to_string(stage_.deck()->slideCount()) + ".");
  }

  void announce(const web::Server& server, const Token& token) const {
    std::cout << "Showing " << stage_.deck()->FullName() << " (" << stage_.deck()->slideCount()
              << " slides)\n"
              << "Screen:   " << server.url() << '\n';
    if (const auto name = networkName()) {
      std::cout << "Network:  http://" << *name << ':' << server.port() << "/\n";
    }
    std::cout << "Status:   " << server.url() << "status\n";
    if (token.isNew) {
      std::cout << "Operator: " << server.url() << "#token=" << token.value << '\n'
                << "Remote:   " << server.url() << "remote#token=" << token.value << '\n';
    }
    std::cout << std::flush;
    if (options_.open && !environment_.shell().ShellExecute("open", server.url(), 1)) {
      std::cerr << "lumenfold: no browser could be started; open " << server.url() << " yourself.\n";
    }
  }

  /// What other machines call this one, when the server listens to them all.
  [[nodiscard]] std::optional<std::string> networkName() const {
    if (options_.bind != "0.0.0.0" && options_.bind != "::") return std::nullopt;
    return environment_.shell().ComputerName();
  }

  /// The last picture is on its way: close the doors, then leave.
  void finishWhenTold(web::Server& server) {
    if (!stopping_) {
      stopping_ = true;
      server.stop();
      return;
    }
    constexpr int LongestWait = 10;
    if (server.screens() + server.programs() == 0 || ++waited_ >= LongestWait) environment_.loop().stop();
  }

  const ShowOptions& options_;
  Environment& environment_;
  AddInHost host_;
  Stage stage_;
  std::optional<DeckWatch> watch_;
  std::unique_ptr<host::Timer> finish_;
  bool stopping_ = false;
  int waited_ = 0;
};

void show(const ShowOptions& options, Environment& environment) {
  { ShowRun(options, environment).run(); }
  if (LF2000::modErrors::ErrorsOccurred) {
    std::cerr << "lumenfold: there were errors during the show; see " << LF2000::modErrors::ErrorLogFile()
              << '\n';
  }
}

}  // namespace

void addShowCommand(CLI::App& program, Environment& environment) {
  constexpr double ShortestStay = 0.1;
  constexpr double LongestStay = 86'400;
  auto options = std::make_shared<ShowOptions>();
  CLI::App* verb = program.add_subcommand("show", "Show a deck with live data on screens");
  verb->add_option("DECK", options->deck, "The deck")->required();
  verb->add_option("--port", options->port, "Port of the screens' address")->capture_default_str();
  verb->add_option("--bind", options->bind, "Address to listen on; 0.0.0.0 for every network")
      ->capture_default_str();
  verb->add_option("--name", options->names, "A further host name under which screens may ask");
  verb->add_option("--token-file", options->tokenFile,
                   "File with the token that steering the show takes (else LUMENFOLD_TOKEN, else a new one)");
  verb->add_option("--slide", options->slide, "Slide to begin with");
  verb->add_option("--seconds", options->seconds,
                   "How long slides without a timing of their own stay; the deck is not changed")
      ->check(CLI::Range(ShortestStay, LongestStay));
  verb->add_option("--when-empty", options->whenEmpty,
                   "Slide to show while every slide is hidden (else the deck's background)");
  verb->add_option("--stale", options->stale,
                   "What happens to values that are not kept fresh: keep, mark or blank (setting StaleData)");
  verb->add_option("--per-address", options->perAddress,
                   "Connections that one address may hold (else half of all); this machine may hold all")
      ->check(CLI::PositiveNumber);
  verb->add_flag("--kiosk", options->kiosk, "Kiosk show: loops, no pointer, no keys but Escape");
  verb->add_flag("--loop", options->loop, "Begin anew after the last slide");
  verb->add_flag("--no-reload", options->noReload, "Go on with the deck as it is now when its file changes");
  verb->add_flag("--open", options->open, "Start a browser on the screen");
  verb->callback([options, &environment] { show(*options, environment); });
}

}  // namespace app
