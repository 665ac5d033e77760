// The program: its verbs, and how it ends with an error.

#include <unistd.h>

#include <CLI/CLI.hpp>
#include <cerrno>
#include <cstring>
#include <exception>
#include <iostream>

#include "app/commands/Commands.h"
#include "app/wiring/Environment.h"
#include "app/wiring/Failure.h"
#include "app/wiring/Output.h"
#include "basic/Error.h"
#include "platform/Log.h"
#include "platform/StartUp.h"

namespace {

constexpr int Failed = 1;
constexpr int Usage = 2;

int complain(const std::string& text, int exitCode) {
  platform::tell(platform::Priority::Error, "program", app::joinedLines(text));
  return exitCode;
}

/// "lumenfold connection DECK add --help", as far as the command line got.
std::string helpOf(const CLI::App& program) {
  const auto isOperand = [](const CLI::Option* option) { return option->get_positional(); };
  std::string line = program.get_name();
  for (const CLI::App* verb : program.get_subcommands()) {
    line += ' ' + verb->get_name();
    for (const CLI::App* action : verb->get_subcommands()) {
      for (const CLI::Option* operand : verb->get_options(isOperand)) line += ' ' + operand->get_name();
      line += ' ' + action->get_name();
    }
  }
  return line + " --help";
}

int complainOfUsage(const CLI::App& program, const std::string& text) {
  return complain(text + "\nTry '" + helpOf(program) + "'.", Usage);
}

/// An answer that did not get through is no success.
int finishOutput() {
  std::cout.flush();
  if (std::cout) return 0;
  // The stream keeps no reason; asking once more gives it.
  if (::write(STDOUT_FILENO, "\n", 1) == 1) errno = EIO;
  // Who has read enough ("| head") wants no words about it.
  if (errno == EPIPE) return Failed;
  return complain(
      std::string("the answer cannot be written to standard output: ") + std::strerror(errno) + ".", Failed);
}

std::string actionsOf(const CLI::App& verb) {
  std::string names;
  for (const CLI::App* action : verb.get_subcommands({}))
    names += (names.empty() ? "" : ", ") + action->get_name();
  return names;
}

/// What the parser says, with the word that it stumbled over.
std::string explain(const CLI::App& program, const CLI::ParseError& error) {
  if (error.get_name() != "RequiredError") return error.what();
  for (const CLI::App* verb : program.get_subcommands()) {
    const auto rest = verb->remaining();
    if (!rest.empty()) return verb->get_name() + " has no action '" + rest.front() + "'";
    if (error.what() == std::string(CLI::RequiredError::Subcommand(1).what())) {
      return verb->get_name() + " takes an action: " + actionsOf(*verb);
    }
  }
  if (const auto rest = program.remaining(); !rest.empty()) return "there is no verb '" + rest.front() + "'";
  return program.get_subcommands().empty() ? "a verb is required" : error.what();
}

int run(int argc, char** argv) {
  CLI::App program{
      "Lumenfold shows PowerPoint decks whose shapes are linked to data that changes.\n"
      "'lumenfold VERB --help' explains a verb."};
  program.name("lumenfold");
  program.set_version_flag("--version", LUMENFOLD_VERSION);
  program.require_subcommand(1);
  program.failure_message(CLI::FailureMessage::simple);

  app::Environment environment;
  app::addShowCommand(program, environment);
  app::addPlayCommand(program, environment);
  app::addEditCommand(program, environment);
  app::addInfoCommand(program, environment);
  app::addShapesCommand(program, environment);
  app::addConnectionCommand(program, environment);
  app::addLinkCommand(program, environment);
  app::addUnlinkCommand(program, environment);
  app::addSlideCommand(program, environment);
  app::addDisplayCommand(program, environment);
  app::addFillCommand(program, environment);
  app::addOfflineCommand(program, environment);
  app::addCheckCommand(program, environment);
  app::addSnapshotCommand(program, environment);
  app::addImportCommand(program, environment);
  app::addDistributeCommand(program, environment);
  app::addKeyCommand(program, environment);
  app::addHubConfigCommand(program, environment);
  app::addScreenCommand(program, environment);
  app::addLogCommand(program, environment);
  app::addManualCommand(program, environment);

  try {
    program.parse(argc, argv);
    return finishOutput();
  } catch (const CLI::Success& help) {
    program.exit(help);
    return finishOutput();
  } catch (const CLI::ParseError& error) {
    return complainOfUsage(program, explain(program, error));
  } catch (const app::UsageError& error) {
    return complainOfUsage(program, error.what());
  } catch (const basic::Error& error) {
    // What a message box has told already is not told again.
    return error.description == environment.lastShown() ? Failed : complain(error.description, Failed);
  }
}

}  // namespace

int main(int argc, char** argv) {
  platform::prepareProcess();
  try {
    return run(argc, argv);
  } catch (const basic::Error& error) {
    return complain(error.description, Failed);
  } catch (const std::exception& error) {
    return complain(error.what(), Failed);
  }
}
