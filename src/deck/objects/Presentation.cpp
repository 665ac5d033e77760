// A presentation between its package and those who change it: slides, saving, and who is told.

#include "deck/objects/Presentation.h"

#include <algorithm>
#include <utility>

#include "basic/Strings.h"
#include "deck/Failure.h"
#include "deck/objects/Application.h"
#include "deck/objects/Links.h"
#include "deck/objects/Slide.h"
#include "deck/objects/SlideShowSettings.h"
#include "deck/objects/Tags.h"
#include "deck/objects/Thumbnail.h"
#include "host/services.h"
#include "opc/Xml.h"

namespace deck {
namespace {

std::string_view rootName(opc::Part& part) { return part.xml().document_element().name(); }

/// The file of a linked picture. What lies on another computer's server is not fetched: empty.
std::string linkedFile(const Presentation& presentation, std::int32_t slideIndex, pugi::xml_node shape) {
  std::string source = linkSource(presentation, slideIndex, shape);
  return source.find("://") == std::string::npos ? source : std::string();
}

/// Whether it is a linked picture, or filled with one.
bool showsLinkedPicture(pugi::xml_node shape) {
  return !presentationml::oleObject(shape) && pictureOf(shape).attribute("r:link");
}

/// Linked pictures of a slide without a copy.
template <typename Visit>
void forEachEmptyLink(const Presentation& presentation, std::int32_t slideIndex, const Visit& visit) {
  for (const pugi::xml_node shape : presentation.shapesOf(slideIndex).all()) {
    if (showsLinkedPicture(shape) && !pictureOf(shape).attribute("r:embed")) visit(shape);
  }
}

}  // namespace

Presentation::Presentation(std::unique_ptr<opc::Package> package, std::string path,
                           std::optional<opc::FileState> state, std::vector<Damage> damages)
    : package_(std::move(package)),
      path_(std::move(path)),
      state_(state),
      damages_(std::move(damages)),
      tags_(*package_),
      pictures_(*package_) {
  part_ = package_->related(opc::relationship::OfficeDocument);
  const std::string refused = basic::InQuotes(package_->name()) + " cannot be opened: ";
  if (part_ == nullptr) fail(refused + "its presentation part is missing");
  if (rootName(*part_) != "p:presentation") {
    fail(refused + "it is no presentation; its main part holds <" + std::string(rootName(*part_)) + ">");
  }
  loadSlides();
  tags_.onChange([this](const TagList& list) { tellOfEdit(&EditListener::tagsWillChange, list.owner()); });
}

Presentation::~Presentation() = default;

std::string Presentation::FullName() const { return path_; }
bool Presentation::Saved() const { return saved_; }
void Presentation::Saved(bool saved) { saved_ = saved; }

void Presentation::Save() {
  if (isSaving_) {
    write();
    wroteWhileSaving_ = true;
    return;
  }
  isSaving_ = true;
  wroteWhileSaving_ = false;
  try {
    if (application_ != nullptr) {
      application_->raise<PowerPoint::Presentation>(&PowerPoint::ApplicationEvents::PresentationSave,
                                                    shared_from_this());
    }
    // A handler that saved and left nothing unsaved has done the work.
    if (!(wroteWhileSaving_ && saved_)) write();
    for (EditListener* const each : editListeners_) each->saved();
  } catch (...) {
    isSaving_ = false;
    throw;
  }
  isSaving_ = false;
}

void Presentation::write() {
  if (path_.empty()) fail("The presentation has no file yet: save it as a copy under a name.");
  requireWhole();
  tags_.write();
  charts_.write();
  const LivePictures::Absence ownPictures(pictures_, /*theyStay=*/false);
  std::string bytes = package_->serialize();
  state_ = opc::replaceFile(path_, bytes, state_ ? &*state_ : nullptr);
  package_->rebase(std::move(bytes));
  saved_ = true;
}

void Presentation::requireWhole() const {
  if (damages_.empty()) return;
  fail(basic::InQuotes(package_->name()) + " cannot be saved, as it is damaged: " + damages_.front().text);
}

void Presentation::SaveCopyAs(std::string_view fileName) {
  requireWhole();
  tags_.write();
  charts_.write();
  const LivePictures::Absence ownLinks(pictures_, /*theyStay=*/true);
  const ThumbnailAbsence noThumbnail(*package_);
  const opc::FileState written = opc::replaceFile(std::string(fileName), package_->serialize());
  if (fileName == path_) state_ = written;
}

void Presentation::Close() {
  if (application_ != nullptr) application_->close(shared_from_this());
}

std::shared_ptr<PowerPoint::Tags> Presentation::Tags() {
  return std::make_shared<deck::Tags>(shared_from_this(), tags_.of(*part_, part_->xml().document_element()));
}

std::shared_ptr<PowerPoint::Slides> Presentation::Slides() {
  return std::make_shared<deck::Slides>(shared_from_this());
}

std::shared_ptr<PowerPoint::SlideShowSettings> Presentation::SlideShowSettings() {
  return std::make_shared<deck::SlideShowSettings>(*this);
}

void Presentation::UpdateLinks() {
  std::string failure;
  for (std::int32_t slide = 1; slide <= slideCount(); ++slide) {
    for (const pugi::xml_node shape : shapesOf(slide).all()) {
      try {
        updateLink(slide, shape);
      } catch (const basic::Error& error) {
        if (failure.empty()) failure = error.description;
      }
    }
  }
  notify([](ChangeListener& listener) { listener.linksUpdated(); });
  if (!failure.empty()) fail(failure);
}

void Presentation::updateLink(std::int32_t slideIndex, pugi::xml_node shape) {
  if (!showsLinkedPicture(shape)) return;
  if (pictures_.shows(shape, LivePictures::Reason::Data)) return;
  const std::string source = linkedFile(*this, slideIndex, shape);
  if (source.empty()) return;
  const host::Files* files = host::Current().files;
  const std::string path = files != nullptr ? files->LocalPath(source) : source;
  if (application_ != nullptr) application_->requireReadable(path);
  pictures::PictureFile picture = pictures::readPictureFile(path);
  if (pictures_.show(slidePart(slideIndex), shape, std::move(picture), LivePictures::Reason::OwnLink)) {
    tellOfShape(slideIndex, shape);
  }
}

void Presentation::loadLinkedPictures() {
  for (std::int32_t slide = 1; slide <= slideCount(); ++slide) loadLinkedPictures(slide);
}

void Presentation::loadLinkedPictures(std::int32_t slideIndex) {
  forEachEmptyLink(*this, slideIndex, [&](pugi::xml_node shape) { loadLink(slideIndex, shape); });
}

std::vector<std::string> Presentation::missingPictures() const {
  std::vector<std::string> files;
  for (std::int32_t slide = 1; slide <= slideCount(); ++slide) {
    forEachEmptyLink(*this, slide, [&](pugi::xml_node shape) {
      if (std::string file = linkedFile(*this, slide, shape); !file.empty()) files.push_back(std::move(file));
    });
  }
  return files;
}

void Presentation::loadLink(std::int32_t slideIndex, pugi::xml_node shape) {
  try {
    updateLink(slideIndex, shape);
  } catch (const basic::Error&) {  // as PowerPoint opens a deck whose links are broken
  }
}

void Presentation::showPicture(std::int32_t slideIndex, pugi::xml_node shape, pictures::PictureFile picture) {
  requirePicture(slideIndex, shape);
  if (pictures_.show(slidePart(slideIndex), shape, std::move(picture), LivePictures::Reason::Data)) {
    noteShapeChange(slideIndex, shape);
  }
}

void Presentation::requirePicture(std::int32_t slideIndex, pugi::xml_node shape) const {
  if (pictureOf(shape)) return;
  fail("The shape " + basic::InQuotes(presentationml::shapeName(shape)) + " on slide " +
       std::to_string(slideIndex) + " holds no picture whose place another could take.");
}

void Presentation::showLinkedObject(std::int32_t slideIndex, std::uint32_t shapeId,
                                    pictures::PictureFile picture) {
  const std::vector<pugi::xml_node>& shapes = shapesOf(slideIndex).all();
  const auto shape = std::find_if(shapes.begin(), shapes.end(), [&](pugi::xml_node node) {
    return presentationml::shapeId(node) == shapeId;
  });
  if (shape == shapes.end()) {
    fail("There is no shape of the id " + std::to_string(shapeId) + " on slide " +
         std::to_string(slideIndex) + ".");
  }
  requirePicture(slideIndex, *shape);
  if (pictures_.shows(*shape, LivePictures::Reason::Data)) return;
  if (pictures_.show(slidePart(slideIndex), *shape, std::move(picture), LivePictures::Reason::OwnLink)) {
    tellOfShape(slideIndex, *shape);
  }
}

void Presentation::showOwnPicture(std::int32_t slideIndex, pugi::xml_node shape) {
  if (!pictures_.shows(shape, LivePictures::Reason::Data) || !pictures_.showOwn(shape)) return;
  loadLink(slideIndex, shape);
  noteShapeChange(slideIndex, shape);
}

void Presentation::renameShape(std::int32_t slideIndex, pugi::xml_node shape, std::string_view name) {
  const std::string legal = opc::xml::legalText(name);
  if (legal.empty()) fail("A shape needs a name.");
  const auto& all = shapesOf(slideIndex).all();
  const bool isTaken = std::any_of(all.begin(), all.end(), [&](pugi::xml_node other) {
    return other != shape && basic::EqualsIgnoreCase(presentationml::shapeName(other), legal);
  });
  if (isTaken)
    fail("Another shape on slide " + std::to_string(slideIndex) + " is named " + basic::InQuotes(legal) +
         ".");
  restoreName(slideIndex, shape, legal);
}

void Presentation::restoreName(std::int32_t slideIndex, pugi::xml_node shape, std::string_view name) {
  pugi::xml_node properties = presentationml::shapeProperties(shape);
  if (name == properties.attribute("name").value()) return;
  tellOfEdit(&EditListener::nameWillChange, shape);
  pugi::xml_attribute stored = properties.attribute("name");
  if (!stored) stored = properties.append_attribute("name");
  stored = std::string(name).c_str();
  SlideEntry& entry = slides_[static_cast<std::size_t>(slideIndex - 1)];
  entry.readShapes();
  noteShapeChange(slideIndex, shape);
  Saved(false);
}

std::int32_t Presentation::slideCount() const { return static_cast<std::int32_t>(slides_.size()); }

const Presentation::SlideEntry& Presentation::slide(std::int32_t index) const {
  if (index < 1 || index > slideCount()) {
    fail("There is no slide " + std::to_string(index) + " in " + basic::InQuotes(package_->name()) +
         ", which has " + std::to_string(slideCount()) + ".");
  }
  return slides_[static_cast<std::size_t>(index - 1)];
}

opc::Part& Presentation::slidePart(std::int32_t index) const { return *slide(index).part; }
const presentationml::ShapeIndex& Presentation::shapesOf(std::int32_t slideIndex) const {
  return *slide(slideIndex).shapes;
}

bool Presentation::isHidden(std::int32_t slideIndex) const {
  return !slidePart(slideIndex).xml().document_element().attribute("show").as_bool(true);
}

std::optional<std::int32_t> Presentation::slideByRelationship(std::string_view id) const {
  const auto find = [&](const auto& matches) {
    return std::find_if(slides_.begin(), slides_.end(), matches);
  };
  auto found = find([&](const SlideEntry& entry) { return entry.relationshipId == id; });
  // A custom show may have relationships of its own to the slides.
  const opc::Part* part = found == slides_.end() ? part_->target(id) : nullptr;
  if (part != nullptr) found = find([&](const SlideEntry& entry) { return entry.part == part; });
  if (found == slides_.end()) return std::nullopt;
  return static_cast<std::int32_t>(found - slides_.begin() + 1);
}

void Presentation::addListener(ChangeListener& listener) { listeners_.push_back(&listener); }
void Presentation::removeListener(ChangeListener& listener) { std::erase(listeners_, &listener); }
void Presentation::addListener(EditListener& listener) { editListeners_.push_back(&listener); }
void Presentation::removeListener(EditListener& listener) { std::erase(editListeners_, &listener); }

const Owners& Presentation::owners() {
  if (!owners_) owners_.emplace(*this);
  return *owners_;
}

void Presentation::tellOfEdit(void (EditListener::*event)(const OwnerId&), pugi::xml_node owner) {
  if (editListeners_.empty()) return;
  const OwnerId id = owners().idOf(owner);
  for (EditListener* listener : editListeners_) (listener->*event)(id);
}

template <typename Event>
void Presentation::notify(const Event& event) {
  // A handler may end its own subscription.
  const std::vector<ChangeListener*> listeners = listeners_;
  for (ChangeListener* listener : listeners) event(*listener);
}

void Presentation::noteChange(opc::Part& part) {
  part.markChanged();
  saved_ = false;
}

void Presentation::noteShapeChange(std::int32_t slideIndex, pugi::xml_node shape) {
  noteChange(slidePart(slideIndex));
  tellOfShape(slideIndex, shape);
}

void Presentation::tellOfShape(std::int32_t slideIndex, pugi::xml_node shape) {
  notify(
      [&](ChangeListener& listener) { listener.shapeChanged(slideIndex, presentationml::shapeId(shape)); });
}

void Presentation::noteCellChange(std::int32_t slideIndex, pugi::xml_node frame, std::int32_t row,
                                  std::int32_t column) {
  noteChange(slidePart(slideIndex));
  notify([&](ChangeListener& listener) {
    listener.cellChanged(slideIndex, presentationml::shapeId(frame), row, column);
  });
}

void Presentation::noteChartChange(std::int32_t slideIndex, pugi::xml_node frame) {
  saved_ = false;
  notify(
      [&](ChangeListener& listener) { listener.shapeChanged(slideIndex, presentationml::shapeId(frame)); });
}

void Presentation::noteHiddenChange(std::int32_t slideIndex) {
  noteChange(slidePart(slideIndex));
  notify([&](ChangeListener& listener) { listener.slideHiddenChanged(slideIndex); });
}

}  // namespace deck
