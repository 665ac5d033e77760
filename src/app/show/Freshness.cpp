#include "app/show/Freshness.h"

#include <chrono>
#include <cstdlib>

#include "connections/clsConnection.h"
#include "host/services.h"

namespace app {

namespace {

constexpr double IntervalsOfPatience = 3;

std::size_t numberOf(const std::string& key) { return std::strtoul(key.c_str(), nullptr, 10); }

}  // namespace

bool Freshness::look() {
  const LF2000::FrmRuntimeTimer* form = form_();
  if (form == nullptr) return false;
  std::set<std::string> stale = findStale(*form);
  const std::int64_t now = host::Current().clock->TickCount();
  std::set<int> staleSlides;
  for (const auto& [slide, standing] : form->StandingSlides()) {
    if (static_cast<double>(now - standing.Since) > IntervalsOfPatience * form->RequeryInterval()) {
      staleSlides.insert(slide);
    }
  }
  if (stale == stale_ && staleSlides == staleSlides_) return false;
  stale_ = std::move(stale);
  staleSlides_ = std::move(staleSlides);
  return true;
}

std::set<std::string> Freshness::findStale(const LF2000::FrmRuntimeTimer& form) {
  const std::int64_t now = host::Current().clock->TickCount();
  const auto today = std::chrono::system_clock::now();
  std::set<std::string> stale;
  for (const auto& [key, connection] : form.Connections()) {
    const auto& readings = connection->Readings();
    const auto [place, isNew] = seen_.try_emplace(key);
    Seen& seen = place->second;
    if (isNew) seen.waitsSince = now;
    if (readings.Deliveries != seen.deliveries) {
      seen.deliveries = readings.Deliveries;
      seen.delivered = seen.waitsSince = now;
      seen.lastSuccess = today;
    }
    if (readings.Failures != seen.failures) {
      seen.failures = readings.Failures;
      seen.lastError = today;
    }
    seen.isUsed = form.Requeries(numberOf(key));
    if (!seen.isUsed) seen.waitsSince = now;
    const auto waited = static_cast<double>(now - seen.waitsSince);
    if (waited > IntervalsOfPatience * form.RequeryInterval(*connection)) stale.insert(key);
  }
  return stale;
}

std::vector<web::ConnectionHealth> Freshness::connections() const {
  std::vector<web::ConnectionHealth> all;
  const LF2000::FrmRuntimeTimer* form = form_();
  if (form == nullptr) return all;
  const std::int64_t now = host::Current().clock->TickCount();
  for (const auto& [key, connection] : form->Connections()) {
    web::ConnectionHealth health;
    health.number = key;
    health.description = connection->ConnectionDescription();
    health.rows = static_cast<std::int64_t>(connection->RecordCount());
    health.interval = form->RequeryInterval(*connection) / 1000;
    health.deliveries = connection->Readings().Deliveries;
    health.failures = connection->Readings().Failures;
    health.lastError = connection->Readings().LastError;
    health.isFailing = connection->Readings().IsFailing;
    health.isStale = isStale(key);
    if (const auto found = seen_.find(key); found != seen_.end()) {
      const Seen& seen = found->second;
      if (seen.delivered) health.age = static_cast<double>(now - *seen.delivered) / 1000;
      health.lastSuccess = seen.lastSuccess;
      health.lastErrorTime = seen.lastError;
      health.isUsed = seen.isUsed;
    }
    all.push_back(std::move(health));
  }
  return all;
}

std::vector<web::StandingSlide> Freshness::standingSlides() const {
  std::vector<web::StandingSlide> all;
  const LF2000::FrmRuntimeTimer* form = form_();
  if (form == nullptr) return all;
  const std::int64_t now = host::Current().clock->TickCount();
  for (const auto& [slide, standing] : form->StandingSlides()) {
    all.push_back({slide, static_cast<double>(now - standing.Since) / 1000, standing.Error});
  }
  return all;
}

}  // namespace app
