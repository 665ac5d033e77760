#include "app/wiring/DrawnDeck.h"

#include <algorithm>
#include <filesystem>
#include <utility>

#include "host/services.h"
#include "platform/UserFolders.h"

namespace app {

namespace {

std::vector<std::vector<LinkedShape>> allLinkedShapes(deck::Presentation& deck) {
  std::vector<std::vector<LinkedShape>> all(1);
  for (std::int32_t slide = 1; slide <= deck.slideCount(); ++slide) all.push_back(linkedShapes(deck, slide));
  return all;
}

/// Pictures are converted once for this user, not at every start.
render::PictureConverter::Options conversion() {
  render::PictureConverter::Options options;
  options.cache = std::filesystem::path(platform::cacheFolder()) / "pictures";
  return options;
}

}  // namespace

DrawnDeck::DrawnDeck(deck::Presentation& deck, std::string assetPrefix)
    : deck_(deck),
      linked_(allLinkedShapes(deck)),
      converter_(conversion()),
      renderer_(
          deck.package(),
          {.assetPrefix = std::move(assetPrefix),
           .isLive = [this](int slide, std::uint32_t shape) { return linkedShape(slide, shape) != nullptr; },
           .converter = &converter_,
           .now = [] { return host::Current().clock->Now(); }}) {}

void DrawnDeck::linksChanged(int slide) {
  linked_[static_cast<std::size_t>(slide)] = app::linkedShapes(deck_, slide);
}

const std::vector<LinkedShape>& DrawnDeck::linkedShapes(int slide) const {
  return linked_[static_cast<std::size_t>(slide)];
}

const LinkedShape* DrawnDeck::linkedShape(int slide, std::uint32_t id) const {
  const auto& shapes = linkedShapes(slide);
  const auto found =
      std::find_if(shapes.begin(), shapes.end(), [&](const LinkedShape& shape) { return shape.id == id; });
  return found == shapes.end() ? nullptr : &*found;
}

std::optional<web::Asset> DrawnDeck::asset(std::string_view name) const {
  const render::Asset* found = renderer_.assets().find(name);
  if (!found) return std::nullopt;
  auto bytes = renderer_.assets().bytes(name);
  if (!bytes) return std::nullopt;
  return web::Asset{std::move(bytes), found->contentType};
}

}  // namespace app
