#pragma once

#include <algorithm>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "basic/Error.h"
#include "basic/Strings.h"
#include "fakes/FakeSlide.h"
#include "host/addin.h"
#include "host/powerpoint.h"

/// A presentation host in memory: objects with public state, so that a test sets
/// up and looks at what the system reads and writes.
namespace fakes {

class Presentation;

/// The files of presentations, by name.
using Disk = std::map<std::string, std::shared_ptr<Presentation>>;

class NamedShow final : public PowerPoint::NamedSlideShow {
 public:
  std::string Name() const override { return name; }
  std::vector<std::int32_t> SlideIDs() const override { return ids; }
  void SlideIDs(const std::vector<std::int32_t>& value) override { ids = value; }
  std::string name;
  std::vector<std::int32_t> ids;
};

class NamedShows final : public PowerPoint::NamedSlideShows {
 public:
  std::int32_t Count() const override { return static_cast<std::int32_t>(items.size()); }
  std::shared_ptr<PowerPoint::NamedSlideShow> Item(std::int32_t i) override {
    return items.at(static_cast<std::size_t>(i) - 1);
  }
  std::vector<std::shared_ptr<NamedShow>> items;
};

class Presentation final : public PowerPoint::Presentation,
                           public SlideOwner,
                           public PowerPoint::Slides,
                           public PowerPoint::SlideShowSettings,
                           public std::enable_shared_from_this<Presentation> {
 public:
  std::string FullName() const override { return fullName; }
  bool Saved() const override { return saved; }
  void Saved(bool value) override { saved = value; }
  void Save() override {
    ++saves;
    if (onSave) onSave();
  }
  void SaveCopyAs(std::string_view fileName) override {
    if (disk != nullptr) (*disk)[std::string(fileName)] = Clone();
  }
  void Close() override {
    if (onClose) onClose();
  }
  std::shared_ptr<PowerPoint::Tags> Tags() override { return tags; }
  std::shared_ptr<PowerPoint::Slides> Slides() override { return shared_from_this(); }
  std::shared_ptr<PowerPoint::SlideShowSettings> SlideShowSettings() override { return shared_from_this(); }
  PowerPoint::SlideShowType ShowType() const override { return showType; }
  PowerPoint::SlideShowRangeType RangeType() const override { return rangeType; }
  void RangeType(PowerPoint::SlideShowRangeType type) override { rangeType = type; }
  std::int32_t StartingSlide() const override { return startingSlide; }
  void StartingSlide(std::int32_t value) override { startingSlide = value; }
  std::int32_t EndingSlide() const override { return endingSlide; }
  void EndingSlide(std::int32_t value) override { endingSlide = value; }
  std::shared_ptr<PowerPoint::NamedSlideShows> NamedSlideShows() override { return namedShows; }
  void UpdateLinks() override { ++linkUpdates; }

  std::int32_t Count() const override { return static_cast<std::int32_t>(slides.size()); }
  std::shared_ptr<PowerPoint::Slide> Item(std::int32_t i) override {
    if (i < 1 || i > Count()) Fail("slide index out of range");
    return slides[static_cast<std::size_t>(i) - 1];
  }

  fakes::Slide& Add() { return Insert(std::make_shared<fakes::Slide>(), Count()); }
  fakes::Slide& Insert(std::shared_ptr<fakes::Slide> slide, std::int32_t behind) {
    slide->owner = this;
    slide->id = ++lastId;
    const auto place = slides.insert(slides.begin() + behind, std::move(slide));
    fakes::Slide& inserted = **place;
    Number();
    return inserted;
  }
  void Number() {
    for (std::size_t i = 0; i < slides.size(); ++i) slides[i]->index = static_cast<std::int32_t>(i + 1);
  }
  std::shared_ptr<PowerPoint::Slide> DuplicateOf(const fakes::Slide& slide) override {
    Insert(slide.Clone(), slide.index);
    return Item(slide.index + 1);
  }
  void Remove(const fakes::Slide& slide) override {
    const std::int32_t id = slide.id;
    slides[static_cast<std::size_t>(slide.index) - 1]->isDeleted = true;
    slides.erase(slides.begin() + (slide.index - 1));
    for (const auto& show : namedShows->items) std::erase(show->ids, id);
    Number();
  }
  void Move(const fakes::Slide& slide, std::int32_t toPos) override {
    const auto moved = slides[static_cast<std::size_t>(slide.index) - 1];
    std::erase(slides, moved);
    slides.insert(slides.begin() + (toPos - 1), moved);
    Number();
  }
  std::shared_ptr<Presentation> Clone() const {
    auto clone = std::make_shared<Presentation>(*this);
    clone->tags = std::make_shared<fakes::Tags>(*tags);
    for (auto& slide : clone->slides) {
      slide = slide->Clone();
      slide->owner = clone.get();
    }
    clone->namedShows = std::make_shared<NamedShows>(*namedShows);
    for (auto& show : clone->namedShows->items) show = std::make_shared<NamedShow>(*show);
    return clone;
  }

  std::string fullName = "/decks/board.pptx";
  bool saved = true;
  int saves = 0;
  int linkUpdates = 0;
  std::int32_t lastId = 255;
  std::function<void()> onSave;
  std::function<void()> onClose;
  /// Where copies are written; null where nobody looks at them.
  Disk* disk = nullptr;
  PowerPoint::SlideShowRangeType rangeType = PowerPoint::SlideShowRangeType::ShowAll;
  std::int32_t startingSlide = 1;
  std::int32_t endingSlide = 1;
  std::shared_ptr<NamedShows> namedShows = std::make_shared<NamedShows>();
  PowerPoint::SlideShowType showType = PowerPoint::SlideShowType::Speaker;
  std::vector<std::shared_ptr<fakes::Slide>> slides;
  std::shared_ptr<fakes::Tags> tags = std::make_shared<fakes::Tags>();
};

class Window final : public PowerPoint::SlideShowWindow,
                     public PowerPoint::SlideShowView,
                     public std::enable_shared_from_this<Window> {
 public:
  explicit Window(std::shared_ptr<fakes::Presentation> shown) : presentation(std::move(shown)) {}
  std::shared_ptr<PowerPoint::Presentation> Presentation() override { return presentation; }
  std::shared_ptr<PowerPoint::SlideShowView> View() override { return shared_from_this(); }
  std::int32_t CurrentShowPosition() const override {
    if (onPosition) onPosition();
    return position;
  }
  /// Those of a show that loops over all slides.
  PowerPoint::SlidesAhead SlidesAhead() const override {
    PowerPoint::SlidesAhead ahead;
    const std::int32_t count = presentation->Count();
    for (std::int32_t step = 1; step < count && !ahead.Next; ++step) {
      const std::int32_t slide = (position - 1 + step) % count + 1;
      if (presentation->Item(slide)->SlideShowTransition()->Hidden()) {
        ahead.PassedOver.push_back(slide);
      } else {
        ahead.Next = slide;
      }
    }
    return ahead;
  }
  std::shared_ptr<PowerPoint::Slide> Slide() override { return presentation->Item(position); }
  PowerPoint::SlideShowPointerType PointerType() const override { return pointer; }
  void PointerType(PowerPoint::SlideShowPointerType type) override { pointer = type; }

  std::shared_ptr<fakes::Presentation> presentation;
  std::int32_t position = 1;
  std::function<void()> onPosition;
  PowerPoint::SlideShowPointerType pointer = PowerPoint::SlideShowPointerType::AutoArrow;
};

/// A window in which the first slide is edited.
class EditWindow final : public PowerPoint::DocumentWindow,
                         public PowerPoint::Selection,
                         public std::enable_shared_from_this<EditWindow> {
 public:
  explicit EditWindow(std::shared_ptr<fakes::Presentation> edited) : presentation(std::move(edited)) {}
  std::shared_ptr<PowerPoint::Presentation> Presentation() override { return presentation; }
  std::shared_ptr<PowerPoint::Selection> Selection() override { return shared_from_this(); }
  PowerPoint::SelectionType Type() const override {
    return shapes.empty() ? PowerPoint::SelectionType::Slides : PowerPoint::SelectionType::Shapes;
  }
  std::vector<std::shared_ptr<PowerPoint::Shape>> ShapeRange() override { return shapes; }
  std::vector<std::shared_ptr<PowerPoint::Slide>> SlideRange() override {
    if (presentation->Count() == 0) return {};
    return {presentation->Item(1)};
  }

  std::shared_ptr<fakes::Presentation> presentation;
  std::vector<std::shared_ptr<PowerPoint::Shape>> shapes;
};

class Application final : public PowerPoint::Application,
                          public PowerPoint::Presentations,
                          public std::enable_shared_from_this<Application> {
 public:
  std::string Version() const override { return version; }
  std::shared_ptr<PowerPoint::Presentations> Presentations() override { return shared_from_this(); }
  void Advise(PowerPoint::ApplicationEvents* events) override { sink = events; }
  std::int32_t Count() const override { return openCount; }
  std::shared_ptr<PowerPoint::Presentation> Open(std::string_view fileName) override {
    const auto found = disk.find(std::string(fileName));
    if (found == disk.end()) Fail(std::string(fileName) + " cannot be opened");
    const auto opened = found->second->Clone();
    opened->fullName = fileName;
    opened->disk = &disk;
    opened->onClose = [this] { --openCount; };
    ++openCount;
    if (sink != nullptr) sink->PresentationOpen(opened);
    return opened;
  }
  std::shared_ptr<PowerPoint::DocumentWindow> ActiveWindow() override { return window; }
  std::shared_ptr<Office::CommandBars> CommandBars() override { return commandBars; }
  void StartNewUndoEntry(std::string_view label, std::string_view run) override {
    undoEntries.emplace_back(label, run);
  }

  /// Null without one.
  std::shared_ptr<PowerPoint::DocumentWindow> window;
  std::shared_ptr<Office::CommandBars> commandBars;
  std::vector<std::pair<std::string, std::string>> undoEntries;
  std::string version = "9.0.2716";
  std::int32_t openCount = 1;
  Disk disk;
  PowerPoint::ApplicationEvents* sink = nullptr;
};

/// The add-in's entry in its host.
class AddIn final : public AddInDesigner::AddIn {
 public:
  basic::Variant Property(std::string_view name) const override {
    if (name != "ProgId") Fail("no such property");
    return std::string("LF2000.Connect");
  }
};

}  // namespace fakes
