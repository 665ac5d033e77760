// Whose turn it is of the decks of a folder, and how one takes the place of another.

#include "app/player/Player.h"

#include <algorithm>
#include <utility>

#include "app/wiring/NoQuestions.h"
#include "basic/Conversion.h"
#include "basic/Error.h"
#include "basic/Strings.h"
#include "host/services.h"

namespace app {

namespace {

/// Milliseconds until what could not be shown is tried again.
constexpr std::int32_t Pause = 5000;

const FolderDeck* find(const std::vector<FolderDeck>& decks, const std::string& name) {
  const auto found = std::find_if(decks.begin(), decks.end(), [&](const FolderDeck& deck) {
    return basic::EqualsIgnoreCase(deck.name, name);
  });
  return found == decks.end() ? nullptr : &*found;
}

FolderDeck fillerOf(const std::string& path) {
  FolderDeck filler;
  filler.isOn = true;
  filler.file = filler.path = path;
  filler.version = "when empty";
  return filler;
}

}  // namespace

Player::Player(AddInHost& host, platform::EventLoop& loop, Options options)
    : host_(host),
      loop_(loop),
      options_(std::move(options)),
      stage_(host, loop, nullptr, stageOptions(), this),
      waking_(loop.CreateTimer([this] {
        waking_->Enabled(false);
        isResting_ = false;
        decide();
      })),
      self_(std::make_shared<Player*>(this)) {
  if (!options_.whenEmpty.empty()) filler_ = fillerOf(options_.whenEmpty);
}

/// All players of the folder have their screens change at the same moments.
Stage::Options Player::stageOptions() {
  Stage::Options stage = options_.stage;
  if (!options_.isSynchronous) return stage;
  stage.live.moment = [this] {
    return std::chrono::system_clock::time_point() + TimeToPrepare +
           std::chrono::milliseconds(due_.value_or(options_.now()));
  };
  return stage;
}

Player::~Player() { *self_ = nullptr; }

void Player::begin(std::function<void()> onEnd) {
  onEnd_ = std::move(onEnd);
  stage_.begin(std::nullopt, [this] {
    isOn_ = false;
    waking_->Enabled(false);
    onEnd_();
  });
  isOn_ = true;
  decide();
}

void Player::take(std::vector<FolderDeck> decks, std::string trouble) {
  noteWhereTurnsStand(decks);
  decks_ = std::move(decks);
  trouble_ = std::move(trouble);
  std::erase_if(known_, [this](const auto& known) {
    if (filler_ && known.first == idOf(*filler_)) return false;
    return std::none_of(decks_.begin(), decks_.end(),
                        [&](const FolderDeck& deck) { return idOf(deck) == known.first; });
  });
  isResting_ = false;
  decide();
}

void Player::shutDown() {
  isOn_ = false;
  waking_->Enabled(false);
  stage_.shutDown();
}

bool Player::wentThrough() {
  if (!onShow_ || !isOn_) return false;
  decideSoon();
  if (options_.isSynchronous) return true;
  const auto others = playable();
  isThrough_ = others.size() > 1 || (others.size() == 1 && !isOnShow(others.front()));
  return isThrough_;
}

std::optional<std::string> Player::objection() const {
  if (options_.isSynchronous) return "The show follows the clock, as --synchronous says.";
  if (filler_ && isOnShow(*filler_)) return "No deck is on but the one for that case.";
  return std::nullopt;
}

void Player::decideSoon() {
  loop_.post([self = self_] {
    if (*self != nullptr) (*self)->decide();
  });
}

void Player::decide() {
  if (isDeciding_) {
    isAgain_ = true;
    return;
  }
  isDeciding_ = true;
  do {
    isAgain_ = false;
    if (!isOn_) break;
    if (options_.isSynchronous) {
      decideByTime();
      due_.reset();
    } else {
      decideByTurn();
    }
  } while (isAgain_);
  isDeciding_ = false;
}

std::vector<FolderDeck> Player::playable() const {
  std::vector<FolderDeck> playable;
  std::copy_if(decks_.begin(), decks_.end(), std::back_inserter(playable), [this](const FolderDeck& deck) {
    const auto known = known_.find(idOf(deck));
    return deck.isOn && (known == known_.end() || known->second.broken.empty());
  });
  return playable;
}

/// Of all decks, so that one that is not on now keeps its place in the order.
FolderDeck Player::following(const std::vector<FolderDeck>& playable) const {
  const FolderDeck* before = find(decks_, turn_);
  const auto first = static_cast<std::size_t>(before == nullptr ? 0 : before - decks_.data() + 1);
  for (std::size_t step = 0; step < decks_.size(); ++step) {
    const FolderDeck& deck = decks_[(first + step) % decks_.size()];
    if (find(playable, deck.name) != nullptr) return deck;
  }
  return playable.front();
}

/// A deck that is gone leaves its turn to the one that stood before it.
void Player::noteWhereTurnsStand(const std::vector<FolderDeck>& decks) {
  const FolderDeck* last = find(decks_, turn_);
  if (last == nullptr) return;
  for (const FolderDeck* deck = last;; --deck) {
    turn_ = deck->name;
    if (find(decks, turn_) != nullptr) return;
    if (deck == decks_.data()) break;
  }
  turn_.clear();
}

void Player::decideByTurn() {
  const std::vector<FolderDeck> decks = playable();
  if (decks.empty() || isResting_) return rest();
  const FolderDeck* same = onShow_ ? find(decks, onShow_->deck.name) : nullptr;
  if (same != nullptr && same->version != onShow_->deck.version) {
    if (prepare(*same)) show(showOptions(), true);
    return;
  }
  if (same == nullptr && passed_ >= decks.size()) {
    passed_ = 0;
    isResting_ = true;
    wakeIn(Pause);
    return rest();
  }
  const FolderDeck next = following(decks);
  if (!isOnShow(next)) {
    if (prepare(next) && (same == nullptr || isThrough_)) show(showOptions(), false);
    return;
  }
  // Nobody else can be shown.
  if (stage_.isEmpty() && filler_) {
    isResting_ = true;
    wakeIn(Pause);
    return rest();
  }
  letGoOfPrepared();
  turn_ = next.name;
  passed_ = 0;
  if (std::exchange(isThrough_, false)) static_cast<void>(stage_.first());
}

void Player::decideByTime() {
  const std::vector<FolderDeck> decks = playable();
  if (decks.empty()) return rest();
  if (!areTimesKnown(decks)) return;
  std::vector<TimedDeck> times;
  times.reserve(decks.size());
  for (const FolderDeck& deck : decks) times.push_back(known_[idOf(deck)].times);
  const std::int64_t now = options_.now();
  const auto place = synchronousPlace(times, now);
  if (!place) return rest();
  due_ = now + place->remaining - place->slide.milliseconds;
  // Clocks are set, and machines sleep.
  constexpr std::int64_t LongestSleep = 500;
  wakeIn(std::min(place->remaining, LongestSleep));

  const FolderDeck& due = decks[place->deck];
  if (std::exchange(timeOf_, idOf(due)) != timeOf_) absent_.clear();
  if (isOnShow(due) && stage_.isEmpty()) absent_.insert(idOf(due));
  std::size_t stands = place->deck;
  for (std::size_t step = 0; step < decks.size() && absent_.contains(idOf(decks[stands])); ++step) {
    stands = (stands + 1) % decks.size();
  }
  const FolderDeck& deck = decks[stands];
  if (absent_.contains(idOf(deck))) return rest();
  const TimedSlide slide = stands == place->deck ? place->slide : times[stands].front();
  if (isOnShow(deck)) {
    const auto stage = stage_.place();
    if (stage && stage->blank == deck::Blank::None) stage_.moveTo(slide.place);
    const FolderDeck& next = decks[(stands + 1) % decks.size()];
    if (!isOnShow(next) && !absent_.contains(idOf(next))) prepare(next);
    return;
  }
  if (!prepare(deck)) return;
  deck::SlideShowOptions how = showOptions();
  how.place->slide = slide.slide;
  if (show(how, false)) stage_.moveTo(slide.place);
}

bool Player::areTimesKnown(const std::vector<FolderDeck>& playable) {
  for (const FolderDeck& deck : playable) {
    if (known_[idOf(deck)].isRead) continue;
    read(deck);
    return false;
  }
  return true;
}

bool Player::prepare(const FolderDeck& deck) {
  if (prepared_ && isSame(prepared_->deck, deck)) return true;
  const auto isRead = [&] { return read_ && isSame(read_->deck, deck); };
  if (!isRead()) read(deck);
  if (!isRead()) return false;
  letGoOfPrepared();
  const ReadDeck ready = std::move(*std::exchange(read_, std::nullopt));
  const bool isFiller = filler_ && isSame(*filler_, deck);
  auto kept = isFiller ? nullptr : options_.keep(deck);
  if (!kept && !isFiller) {
    passOver(deck, "The files of " + deck.name + " are gone.");
    return false;
  }
  try {
    // Its sources are opened while the show before goes on.
    const NoQuestions unasked([this](const std::string& text) { problems_.tell(text); });
    prepared_ = OpenDeck{deck, host_.application().open(ready.presentation), std::move(kept)};
  } catch (const basic::Error& error) {
    host_.application().close(ready.presentation);
    passOver(deck, error.description);
    return false;
  }
  return true;
}

void Player::read(const FolderDeck& deck) {
  if (reading_ == idOf(deck)) return;
  reading_ = idOf(deck);
  options_.read(deck, showOptions(), [self = self_, deck](DeckRead read) {
    if (*self != nullptr) (*self)->hasRead(deck, std::move(read));
  });
}

void Player::hasRead(const FolderDeck& deck, DeckRead read) {
  // Another one may be wanted by now.
  const bool isWanted = reading_ == idOf(deck);
  if (isWanted) reading_.clear();
  Known& known = known_[idOf(deck)];
  known.isRead = true;
  known.times = std::move(read.times);
  known.broken = std::move(read.why);
  if (read.deck) {
    if (isWanted) read_ = ReadDeck{deck, std::move(read.deck)};
  } else {
    problems_.tell(deck.path + " is not shown: " + known.broken);
  }
  decide();
}

void Player::letGoOfPrepared() {
  if (const auto prepared = std::exchange(prepared_, std::nullopt)) {
    host_.application().close(prepared->presentation);
  }
}

bool Player::show(const deck::SlideShowOptions& how, bool goesOn) {
  OpenDeck next = std::move(*std::exchange(prepared_, std::nullopt));
  const FolderDeck deck = next.deck;
  try {
    const NoQuestions unasked([this](const std::string& text) { problems_.tell(text); });
    stage_.follow(next.presentation, how, goesOn);
  } catch (const basic::Error& error) {
    passOver(deck, error.description);
    return false;
  }
  onShow_ = std::move(next);
  turn_ = deck.name;
  passed_ = 0;
  isThrough_ = false;
  known_[idOf(deck)].passedOver.clear();
  ++changes_;
  isAgain_ = true;
  return true;
}

void Player::passOver(const FolderDeck& deck, const std::string& why) {
  problems_.tell(deck.path + " is passed over: " + why);
  known_[idOf(deck)].passedOver = why;
  absent_.insert(idOf(deck));
  turn_ = deck.name;
  ++passed_;
  isAgain_ = true;
}

void Player::rest() {
  isThrough_ = false;
  if (filler_ && known_[idOf(*filler_)].broken.empty()) {
    if (isOnShow(*filler_) || showFiller()) return;
    Known& known = known_[idOf(*filler_)];
    // Passed over once, it is not tried over and over.
    if (known.broken.empty()) known.broken = known.passedOver;
    return;
  }
  letGoOfPrepared();
  stage_.clear();
  onShow_.reset();
}

bool Player::showFiller() {
  if (!prepare(*filler_)) return false;
  deck::SlideShowOptions how = showOptions();
  how.isPaced = true;
  how.place->slide = prepared_->presentation->slideCount();
  how.place->isChosen = true;
  const std::string turn = turn_;
  const bool isShown = show(how, false);
  turn_ = turn;
  return isShown;
}

deck::SlideShowOptions Player::showOptions() const {
  deck::SlideShowOptions show = stage_.showOptions();
  show.loop = true;
  show.isPaced = options_.isSynchronous;
  show.place = deck::ShowPlace();
  return show;
}

bool Player::isOnShow(const FolderDeck& deck) const { return onShow_ && isSame(onShow_->deck, deck); }

void Player::wakeIn(std::int64_t milliseconds) {
  waking_->Enabled(false);
  waking_->Interval(static_cast<std::int32_t>(milliseconds));
  waking_->Enabled(true);
}

web::DecksHealth Player::decks() const {
  web::DecksHealth health{{}, changes_, trouble_};
  for (const FolderDeck& deck : decks_) health.decks.push_back(healthOf(deck));
  return health;
}

web::DeckHealth Player::healthOf(const FolderDeck& deck) const {
  using State = web::DeckHealth::State;
  web::DeckHealth health;
  health.name = deck.name;
  health.why = deck.why;
  const auto known = known_.find(idOf(deck));
  if (!deck.isOn) {
    health.state = deck.file.empty() ? State::Refused : State::NotNow;
    return health;
  }
  const auto change = LF2000::modSchedule::NextChange(deck.schedule, host::Current().clock->Now());
  if (change) health.until = basic::StoredDate(*change);
  if (known != known_.end() && !known->second.broken.empty()) {
    health.state = State::Refused;
    health.why = known->second.broken;
  } else if (isOnShow(deck)) {
    health.state = State::OnShow;
  } else if (known != known_.end() && !known->second.passedOver.empty()) {
    health.why = known->second.passedOver;
  }
  return health;
}

}  // namespace app
