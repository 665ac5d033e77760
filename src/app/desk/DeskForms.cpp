// Which forms stand in which window, and how their changes reach it.

#include "app/desk/DeskForms.h"

#include <algorithm>
#include <utility>

#include "app/wiring/Failure.h"
#include "basic/Strings.h"
#include "web/desk/Desk.h"

namespace app {

using json::Json;

void DeskForms::Show(const std::shared_ptr<Forms::Form>& form, Forms::Placement placement,
                     std::function<void(Forms::Result)> closed) {
  const std::string window = around_.activeWindow();
  if (window.empty()) fail("There is no window of the desk in which " + form->Caption() + " could be shown.");
  if (forms_.size() >= MostForms) fail("Too many forms are open at this desk. Close some of them.");
  if (placement == Forms::Placement::Docked) {
    std::vector<int> docked;
    for (const auto& [id, each] : forms_) {
      if (each.window == window && each.form->Placement() == placement && each.form != form) {
        docked.push_back(id);
      }
    }
    for (const int id : docked) close(id, Forms::Result::Cancel);
  }
  Shown& shown = forms_[++lastForm_];
  shown.window = window;
  shown.form = form;
  shown.closed = std::move(closed);
  around_.changed();
}

DeskForms::Shown& DeskForms::shown(const std::string& window, int form) {
  const auto found = forms_.find(form);
  if (found == forms_.end() || found->second.window != window) {
    throw web::Refusal(404, "The form has been closed.");
  }
  return found->second;
}

int DeskForms::idOf(const Forms::Form& form) const {
  const auto found = std::find_if(forms_.begin(), forms_.end(),
                                  [&](const auto& each) { return each.second.form.get() == &form; });
  return found == forms_.end() ? 0 : found->first;
}

Json DeskForms::raise(const std::string& window, int id, const Json& body) {
  constexpr std::size_t mostEvents = 64;
  Shown& shown = this->shown(window, id);
  const Json& list = body.at("events");
  if (!list.is_array() || list.size() > mostEvents) {
    throw web::Refusal(400, "A request carries a list of up to 64 events.");
  }
  std::vector<Forms::Event> events;
  for (const Json& each : list) events.push_back(eventOf(each));
  const auto seq = json::wholeOf<std::int64_t>(body.at("seq"));
  if (!seq) throw web::Refusal(400, "Events are numbered by whole numbers.");
  shown.ack = std::max(shown.ack, *seq);
  // A handler may close the form.
  const auto form = shown.form;
  const auto refused = form->Raise(events);
  if (refused) throw web::Refusal(409, *refused);
  const auto still = forms_.find(id);
  return {{"ack", *seq}, {"patch", still == forms_.end() ? Json::object() : still->second.patch}};
}

void DeskForms::queryClose(const std::string& window, int id) {
  const auto form = shown(window, id).form;
  form->QueryClose();
}

void DeskForms::chosen(const std::string& window, int id, std::optional<std::string> path) {
  const auto found = choices_.find(id);
  if (found == choices_.end() || found->second.window != window) {
    throw web::Refusal(409, "Nobody asks for this any more.");
  }
  const auto node = choices_.extract(found);
  const auto shown = forms_.find(node.mapped().form);
  if (shown == forms_.end()) return;
  const auto form = shown->second.form;
  form->Update([&] { node.mapped().chosen(std::move(path)); });
}

Json DeskForms::toJson(const std::string& window) const {
  Json docked = Json::array();
  Json dialogs = Json::array();
  for (const auto& [id, each] : forms_) {
    if (each.window != window) continue;
    Json json = {{"id", id}, {"ack", each.ack}};
    json.update(formJson(*each.form, around_.addressOf));
    (each.form->Placement() == Forms::Placement::Docked ? docked : dialogs).push_back(std::move(json));
  }
  docked.insert(docked.end(), dialogs.begin(), dialogs.end());
  return docked;
}

Json DeskForms::names(const std::string& window) const {
  Json names = Json::array();
  for (const auto& [id, each] : forms_) {
    if (each.window == window) names.push_back({id, each.form->Caption(), each.form->Subject()});
  }
  return names;
}

void DeskForms::flush() {
  for (auto& [id, each] : forms_) {
    if (each.patch.empty() && each.focus.empty() && each.complain.empty()) continue;
    Json json = {{"form", id}, {"ack", each.ack}, {"patch", std::exchange(each.patch, Json::object())}};
    if (!each.focus.empty()) json["focus"] = std::exchange(each.focus, {});
    if (!each.complain.empty()) json["complain"] = std::exchange(each.complain, {});
    around_.send(each.window, "form", json);
  }
}

void DeskForms::repeat(const std::string& window) const {
  for (const auto& [id, each] : choices_) {
    if (each.window == window) around_.send(window, "choose", each.question);
  }
}

void DeskForms::forget(const std::string& window) {
  std::vector<int> ids;
  for (const auto& [id, each] : forms_) {
    if (each.window == window) ids.push_back(id);
  }
  for (const int id : ids) close(id, Forms::Result::Cancel);
}

void DeskForms::closeAll() {
  while (!forms_.empty()) close(forms_.begin()->first, Forms::Result::Cancel);
}

void DeskForms::Changed(Forms::Form& form, const Forms::Changes& changes) {
  const int id = idOf(form);
  if (id == 0) return;
  Json& patch = forms_.at(id).patch;
  for (const auto& [name, properties] : changes) {
    const Forms::Control* control = form.Find(name);
    for (const std::string& property : properties) {
      patch[name][property] = propertyJson(*control, property, around_.addressOf);
    }
  }
  around_.changed();
}

void DeskForms::Complain(Forms::Form& form, const Forms::Control& control) {
  if (const int id = idOf(form); id != 0) forms_.at(id).complain = control.Name();
  around_.changed();
}

void DeskForms::Focus(Forms::Form& form, const Forms::Control& control) {
  if (const int id = idOf(form); id != 0) forms_.at(id).focus = control.Name();
  around_.changed();
}

void DeskForms::Close(Forms::Form& form, Forms::Result result) {
  if (const int id = idOf(form); id != 0) close(id, result);
}

void DeskForms::close(int id, Forms::Result result) {
  const auto node = forms_.extract(id);
  if (node.empty()) return;
  std::erase_if(choices_, [id](const auto& choice) { return choice.second.form == id; });
  around_.changed();
  if (node.mapped().closed) node.mapped().closed(result);
}

void DeskForms::ChooseFile(Forms::Form& form, std::string_view title,
                           const std::vector<Forms::FileKind>& kinds,
                           std::function<void(std::optional<std::string>)> chosen) {
  Json list = Json::array();
  for (const Forms::FileKind& kind : kinds) {
    list.push_back({{"name", kind.Name}, {"extensions", basic::Split(kind.Extensions, ' ')}});
  }
  ask(form, title, "file", std::move(list), std::move(chosen));
}

void DeskForms::ChooseFolder(Forms::Form& form, std::string_view title,
                             std::function<void(std::optional<std::string>)> chosen) {
  ask(form, title, "folder", Json::array(), std::move(chosen));
}

void DeskForms::ask(const Forms::Form& form, std::string_view title, const char* what, Json kinds,
                    std::function<void(std::optional<std::string>)> chosen) {
  const int formId = idOf(form);
  if (formId == 0) return;
  // One question of a form at a time: a second one takes the place of the first.
  std::erase_if(choices_, [&](const auto& choice) { return choice.second.form == formId; });
  const int id = ++lastChoice_;
  const std::string& window = forms_.at(formId).window;
  Json question = {
      {"id", id}, {"form", formId}, {"title", title}, {"what", what}, {"kinds", std::move(kinds)}};
  around_.send(window, "choose", question);
  choices_[id] = {window, formId, std::move(question), std::move(chosen)};
}

}  // namespace app
