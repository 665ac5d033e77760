#pragma once

namespace loaded {

/// Takes out of the run what cannot run through the module; where that is the one that is delivered, leaves
/// in what runs with it. False, with a word on the standard error, when a list names what is not there.
[[nodiscard]] bool choose(bool isDelivered);

}  // namespace loaded
