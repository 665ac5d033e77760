// Unsaved edits as JSON, and back; the files that earlier runs have left.

#include "app/desk/Journal.h"

#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <map>
#include <utility>

#include "app/desk/ConnectionSecrets.h"
#include "app/desk/DeckLock.h"
#include "app/wiring/Failure.h"
#include "basic/Quotes.h"
#include "json/Json.h"
#include "model/modTags.h"
#include "opc/Files.h"
#include "opc/SavingFile.h"

namespace app {
namespace {

namespace fs = std::filesystem;
namespace modTags = LF2000::modTags;
using json::Json;

constexpr int Format = 1;
/// Of any number of edits that people make.
constexpr std::uint64_t LargestFile = 256ULL << 20U;

Json toJson(const OwnerState& state) {
  Json tags = Json::array();
  for (const deck::Tag& tag : state.tags) {
    if (!modTags::Matches(tag.name, modTags::Prefix)) continue;
    const bool isConnection = modTags::Matches(tag.name, modTags::Connection);
    tags.push_back({tag.name, isConnection ? withoutSecrets(tag.value) : tag.value});
  }
  return {{"name", state.name}, {"tags", std::move(tags)}};
}

bool isOwnWork(const OwnerChange& edit) {
  return edit.after->content && edit.after->content != edit.before->content;
}

Json toJson(const OwnerChange& edit) {
  Json json{{"slide", edit.owner.slide},
            {"shape", edit.owner.shape},
            {"twin", edit.owner.twin},
            {"before", toJson(*edit.before)},
            {"after", toJson(*edit.after)}};
  // What the shape holds otherwise, the deck tells.
  if (isOwnWork(edit)) json["content"] = edit.after->content->bodies();
  return json;
}

/// The names of those of an owner's tags that are kept without secrets.
void addSecretless(Json& names, const OwnerState& state) {
  for (const deck::Tag& tag : state.tags) {
    if (modTags::Matches(tag.name, modTags::Connection) && withoutSecrets(tag.value) != tag.value) {
      names.push_back(tag.name);
    }
  }
}

std::shared_ptr<OwnerState> stateFrom(const Json& json) {
  auto state = std::make_shared<OwnerState>();
  state->name = json.at("name").get<std::string>();
  for (const Json& tag : json.at("tags")) {
    const auto name = tag.at(0).get<std::string>();
    if (!modTags::Matches(name, modTags::Prefix)) fail("it holds a tag of another program, " + name);
    state->tags.push_back({name, tag.at(1).get<std::string>(), 0});
  }
  return state;
}

OwnerChange editFrom(const Json& json) {
  OwnerChange edit;
  const auto id = [&](const char* name) { return json::wholeIn<std::uint32_t>(json, name); };
  edit.owner = {id("slide"), id("shape"), id("twin")};
  edit.before = stateFrom(json.at("before"));
  auto after = stateFrom(json.at("after"));
  if (json.contains("content")) {
    after->content = std::make_shared<deck::OwnContent>(json.at("content").get<std::string>());
  }
  edit.after = std::move(after);
  return edit;
}

/// Later edits go on where earlier ones were made.
void add(OwnerChanges& edits, OwnerChange edit) {
  const auto known = std::find_if(edits.begin(), edits.end(),
                                  [&](const OwnerChange& other) { return other.owner == edit.owner; });
  if (known == edits.end()) {
    edits.push_back(std::move(edit));
  } else {
    known->after = std::move(edit.after);
  }
}

}  // namespace

Journal::Journal(std::string folder, std::string deck)
    : folder_(std::move(folder)),
      deck_(std::move(deck)),
      path_(folder_ + "/" + stateNameOf(deck_) + ".json") {
  takeUp();
}

void Journal::takeUp() {
  opc::removeAbandoned(folder_);
  int number = 1;
  std::error_code error;
  for (; fs::exists(left(number), error); ++number) leftFiles_.push_back(left(number));
  if (fs::exists(path_, error)) {
    fs::rename(path_, left(number), error);
    leftFiles_.push_back(error ? path_ : left(number));
  }
  for (const std::string& file : std::exchange(leftFiles_, {})) {
    try {
      read(file);
      leftFiles_.push_back(file);
    } catch (const std::exception& broken) {
      const auto* ours = dynamic_cast<const basic::Error*>(&broken);
      const std::string aside = file + ".damaged";
      fs::rename(file, aside, error);
      damages_.push_back("What was not saved of " + basic::InQuotes(deck_) + " cannot be recovered: " +
                         (ours != nullptr ? ours->description : std::string(broken.what())) +
                         ". It is kept as " + basic::InQuotes(error ? file : aside) + ".");
    }
  }
  if (recoverable_ && recoverable_->edits.empty()) forgetRecoverable();
}

void Journal::read(const std::string& path) {
  const opc::FileContent content = opc::readContent(path, LargestFile);
  const Json json = Json::parse(content.bytes);
  if (json::wholeIn<int>(json, "format") != Format) fail("it was written by another version of this program");
  if (json.at("deck").get<std::string>() != deck_) fail("it is about another deck");
  OwnerChanges edits;
  for (const Json& edit : json.at("edits")) edits.push_back(editFrom(edit));
  if (!recoverable_) recoverable_.emplace();
  for (OwnerChange& edit : edits) add(recoverable_->edits, std::move(edit));
  for (const Json& name : json.at("withoutSecrets")) {
    recoverable_->withoutSecrets.insert(name.get<std::string>());
  }
  recoverable_->written = content.state.modifiedSeconds;
}

void Journal::forgetRecoverable() {
  std::error_code error;
  for (const std::string& file : leftFiles_) fs::remove(file, error);
  leftFiles_.clear();
  recoverable_.reset();
}

std::optional<std::string> Journal::write(const OwnerChanges& unsaved) {
  std::error_code error;
  if (unsaved.empty()) {
    fs::remove(path_, error);
    return std::nullopt;
  }
  Json edits = Json::array();
  Json secretless = Json::array();
  for (const OwnerChange& edit : unsaved) {
    edits.push_back(toJson(edit));
    addSecretless(secretless, *edit.after);
  }
  const std::string text = json::textOf({{"format", Format},
                                         {"deck", deck_},
                                         {"edits", std::move(edits)},
                                         {"withoutSecrets", std::move(secretless)}});
  fs::create_directories(folder_, error);
  opc::SavingFile file(path_);
  if (file.descriptor() >= 0 && file.write(text) && file.close() &&
      file.renameTo(path_, /*replacing=*/true)) {
    return std::nullopt;
  }
  return "What is not saved could not be kept for recovery in " + basic::InQuotes(folder_) + ": " +
         std::strerror(errno) + ".";
}

CompletedEdits withDecksSecrets(const KeptEdits& kept, const OwnerState& deck) {
  std::map<std::string, std::string> known;
  for (const deck::Tag& tag : deck.tags) known[tag.name] = tag.value;
  const auto completed = [&](const OwnerState& state) {
    auto complete = std::make_shared<OwnerState>(state);
    for (deck::Tag& tag : complete->tags) {
      if (modTags::Matches(tag.name, modTags::Connection))
        tag.value = withSecretsOf(known[tag.name], tag.value);
    }
    return complete;
  };
  CompletedEdits complete;
  for (const OwnerChange& edit : kept.edits) {
    if (!edit.owner.isPresentation()) {
      complete.edits.push_back(edit);
      continue;
    }
    const auto after = completed(*edit.after);
    complete.edits.push_back({edit.owner, completed(*edit.before), after});
    for (std::size_t i = 0; i < after->tags.size(); ++i) {
      const std::string& name = after->tags[i].name;
      const bool isAsKept = after->tags[i].value == edit.after->tags[i].value;
      if (isAsKept && kept.withoutSecrets.contains(name)) {
        complete.withoutSecrets.push_back(name.substr(modTags::Connection.size()));
      }
    }
  }
  return complete;
}

}  // namespace app
