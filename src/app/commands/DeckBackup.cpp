#include "app/commands/DeckBackup.h"

#include <filesystem>
#include <iostream>

#include "opc/Files.h"
#include "platform/Console.h"

namespace app {

void keepBackup(const std::string& deck) {
  std::filesystem::path copy = deck;
  copy.replace_extension(".backup" + copy.extension().string());
  if (std::filesystem::exists(std::filesystem::symlink_status(copy))) return;
  const auto state = opc::stateOfFile(deck);
  opc::replaceFile(copy.string(), opc::readFile(deck, state ? state->size : 0).bytes);
  std::cerr << "lumenfold: the deck as it was is kept in " << platform::forTerminal(copy.string()) << '\n';
}

}  // namespace app
