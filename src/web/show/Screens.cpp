#include "web/show/Screens.h"

#include <algorithm>

#include "web/http/Secret.h"

namespace web {
namespace {

constexpr std::chrono::milliseconds shortestPause{200};

}  // namespace

std::string Screens::add(const View& view) {
  Screen screen;
  screen.number = ++count_;
  screen.view = view;
  screen.opened = Clock::now();
  return screens_.insert_or_assign(newSecret(), std::move(screen)).first->first;
}

Screens::Screen* Screens::find(std::string_view id) {
  const auto found = screens_.find(id);
  return found == screens_.end() ? nullptr : &found->second;
}

bool Screens::painted(Screen& screen, const PaintReport& report, std::optional<Clock::time_point> changed) {
  const auto now = Clock::now();
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
