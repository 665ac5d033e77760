// A deck at the desk: what its windows show, and how they hear of changes.

#include "app/desk/Desk.h"

#include <filesystem>
#include <fstream>
#include <sstream>
#include <utility>

#include "app/desk/BarsJson.h"
#include "app/desk/DeskState.h"
#include "app/show/SlidePages.h"
#include "app/wiring/Failure.h"
#include "web/http/Secret.h"
#include "web/show/ClientFiles.h"

namespace app {

using json::Json;

Desk::Services::Services(host::MessageBox& messages, host::Jobs& jobs) : usual_(host::Current()) {
  host::Services services = usual_;
  services.messageBox = &messages;
  services.jobs = &jobs;
  host::Use(services);
}

Desk::Desk(Environment& environment, const std::string& path)
    : environment_(environment),
      assets_("assets/" + web::newSecret() + '/'),
      notices_([this] { requestFlush(); }),
      jobs_(environment.loop(), *host::Current().clock,
            [&environment](std::function<void()> handler) {
              environment.loop().postOutermost(std::move(handler));
            }),
      services_(notices_, jobs_),
      clock_(environment.loop().CreateTimer([this] { flush(); })) {
  auto deck = host_.open(path);
  open_ = std::make_unique<OpenDeck>(host_, std::move(deck), environment.loop(), problems_, assets_,
                                     [this] { requestFlush(); });
  jobs_.onChange([this] { requestFlush(); });
  host_.application().bars().onChange([this] { requestFlush(); });
  constexpr std::int32_t second = 1000;
  clock_->Interval(second);
  clock_->Enabled(true);
}

Desk::~Desk() {
  *self_ = nullptr;
  host_.application().bars().onChange({});
  jobs_.onChange({});
  host_.application().activate(nullptr);
}

void Desk::opened(const std::string& name) {
  flush();
  auto& window = windows_[name];
  if (!window) window = std::make_unique<DeskWindow>(name, open_->presentation);
  if (host_.application().ActiveWindow() == nullptr) host_.application().activate(window->document);
}

void Desk::forget(const std::string& name) {
  const auto known = windows_.find(name);
  if (known == windows_.end()) return;
  if (host_.application().ActiveWindow() == known->second->document) host_.application().activate(nullptr);
  windows_.erase(known);
  requestFlush();
}

void Desk::repeat(const std::string&) {}

DeskWindow& Desk::window(const std::string& name) {
  const auto known = windows_.find(name);
  if (known == windows_.end()) throw web::Refusal(404, "There is no such window; it opens with its stream.");
  return *known->second;
}

Json Desk::state(const std::string& name) {
  DeskWindow& window = this->window(name);
  open_->sources.look();
  Json state = present(window);
  window.told = state;
  if (const int slide = window.slide(); slide > 0) {
    state["slide"]["html"] = open_->slides.html(slide);
    window.markupOf = open_->slides.id(slide);
    window.markupDrawn = open_->slides.drawnWhole(slide);
  }
  return state;
}

Json Desk::present(const DeskWindow& window) {
  deck::Presentation& deck = *open_->presentation;
  const int slide = window.slide();
  const render::SlideSize size = open_->slides.size();
  return {{"version", web::clientVersion()},
          {"deck", deckJson()},
          {"assets", assets_},
          {"styles", SlidePages::styleSheetName()},
          {"size", {{"width", size.width}, {"height", size.height}}},
          {"slides", slidesJson(deck, open_->slides, open_->sources)},
          {"slide", slideJson(deck, open_->slides, open_->sources, slide)},
          {"selection", selectionJson(open_->slides, window)},
          {"bars", barsJson(host_.application().bars())},
          {"commands", Json::object()},
          {"displayType", open_->model->DisplayType()},
          {"preview", "today"},
          {"connections", connectionsJson(open_->slides, open_->sources)},
          {"data", dataJson(open_->sources)},
          {"used", usedJson(open_->slides, slide)},
          {"nearby", Json::array()},
          {"findings", nullptr},
          {"forms", Json::array()},
          {"jobs", jobsJson()},
          {"notices", notices_.toJson()},
          {"others", othersJson(window)}};
}

Json Desk::deckJson() const {
  const std::filesystem::path path = open_->presentation->FullName();
  return {{"name", path.filename().string()},
          {"folder", path.parent_path().string()},
          {"unsaved", 0},
          {"undo", nullptr},
          {"redo", nullptr},
          {"isReadOnly", nullptr},
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
                    {"step", 0},
                    {"maximum", 0},
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
  const DeskRequests requests(host_.application(), *open_, notices_, jobs_);
  try {
    Json answer = requests.act(window, path, body);
    flush();
    return answer;
  } catch (...) {
    flush();
    throw;
  }
}

Json Desk::look(std::string_view path, std::string_view query) {
  return DeskRequests(host_.application(), *open_, notices_, jobs_).look(path, query);
}

std::optional<web::Asset> Desk::asset(std::string_view name) { return open_->slides.asset(name); }

web::Download Desk::deck() {
  const std::filesystem::path path = open_->presentation->FullName();
  std::ifstream file(path, std::ios::binary);
  std::ostringstream bytes;
  bytes << file.rdbuf();
  if (!file) fail(path.string() + ": the deck cannot be read.");
  return {path.filename().string(), std::make_shared<const std::string>(std::move(bytes).str())};
}

void Desk::takeDeck(std::string) { throw web::Refusal(501, "Versions of the deck cannot be taken yet."); }

void Desk::requestFlush() {
  if (std::exchange(isFlushRequested_, true)) return;
  environment_.loop().post([self = self_] {
    if (*self) (*self)->flush();
  });
}

void Desk::flush() {
  isFlushRequested_ = false;
  open_->sources.look();
  const auto changed = open_->slides.takeChanged();
  if (server_ == nullptr) return;
  for (const auto& [name, window] : windows_) {
    if (server_->isOpen(name)) tell(*window, changed);
  }
}

void Desk::tell(DeskWindow& window, const std::set<DeskSlides::Place>& changed) {
  Json now = present(window);
  Json news = Json::object();
  for (const auto& [key, value] : now.items()) {
    if (window.told[key] != value) news[key] = value;
  }
  window.told = std::move(now);

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
