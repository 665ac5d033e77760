#pragma once

#include <string>

#include "app/desk/EditLog.h"

namespace app {

/// What an owner of tags is set to, in words for people and without passwords: "'Price': column Price, row 1,
/// connection 001", "The deck: connections 001 Today, 002 Offer".
[[nodiscard]] std::string describe(const deck::OwnerId& owner, const OwnerState& state);

}  // namespace app
