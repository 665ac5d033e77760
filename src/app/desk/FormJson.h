#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "host/forms.h"
#include "json/Json.h"

namespace app {

/// Gives a picture file an address that pages can ask for; empty when it is not to be shown.
using AddressOf = std::function<std::string(const std::string& path)>;

/// A form as docs/desk-protocol.md describes it, but for its id and what has been handled of its events.
[[nodiscard]] json::Json formJson(const Forms::Form& form, const AddressOf& addressOf);

/// The value of a control's property.
[[nodiscard]] json::Json propertyJson(const Forms::Control& control, const std::string& property,
                                      const AddressOf& addressOf);

/// What a page says that its user did: {"control", "event", "value"}. Throws json::Json::exception for what
/// is none, web::Refusal (400) for an event that there is not.
[[nodiscard]] Forms::Event eventOf(const json::Json& json);

}  // namespace app
