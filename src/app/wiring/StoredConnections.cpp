#include "app/wiring/StoredConnections.h"

#include <algorithm>

#include "addin/support/modGlobalFunctions.h"
#include "app/wiring/Failure.h"
#include "basic/Error.h"
#include "basic/Strings.h"
#include "model/modTags.h"

namespace app {

std::vector<StoredConnection> storedConnections(deck::Presentation& deck) {
  std::vector<StoredConnection> all;
  LF2000::modTags::ForEachTag(
      *deck.Tags(), LF2000::modTags::Connection, [&](const std::string& number, const std::string& value) {
        StoredConnection stored{number, std::make_shared<LF2000::clsConnection>(), {}};
        stored.connection->ActivePresentationName(deck.FullName());
        stored.connection->ConnectionTagNumber(number);
        try {
          stored.connection->TagString(value);
        } catch (const basic::Error& error) {
          stored.failure = error.description;
        }
        all.push_back(std::move(stored));
      });
  return all;
}

namespace {

/// "001" for "1"; any other text as it is.
std::string threeDigits(const std::string& meant) {
  constexpr std::size_t MostDigits = 3;
  const bool isNumber = !meant.empty() && meant.size() <= MostDigits &&
                        meant.find_first_not_of("0123456789") == std::string::npos;
  return isNumber ? LF2000::modGlobalFunctions::Format000(std::stoi(meant)) : meant;
}

}  // namespace

std::string connectionNumber(deck::Presentation& deck, const std::string& meant) {
  const auto all = storedConnections(deck);
  std::string number = threeDigits(meant);
  std::string described;
  std::string numbers;
  for (const StoredConnection& each : all) {
    if (each.number == number) return number;
    if (!basic::EqualsIgnoreCase(each.connection->ConnectionDescription(), meant)) continue;
    described = each.number;
    numbers += (numbers.empty() ? "" : ", ") + each.number;
  }
  if (described.empty()) failUnknownConnection(deck.FullName(), meant);
  if (described != numbers) {
    fail(deck.FullName() + ": several connections are described as '" + meant + "': " + numbers +
         ". Give the number.");
  }
  return described;
}

std::shared_ptr<LF2000::clsConnection> storedConnection(deck::Presentation& deck, const std::string& number) {
  const auto all = storedConnections(deck);
  const auto found = std::find_if(all.begin(), all.end(),
                                  [&](const StoredConnection& each) { return each.number == number; });
  if (found == all.end()) failUnknownConnection(deck.FullName(), number);
  if (!found->failure.empty()) fail(deck.FullName() + ": connection " + number + ": " + found->failure);
  return found->connection;
}

void failUnknownConnection(const std::string& deck, const std::string& number) {
  fail(deck + ": there is no connection " + number + "; 'lumenfold connection " + deck +
       " list' shows those there are.");
}

std::string connectionTypeName(std::int32_t type) {
  switch (static_cast<LF2000::ConnectionKind>(type)) {
    case LF2000::ConnectionKind::TextFile:
      return "text";
    case LF2000::ConnectionKind::Database:
      return "database";
    case LF2000::ConnectionKind::Excel:
      return "excel";
  }
  return std::to_string(type);
}

}  // namespace app
