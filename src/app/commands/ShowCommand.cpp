// The verb show: the deck as a running slide show on screens.

#include <csignal>
#include <exception>
#include <functional>
#include <memory>
#include <optional>

#include "app/commands/Commands.h"
#include "app/commands/HubOptions.h"
#include "app/commands/NumberChecks.h"
#include "app/commands/ScreenOptions.h"
#include "app/commands/ServerEnd.h"
#include "app/commands/SettingsFile.h"
#include "app/inspect/Standstill.h"
#include "app/show/DeckTaker.h"
#include "app/show/Stage.h"
#include "app/wiring/AddInHost.h"
#include "app/wiring/Environment.h"
#include "app/wiring/Failure.h"
#include "app/wiring/Token.h"
#include "platform/Log.h"
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

Stage::Options stageOf(const ShowOptions& options) {
  return {{staleDataOf(options.stale), options.whenEmpty, {}, momentOf(options)},
          options.kiosk ? std::optional(true) : std::nullopt,
          options.loop ? std::optional(true) : std::nullopt,
          options.seconds};
}

/// Runs the loop until the show is over and the screens have been told.
class ShowRun {
 public:
  /// `read` gives the options as they are when it is called.
  ShowRun(std::function<ShowOptions()> read, Environment& environment)
      : read_(std::move(read)),
        options_(read_()),
        environment_(environment),
        stage_(host_, environment.loop(), host_.open(options_.deck, deck::Application::Damaged::Repaired),
               stageOf(options_)) {}

  void run() {
    const Token token = obtainToken(options_.server.tokenFile);
    const auto screens = screensIn(options_.server.screens, environment_);
    // Listen first: a port in use is told before anything has begun.
    web::Server server(environment_.loop().context(), stage_,
                       screensServerOf(options_.server, options_.hub, token, screens.get()),
                       publisherOf(options_.hub));
    watchScreens(screens.get(), server);
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
    ServiceNotices notices(environment_.loop(), [&] { return standingOf(stage_, server); });
    environment_.loop().onSignal([&](int signal) {
      if (signal == SIGHUP && isReloaded_) return reload(notices);
      notices.stopping();
      stage_.shutDown();
    });
    if (!options_.noReload) taker_.watch();
    tellAddresses(server, token);
    environment_.loop().run();
    taker_.stop();
    stage_.connect(nullptr);
  }

 private:
  void beginShow(ServerEnd& end) {
    for (const auto& slide : {options_.slide, options_.whenEmpty}) {
      if (const std::string why = whyNoSlide(slide); !why.empty()) fail(why);
    }
    // Before slides hide that have no data yet.
    const auto standstill = standstillOf(deck::ShowCourse(stage_.deck(), stage_.showOptions()));
    if (standstill) platform::tell(platform::Priority::Warning, "show", *standstill);
    tellLanguage();
    stage_.begin(options_.slide, [this, &end] {
      taker_.stop();
      constexpr std::int32_t TimeToSend = 200;
      end.beginIn(TimeToSend);
    });
  }

  /// Settings and deck as they are now. What is wrong with them is told, and the show goes on as it is.
  void reload(ServiceNotices& notices) {
    notices.reloading();
    try {
      ShowOptions now = read_();
      stage_.use(stageOf(now));
      if (now.server != options_.server || now.hub != options_.hub) {
        platform::tell(
            platform::Priority::Warning, "settings",
            "what concerns the server (port, bind, name, token-file, screens, per-address, log) and "
            "hubs (publish, publish-token-file, hub) takes a restart.");
      }
      options_ = std::move(now);
    } catch (const std::exception& error) {
      platform::tell(platform::Priority::Error, "settings",
                     std::string("the settings are not taken up: ") + error.what());
      return notices.reloaded();
    }
    taker_.take(options_.deck, !options_.noReload, [this, &notices] {
      const std::string why = whyNoSlide(options_.whenEmpty);
      if (!why.empty()) platform::tell(platform::Priority::Warning, "settings", "when-empty: " + why);
      notices.reloaded();
    });
  }

  void tellProgress(const platform::Progress* progress) {
    if (progress == nullptr) {
      stage_.progress(std::nullopt);
    } else {
      stage_.progress(web::Progress{progress->caption, progress->text, progress->step, progress->maximum});
    }
  }

  /// Empty for a slide that the deck has, and for none.
  [[nodiscard]] std::string whyNoSlide(const std::optional<std::int32_t>& slide) const {
    const std::int32_t count = stage_.deck()->slideCount();
    if (!slide || *slide <= count) return {};
    return options_.deck + ": there is no slide " + std::to_string(*slide) + "; the deck has " +
           std::to_string(count) + ".";
  }

  void tellAddresses(const web::Server& server, const Token& token) const {
    announce("Showing " + stage_.deck()->FullName() + " (" + std::to_string(stage_.deck()->slideCount()) +
             " slides)");
    announceScreens(server, token, options_.server, environment_);
  }

  std::function<ShowOptions()> read_;
  ShowOptions options_;
  Environment& environment_;
  const bool isReloaded_ = platform::isReloadedByHangUp();
  AddInHost host_;
  Stage stage_;
  DeckTaker taker_{host_, environment_.loop(), stage_};
};

void show(const std::function<ShowOptions()>& read, Environment& environment) {
  beginLog(read().server);
  { ShowRun(read, environment).run(); }
  tellOfErrors();
}

void define(CLI::App& verb, ShowOptions& options) {
  verb.add_option("DECK", options.deck, "The deck");
  addServerOptions(verb, options.server);
  addPerAddressOption(verb, options.server);
  addHubOptions(verb, options.hub);
  addScreensOption(verb, options.server.screens);
  verb.add_option("--slide", options.slide, "Slide to begin with")
      ->type_name("NUMBER")
      ->check(wholeNumber(1));
  verb.add_option("--seconds", options.seconds,
                  "How long slides without a timing of their own stay; the deck is not changed")
      ->check(CLI::Range(ShortestStay, LongestStay));
  verb.add_option("--when-empty", options.whenEmpty,
                  "Slide to show while every slide is hidden (else the deck's background)")
      ->type_name("NUMBER")
      ->check(wholeNumber(1));
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
    beginLog(options->server);
    show(
        [options, given = optionsGiven(*verb)] {
          ShowOptions now = withSettings(*options, given, define);
          requireGiven("DECK", now.deck);
          return now;
        },
        environment);
  });
}

}  // namespace app
