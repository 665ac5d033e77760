#include "app/desk/DeskFindings.h"

#include <algorithm>

#include "app/inspect/LinkCheck.h"
#include "basic/Strings.h"
#include "web/desk/Desk.h"

namespace app {

using json::Json;

namespace {

std::vector<CheckedSource> checkedSources(const DeskSources& sources) {
  std::vector<CheckedSource> checked;
  for (const DeskSource& source : sources.all()) {
    CheckedSource& each = checked.emplace_back();
    each.number = source.number;
    each.description = source.description;
    each.look.columns = source.columns;
    each.look.offered = source.columns;
    each.look.rowCount = source.rows;
    if (source.state == DeskSource::State::Failing) each.look.failure = source.message;
    each.isUnknown = source.state == DeskSource::State::Opening;
  }
  return checked;
}

const char* missingOf(const Finding& finding) {
  if (!finding.column.empty()) return "column";
  return finding.connection.empty() ? "" : "connection";
}

bool mends(const LinkRepair& repair, const Finding& finding) {
  return !finding.connection.empty() && repair.connection == finding.connection &&
         basic::EqualsIgnoreCase(repair.column, finding.column);
}

}  // namespace

void DeskFindings::check(OpenDeck& open) {
  const auto sources = checkedSources(open.sources);
  findings_ = checkLinks(*open.presentation, sources);
  repairs_ = repairsFor(*findings_, sources);
}

void DeskFindings::repair(deck::Application& application, OpenDeck& open, int number,
                          const std::string& choice) {
  if (number < 1 || static_cast<std::size_t>(number) > repairs_.size()) {
    throw web::Refusal(404, "Check the deck again; this has been mended or changed.");
  }
  const LinkRepair repair = repairs_[static_cast<std::size_t>(number) - 1];
  if (std::find(repair.choices.begin(), repair.choices.end(), choice) == repair.choices.end()) {
    throw web::Refusal(409, "'" + choice + "' is none of the choices.");
  }
  mend(application, open, repair, choice);
}

void DeskFindings::mend(deck::Application& application, OpenDeck& open, const LinkRepair& repair,
                        const std::string& choice) {
  application.StartNewUndoEntry(repair.label(choice), {});
  app::repair(*open.presentation, repair, choice);
  open.model->FillConnection(repair.column.empty() ? choice : repair.connection);
  open.slides.takeEdits();
  if (findings_) check(open);
}

Json DeskFindings::toJson(const DeskSlides& slides) const {
  if (!findings_) return nullptr;
  Json json = Json::array();
  for (const Finding& finding : *findings_) {
    json.push_back({{"slide", finding.slide > 0 ? slides.id(finding.slide) : 0},
                    {"shape", finding.shapeId},
                    {"gravity", nameOf(finding.gravity)},
                    {"text", finding.text},
                    {"missing", missingOf(finding)},
                    {"repair", nullptr}});
    for (std::size_t i = 0; i < repairs_.size(); ++i) {
      if (!mends(repairs_[i], finding)) continue;
      json.back()["repair"] = {{"id", i + 1},
                               {"caption", repairs_[i].text()},
                               {"choices", repairs_[i].choices},
                               {"count", repairs_[i].count}};
    }
  }
  return json;
}

}  // namespace app
