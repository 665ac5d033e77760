// A deck at the desk: what its windows show, and how they hear of changes.

#include "app/desk/Desk.h"

#include <algorithm>
#include <filesystem>
#include <set>
#include <utility>

#include "app/desk/BarsJson.h"
#include "app/desk/DeskState.h"
#include "app/show/SlidePages.h"
#include "pages/modPages.h"
#include "web/show/ClientFiles.h"

namespace app {

using json::Json;

namespace {

const char* nameOf(LF2000::DataPreview preview) {
  switch (preview) {
    case LF2000::DataPreview::NoRows:
      return "none";
    case LF2000::DataPreview::LongestTexts:
      return "longest";
    case LF2000::DataPreview::AsTheyAre:
      break;
  }
  return "today";
}

}  // namespace

void Desk::opened(const std::string& name) {
  nearby_.look();
  flush();
  auto& window = windows_[name];
  if (window) return;
  window = std::make_unique<DeskWindow>(name, open_->presentation);
  host_.application().activate(window->document);
}

void Desk::forget(const std::string& name) {
  const auto known = windows_.find(name);
  if (known == windows_.end()) return;
  forms_.forget(name);
  if (host_.application().ActiveWindow() == known->second->document) host_.application().activate(nullptr);
  windows_.erase(known);
  requestFlush();
}

void Desk::repeat(const std::string& name) { forms_.repeat(name); }

DeskWindow& Desk::window(const std::string& name) {
  const auto known = windows_.find(name);
  if (known == windows_.end()) throw web::Refusal(404, "There is no such window; it opens with its stream.");
  return *known->second;
}

Json Desk::state(const std::string& name) {
  DeskWindow& window = this->window(name);
  settle();
  Json state = present(window);
  window.told = state;
  state["forms"] = forms_.toJson(name);
  if (const int slide = window.slide(); slide > 0) {
    state["slide"]["html"] = open_->slides.html(slide);
    window.markupOf = open_->slides.id(slide);
    window.markupDrawn = open_->slides.drawnWhole(slide);
  }
  return state;
}

Json Desk::present(const DeskWindow& window) {
  const int slide = window.slide();
  const render::SlideSize size = open_->slides.size();
  return {{"version", web::clientVersion()},
          {"deck", deckJson(window)},
          {"assets", assets_},
          {"styles", SlidePages::styleSheetName()},
          {"size", {{"width", size.width}, {"height", size.height}}},
          {"slides", slidesJson(*open_)},
          {"slide", slideJson(*open_, slide)},
          {"selection", selectionJson(open_->slides, window)},
          {"bars", barsJson(host_.application().bars())},
          {"commands", commandsJson()},
          {"displayType", open_->model->DisplayType()},
          {"preview", nameOf(preview_)},
          {"connections", connectionsJson(open_->slides, open_->sources)},
          {"data", dataJson(open_->sources)},
          {"used", usedJson(open_->slides, slide)},
          {"uses", usesJson(open_->slides)},
          {"nearby", nearby_.toJson()},
          {"findings", findings_.toJson(open_->slides)},
          {"forms", forms_.names(window.name)},
          {"jobs", jobsJson()},
          {"notices", notices_.toJson()},
          {"others", othersJson(window)}};
}

namespace {

Json orNull(const std::optional<std::string>& text) { return text ? Json(*text) : Json(); }

Json stepJson(const std::optional<StepName>& step, const DeskWindow& reader) {
  if (!step) return nullptr;
  const bool isOther = !step->window.empty() && step->window != reader.name;
  return step->label + (isOther ? " (other window)" : "");
}

Json commandJson(bool isEnabled, const char* reason) {
  return {{"enabled", isEnabled}, {"reason", isEnabled ? "" : reason}};
}

}  // namespace

Json Desk::commandsJson() const {
  std::int64_t problems = 0;
  for (int slide = 1; slide <= open_->slides.count(); ++slide) {
    for (const LinkedShape& link : open_->slides.links(slide)) {
      if (open_->sources.stateOf(link).kind == LinkState::Kind::Broken) ++problems;
    }
  }
  Json check = commandJson(true, "");
  check["count"] = problems;
  return {{"save", whyReadOnly_ ? commandJson(false, whyReadOnly_->c_str())
                                : commandJson(edited_->unsaved() > 0, "Everything is saved.")},
          {"undo", commandJson(edited_->undoName().has_value(), "There is nothing to undo.")},
          {"redo", commandJson(edited_->redoName().has_value(), "There is nothing to redo.")},
          {"check", std::move(check)},
          {"show", commandJson(true, "")}};
}

Json Desk::deckJson(const DeskWindow& window) const {
  const std::filesystem::path path = open_->presentation->FullName();
  return {{"name", path.filename().string()},
          {"folder", path.parent_path().string()},
          {"unsaved", edited_->unsaved()},
          {"undo", stepJson(edited_->undoName(), window)},
          {"redo", stepJson(edited_->redoName(), window)},
          {"isReadOnly", orNull(whyReadOnly_)},
          {"isEmpty", open_->sources.all().empty()}};
}

Json Desk::jobsJson() const {
  constexpr std::int64_t second = 1000;
  Json json = Json::array();
  for (const auto& job : jobs_.current()) {
    json.push_back({{"id", job.id},
                    {"caption", job.caption},
                    {"seconds", job.elapsed / second},
                    {"deadline", job.deadline / second},
                    {"step", job.step},
                    {"maximum", job.maximum},
                    {"canCancel", job.canCancel && !job.isEnding}});
  }
  return json;
}

Json Desk::othersJson(const DeskWindow& window) const {
  Json json = Json::array();
  for (const auto& [name, other] : windows_) {
    const bool isThere = server_ != nullptr && server_->isOpen(name);
    if (other.get() != &window && isThere) json.push_back(selectionJson(open_->slides, *other));
  }
  return json;
}

Json Desk::act(const std::string& name, std::string_view path, const Json& body) {
  DeskWindow& window = this->window(name);
  host_.application().activate(window.document);
  try {
    Json answer = requests().act(window, path, body);
    flush();
    return answer;
  } catch (...) {
    flush();
    throw;
  }
}

DeskRequests Desk::requests() {
  return DeskRequests({host_.application(), *open_, *edited_, forms_, findings_, notices_, jobs_, roots_,
                       preview_, [this] { save(); }, [this] { return beginShow(); },
                       [this](const DeskWindow& window, const std::string& text) {
                         if (server_ != nullptr) server_->send(window.name, "say", {{"text", text}});
                       }});
}

std::string Desk::activeWindow() {
  const auto active = host_.application().ActiveWindow();
  for (const auto& [name, window] : windows_) {
    if (window->document == active) return name;
  }
  return {};
}

void Desk::tick() {
  constexpr int seldom = 5;
  if (server_ != nullptr && server_->windows() > 0 && ++ticks_ % seldom == 0) {
    nearby_.look();
    whyReadOnly_ = edited_->file().whyReadOnly();
    lookForOwner();
  }
  moveClocks();
  if (hasSources_) open_->model->RequeryInBackground(/*forced=*/false);
  flush();
}

/// On slides that somebody has before him.
void Desk::moveClocks() {
  std::set<int> shown;
  for (const auto& [name, window] : windows_) {
    if (server_ != nullptr && server_->isOpen(name) && window->slide() > 0) shown.insert(window->slide());
  }
  for (const int slide : shown) {
    const auto& links = open_->slides.links(slide);
    const bool hasClock = std::any_of(links.begin(), links.end(), [](const LinkedShape& link) {
      return static_cast<LF2000::SourceType>(link.sourceType) == LF2000::SourceType::Clock;
    });
    if (hasClock) open_->model->FillClocks(*open_->presentation->Slides()->Item(slide));
  }
}

Json Desk::look(std::string_view path, std::string_view query) { return requests().look(path, query); }

std::optional<web::Asset> Desk::asset(std::string_view name) {
  auto asset = open_->slides.asset(name);
  return asset ? asset : pictures_.asset(name);
}

void Desk::requestFlush() {
  if (std::exchange(isFlushRequested_, true)) return;
  environment_.loop().post([self = self_] {
    if (*self) (*self)->flush();
  });
}

void Desk::flush() {
  isFlushRequested_ = false;
  settle();
  const auto changed = open_->slides.takeChanged();
  if (server_ == nullptr) return;
  for (const auto& [name, window] : windows_) {
    if (server_->isOpen(name)) tell(*window, changed);
  }
  forms_.flush();
}

void Desk::settle() {
  edited_->endStep();
  recountNewer();
  open_->preview(preview_);
  const bool isEdited = open_->slides.takeEdits();
  open_->sources.look();
  Json known = Json::array({nameOf(preview_)});
  for (const DeskSource& source : open_->sources.all()) {
    known.push_back({source.number, source.version, source.state, source.columns.size()});
  }
  if (!isEdited && known == formsKnow_) return;
  formsKnow_ = std::move(known);
  missing_.look(*open_);
  LF2000::modPages::Refresh(open_->model);
}

void Desk::tell(DeskWindow& window, const std::set<DeskSlides::Place>& changed) {
  Json now = present(window);
  Json news = Json::object();
  for (const auto& [key, value] : now.items()) {
    if (window.told[key] != value) news[key] = value;
  }
  window.told = std::move(now);
  if (news.contains("forms")) news["forms"] = forms_.toJson(window.name);

  const int slide = window.slide();
  DeskSlides& slides = open_->slides;
  const bool hasMarkup =
      slide == 0 || (window.markupOf == slides.id(slide) && window.markupDrawn == slides.drawnWhole(slide));
  if (!hasMarkup) {
    news["slide"] = window.told["slide"];
    news["slide"]["html"] = slides.html(slide);
    window.markupOf = slides.id(slide);
    window.markupDrawn = slides.drawnWhole(slide);
  }
  if (!news.empty()) server_->send(window.name, "state", news);
  if (!hasMarkup) return;

  Json shapes = Json::array();
  for (const auto& [changedSlide, shape] : changed) {
    if (changedSlide != slide) continue;
    std::string html = slides.html(slide, shape);
    if (html.empty()) continue;
    shapes.push_back({{"slide", slides.id(slide)}, {"id", shape}, {"html", std::move(html)}});
  }
  if (!shapes.empty()) server_->send(window.name, "shapes", shapes);
}

}  // namespace app
