#include <CLI/CLI.hpp>
#include <exception>
#include <iostream>

#include "app/Commands.h"
#include "app/Environment.h"
#include "app/Failure.h"
#include "basic/Error.h"
#include "basic/Strings.h"

namespace {

constexpr int Failed = 1;
constexpr int Usage = 2;

int complain(const std::string& text, int exitCode) {
  std::cerr << "lumenfold: " << basic::Replace(text, "\r\n", " ") << '\n';
  return exitCode;
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
  app::addInfoCommand(program, environment);
  app::addConnectionCommand(program, environment);
  app::addLinkCommand(program, environment);
  app::addUnlinkCommand(program, environment);
  app::addSlideCommand(program, environment);
  app::addDisplayCommand(program, environment);
  app::addFillCommand(program, environment);
  app::addLogCommand(program, environment);

  try {
    program.parse(argc, argv);
    return 0;
  } catch (const CLI::Success& help) {
    return program.exit(help);
  } catch (const CLI::ParseError& error) {
    return complain(std::string(error.what()) + "\nTry 'lumenfold --help'.", Usage);
  } catch (const app::UsageError& error) {
    return complain(std::string(error.what()) + "\nTry 'lumenfold --help'.", Usage);
  }
}

}  // namespace

int main(int argc, char** argv) {
  try {
    return run(argc, argv);
  } catch (const basic::Error& error) {
    return complain(error.description, Failed);
  } catch (const std::exception& error) {
    return complain(error.what(), Failed);
  }
}
