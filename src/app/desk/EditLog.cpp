// What an author's edits have changed of which owner, found by listening.

#include "app/desk/EditLog.h"

#include <algorithm>
#include <utility>

#include "model/modTags.h"
#include "presentationml/ShapeNode.h"

namespace app {
namespace {

namespace modTags = LF2000::modTags;

bool isDisplayType(const deck::Tag& tag) { return modTags::Matches(tag.name, modTags::DisplayType); }

deck::TagList& tagsOf(deck::Presentation& presentation, const deck::OwnerPlace& place) {
  return presentation.tagStore().of(*place.part, place.node);
}

/// The tags with the display type as it is now, if it is stored now: where it stood, or at the end of others
/// of the system.
std::vector<deck::Tag> withDisplayTypeOf(const std::vector<deck::Tag>& now, std::vector<deck::Tag> tags) {
  const auto current = std::find_if(now.begin(), now.end(), isDisplayType);
  if (current == now.end()) return tags;
  const auto isOurs = [](const deck::Tag& tag) { return modTags::Matches(tag.name, modTags::Prefix); };
  const auto old = std::find_if(tags.begin(), tags.end(), isDisplayType);
  if (old != tags.end()) {
    *old = *current;
  } else if (std::any_of(tags.begin(), tags.end(), isOurs)) {
    tags.push_back(*current);
  }
  return tags;
}

/// While it lives, what is heard is our own doing.
class Putting {
 public:
  explicit Putting(bool& flag) : flag_(flag) { flag_ = true; }
  ~Putting() { flag_ = false; }
  Putting(const Putting&) = delete;
  Putting& operator=(const Putting&) = delete;

 private:
  bool& flag_;
};

}  // namespace

bool isLinked(const OwnerState& state) {
  return std::any_of(state.tags.begin(), state.tags.end(),
                     [](const deck::Tag& tag) { return modTags::IsColumnTag(tag.name); });
}

bool isSame(const OwnerState& a, const OwnerState& b) {
  if (a.name != b.name) return false;
  const bool haveContent = a.content && b.content && a.content != b.content;
  if (haveContent && !a.content->isSame(*b.content)) return false;
  auto one = a.tags.begin();
  auto other = b.tags.begin();
  while (true) {
    one = std::find_if_not(one, a.tags.end(), isDisplayType);
    other = std::find_if_not(other, b.tags.end(), isDisplayType);
    if (one == a.tags.end() || other == b.tags.end()) return one == a.tags.end() && other == b.tags.end();
    if (*one++ != *other++) return false;
  }
}

EditLog::EditLog(std::shared_ptr<deck::Presentation> presentation) : presentation_(std::move(presentation)) {
  presentation_->addListener(static_cast<deck::EditListener&>(*this));
}

EditLog::~EditLog() { presentation_->removeListener(static_cast<deck::EditListener&>(*this)); }

void EditLog::touch(const deck::OwnerId& owner) {
  if (!isPutting_ && touched_.insert(owner).second) static_cast<void>(record(owner));
}

EditLog::Record* EditLog::record(const deck::OwnerId& owner) {
  const auto known = records_.find(owner);
  if (known != records_.end()) return &known->second;
  if (!presentation_->owners().find(owner)) return nullptr;
  const auto state = read(owner, nullptr);
  return &records_.emplace(owner, Record{state, state}).first->second;
}

std::shared_ptr<const OwnerState> EditLog::current(const deck::OwnerId& owner) {
  const Record* known = record(owner);
  return known == nullptr ? nullptr : known->current;
}

std::shared_ptr<const OwnerState> EditLog::inFile(const deck::OwnerId& owner) {
  const Record* known = record(owner);
  return known == nullptr ? nullptr : known->inFile;
}

std::shared_ptr<const OwnerState> EditLog::read(const deck::OwnerId& owner, const OwnerState* known) {
  auto state = std::make_shared<OwnerState>();
  const auto place = presentation_->owners().find(owner);
  state->tags = tagsOf(*presentation_, *place).all();
  if (!presentationml::isShape(place->node)) return state;
  state->name = presentationml::shapeName(place->node);
  if (isLinked(*state)) return state;
  auto content = std::make_shared<deck::OwnContent>(*presentation_, *place);
  state->content = known != nullptr && known->content && known->content->isSame(*content)
                       ? known->content
                       : std::move(content);
  return state;
}

OwnerChanges EditLog::take() {
  OwnerChanges changes;
  for (const deck::OwnerId& owner : std::exchange(touched_, {})) {
    Record& record = records_.at(owner);
    auto now = read(owner, record.current.get());
    if (!isSame(*record.current, *now)) changes.push_back({owner, record.current, now});
    record.current = std::move(now);
    compare(owner, record);
  }
  return changes;
}

bool EditLog::put(const deck::OwnerId& owner, const std::shared_ptr<const OwnerState>& state) {
  Record* known = record(owner);
  if (known == nullptr) return false;
  const auto place = presentation_->owners().find(owner);
  const Putting putting(isPutting_);
  deck::TagList& list = tagsOf(*presentation_, *place);
  list.assign(withDisplayTypeOf(list.all(), state->tags));
  if (presentationml::isShape(place->node)) {
    presentation_->restoreName(place->slide, place->node, state->name);
    if (state->content && state->content != known->current->content) {
      state->content->putBack(*presentation_, *place);
    }
  }
  presentation_->Saved(false);
  touched_.erase(owner);
  known->current = state;
  compare(owner, *known);
  return true;
}

void EditLog::compare(const deck::OwnerId& owner, const Record& record) {
  if (isSame(*record.inFile, *record.current)) {
    different_.erase(owner);
  } else {
    different_.insert(owner);
  }
}

OwnerChanges EditLog::unsavedChanges() const {
  OwnerChanges changes;
  for (const deck::OwnerId& owner : different_) {
    const Record& record = records_.at(owner);
    changes.push_back({owner, record.inFile, record.current});
  }
  return changes;
}

void EditLog::noteSaved() {
  for (const deck::OwnerId& owner : different_) {
    Record& record = records_.at(owner);
    record.inFile = record.current;
  }
  different_.clear();
}

}  // namespace app
