#include "app/player/DeckTags.h"

#include "app/wiring/Failure.h"
#include "basic/Quotes.h"
#include "deck/objects/Repair.h"
#include "deck/objects/TagStore.h"
#include "opc/PackageFile.h"

namespace app {

DeckTags readDeckTags(const std::string& file, const std::string& name) {
  const auto package = opc::Package::fromBytes(opc::readPackageFile(file).bytes, name);
  package->verify();
  if (const auto damages = deck::repair(*package); !damages.empty()) fail(damages.front().text);
  opc::Part* const presentation = package->related(opc::relationship::OfficeDocument);
  if (presentation == nullptr) fail(basic::InQuotes(name) + " holds no presentation.");
  DeckTags tags;
  deck::TagStore store(*package);
  for (const deck::Tag& tag : store.of(*presentation, presentation->xml().document_element()).all()) {
    LF2000::modDistributionTags::Take(tags, tag.name, tag.value);
  }
  return tags;
}

}  // namespace app
