#include "app/inspect/LinkRepair.h"

#include <algorithm>

#include "basic/Counted.h"
#include "basic/Quotes.h"
#include "basic/Strings.h"
#include "model/modRelink.h"

namespace app {

namespace {

std::vector<std::string> choicesFor(const Finding& finding, const std::vector<CheckedSource>& sources) {
  std::vector<std::string> choices;
  if (finding.column.empty()) {
    for (const CheckedSource& source : sources) choices.push_back(source.number);
    return choices;
  }
  const auto source = std::find_if(sources.begin(), sources.end(), [&](const CheckedSource& each) {
    return each.number == finding.connection;
  });
  if (source == sources.end()) return choices;
  choices = source->look.columns;
  choices.insert(choices.begin(), "");
  return LF2000::modRelink::ByLikeness(finding.column, choices);
}

}  // namespace

std::string LinkRepair::text() const {
  const std::string used = basic::Counted(count, "shape") + (count == 1 ? " uses it." : " use it.");
  if (column.empty()) return "The deck has no connection " + connection + ". " + used;
  return "Column " + basic::InQuotes(column) + " is gone from " + connection + ". " + used;
}

std::string LinkRepair::label(const std::string& choice) const {
  return "Use " + choice + " for " + basic::Counted(count, "shape");
}

std::vector<LinkRepair> repairsFor(const Findings& findings, const std::vector<CheckedSource>& sources) {
  std::vector<LinkRepair> repairs;
  for (const Finding& finding : findings) {
    if (finding.connection.empty()) continue;
    const auto known = std::find_if(repairs.begin(), repairs.end(), [&](const LinkRepair& repair) {
      return repair.connection == finding.connection &&
             basic::EqualsIgnoreCase(repair.column, finding.column);
    });
    if (known != repairs.end()) {
      ++known->count;
      continue;
    }
    repairs.push_back({finding.connection, finding.column, 1, choicesFor(finding, sources)});
  }
  std::erase_if(repairs, [](const LinkRepair& repair) { return repair.choices.empty(); });
  return repairs;
}

void repair(deck::Presentation& deck, const LinkRepair& repair, const std::string& choice) {
  using namespace LF2000;
  const auto links = modRelink::FindLinks(deck, repair.connection, repair.column);
  if (repair.column.empty()) {
    modRelink::Relink(links, choice);
  } else {
    modRelink::Relink(links, repair.connection, choice);
  }
}

}  // namespace app
