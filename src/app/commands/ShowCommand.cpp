// The verb show: the deck as a running slide show on screens.

#include <iostream>
#include <memory>
#include <optional>

#include "addin/support/modErrors.h"
#include "app/commands/Commands.h"
#include "app/commands/HubOptions.h"
#include "app/commands/ScreenOptions.h"
#include "app/commands/ServerEnd.h"
#include "app/commands/SettingsFile.h"
#include "app/inspect/Standstill.h"
#include "app/show/Stage.h"
#include "app/wiring/AddInHost.h"
#include "app/wiring/Environment.h"
#include "app/wiring/Failure.h"
#include "app/wiring/Language.h"
#include "app/wiring/Token.h"
#include "platform/Console.h"
#include "web/show/Server.h"

namespace app {

namespace {

struct ShowOptions {
  std::string deck;
  ServerOptions server;
  HubOptions hub;
  std::optional<std::int32_t> slide;
  std::optional<std::int32_t> whenEmpty;
  std::string stale;
  std::optional<double> seconds;
  bool kiosk = false;
  bool loop = false;
  bool synchronous = false;
  bool noReload = false;
};

/// When screens show what the show does now, if they are to do it together.
std::function<std::chrono::system_clock::time_point()> momentOf(const ShowOptions& options) {
  if (!options.synchronous) return {};
  return [] { return std::chrono::system_clock::now() + TimeToPrepare; };
}

/// Runs the loop until the show is over and the screens have been told.
class ShowRun {
 public:
  ShowRun(const ShowOptions& options, Environment& environment)
      : options_(options),
        environment_(environment),
        stage_(host_, environment.loop(), host_.open(options.deck, deck::Application::Damaged::Repaired),
               {{staleDataOf(options.stale), options.whenEmpty, {}, momentOf(options)},
                options.kiosk ? std::optional(true) : std::nullopt,
                options.loop ? std::optional(true) : std::nullopt,
                options.seconds}) {}

  void run() {
    const Token token = obtainToken(options_.server.tokenFile);
    // Listen first: a port in use is told before anything has begun.
    web::Server server(environment_.loop().context(), stage_,
                       screensServerOf(options_.server, options_.hub, token), publisherOf(options_.hub));
    // The last picture is on its way: close the doors, then leave.
    ServerEnd end(
        environment_.loop(), [&server] { server.stop(); },
        [&server] { return server.screens() + server.programs() + server.unpublished(); });
    // Screens may come while the show is being opened.
    stage_.connect(&server);
    environment_.progressMeter().watch(
        [this](const platform::Progress* progress) { tellProgress(progress); });
    beginShow(end);
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
  void beginShow(ServerEnd& end) {
    requireSlide(options_.slide);
    requireSlide(options_.whenEmpty);
    // Before slides hide that have no data yet.
    const auto standstill = standstillOf(deck::ShowCourse(stage_.deck(), stage_.showOptions()));
    if (standstill) std::cerr << "lumenfold: " << *standstill << '\n';
    const std::string language = unknownLanguage();
    if (!language.empty()) std::cerr << "lumenfold: " << platform::forTerminal(language) << '\n';
    stage_.begin(options_.slide, [this, &end] {
      watch_.reset();
      constexpr std::int32_t TimeToSend = 200;
      end.beginIn(TimeToSend);
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
              << " slides)\n";
    announceScreens(server, token, options_.server, environment_);
  }

  const ShowOptions& options_;
  Environment& environment_;
  AddInHost host_;
  Stage stage_;
  std::optional<DeckWatch> watch_;
};

void show(const ShowOptions& options, Environment& environment) {
  requireGiven("DECK", options.deck);
  { ShowRun(options, environment).run(); }
  tellOfErrors();
}

void define(CLI::App& verb, ShowOptions& options) {
  verb.add_option("DECK", options.deck, "The deck");
  addServerOptions(verb, options.server);
  addPerAddressOption(verb, options.server);
  addHubOptions(verb, options.hub);
  verb.add_option("--slide", options.slide, "Slide to begin with");
  verb.add_option("--seconds", options.seconds,
                  "How long slides without a timing of their own stay; the deck is not changed")
      ->check(CLI::Range(ShortestStay, LongestStay));
  verb.add_option("--when-empty", options.whenEmpty,
                  "Slide to show while every slide is hidden (else the deck's background)");
  verb.add_option("--stale", options.stale,
                  "What happens to values that are not kept fresh: keep, mark or blank (setting StaleData)");
  verb.add_flag("--kiosk", options.kiosk, "Kiosk show: loops, no pointer, no keys but Escape");
  verb.add_flag("--loop", options.loop, "Begin anew after the last slide");
  verb.add_flag("--synchronous", options.synchronous,
                "All screens change at the same moment, half a second after the show");
  verb.add_flag("--no-reload", options.noReload, "Go on with the deck as it is now when its file changes");
}

}  // namespace

void addShowCommand(CLI::App& program, Environment& environment) {
  auto options = std::make_shared<ShowOptions>();
  CLI::App* verb = program.add_subcommand("show", "Show a deck with live data on screens");
  options->server.port = ScreensPort;
  define(*verb, *options);
  verb->callback([options, verb, &environment] {
    show(withSettings(*options, optionsGiven(*verb), define), environment);
  });
}

}  // namespace app
