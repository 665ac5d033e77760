#include "app/player/WhyNot.h"

#include <algorithm>

#include "basic/Conversion.h"

namespace app {

namespace modSchedule = LF2000::modSchedule;

namespace {

std::string listOf(const std::vector<std::string>& computers) {
  constexpr std::size_t Most = 8;
  std::string list;
  for (std::size_t i = 0; i < std::min(computers.size(), Most); ++i)
    list += (i == 0 ? "" : ", ") + computers[i];
  if (computers.size() > Most) list += " and " + std::to_string(computers.size() - Most) + " more";
  return list;
}

/// Empty where it is its time.
std::string whyNotNow(const modSchedule::Schedule& schedule, basic::Date now) {
  if (const auto complaint = ScheduleComplaint(schedule); !complaint.IsEmpty()) {
    return "Its times make no sense: " + complaint.Text();
  }
  if (IsOver(schedule, now)) return "Its time ended at " + basic::StoredDate(schedule.stop) + ".";
  if (IsOpen(schedule, now)) return {};
  const auto next = NextChange(schedule, now);
  return next ? "Its time comes at " + basic::StoredDate(*next) + "." : "Its time will not come.";
}

std::string whyNot(const CollectedDeck& deck, basic::Date now) {
  if (!deck.version) return deck.hindrance.empty() ? "It was withdrawn." : deck.hindrance;
  if (!deck.isForThisComputer)
    return "It is for other computers: " + listOf(deck.version->tags.computers) + ".";
  if (const std::string why = whyNotNow(deck.version->tags.schedule, now); !why.empty()) return why;
  if (!deck.file.empty()) return {};
  return deck.hindrance.empty() ? "Its files are on their way." : deck.hindrance;
}

}  // namespace

FolderDeck judged(const CollectedDeck& deck, basic::Date now) {
  FolderDeck result;
  result.name = deck.name;
  result.why = whyNot(deck, now);
  result.isOn = result.why.empty();
  if (!deck.version) return result;
  const ListedDeck& listed = deck.version->listed;
  result.file = deck.file;
  result.path = listed.path.empty() ? deck.file : listed.path;
  result.version = versionOf(listed.note);
  result.serial = listed.note.serial;
  result.schedule = deck.version->tags.schedule;
  if (!deck.hindrance.empty() && result.why != deck.hindrance) {
    result.why += (result.why.empty() ? "" : " ");
    result.why += "What lies in the folder is not taken: " + deck.hindrance;
  }
  return result;
}

}  // namespace app
