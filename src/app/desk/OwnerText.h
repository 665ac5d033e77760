#pragma once

#include <string>

#include "app/desk/EditLog.h"

namespace app {

/// What an owner of tags is called: "'Price' on slide 2", "Slide 2", "The deck". `deck` tells where the slide
/// stands.
[[nodiscard]] std::string nameOf(const deck::OwnerId& owner, const OwnerState& state,
                                 const deck::Presentation& deck);
/// What it is set to, in words for people and without passwords: "column Price, row 1, connection 001",
/// "connections 001 Today, 002 Offer".
[[nodiscard]] std::string describe(const deck::OwnerId& owner, const OwnerState& state);

}  // namespace app
