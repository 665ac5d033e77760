#pragma once

#include <memory>
#include <string>
#include <vector>

#include "connections/clsConnection.h"
#include "deck/objects/Presentation.h"

namespace app {

/// A connection as its tag describes it, not opened. One that cannot be read
/// comes with its failure.
struct StoredConnection {
  std::string number;
  std::shared_ptr<LF2000::clsConnection> connection;
  std::string failure;
};

/// All of a deck, in the order of their tags.
std::vector<StoredConnection> storedConnections(deck::Presentation& deck);

/// The number of the connection that an author means: by its number, with or without zeros in front, or by
/// its description in any case of letters. Throws when the deck has none such, or several.
std::string connectionNumber(deck::Presentation& deck, const std::string& meant);

/// The one of that number; throws when there is none or it cannot be read.
std::shared_ptr<LF2000::clsConnection> storedConnection(deck::Presentation& deck, const std::string& number);

[[noreturn]] void failUnknownConnection(const std::string& deck, const std::string& number);

/// "text", "database", "excel"; the number of any other type.
std::string connectionTypeName(std::int32_t type);

}  // namespace app
