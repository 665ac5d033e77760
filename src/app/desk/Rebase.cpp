// Our edits and another version of the deck, compared owner by owner.

#include "app/desk/Rebase.h"

#include <algorithm>
#include <map>
#include <utility>

#include "app/desk/OwnerText.h"
#include "basic/Quotes.h"
#include "model/modTags.h"

namespace app {
namespace {

namespace modTags = LF2000::modTags;

/// Of the system, but for the display type, which is a view.
bool isOurs(const deck::Tag& tag) {
  return modTags::Matches(tag.name, modTags::Prefix) && !modTags::Matches(tag.name, modTags::DisplayType);
}

std::vector<std::pair<std::string, std::string>> sortedTags(const OwnerState& state) {
  std::vector<std::pair<std::string, std::string>> tags;
  for (const deck::Tag& tag : state.tags) {
    if (isOurs(tag)) tags.emplace_back(tag.name, tag.value);
  }
  std::sort(tags.begin(), tags.end());
  return tags;
}

/// Programs that save a deck may order and place its tags anew.
bool haveSameTags(const OwnerState& a, const OwnerState& b) { return sortedTags(a) == sortedTags(b); }

/// Theirs with our tags in place of those of the system.
std::vector<deck::Tag> tagsOnto(const std::vector<deck::Tag>& theirs, const std::vector<deck::Tag>& ours) {
  auto model = std::find_if(theirs.begin(), theirs.end(), isOurs);
  if (model == theirs.end()) model = theirs.begin();
  const std::size_t group = model == theirs.end() ? 0 : model->group;
  std::vector<deck::Tag> tags = theirs;
  std::erase_if(tags, isOurs);
  for (const deck::Tag& tag : ours) {
    if (isOurs(tag)) tags.push_back({tag.name, tag.value, group});
  }
  return tags;
}

bool changesContent(const OwnerChange& edit) {
  const auto& after = edit.after->content;
  if (!after) return false;
  const auto& before = edit.before->content;
  return !before || (before != after && !before->isSame(*after));
}

}  // namespace

Rebase::Rebase(const OwnerChanges& edits, EditLog& theirs) : theirs_(theirs) {
  for (const OwnerChange& edit : edits) add(edit);
}

void Rebase::add(const OwnerChange& edit) {
  const auto theirs = theirs_.inFile(edit.owner);
  std::string name = nameOf(edit.owner, *edit.after, theirs_.presentation());
  if (!theirs) {
    conflicts_.push_back({edit.owner, std::move(name), describe(edit.owner, *edit.after),
                          "is no longer in the deck", true, false});
    disputed_.push_back(edit);
    return;
  }
  const auto differ = [&](const auto& areSame) {
    return !areSame(*edit.before, *edit.after) && !areSame(*edit.before, *theirs) &&
           !areSame(*edit.after, *theirs);
  };
  const auto haveSameName = [](const OwnerState& a, const OwnerState& b) { return a.name == b.name; };
  if (!differ(haveSameTags) && !differ(haveSameName)) {
    clean_.push_back(edit);
    return;
  }
  std::string ours = describe(edit.owner, *edit.after);
  std::string others = describe(edit.owner, *theirs);
  if (edit.after->name != theirs->name) {
    ours += ", called " + basic::InQuotes(edit.after->name);
    others += ", called " + basic::InQuotes(theirs->name);
  }
  if (ours == others) others += ", with other settings";
  conflicts_.push_back({edit.owner, std::move(name), std::move(ours), std::move(others), false, true});
  disputed_.push_back(edit);
}

std::size_t Rebase::kept() const {
  const auto ours = std::count_if(conflicts_.begin(), conflicts_.end(),
                                  [](const EditConflict& each) { return each.takesOurs && !each.isGone; });
  return clean_.size() + static_cast<std::size_t>(ours);
}

void Rebase::decideAs(const Rebase& other) {
  for (EditConflict& conflict : conflicts_) {
    for (const EditConflict& decided : other.conflicts_) {
      if (decided.owner == conflict.owner) conflict.takesOurs = decided.takesOurs;
    }
  }
}

void Rebase::put(const OwnerChange& edit, OwnerChanges& changes) {
  const auto theirs = theirs_.current(edit.owner);
  auto state = std::make_shared<OwnerState>(*theirs);
  if (!haveSameTags(*edit.before, *edit.after)) state->tags = tagsOnto(theirs->tags, edit.after->tags);
  if (edit.before->name != edit.after->name) state->name = edit.after->name;
  if (changesContent(edit)) state->content = edit.after->content;
  if (isLinked(*state)) state->content = nullptr;
  if (isSame(*theirs, *state)) return;
  theirs_.put(edit.owner, state);
  changes.push_back({edit.owner, theirs, theirs_.current(edit.owner)});
}

OwnerChanges Rebase::apply() {
  OwnerChanges changes;
  for (const OwnerChange& edit : clean_) put(edit, changes);
  for (std::size_t i = 0; i < conflicts_.size(); ++i) {
    if (conflicts_[i].takesOurs && !conflicts_[i].isGone) put(disputed_[i], changes);
  }
  std::sort(changes.begin(), changes.end(),
            [](const OwnerChange& a, const OwnerChange& b) { return a.owner < b.owner; });
  return changes;
}

UndoStack::Translate statesIn(EditLog& theirs, EditLog& ours) {
  using State = std::shared_ptr<const OwnerState>;
  // A state that two steps share stays shared.
  auto known = std::make_shared<std::map<State, State>>();
  return [&theirs, &ours, known](const deck::OwnerId& owner, const State& state) -> State {
    if (const auto found = known->find(state); found != known->end()) return found->second;
    const State before = ours.inFile(owner);
    const State now = theirs.inFile(owner);
    if (!before || !now || before->name != now->name || !haveSameTags(*before, *now)) return nullptr;
    if (state == before) return (*known)[state] = now;
    auto translated = std::make_shared<OwnerState>(*state);
    translated->tags = tagsOnto(now->tags, state->tags);
    if (state->content == before->content) translated->content = now->content;
    return (*known)[state] = translated;
  };
}

}  // namespace app
