// Our edits and another version of the deck, compared owner by owner.

#include "app/desk/Rebase.h"

#include <algorithm>
#include <map>
#include <optional>
#include <string>
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

using TagValues = std::map<std::string, std::string>;

/// Programs that save a deck may order and place its tags anew.
TagValues valuesOf(const OwnerState& state) {
  TagValues values;
  for (const deck::Tag& tag : state.tags) {
    if (isOurs(tag)) values[tag.name] = tag.value;
  }
  return values;
}

struct Merged {
  std::vector<deck::Tag> tags;
  /// Both sides have changed the same, each to something else.
  bool isDisputed = false;
};

std::optional<std::string> valueOf(const TagValues& values, const std::string& name) {
  const auto found = values.find(name);
  return found == values.end() ? std::nullopt : std::optional(found->second);
}

/// Theirs with these values in place of those of the system, in the order of ours.
std::vector<deck::Tag> tagsOnto(const OwnerState& theirs, const OwnerState& ours, TagValues values) {
  auto model = std::find_if(theirs.tags.begin(), theirs.tags.end(), isOurs);
  if (model == theirs.tags.end()) model = theirs.tags.begin();
  const std::size_t group = model == theirs.tags.end() ? 0 : model->group;
  std::vector<deck::Tag> tags = theirs.tags;
  std::erase_if(tags, isOurs);
  for (const auto* side : {&ours.tags, &theirs.tags}) {
    for (const deck::Tag& tag : *side) {
      if (const auto value = values.extract(tag.name)) tags.push_back({tag.name, value.mapped(), group});
    }
  }
  return tags;
}

bool isOfShape(const deck::OwnerId& owner) { return !owner.isPresentation() && !owner.isSlide(); }

/// What we have made of `before`, put onto what they have made of it. The tags of a shape are one link; those
/// of slides and of the presentation stand each for themselves.
Merged merge(const deck::OwnerId& owner, const OwnerState& before, const OwnerState& ours,
             const OwnerState& theirs, bool takesOurs = true) {
  const TagValues was = valuesOf(before);
  const TagValues mine = valuesOf(ours);
  const TagValues others = valuesOf(theirs);
  TagValues values = others;
  bool isDisputed = false;
  const auto isSettled = [&](const auto& b, const auto& m, const auto& o) {
    const bool isBoth = m != b && o != b && m != o;
    isDisputed = isDisputed || isBoth;
    return m == b || (isBoth && !takesOurs);
  };
  if (isOfShape(owner)) {
    if (!isSettled(was, mine, others)) values = mine;
  } else {
    TagValues names = was;
    names.insert(mine.begin(), mine.end());
    for (const auto& [name, unused] : names) {
      const auto value = valueOf(mine, name);
      if (isSettled(valueOf(was, name), value, valueOf(others, name))) continue;
      if (value) {
        values[name] = *value;
      } else {
        values.erase(name);
      }
    }
  }
  if (values == others) return {theirs.tags, isDisputed};
  return {tagsOnto(theirs, ours, std::move(values)), isDisputed};
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
  const bool isNameDisputed = edit.before->name != edit.after->name && edit.before->name != theirs->name &&
                              edit.after->name != theirs->name;
  if (!isNameDisputed && !merge(edit.owner, *edit.before, *edit.after, *theirs).isDisputed) {
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

void Rebase::put(const OwnerChange& edit, bool takesOurs, OwnerChanges& changes) {
  const auto theirs = theirs_.current(edit.owner);
  auto state = std::make_shared<OwnerState>(*theirs);
  state->tags = merge(edit.owner, *edit.before, *edit.after, *theirs, takesOurs).tags;
  if (takesOurs && edit.before->name != edit.after->name) state->name = edit.after->name;
  if (takesOurs && changesContent(edit)) state->content = edit.after->content;
  if (isLinked(*state)) state->content = nullptr;
  if (isSame(*theirs, *state)) return;
  theirs_.put(edit.owner, state);
  changes.push_back({edit.owner, theirs, theirs_.current(edit.owner)});
}

OwnerChanges Rebase::apply() {
  OwnerChanges changes;
  for (const OwnerChange& edit : clean_) put(edit, /*takesOurs=*/true, changes);
  for (std::size_t i = 0; i < conflicts_.size(); ++i) {
    const bool isShape = isOfShape(conflicts_[i].owner);
    const bool isTheirs = conflicts_[i].isGone || (isShape && !conflicts_[i].takesOurs);
    if (!isTheirs) put(disputed_[i], conflicts_[i].takesOurs, changes);
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
    if (!before || !now || before->name != now->name) return nullptr;
    if (state == before) return (*known)[state] = now;
    Merged merged = merge(owner, *before, *state, *now);
    if (merged.isDisputed) return nullptr;
    auto translated = std::make_shared<OwnerState>(*state);
    translated->tags = std::move(merged.tags);
    if (state->content == before->content) translated->content = now->content;
    return (*known)[state] = translated;
  };
}

}  // namespace app
