// What a desk offers its author: a newer version of the deck, what an earlier run left unsaved, and which
// side counts where they disagree.

#include <algorithm>
#include <ctime>
#include <filesystem>
#include <optional>
#include <utility>

#include "app/desk/Desk.h"
#include "app/desk/DeskHistory.h"
#include "basic/Counted.h"
#include "basic/Format.h"

namespace app {

namespace {

namespace fs = std::filesystem;

std::string timeNow() { return basic::Format(host::Current().clock->Now(), "hh:nn"); }

std::string changes(std::size_t count) { return basic::Counted(count, "change"); }

/// One line for each.
std::string linesOf(const std::vector<EditConflict>& conflicts) {
  std::string lines;
  for (const EditConflict& conflict : conflicts) {
    if (!lines.empty()) lines += '\n';
    lines += conflict.name + ": yours is " + conflict.ours + "; in the file it ";
    lines += (conflict.isGone ? "" : "is ") + conflict.theirs + '.';
  }
  return lines;
}

}  // namespace

void Desk::offerRecovery() {
  for (const std::string& damage : edited_->damagedJournals()) {
    notices_.tell(Notices::Level::Warning, damage);
  }
  const Rebase* left = edited_->recoverable();
  if (left == nullptr) return;
  const std::size_t count = left->count();
  const std::time_t since = edited_->recoverableSince();
  std::tm local{};
  ::localtime_r(&since, &local);
  char time[8] = {};
  std::strftime(time, sizeof time, "%H:%M", &local);
  const std::string text = changes(count) + " from " + time + (count == 1 ? " was" : " were") + " not saved.";
  std::vector<Notices::Action> actions{{"recover", "Recover", [this] { recover(); }}};
  const ConflictsForm::Surroundings around{[this] { return edited_->recoverable(); },
                                           [](std::size_t kept) { return "Recover " + changes(kept); },
                                           [this] {
                                             notices_.dismiss(recoveryNotice_);
                                             recover();
                                           }};
  if (auto decide = decideOneByOne(*left, around)) actions.push_back(std::move(*decide));
  actions.push_back({"discard", "Discard", [this] { edited_->discardRecoverable(); }});
  recoveryNotice_ =
      notices_.tell(Notices::Level::Warning, text, linesOf(left->conflicts()), std::move(actions));
}

void Desk::recover() {
  const EditedDeck::Recovered recovered = edited_->recover();
  for (const auto& [name, window] : windows_) {
    takeUp(recovered.effect, host_.application(), *open_, *window);
  }
  if (windows_.empty() && recovered.effect.presentation) open_->model->TakeUpTags();
  for (const std::string& number : recovered.withoutSecrets) {
    notices_.tell(Notices::Level::Warning,
                  "Enter the password of connection " + number + " again; it was not kept.");
  }
}

void Desk::offerNewer() {
  newerText_ = "PowerPoint saved the deck at " + timeNow() + ".";
  tellNewer();
}

/// Said again whenever it has become something else: another count, other conflicts.
void Desk::tellNewer() {
  const Rebase& newer = *edited_->newer();
  const auto take = [](std::size_t kept) {
    return kept == 0 ? std::string("Take it") : "Take it and keep my " + changes(kept);
  };
  std::vector<Notices::Action> actions{{"take", take(newer.kept()), [this] { takeNewer(); }}};
  const ConflictsForm::Surroundings around{[this] { return edited_->newer(); }, take,
                                           [this] { takeNewer(); }};
  if (auto decide = decideOneByOne(newer, around)) actions.push_back(std::move(*decide));
  newerKept_ = newer.kept();
  newerDetails_ = linesOf(newer.conflicts());
  newerNotice_ = notices_.tellAgain(newerNotice_, Notices::Level::Warning, newerText_, newerDetails_,
                                    std::move(actions));
}

void Desk::recountNewer() {
  const Rebase* newer = edited_->newer();
  if (const auto form = conflictsForm_.lock(); form && form->isOutdated()) form->QueryClose();
  if (newer == nullptr) return notices_.dismiss(newerNotice_);
  if (!notices_.isTold(newerNotice_)) return;
  if (newer->kept() != newerKept_ || linesOf(newer->conflicts()) != newerDetails_) tellNewer();
}

/// The offer to do so, if there is something to decide.
std::optional<Notices::Action> Desk::decideOneByOne(const Rebase& rebase,
                                                    const ConflictsForm::Surroundings& around) {
  const auto& conflicts = rebase.conflicts();
  const auto count = std::count_if(conflicts.begin(), conflicts.end(),
                                   [](const EditConflict& each) { return !each.isGone; });
  if (count == 0) return std::nullopt;
  const auto open = [this, around] {
    if (around.rebase() == nullptr) return;
    const auto form = std::make_shared<ConflictsForm>(
        fs::path(open_->presentation->FullName()).filename().string(), around);
    conflictsForm_ = form;
    form->Show(Forms::Placement::Dialog);
  };
  return Notices::Action{"decide", "Decide " + std::to_string(count) + " one by one…", open, /*isKept=*/true};
}

void Desk::takeNewer() { edited_->takeNewer(); }

/// Slides and shapes are found again by their ids. Forms are about what was there before.
void Desk::show(const std::shared_ptr<deck::Presentation>& before, std::size_t kept) {
  notices_.dismiss(newerNotice_);
  forms_.closeAll();
  open_ = openDeck(edited_->presentation());
  findings_ = {};
  preview_ = LF2000::DataPreview::AsTheyAre;
  const auto active = host_.application().ActiveWindow();
  for (const auto& [name, window] : windows_) {
    const int slide = window->document->slide();
    const auto shapes = window->document->shapes();
    const auto found = slide < 1 ? std::nullopt : open_->slides.find(before->slideId(slide));
    window->document->show(open_->presentation);
    window->markupOf = 0;
    if (found) window->document->select(*found, shapes);
    host_.application().activate(nullptr);
    host_.application().activate(window->document);
  }
  host_.application().activate(std::static_pointer_cast<deck::DocumentWindow>(active));
  const std::string text = "The deck was saved by another program at " + timeNow() + " and taken up.";
  notices_.tell(Notices::Level::Info,
                kept == 0 ? text : text + " Your " + changes(kept) + " are kept and not saved yet.");
  askForSources();
  requestFlush();
}

}  // namespace app
