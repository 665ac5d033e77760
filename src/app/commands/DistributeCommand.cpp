// The verb distribute: a deck with its tags into the distribution folder, or out of it.

#include <CLI/CLI.hpp>
#include <filesystem>
#include <iostream>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "addin/support/modGlobalFunctions.h"
#include "app/commands/Commands.h"
#include "app/distribution/DistributionFolder.h"
#include "app/distribution/Note.h"
#include "app/wiring/AddInHost.h"
#include "app/wiring/Environment.h"
#include "app/wiring/Failure.h"
#include "basic/Conversion.h"
#include "basic/Counted.h"
#include "basic/Strings.h"
#include "host/services.h"
#include "model/clsPresentation.h"
#include "model/modSending.h"
#include "platform/Console.h"

namespace app {

namespace {

struct DistributeOptions {
  std::string deck;
  std::vector<std::string> computers;
  bool everyComputer = false;
  std::optional<std::string> start;
  std::optional<std::string> stop;
  std::optional<std::string> days;
  std::optional<std::string> hours;
  std::string way;
  std::string folder;
  std::string key;
  bool withdraw = false;

  [[nodiscard]] bool saysWhen() const { return start || stop || days || hours; }
  [[nodiscard]] bool saysForWhom() const { return everyComputer || !computers.empty(); }
};

/// In force as long as this object lives.
class Sending {
 public:
  Sending() { use(&folder_); }
  ~Sending() { use(nullptr); }
  Sending(const Sending&) = delete;
  Sending& operator=(const Sending&) = delete;

 private:
  static void use(host::Distribution* distribution) {
    host::Services services = host::Current();
    services.distribution = distribution;
    host::Use(services);
  }
  DistributionFolder folder_;
};

/// "" and "none" are no limit.
basic::Date dateIn(const std::string& text, const char* option) {
  if (text.empty() || basic::EqualsIgnoreCase(text, "none")) return {};
  try {
    constexpr double FirstDay = 1;
    const basic::Date date = basic::CDate(text);
    if (date.serial >= FirstDay) return date;
  } catch (const basic::Error&) {
    throw UsageError(std::string(option) + " '" + text + "' is no date and time; write 2026-11-22 06:00.");
  }
  throw UsageError(std::string(option) + " '" + text + "' names no day; write 2026-11-22 06:00.");
}

/// The deck remembers for whom and when it is meant. Answers whether that is new.
bool tag(const DistributeOptions& options, LF2000::clsPresentation& linked) {
  if (!options.saysWhen() && !options.saysForWhom()) return false;
  LF2000::modSchedule::Schedule schedule = linked.DistributionSchedule();
  if (options.start) schedule.start = dateIn(*options.start, "--start");
  if (options.stop) schedule.stop = dateIn(*options.stop, "--stop");
  if (options.days) schedule.days = *options.days;
  if (options.hours) schedule.hours = *options.hours;
  const auto complaint = LF2000::modSchedule::ScheduleComplaint(schedule);
  if (!complaint.IsEmpty()) throw UsageError("distribute: " + complaint.Text());
  auto computers = options.saysForWhom() ? options.computers : linked.DistributionList();
  if (schedule == linked.DistributionSchedule() && computers == linked.DistributionList()) return false;
  linked.SetDistributionListTags(schedule.start, schedule.stop, std::move(computers), schedule.days,
                                 schedule.hours);
  return true;
}

std::string whenText(const LF2000::modSchedule::Schedule& schedule) {
  std::string text;
  if (schedule.start != basic::Date()) text += " from " + basic::CStr(schedule.start);
  if (schedule.stop != basic::Date()) text += " until " + basic::CStr(schedule.stop);
  if (!schedule.days.empty()) text += " on " + schedule.days;
  if (!schedule.hours.empty()) text += " at " + schedule.hours;
  return text.empty() ? " at any time" : text;
}

void tell(const host::Sent& sent, const LF2000::clsPresentation& linked) {
  constexpr std::uint64_t Kilobyte = 1024;
  std::cout << "Sent to " << platform::forTerminal(sent.Place) << " (" << basic::Counted(sent.Files, "file")
            << ", " << (sent.Bytes + Kilobyte - 1) / Kilobyte << " kB)\nFor ";
  const auto& computers = linked.DistributionList();
  if (computers.empty()) std::cout << "every computer";
  for (std::size_t i = 0; i < computers.size(); ++i) {
    std::cout << (i == 0 ? "" : ", ") << platform::forTerminal(computers[i]);
  }
  std::cout << platform::forTerminal(whenText(linked.DistributionSchedule())) << '\n';
  for (const std::string& warning : sent.Warnings) {
    std::cerr << "lumenfold: " << platform::forTerminal(warning) << '\n';
  }
}

LF2000::modSending::Options sendingOf(const DistributeOptions& options) {
  LF2000::modSending::Options how;
  if (!options.way.empty()) how.Way = wayOf(options.way);
  how.Folder = options.folder;
  how.KeyFile = options.key;
  how = LF2000::modSending::Complete(how);
  if (how.Folder.empty()) fail(std::string(LF2000::modSending::NoFolder));
  return how;
}

void withdraw(const DistributeOptions& options) {
  const auto how = sendingOf(options);
  const std::string name = std::filesystem::path(options.deck).stem().string();
  LF2000::modSending::Sender().Withdraw(how.Folder, name, how.KeyFile);
  std::cout << platform::forTerminal(name) << " is taken back from " << platform::forTerminal(how.Folder)
            << '\n';
}

void send(const DistributeOptions& options) {
  const auto how = sendingOf(options);
  AddInHost host;
  const auto deck = [&] {
    // The add-in makes way: what is sent needs no data, and a copy opens its sources itself.
    const LF2000::modGlobalFunctions::OfflineGeneration generation(options.deck);
    return host.open(std::filesystem::absolute(options.deck).lexically_normal().string());
  }();
  const auto linked = std::make_shared<LF2000::clsPresentation>();
  linked->Describe(deck);
  if (tag(options, *linked)) deck->Save();
  tell(linked->Send(how), *linked);
}

}  // namespace

void addDistributeCommand(CLI::App& program, Environment&) {
  auto options = std::make_shared<DistributeOptions>();
  CLI::App* verb = program.add_subcommand(
      "distribute", "Send the deck to the players of a distribution folder, or take it back");
  verb->add_option("DECK", options->deck, "The deck")->required();
  CLI::Option* computers = verb->add_option("--computer", options->computers,
                                            "A computer that is to show it; several are possible");
  verb->add_flag("--every-computer", options->everyComputer, "Every computer of the folder is to show it")
      ->excludes(computers);
  verb->add_option("--start", options->start,
                   "First moment, by the players' clocks: '2026-11-22 06:00', or none");
  verb->add_option("--stop", options->stop, "First moment no longer, or none");
  verb->add_option("--days", options->days, "Days of the week: mon-fri, or sat,sun; '' for every day");
  verb->add_option("--hours", options->hours, "Hours of the day: 06:00-22:00; '' for the whole day");
  verb->add_option(
          "--way", options->way,
          "live: players read its data themselves; files: these go along; frozen: with the values of "
          "this moment. As it was sent last, if not given, or live")
      ->check(CLI::IsMember({"live", "files", "frozen"}));
  verb->add_option("--folder", options->folder, "The distribution folder; else as Lumenfold.INI says");
  verb->add_option("--key", options->key, "Private key that signs it; else as Lumenfold.INI says");
  verb->add_flag("--withdraw", options->withdraw, "Take the deck of this name back");
  verb->callback([options] {
    if (options->withdraw && (options->saysWhen() || options->saysForWhom() || !options->way.empty())) {
      throw UsageError("distribute: what is taken back goes to nobody; --withdraw stands alone.");
    }
    const Sending sending;
    options->withdraw ? withdraw(*options) : send(*options);
  });
}

}  // namespace app
