// The verb play: the decks of a distribution folder, by turns, on screens.

#include <chrono>
#include <csignal>
#include <filesystem>
#include <iostream>
#include <memory>
#include <optional>

#include "addin/support/modErrors.h"
#include "app/commands/Commands.h"
#include "app/commands/HubOptions.h"
#include "app/commands/ScreenOptions.h"
#include "app/commands/ServerEnd.h"
#include "app/commands/SettingsFile.h"
#include "app/player/Player.h"
#include "app/player/PlayerFolder.h"
#include "app/wiring/AddInHost.h"
#include "app/wiring/Environment.h"
#include "app/wiring/Failure.h"
#include "app/wiring/Token.h"
#include "basic/Conversion.h"
#include "basic/Strings.h"
#include "platform/Console.h"
#include "platform/Log.h"
#include "platform/jobs/JobQueue.h"
#include "process/TemporaryFolder.h"
#include "web/show/Server.h"

namespace app {

namespace {

struct PlayOptions {
  std::string place;
  std::string computer;
  std::string trust;
  ServerOptions server;
  HubOptions hub;
  std::string whenEmpty;
  std::string stale;
  std::string why;
  double seconds = 10;
  std::uint64_t cacheBytes = PlayerFolderOptions().cacheBytes;
  bool kiosk = false;
  bool synchronous = false;
};

PlayerFolderOptions folderOf(const PlayOptions& options, Environment& environment) {
  PlayerFolderOptions folder;
  folder.place = options.place;
  folder.computer = options.computer;
  if (folder.computer.empty()) folder.computer = environment.shell().ComputerName().value_or("");
  if (!options.trust.empty()) folder.trust = PublicKey::read(options.trust);
  folder.cacheBytes = options.cacheBytes;
  folder.cache = PlayerFolder::usualCache(folder);
  return folder;
}

Stage::Options stageOf(const PlayOptions& options) {
  Stage::Options stage;
  stage.live.staleData = staleDataOf(options.stale);
  if (options.kiosk) stage.kiosk = true;
  stage.loop = true;
  stage.seconds = options.seconds;
  return stage;
}

/// Lets the loop turn until `isThere`, or for so many milliseconds.
void waitFor(platform::EventLoop& loop, std::int64_t milliseconds, const std::function<bool()>& isThere) {
  const host::Clock& clock = *host::Current().clock;
  const std::int64_t end = clock.TickCount() + milliseconds;
  while (!isThere() && clock.TickCount() < end) loop.DoEvents();
}

/// The system hands what may wait to these jobs, as long as this lives.
class JobsInUse {
 public:
  explicit JobsInUse(host::Jobs& jobs) : usual_(host::Current()) {
    host::Services services = usual_;
    services.jobs = &jobs;
    host::Use(services);
  }
  ~JobsInUse() { host::Use(usual_); }
  JobsInUse(const JobsInUse&) = delete;
  JobsInUse& operator=(const JobsInUse&) = delete;

 private:
  host::Services usual_;
};

/// Runs the loop until an operator or a signal ends it.
class PlayRun {
 public:
  PlayRun(const PlayOptions& options, Environment& environment)
      : options_(options),
        environment_(environment),
        reader_(environment.loop()),
        source_(folderOf(options, environment)),
        folder_(environment.loop(), *host::Current().clock, source_,
                [](const std::string& line) { LF2000::modErrors::WriteErrorLog(line); }),
        player_(host_, environment.loop(), playerOptions()) {
    if (!options.synchronous) return;
    platform::EventLoop& loop = environment.loop();
    jobs_.emplace(loop, *host::Current().clock,
                  [&loop](std::function<void()> handler) { loop.postOutermost(std::move(handler)); });
    jobsInUse_.emplace(*jobs_);
  }

  void run() {
    const Token token = obtainToken(options_.server.tokenFile);
    tellLanguage();
    // Screens that were there before keep their picture until the port is open: not before there is one for
    // them.
    constexpr std::int64_t LongestWait = 2000;
    waitFor(environment_.loop(), LongestWait,
            [this] { return !folder_.decks().empty() || folder_.wasRead(); });
    folder_.onChange([this] { take(); });
    take();
    std::optional<ServerEnd> end;
    player_.begin([this, &end] {
      if (jobs_) jobs_->cancelAll();
      constexpr std::int32_t TimeToSend = 200;
      end->beginIn(TimeToSend);
    });
    isStarting_ = false;
    const auto screens = screensIn(options_.server.screens, environment_);
    web::Server server(environment_.loop().context(), player_.stage(),
                       screensServerOf(options_.server, options_.hub, token, screens.get()),
                       publisherOf(options_.hub));
    watchScreens(screens.get(), server);
    end.emplace(
        environment_.loop(), [&server] { server.stop(); },
        [&server] { return server.screens() + server.programs() + server.unpublished(); });
    player_.stage().connect(&server);
    ServiceNotices notices(environment_.loop(), [&] { return standingOf(player_.stage(), server); });
    const bool isReloaded = platform::isReloadedByHangUp();
    environment_.loop().onSignal([&, isReloaded](int signal) {
      if (signal == SIGHUP && isReloaded) return goOn(notices);
      notices.stopping();
      player_.shutDown();
    });
    announce("Playing " + source_.place + " as " + source_.computer);
    announceScreens(server, token, options_.server, environment_);
    environment_.loop().run();
    folder_.onChange({});
    player_.stage().connect(nullptr);
  }

 private:
  /// The folder and its decks are looked at all the time.
  static void goOn(ServiceNotices& notices) {
    notices.reloading();
    platform::tell(platform::Priority::Notice, "settings",
                   "the folder is read all the time anyway; new options of a player take a restart.");
    notices.reloaded();
  }

  void take() { player_.take(folder_.decks(), folder_.trouble()); }

  Player::Options playerOptions() {
    Player::Options player;
    player.stage = stageOf(options_);
    player.isSynchronous = options_.synchronous;
    if (!options_.whenEmpty.empty()) {
      player.whenEmpty = std::filesystem::absolute(options_.whenEmpty).lexically_normal().string();
    }
    player.read = [this](const FolderDeck& deck, const deck::SlideShowOptions& show,
                         std::function<void(DeckRead)> then) {
      if (isStarting_) return then(readDeck(deck.file, deck.path, show));
      reader_.read(deck.file, deck.path, show, std::move(then));
    };
    player.keep = [this](const FolderDeck& deck) { return folder_.keep(deck); };
    player.now = [] {
      const auto now = std::chrono::system_clock::now().time_since_epoch();
      return std::chrono::duration_cast<std::chrono::milliseconds>(now).count();
    };
    return player;
  }

  const PlayOptions& options_;
  Environment& environment_;
  /// Nothing waits for a database where the time alone says which slide is on.
  std::optional<platform::JobQueue> jobs_;
  std::optional<JobsInUse> jobsInUse_;
  AddInHost host_;
  DeckReader reader_;
  PlayerFolderOptions source_;
  PlayerFolder folder_;
  Player player_;
  /// Nobody looks yet: the first deck is read at once.
  bool isStarting_ = true;
};

/// A cache for a look at the folder: the player's own, which knows what came before, unless a player holds
/// it.
class LookingFolder {
 public:
  LookingFolder(PlayerFolderOptions options, Environment& environment) {
    const auto quiet = [](const std::string&) {};
    try {
      folder_.emplace(environment.loop(), *host::Current().clock, options, quiet);
    } catch (const basic::Error&) {
      // Below it, as files that are replaced wait for the lock of their folder, and this one's is held.
      options.cache = (own_.emplace().path() / "cache").string();
      folder_.emplace(environment.loop(), *host::Current().clock, options, quiet);
    }
  }
  [[nodiscard]] const PlayerFolder& get() const { return *folder_; }

 private:
  std::optional<process::TemporaryFolder> own_;
  std::optional<PlayerFolder> folder_;
};

void why(const PlayOptions& options, Environment& environment) {
  const LookingFolder looking(folderOf(options, environment), environment);
  const PlayerFolder& folder = looking.get();
  const std::string name = std::filesystem::path(options.why).extension() == ".pptx"
                               ? std::filesystem::path(options.why).stem().string()
                               : options.why;
  const auto find = [&]() -> const FolderDeck* {
    for (const FolderDeck& deck : folder.decks()) {
      if (basic::EqualsIgnoreCase(deck.name, name)) return &deck;
    }
    return nullptr;
  };
  constexpr std::int64_t LongestWait = 20'000;
  waitFor(environment.loop(), LongestWait, [&folder] { return folder.isSettled(); });
  const FolderDeck* deck = find();
  const std::string trouble = folder.trouble().empty() ? "" : " " + folder.trouble();
  if (deck == nullptr)
    fail(name + " is not shown: there is no such deck in " + options.place + "." + trouble);
  if (!deck->isOn) fail(deck->name + " is not shown: " + deck->why + trouble);
  deck::SlideShowOptions show;
  show.seconds = options.seconds;
  const DeckRead read = readDeck(deck->file, deck->path, show);
  if (!read.deck) fail(deck->name + " is not shown: " + read.why);
  const auto change = LF2000::modSchedule::NextChange(deck->schedule, host::Current().clock->Now());
  std::cout << deck->name << " is shown" << (change ? " until " + basic::StoredDate(*change) : "") << ".\n";
  for (const std::string& line : {deck->why, folder.trouble()}) {
    if (!line.empty()) std::cout << platform::forTerminal(line) << '\n';
  }
}

void play(const PlayOptions& options, Environment& environment) {
  requireGiven("FOLDER", options.place);
  if (!options.why.empty()) return why(options, environment);
  beginLog(options.server);
  { PlayRun(options, environment).run(); }
  tellOfErrors();
}

void define(CLI::App& verb, PlayOptions& options) {
  verb.add_option("FOLDER", options.place, "The folder, or the address of one behind a web server");
  verb.add_option("--computer", options.computer, "This computer's name in the decks' lists (else its own)");
  verb.add_option("--trust", options.trust, "Take decks alone that the owner of this public key has signed")
      ->check(CLI::ExistingFile);
  addServerOptions(verb, options.server);
  addPerAddressOption(verb, options.server);
  addHubOptions(verb, options.hub);
  addScreensOption(verb, options.server.screens);
  verb.add_option("--seconds", options.seconds, "How long slides without a timing of their own stay")
      ->check(CLI::Range(ShortestStay, LongestStay))
      ->capture_default_str();
  verb.add_option("--when-empty", options.whenEmpty,
                  "Deck whose last slide is shown while no other is due (else a plain ground)");
  verb.add_option("--stale", options.stale,
                  "What happens to values that are not kept fresh: keep, mark or blank (setting StaleData)");
  verb.add_option("--cache-size", options.cacheBytes, "What the cache of decks may hold, such as 4GB")
      ->transform(CLI::AsSizeValue(false));
  verb.add_flag("--kiosk", options.kiosk, "Kiosk shows: no pointer, no keys but Escape");
  verb.add_flag("--synchronous", options.synchronous,
                "Show the same slide as every other player of the folder, by the clock");
  verb.add_option("--why", options.why, "Say whether this deck is shown now, and why not; exit code 0 or 1");
}

}  // namespace

void addPlayCommand(CLI::App& program, Environment& environment) {
  auto options = std::make_shared<PlayOptions>();
  CLI::App* verb = program.add_subcommand("play", "Show the decks of a distribution folder, by turns");
  options->server.port = ScreensPort;
  define(*verb, *options);
  verb->callback([options, verb, &environment] {
    beginLog(options->server);
    play(withSettings(*options, optionsGiven(*verb), define), environment);
  });
}

}  // namespace app
