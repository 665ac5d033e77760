#include "deck/objects/Links.h"

#include <algorithm>
#include <cctype>

#include "basic/Percent.h"
#include "basic/Strings.h"
#include "deck/Failure.h"
#include "pictures/PictureFile.h"

namespace deck {
namespace {

bool hasDrive(std::string_view path) {
  return path.size() >= 2 && path[1] == ':' && std::isalpha(static_cast<unsigned char>(path[0])) != 0;
}

std::string withBackslashes(std::string path) {
  std::replace(path.begin(), path.end(), '/', '\\');
  return path;
}

bool isUrl(std::string_view target) {
  const std::size_t colon = target.find(':');
  return colon != std::string_view::npos && colon > 1 && target.find_first_of("/\\") > colon;
}

}  // namespace

std::shared_ptr<MSGraph::Chart> OLEFormat::Object() {
  fail("An object of the kind " + basic::InQuotes(progId_) +
       " cannot be refilled; a chart of PowerPoint 2007 or later can.");
}

std::string sourcePath(std::string_view target, std::string_view deckPath) {
  constexpr std::string_view Scheme = "file:";
  const bool isFile = basic::EqualsIgnoreCase(target.substr(0, Scheme.size()), Scheme);
  if (!isFile && isUrl(target)) return std::string(target);
  std::string path = basic::PercentDecoded(isFile ? target.substr(Scheme.size()) : target);
  if (!isFile) {
    if (hasDrive(path) || path.starts_with('/') || path.starts_with('\\')) return path;
    const std::size_t folderEnd = deckPath.find_last_of("/\\");
    return folderEnd == std::string_view::npos ? path : std::string(deckPath.substr(0, folderEnd + 1)) + path;
  }
  // file:///C:/x, file:///\\server\x, file:///unix/x; file://server/x has a host.
  if (path.starts_with("///")) {
    const std::string_view rest = std::string_view(path).substr(3);
    if (hasDrive(rest) || rest.starts_with("\\\\")) return withBackslashes(std::string(rest));
    return path.substr(2);
  }
  if (path.starts_with("//")) return withBackslashes(path);
  return hasDrive(path) ? withBackslashes(path) : path;
}

std::string linkSource(const Presentation& presentation, std::int32_t slideIndex, pugi::xml_node shape) {
  const std::string_view id = presentationml::linkRelationship(shape);
  const opc::Relationship* link = id.empty() ? nullptr : presentation.slidePart(slideIndex).relationship(id);
  if (link == nullptr || !link->external) return {};
  return sourcePath(link->target, presentation.FullName());
}

std::string LinkFormat::SourceFullName() const {
  return shown_.value_or(linkSource(*presentation_, slideIndex_, shape_));
}

void LinkFormat::Update() {
  if (!shown_) return presentation_->updateLink(slideIndex_, shape_);
  if (shown_->empty()) return presentation_->showOwnPicture(slideIndex_, shape_);
  presentation_->showPicture(slideIndex_, shape_, pictures::readPictureFile(*shown_));
}

}  // namespace deck
