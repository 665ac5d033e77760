#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "web/publish/Publisher.h"
#include "web/show/Screens.h"
#include "web/show/Show.h"

namespace web {

class Broadcast;

/// How well something does, from what says nothing about the show to what is wrong.
enum class Level { Idle, Good, Warning, Bad };

struct Judgement {
  Level level = Level::Good;
  /// The word for it in the JSON; docs/interface.md explains them.
  std::string_view state;
};

Judgement judged(const ConnectionHealth& connection);
/// One that stands is wrong when it does for a while: data may have been read half written.
Judgement judged(const StandingSlide& slide);
Judgement judged(const DeckHealth& deck);
/// What the screens that follow the show are given.
Judgement judged(const ScreenState& state);
/// `newest` is the number of the newest event for the screen's view. `waits` is since when the oldest event
/// waits that it has not painted; nothing when that was too long ago to be known.
Judgement judged(const Screens::Screen& screen, std::uint64_t newest,
                 std::optional<Screens::Clock::time_point> waits, Screens::Clock::time_point now);

/// A screen at a hub is judged by how far the show was when it last reported.
Judgement judged(const Screens::Course& course, const Screens::Screen& screen);
/// One of several nodes of a hub that is away is no harm yet; `isReplaced`: another one takes messages.
Judgement judged(const Publisher::Node& node, bool isReplaced);

/// A known screen that is not there.
Judgement judged(const Screens::Missing& screen, Screens::Clock::time_point now);

/// A message without the folders of the files that it names.
std::string withoutFolders(std::string_view text);

/// The answer of /api/v1/status: how the show, its connections, slides that stand and its screens do, each
/// with a judgement, for the page that people look at. It names no folders.
std::string statusJson(const Health& health, const ScreenState& state, const Broadcast& broadcast);

}  // namespace web
