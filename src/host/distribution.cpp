#include "host/distribution.h"

#include <algorithm>
#include <utility>

#include "basic/Strings.h"

namespace host {

namespace {

std::string WithSlashes(std::string_view path) {
  std::string slashed(path);
  std::replace(slashed.begin(), slashed.end(), '\\', '/');
  while (slashed.size() > 1 && slashed.back() == '/') slashed.pop_back();
  return slashed;
}

bool LeadsUp(std::string_view path) {
  const auto parts = basic::Split(path, '/');
  return std::any_of(parts.begin(), parts.end(),
                     [](const std::string& part) { return part.empty() || part == "." || part == ".."; });
}

}  // namespace

EnclosurePlaces::EnclosurePlaces(std::string_view presentation) : folder_(WithSlashes(presentation)) {
  const std::size_t end = folder_.find_last_of('/');
  folder_.erase(end == std::string::npos ? 0 : end + 1);
  taken_.insert(basic::UCase(WithSlashes(presentation).substr(folder_.size())));
}

std::string EnclosurePlaces::Of(std::string_view path) {
  const std::string source = WithSlashes(path);
  if (source + "/" == folder_) return {};
  const auto known = places_.find(source);
  if (known != places_.end()) return known->second;
  std::string place;
  if (!folder_.empty() && source.starts_with(folder_)) place = source.substr(folder_.size());
  const std::string name = source.substr(source.find_last_of('/') + 1);
  if (place.empty() || LeadsUp(place))
    place = "files/" + (name.empty() || LeadsUp(name) ? std::string("folder") : name);
  for (int i = 2; !taken_.insert(basic::UCase(place)).second; ++i) {
    place = "files/" + std::to_string(i) + "/" + name;
  }
  return places_.emplace(source, place).first->second;
}

}  // namespace host
