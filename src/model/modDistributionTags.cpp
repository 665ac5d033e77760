#include "model/modDistributionTags.h"

#include <algorithm>

#include "basic/Conversion.h"
#include "basic/Error.h"
#include "basic/Quotes.h"
#include "basic/Strings.h"
#include "model/modTags.h"

namespace LF2000::modDistributionTags {

namespace {

basic::Date DateOf(std::string_view name, const std::string& value) try {
  return basic::CDate(value);
} catch (const basic::Error& error) {
  throw basic::Error(error.number, "modDistributionTags",
                     "The value " + basic::InQuotes(basic::Left(value, 40)) + " of its tag " +
                         basic::InQuotes(name) + " is no date.");
}

}  // namespace

bool Audience::IsFor(std::string_view computer) const {
  return computers.empty() || std::any_of(computers.begin(), computers.end(), [&](std::string_view each) {
           if (each.starts_with("\\\\")) each.remove_prefix(2);
           return basic::EqualsIgnoreCase(each, computer);
         });
}

void Take(Audience& audience, std::string_view name, const std::string& value) {
  modSchedule::Schedule& schedule = audience.schedule;
  if (modTags::Matches(name, modTags::DistributionStart)) {
    schedule.start = DateOf(name, value);
  } else if (modTags::Matches(name, modTags::DistributionStop)) {
    schedule.stop = DateOf(name, value);
  } else if (modTags::Matches(name, modTags::DistributionDays)) {
    schedule.days = value;
  } else if (modTags::Matches(name, modTags::DistributionHours)) {
    schedule.hours = value;
  } else if (modTags::Matches(name, modTags::DistributionComputer)) {
    audience.computers = basic::Split(value, modTags::FieldSeparator);
    if (!audience.computers.empty()) audience.computers.pop_back();
  }
}

Audience Read(const PowerPoint::Tags& tags) {
  Audience audience;
  for (std::int32_t i = 1; i <= tags.Count(); ++i) Take(audience, tags.Name(i), tags.Value(i));
  return audience;
}

void Write(PowerPoint::Tags& tags, const Audience& audience) {
  modTags::RemoveTags(tags, modTags::Distribution);
  tags.Add(modTags::DistributionStart, basic::StoredDate(audience.schedule.start));
  tags.Add(modTags::DistributionStop, basic::StoredDate(audience.schedule.stop));
  std::string list;
  for (const std::string& computer : audience.computers) list += computer + modTags::FieldSeparator;
  if (!list.empty()) tags.Add(modTags::DistributionComputer, list);
  if (!audience.schedule.days.empty()) tags.Add(modTags::DistributionDays, audience.schedule.days);
  if (!audience.schedule.hours.empty()) tags.Add(modTags::DistributionHours, audience.schedule.hours);
}

}  // namespace LF2000::modDistributionTags
