#include "web/show/Screens.h"

#include <algorithm>
#include <set>
#include <utility>

#include "web/http/Secret.h"

namespace web {
namespace {

constexpr std::chrono::milliseconds shortestPause{200};

}  // namespace

Screens::Screen Screens::newScreen(const View& view) {
  Screen screen;
  screen.number = ++count_;
  screen.view = view;
  screen.opened = now_();
  return screen;
}

std::string Screens::add(const View& view, KnownScreen known) {
  Screen screen = newScreen(view);
  screen.known = std::move(known);
  return screens_.insert_or_assign(newSecret(), std::move(screen)).first->first;
}

void Screens::remove(const std::string& id) {
  const auto found = screens_.find(id);
  if (found == screens_.end()) return;
  noteSeen(found->second.known.name, now_());
  screens_.erase(found);
}

void Screens::noteSeen(const std::string& name, Clock::time_point at) {
  const auto expected = seen_.find(name);
  if (expected != seen_.end()) expected->second = std::max(expected->second, at);
}

Screens::Screen* Screens::find(std::string_view id) {
  const auto found = screens_.find(id);
  return found == screens_.end() ? nullptr : &found->second;
}

Screens::Screen* Screens::atHub(const std::string& id, const View& view) {
  Screen* known = find(id);
  if (known == nullptr) {
    if (atHubs_ >= mostAtHubs) return nullptr;
    known = &screens_.emplace(id, newScreen(view)).first->second;
    known->course = Course{now_(), 0, {}};
    ++atHubs_;
  }
  if (!known->course) return nullptr;
  known->view = view;
  return known;
}

void Screens::expire() {
  const auto oldest = now_() - lease;
  dropAtHubs([oldest](const Screen& screen) { return screen.course->at <= oldest; });
}

void Screens::dropAtHubs(const std::function<bool(const Screen&)>& which) {
  atHubs_ -= std::erase_if(screens_, [&](const auto& entry) {
    const Screen& screen = entry.second;
    if (!screen.course || !which(screen)) return false;
    noteSeen(screen.known.name, screen.course->at);
    return true;
  });
}

void Screens::expect(const std::vector<std::string>& names,
                     const std::function<std::optional<std::string>(const std::string& key)>& nameOf) {
  const std::set<std::string> wanted(names.begin(), names.end());
  std::erase_if(seen_, [&](const auto& entry) { return !wanted.contains(entry.first); });
  for (const std::string& name : wanted) seen_.try_emplace(name, now_());
  dropAtHubs([&](const Screen& screen) { return !screen.known.key.empty() && !nameOf(screen.known.key); });
  for (auto& [id, screen] : screens_) {
    if (auto name = nameOf(screen.known.key)) screen.known.name = std::move(*name);
  }
}

std::vector<std::string> Screens::expected() const {
  std::vector<std::string> names;
  for (const auto& [name, since] : seen_) names.push_back(name);
  return names;
}

std::vector<Screens::Missing> Screens::missing() const {
  std::set<std::string_view> present;
  for (const auto& [id, screen] : screens_) present.insert(screen.known.name);
  std::vector<Missing> missing;
  for (const auto& [name, since] : seen_) {
    if (!present.contains(name)) missing.push_back({name, since});
  }
  return missing;
}

bool Screens::painted(Screen& screen, const PaintReport& report, std::optional<Clock::time_point> changed) {
  const auto now = now_();
  if (now < screen.mayReportFrom) return false;
  screen.mayReportFrom = now + shortestPause;
  const auto at = now - report.held;
  Paint paint{report.slide, report.sequence, at, std::nullopt};
  const bool isNew = !screen.painted || screen.painted->sequence != report.sequence;
  if (changed && *changed > screen.opened) {
    paint.delay = std::max(0.0, std::chrono::duration<double>(at - *changed).count());
    if (isNew) delays_.add(*paint.delay);
  }
  screen.painted = paint;
  return true;
}

}  // namespace web
