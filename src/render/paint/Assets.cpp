#include "render/paint/Assets.h"

#include <algorithm>
#include <cstdint>
#include <utility>

#include "pictures/ImageInfo.h"
#include "pictures/MediaInfo.h"
#include "pictures/PackedPicture.h"

// Pictures by their parts and by the names that are made from their bytes, and how long each can be had.

namespace render {

namespace {

/// FNV-1a.
std::string nameOf(std::string_view bytes, const char* extension) {
  std::uint64_t hash = 0xcbf29ce484222325ULL;
  for (const char c : bytes) hash = (hash ^ static_cast<unsigned char>(c)) * 0x100000001b3ULL;
  std::string name;
  for (int shift = 60; shift >= 0; shift -= 4) name += "0123456789abcdef"[(hash >> shift) & 15U];
  return name + extension;
}

}  // namespace

void Assets::convert(Known& known, const std::string& name, std::string_view bytes, double width,
                     double height) {
  known.foreignName = name;
  const auto& conversion = converter_->convert(name, bytes, width, height);
  using State = PictureConversion::State;
  known.problem = conversion.state == State::Pending ? "it is being converted" : conversion.problem;
  if (conversion.state != State::Done) return;
  known.converted = conversion.svg;
  const auto info = pictures::readImageInfo(*known.converted);
  if (info.contentType == nullptr) return;
  known.asset = std::make_unique<Asset>(
      Asset{nameOf(*known.converted, info.extension), info.contentType, info.width, info.height});
}

void Assets::read(Known& known, opc::Part& part) {
  std::string_view bytes = part.bytes();
  std::string plain;
  if (pictures::isPacked(bytes)) {
    auto content = pictures::unpacked(bytes);
    if (!content) {
      known.problem = "it is compressed and cannot be unpacked";
      return;
    }
    plain = std::move(*content);
    bytes = plain;
  }
  const auto info = pictures::readImageInfo(bytes);
  if (info.isConvertible) {
    if (converter_ == nullptr) {
      known.problem = "browsers do not show pictures of its kind";
      return;
    }
    convert(known, nameOf(bytes, ""), bytes, info.width, info.height);
  } else if (info.contentType != nullptr) {
    known.asset = std::make_unique<Asset>(
        Asset{nameOf(part.bytes(), info.extension), info.contentType, info.width, info.height});
  } else {
    known.problem = "it is of an unknown kind or damaged";
  }
}

const Asset* Assets::add(opc::Part& part) {
  const auto [at, isNew] = byPart_.try_emplace(part.name());
  auto& known = at->second;
  if (isNew) {
    known.version = part.version();
    read(known, part);
  } else if (known.version != part.version()) {
    Known fresh;
    fresh.version = part.version();
    fresh.held = std::move(known.held);
    fresh.heldBefore = std::move(known.heldBefore);
    known = std::move(fresh);
    read(known, part);
  } else if (!known.asset && !known.foreignName.empty()) {
    convert(known, known.foreignName, {}, 0, 0);
  }
  if (known.asset && known.version != 0) {
    hold(known, part);
  } else if (known.asset) {
    partByName_.try_emplace(known.asset->name, part.name());
  }
  note(known, part);
  return known.asset.get();
}

void Assets::hold(Known& known, opc::Part& part) {
  const std::string& name = known.asset->name;
  if (known.held && known.held->asset.name == name) return;
  const std::shared_ptr<const Held> forgotten = std::exchange(known.heldBefore, known.held);
  known.held = heldByName_[name].lock();
  if (!known.held) {
    known.held = std::make_shared<const Held>(
        Held{*known.asset, known.converted ? known.converted : part.sharedBytes()});
    heldByName_[name] = known.held;
  }
  if (forgotten && forgotten.use_count() == 1) heldByName_.erase(forgotten->asset.name);
}

const Asset* Assets::addMedia(opc::Part& part) {
  const auto [at, isNew] = byPart_.try_emplace(part.name());
  auto& known = at->second;
  if (isNew) {
    const auto info = pictures::readMediaInfo(part.bytes());
    if (info.contentType != nullptr) {
      known.asset =
          std::make_unique<Asset>(Asset{nameOf(part.bytes(), info.extension), info.contentType, 0, 0});
      partByName_.try_emplace(known.asset->name, part.name());
    } else {
      known.problem = "browsers do not play films and sounds of its kind";
    }
  }
  note(known, part);
  return known.asset.get();
}

void Assets::note(const Known& known, const opc::Part& part) {
  const auto noteOnce = [](std::vector<std::string>* list, std::string text) {
    if (list != nullptr && std::find(list->begin(), list->end(), text) == list->end()) {
      list->push_back(std::move(text));
    }
  };
  if (known.asset) {
    noteOnce(collected_, known.asset->name);
  } else {
    noteOnce(problems_, part.name() + " is not shown: " + known.problem + ".");
  }
}

const Asset* Assets::find(std::string_view name) const {
  const auto held = heldByName_.find(std::string(name));
  if (held != heldByName_.end()) {
    if (const auto one = held->second.lock()) return &one->asset;
  }
  const auto part = partByName_.find(std::string(name));
  return part == partByName_.end() ? nullptr : byPart_.at(part->second).asset.get();
}

std::shared_ptr<const std::string> Assets::bytes(std::string_view name) const {
  const auto held = heldByName_.find(std::string(name));
  if (held != heldByName_.end()) {
    if (const auto one = held->second.lock()) return one->bytes;
  }
  const auto known = partByName_.find(std::string(name));
  if (known == partByName_.end()) return nullptr;
  if (const auto& converted = byPart_.at(known->second).converted) return converted;
  opc::Part* part = package_.find(known->second);
  return part != nullptr ? part->sharedBytes() : nullptr;
}

}  // namespace render
