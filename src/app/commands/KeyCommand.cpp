// The verb key: the pair of keys by which players know what was sent by whom.

#include <fcntl.h>
#include <unistd.h>

#include <CLI/CLI.hpp>
#include <cerrno>
#include <cstring>
#include <iostream>
#include <memory>
#include <string>

#include "app/commands/Commands.h"
#include "app/distribution/Signature.h"
#include "app/wiring/Failure.h"
#include "platform/Console.h"
#include "process/Descriptor.h"

namespace app {

namespace {

/// Never in the place of another file: a key that is lost cannot be made again.
void writeNew(const std::string& file, const std::string& text, mode_t mode) {
  process::Descriptor opened(
      ::open(file.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC | O_NOFOLLOW, mode));
  if (!opened.isOpen()) {
    fail(errno == EEXIST ? file + " is there already; a key is never written over."
                         : file + " cannot be written: " + std::strerror(errno) + ".");
  }
  const bool isWritten =
      ::write(opened.get(), text.data(), text.size()) == static_cast<ssize_t>(text.size()) &&
      ::fsync(opened.get()) == 0 && ::close(opened.release()) == 0;
  if (isWritten) return;
  const std::string why = std::strerror(errno);
  ::unlink(file.c_str());
  fail(file + " cannot be written: " + why + ".");
}

void make(const std::string& file) {
  constexpr mode_t OwnersAlone = 0600;
  constexpr mode_t Everybodys = 0644;
  const std::string open = file + ".pub";
  if (::access(open.c_str(), F_OK) == 0) fail(open + " is there already; a key is never written over.");
  const PrivateKey key = PrivateKey::generate();
  writeNew(file, key.pem(), OwnersAlone);
  try {
    writeNew(open, key.publicKey().pem(), Everybodys);
  } catch (...) {
    ::unlink(file.c_str());
    throw;
  }
  std::cout << "Key " << key.publicKey().id() << '\n'
            << platform::forTerminal(file)
            << ": signs what is distributed; keep it, and keep it to yourself.\n"
            << platform::forTerminal(open) << ": for the players (--trust).\n";
}

/// Of either half.
PublicKey publicKeyIn(const std::string& file) {
  try {
    return PublicKey::read(file);
  } catch (const basic::Error&) {
    return PrivateKey::read(file).publicKey();
  }
}

}  // namespace

void addKeyCommand(CLI::App& program, Environment&) {
  CLI::App* verb = program.add_subcommand("key", "Keys that sign what is distributed");
  verb->require_subcommand(1);
  const auto file = std::make_shared<std::string>();
  CLI::App* add = verb->add_subcommand("new", "Make a pair: FILE, which signs, and FILE.pub for the players");
  add->add_option("FILE", *file, "The private key's file")->required();
  add->callback([file] { make(*file); });
  CLI::App* show =
      verb->add_subcommand("show", "Tell a key's number, by which notes name it, and its public half");
  show->add_option("FILE", *file, "The file of either half")->required();
  show->callback([file] {
    const PublicKey key = publicKeyIn(*file);
    std::cout << "Key " << key.id() << '\n' << key.pem();
  });
}

}  // namespace app
