#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "opc/Package.h"

/// A deck with a shape of every kind, in which the part that `which` chooses (a letter from 'a') holds
/// `content`. Null for other letters.
std::unique_ptr<opc::Package> hostileDeck(char which, const std::string& content);

/// The shapes on its slide; more when the slide itself is the hostile part.
inline constexpr std::uint32_t LastShapeId = 9;
