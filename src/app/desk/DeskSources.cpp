#include "app/desk/DeskSources.h"

#include <algorithm>

#include "app/wiring/StoredConnections.h"
#include "basic/Conversion.h"
#include "basic/Format.h"
#include "basic/Names.h"
#include "basic/Quotes.h"
#include "connections/SourceKind.h"
#include "host/services.h"

namespace app {

namespace {

DeskSource::State stateOf(const LF2000::clsConnection& connection) {
  const auto& readings = connection.Readings();
  if (readings.IsFailing) {
    return readings.Deliveries > 0 ? DeskSource::State::Stale : DeskSource::State::Failing;
  }
  return readings.Deliveries > 0 ? DeskSource::State::Fresh : DeskSource::State::Opening;
}

std::string kindOf(const LF2000::clsConnection& connection) {
  if (connection.IsSample()) return "sample";
  const bool isWorkbook =
      connection.ConnectionType() == static_cast<std::int32_t>(LF2000::ConnectionKind::Excel);
  return isWorkbook ? "workbook" : connectionTypeName(connection.ConnectionType());
}

/// Files are looked at every second.
std::string askedOf(const LF2000::clsConnection& connection) {
  constexpr double second = 1000;
  const bool isDatabase =
      connection.ConnectionType() == static_cast<std::int32_t>(LF2000::ConnectionKind::Database);
  const double rate = isDatabase ? connection.RecordsetRefreshRate() : second;
  if (rate <= 0) return "when it is opened";
  if (rate == second) return "every second";
  return rate < second ? "every " + basic::CStr(rate) + " ms" : "every " + basic::CStr(rate / second) + " s";
}

}  // namespace

bool DeskSource::hasColumn(std::string_view name) const { return basic::HasName(columns, name); }

void DeskSources::look() {
  all_.clear();
  std::map<std::string, Seen> before = std::exchange(seen_, {});
  for (const auto& connection : model_->Connections()) {
    const std::string& number = connection->ConnectionTagNumber();
    const auto known = before.find(number);
    if (known != before.end() && known->second.connection.lock() == connection) {
      seen_.insert(before.extract(known));
    }
    all_.push_back(describe(connection));
  }
}

DeskSource DeskSources::describe(const std::shared_ptr<LF2000::clsConnection>& connection) {
  constexpr std::int64_t second = 1000;
  const host::Services& services = host::Current();
  const std::int64_t now = services.clock->TickCount();
  const auto& readings = connection->Readings();

  DeskSource source;
  source.number = connection->ConnectionTagNumber();
  source.description = connection->ConnectionDescription();
  source.kind = kindOf(*connection);
  source.source = LF2000::SourceText(*connection);
  source.state = app::stateOf(*connection);
  if (!connection->IsSample()) source.asked = askedOf(*connection);
  source.version = connection->DataVersion();
  if (readings.IsFailing) source.message = readings.LastError;
  // Of one that is being filled nothing can be asked without waiting.
  if (connection->RecordsetReady()) {
    source.columns = connection->Columns();
    source.columns.erase(source.columns.begin());
    source.rows = static_cast<std::int64_t>(connection->RecordCount());
  }

  const auto [entry, isNew] = seen_.try_emplace(source.number);
  Seen& seen = entry->second;
  if (isNew || seen.state != source.state) seen.since = now;
  if (seen.deliveries != readings.Deliveries) {
    seen.read = basic::Format(services.clock->Now(), "hh:nn:ss");
  }
  seen.connection = connection;
  seen.state = source.state;
  seen.deliveries = readings.Deliveries;
  source.read = seen.read;
  if (source.state != DeskSource::State::Fresh) source.seconds = (now - seen.since) / second;
  return source;
}

const DeskSource* DeskSources::find(std::string_view number) const {
  const auto found =
      std::find_if(all_.begin(), all_.end(), [&](const DeskSource& each) { return each.number == number; });
  return found == all_.end() ? nullptr : &*found;
}

bool DeskSources::missesColumn(const LinkedShape& link) const {
  const auto type = static_cast<LF2000::SourceType>(link.sourceType);
  if (type == LF2000::SourceType::Clock || type == LF2000::SourceType::Graph) return false;
  const DeskSource* source = find(link.connection);
  return source != nullptr && !source->columns.empty() && !source->hasColumn(link.column);
}

LinkState DeskSources::stateOf(const LinkedShape& link) const {
  if (static_cast<LF2000::SourceType>(link.sourceType) == LF2000::SourceType::Clock) return {};
  const DeskSource* source = find(link.connection);
  if (source == nullptr) return {LinkState::Kind::Broken, "There is no connection " + link.connection + "."};
  if (missesColumn(link)) {
    return {LinkState::Kind::Broken,
            "Connection " + source->number + " has no column " + basic::InQuotes(link.column) + "."};
  }
  switch (source->state) {
    case DeskSource::State::Failing:
      return {LinkState::Kind::Broken, source->message};
    case DeskSource::State::Stale:
      return {LinkState::Kind::Stale, source->message};
    case DeskSource::State::Opening:
    case DeskSource::State::Fresh:
      break;
  }
  return {};
}

}  // namespace app
