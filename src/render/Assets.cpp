#include "render/Assets.h"

#include <algorithm>
#include <cstdint>

#include "render/ImageInfo.h"

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

const Asset* Assets::add(deck::Part& part) {
  const auto [at, isNew] = byPart_.try_emplace(part.name());
  auto& asset = at->second;
  if (isNew) {
    const auto bytes = part.bytes();
    const auto info = readImageInfo(bytes);
    if (info.contentType == nullptr) return nullptr;
    asset = std::make_unique<Asset>(
        Asset{nameOf(bytes, info.extension), info.contentType, info.width, info.height});
    partByName_.emplace(asset->name, part.name());
  }
  if (asset && collected_ != nullptr &&
      std::find(collected_->begin(), collected_->end(), asset->name) == collected_->end()) {
    collected_->push_back(asset->name);
  }
  return asset.get();
}

const Asset* Assets::find(std::string_view name) const {
  const auto part = partByName_.find(std::string(name));
  return part == partByName_.end() ? nullptr : byPart_.at(part->second).get();
}

std::string_view Assets::bytes(std::string_view name) const {
  const auto known = partByName_.find(std::string(name));
  if (known == partByName_.end()) return {};
  deck::Part* part = package_.find(known->second);
  return part != nullptr ? part->bytes() : std::string_view();
}

}  // namespace render
