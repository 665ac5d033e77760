#include "app/desk/MissingColumns.h"

#include <vector>

#include "basic/Strings.h"

namespace app {

std::map<MissingColumns::Key, LinkRepair> MissingColumns::find(const OpenDeck& open) {
  std::map<Key, LinkRepair> found;
  for (int slide = 1; slide <= open.slides.count(); ++slide) {
    for (const LinkedShape& link : open.slides.links(slide)) {
      if (!open.sources.missesColumn(link)) continue;
      LinkRepair& repair = found[{link.connection, basic::UCase(link.column)}];
      if (repair.count++ > 0) continue;
      const DeskSource& source = *open.sources.find(link.connection);
      repair.connection = source.number;
      repair.description = source.description;
      repair.column = link.column;
      repair.choices = choicesFor(link.column, source.columns);
    }
  }
  return found;
}

void MissingColumns::look(const OpenDeck& open) {
  const auto missing = find(open);
  std::erase_if(told_, [&](const auto& entry) {
    const bool isBack = !missing.contains(entry.first);
    if (isBack) notices_.dismiss(entry.second.notice);
    return isBack;
  });
  for (const auto& [key, repair] : missing) {
    const auto [entry, isNew] = told_.try_emplace(key);
    Told& told = entry->second;
    // What was put away is not said again for another shape.
    if (!isNew && (told.text == repair.text() || !notices_.isTold(told.notice))) continue;
    told = {tell(repair, told.notice), repair.text()};
  }
}

int MissingColumns::tell(const LinkRepair& repair, int notice) {
  std::vector<Notices::Action> actions;
  if (!repair.choices.empty()) {
    const std::string& likest = repair.choices.front();
    actions.push_back({"use", repair.label(likest),
                       [mend = around_.mend, repair] { mend(repair, repair.choices.front()); }});
  }
  actions.push_back({"check", "Choose another…", around_.check, /*isKept=*/true});
  return notices_.tellAgain(notice, Notices::Level::Warning, repair.text(), {}, std::move(actions));
}

}  // namespace app
