#include "app/desk/Notices.h"

#include <algorithm>
#include <utility>

#include "web/desk/Desk.h"

namespace app {

using json::Json;

namespace {

const char* nameOf(Notices::Level level) {
  switch (level) {
    case Notices::Level::Warning:
      return "warning";
    case Notices::Level::Error:
      return "error";
    case Notices::Level::Info:
      break;
  }
  return "info";
}

}  // namespace

int Notices::tell(Level level, std::string text, std::string details, std::vector<Action> actions) {
  constexpr std::size_t most = 20;
  const auto known =
      std::find_if(all_.begin(), all_.end(), [&](const Notice& notice) { return notice.text == text; });
  if (known != all_.end()) {
    *known = {known->id, level, std::move(text), std::move(details), std::move(actions)};
    changed_();
    return known->id;
  }
  if (all_.size() >= most) all_.erase(all_.begin());
  all_.push_back({++lastId_, level, std::move(text), std::move(details), std::move(actions)});
  changed_();
  return lastId_;
}

int Notices::tellAgain(int id, Level level, std::string text, std::string details,
                       std::vector<Action> actions) {
  const auto known =
      std::find_if(all_.begin(), all_.end(), [id](const Notice& each) { return each.id == id; });
  if (known == all_.end()) return tell(level, std::move(text), std::move(details), std::move(actions));
  *known = {id, level, std::move(text), std::move(details), std::move(actions)};
  changed_();
  return id;
}

void Notices::dismiss(int id) {
  if (std::erase_if(all_, [&](const Notice& notice) { return notice.id == id; }) > 0) changed_();
}

bool Notices::isTold(int id) const {
  return std::any_of(all_.begin(), all_.end(), [id](const Notice& notice) { return notice.id == id; });
}

void Notices::press(int id, std::string_view action) {
  const auto notice =
      std::find_if(all_.begin(), all_.end(), [&](const Notice& each) { return each.id == id; });
  if (notice == all_.end() && answered_.contains(id)) return;
  if (notice == all_.end()) throw web::Refusal(404, "This notice has been put away.");
  const auto found = std::find_if(notice->actions.begin(), notice->actions.end(),
                                  [&](const Action& each) { return each.id == action; });
  if (found == notice->actions.end()) throw web::Refusal(404, "The notice has no such action.");
  const auto run = found->run;
  if (!found->isKept) {
    answered_.insert(id);
    dismiss(id);
  }
  if (run) run();
}

Json Notices::toJson() const {
  Json json = Json::array();
  for (const Notice& notice : all_) {
    Json actions = Json::array();
    for (const Action& action : notice.actions) {
      actions.push_back({{"id", action.id}, {"caption", action.caption}});
    }
    json.push_back({{"id", notice.id},
                    {"level", nameOf(notice.level)},
                    {"text", notice.text},
                    {"details", notice.details},
                    {"actions", std::move(actions)}});
  }
  return json;
}

host::MsgBoxResult Notices::MsgBox(std::string_view text, std::int32_t style, std::string_view) {
  constexpr std::int32_t icons = 0x70;
  const bool isError = (style & icons) == host::vbCritical;
  const bool isWarning = (style & icons) == host::vbExclamation;
  const bool isOtherwise = isToldOtherwise_ && isToldOtherwise_(text);
  if (!isOtherwise)
    tell(isError ? Level::Error : isWarning ? Level::Warning : Level::Info, std::string(text));
  return (style & host::vbYesNo) == host::vbYesNo ? host::MsgBoxResult::No : host::MsgBoxResult::OK;
}

}  // namespace app
