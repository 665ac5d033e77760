#include "web/show/Screens.h"

#include <algorithm>
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

std::string Screens::add(const View& view) {
  return screens_.insert_or_assign(newSecret(), newScreen(view)).first->first;
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
  atHubs_ -= std::erase_if(screens_, [oldest](const auto& entry) {
    const std::optional<Course>& course = entry.second.course;
    return course && course->at <= oldest;
  });
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
