#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "web/http/Event.h"
#include "web/show/Show.h"

namespace web {

// Every event that counts carries a sequence number as its id; a stream starts
// with a complete one and then counts up by one. Data are JSON.

// For screens and remote controls:

/// `hello`, without a number: {screen: the name under which it reports its paints, null for a remote
/// control, now: the server's time in ms since 1970}
SharedMessage greetingMessage(const std::optional<std::string>& screen);
/// The data of `picture`: everything. {version, deck (another one: nothing on the screen is the same any
/// more), heartbeat (ms), title, left, top, width, height, transparent, kiosk, blank ("none", "black",
/// "white"), ended, stylesheet, rules (a style sheet, see styleRules()), transition: {kind, direction,
/// throughBlack, duration (ms)}, builds: [{id, isEntrance, kind, direction, duration}], progress: {caption,
/// text, step, maximum} or null, slideCount, began (ms since 1970) or null, at (ms since 1970 by the
/// server's time: all screens show it then; null: at once), current: {index, html} or null, next: likewise}
std::string pictureData(const ScreenState& state, std::string_view version,
                        std::chrono::milliseconds heartbeat);
/// The data of `shapes`: [{slide, id, html}] of those changes that `isShown` picks; with
/// "glides": true where ShapeChange::glides, and with "cells": [[index, html]] in place of "html" where
/// there are ShapeChange::cells.
std::string shapesData(const std::vector<ShapeChange>& changes,
                       const std::function<bool(const ShapeChange&)>& isShown);
/// One of both as an event of a stream.
SharedMessage screenMessage(std::string_view event, std::uint64_t sequence, std::string_view data);

/// The answer of /screen/state/VIEW: {run, sequence, hub: {id}, hubs, picture}. `hubId` is what the hub calls
/// the last message that it has taken; `picture` is pictureData().
std::string stateOfView(std::string_view run, std::uint64_t sequence, const std::optional<std::string>& hubId,
                        const std::vector<std::string>& hubs, std::string_view picture);

// For programs:

/// `state`: what GET /api/v1/state answers.
SharedMessage stateMessage(std::uint64_t sequence, std::string_view stateJson);
/// `values`: [{slide, shapes: [{name, text}]}]
SharedMessage valuesMessage(std::uint64_t sequence, const std::vector<ShapeChange>& changes);
/// `position`: {position (0: no slide), slideCount, blank, ended}
SharedMessage positionMessage(std::uint64_t sequence, const ScreenState& state);

// For both:

/// `end`: {reason: "show" or "server"}. "show": the show is over, the stream goes
/// on; "server": the stream ends here, and the message closes the body.
SharedMessage endMessage(std::uint64_t sequence, std::string_view reason);
/// A comment, and for screens a `beat` event without id, as scripts cannot see
/// comments but must notice when their connection has died.
SharedMessage heartbeatMessage(bool visible);

/// "none", "black", "white"
std::string_view blankName(Blank blank);

/// The style rules of the present moment: which elements carry a mark, withhold their text or are hidden.
std::string styleRules(const ScreenState& state);

/// What GET /screen/time answers: {now: ms since 1970, in fractions}. Screens find by it how their clocks
/// differ.
std::string timeJson(std::chrono::system_clock::time_point now);

/// ms since 1970
std::int64_t epochMilliseconds(std::chrono::system_clock::time_point time);

}  // namespace web
