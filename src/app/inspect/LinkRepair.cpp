#include "app/inspect/LinkRepair.h"

#include <algorithm>

#include "basic/Counted.h"
#include "basic/Quotes.h"
#include "basic/Strings.h"
#include "model/modRelink.h"

namespace app {

namespace {

const CheckedSource* sourceOf(const std::string& number, const std::vector<CheckedSource>& sources) {
  const auto source = std::find_if(sources.begin(), sources.end(),
                                   [&](const CheckedSource& each) { return each.number == number; });
  return source == sources.end() ? nullptr : &*source;
}

LinkRepair repairFor(const Finding& finding, const std::vector<CheckedSource>& sources) {
  LinkRepair repair;
  repair.connection = finding.connection;
  repair.column = finding.column;
  repair.count = 1;
  if (finding.column.empty()) {
    for (const CheckedSource& source : sources) repair.choices.push_back(source.number);
  } else if (const CheckedSource* source = sourceOf(finding.connection, sources)) {
    repair.description = source->description;
    repair.choices = choicesFor(finding.column, source->look.columns);
  }
  return repair;
}

}  // namespace

std::vector<std::string> choicesFor(const std::string& column, std::vector<std::string> columns) {
  columns.insert(columns.begin(), "");  // columns count from 1 there
  return LF2000::modRelink::ByLikeness(column, columns);
}

std::string LinkRepair::text() const {
  const std::string used = basic::Counted(count, "shape") + (count == 1 ? " uses it." : " use it.");
  if (column.empty()) return "The deck has no connection " + connection + ". " + used;
  const std::string from = connection + (description.empty() ? "" : " (" + description + ")");
  return "Column " + basic::InQuotes(column) + " is gone from connection " + from + ". " + used;
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
    repairs.push_back(repairFor(finding, sources));
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
