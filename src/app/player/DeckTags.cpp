#include "app/player/DeckTags.h"

#include <algorithm>

#include "app/wiring/Failure.h"
#include "basic/Conversion.h"
#include "basic/Quotes.h"
#include "basic/Strings.h"
#include "deck/objects/Repair.h"
#include "deck/objects/TagStore.h"
#include "model/modTags.h"
#include "opc/PackageFile.h"

namespace app {

namespace modTags = LF2000::modTags;

namespace {

basic::Date dateIn(const deck::Tag& tag) try { return basic::CDate(tag.value); } catch (const basic::Error&) {
  fail("The value " + basic::InQuotes(basic::Left(tag.value, 40)) + " of its tag " +
       basic::InQuotes(tag.name) + " is no date.");
}

}  // namespace

bool DeckTags::isFor(std::string_view computer) const {
  return computers.empty() || std::any_of(computers.begin(), computers.end(), [&](std::string_view each) {
           if (each.starts_with("\\\\")) each.remove_prefix(2);
           return basic::EqualsIgnoreCase(each, computer);
         });
}

DeckTags readDeckTags(const std::string& file, const std::string& name) {
  const auto package = opc::Package::fromBytes(opc::readPackageFile(file).bytes, name);
  package->verify();
  if (const auto damages = deck::repair(*package); !damages.empty()) fail(damages.front().text);
  opc::Part* const presentation = package->related(opc::relationship::OfficeDocument);
  if (presentation == nullptr) fail(basic::InQuotes(name) + " holds no presentation.");
  DeckTags tags;
  deck::TagStore store(*package);
  for (const deck::Tag& tag : store.of(*presentation, presentation->xml().document_element()).all()) {
    if (modTags::Matches(tag.name, modTags::DistributionStart)) tags.schedule.start = dateIn(tag);
    if (modTags::Matches(tag.name, modTags::DistributionStop)) tags.schedule.stop = dateIn(tag);
    if (modTags::Matches(tag.name, modTags::DistributionDays)) tags.schedule.days = tag.value;
    if (modTags::Matches(tag.name, modTags::DistributionHours)) tags.schedule.hours = tag.value;
    if (modTags::Matches(tag.name, modTags::DistributionComputer)) {
      tags.computers = basic::Split(tag.value, modTags::FieldSeparator);
      if (!tags.computers.empty()) tags.computers.pop_back();
    }
  }
  return tags;
}

}  // namespace app
