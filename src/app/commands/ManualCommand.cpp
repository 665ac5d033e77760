// The verb manual, for who packs the program: pages of the manual and completion, from the table of verbs.

#include <CLI/CLI.hpp>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <functional>
#include <memory>
#include <ostream>
#include <string>

#include "app/commands/Commands.h"
#include "app/commands/Manual.h"
#include "app/wiring/Failure.h"

namespace app {

namespace {

namespace fs = std::filesystem;

void write(const fs::path& file, const std::function<void(std::ostream&)>& content) {
  fs::create_directories(file.parent_path());
  std::ofstream out(file, std::ios::binary | std::ios::trunc);
  content(out);
  if (!out.flush()) fail(file.string() + " cannot be written: " + std::strerror(errno) + ".");
}

void writeManual(const CLI::App& program, const fs::path& folder) {
  write(folder / "man/lumenfold.1", [&](std::ostream& out) { writeProgramPage(out, program); });
  for (const CLI::App* verb : shownVerbs(program)) {
    write(folder / ("man/lumenfold-" + verb->get_name() + ".1"),
          [&](std::ostream& out) { writeVerbPage(out, program, *verb); });
  }
  write(folder / "completion/lumenfold", [&](std::ostream& out) { writeCompletion(out, program); });
}

}  // namespace

void addManualCommand(CLI::App& program, Environment&) {
  auto folder = std::make_shared<std::string>();
  CLI::App* verb = program.add_subcommand("manual", "Write man pages and the shell's completion");
  // For packages, not for who shows decks.
  verb->group("");
  verb->add_option("FOLDER", *folder, "Where to")->required();
  verb->callback([folder, &program] { writeManual(program, *folder); });
}

}  // namespace app
