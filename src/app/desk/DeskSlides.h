#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "app/inspect/ShapeList.h"
#include "app/show/SlidePages.h"
#include "app/wiring/ToldOnce.h"
#include "deck/objects/Presentation.h"
#include "host/services.h"

namespace app {

/// A shape of a slide as an author meets it: what can be linked, and the frame that is laid over the slide.
struct DeskShape {
  ListedShape listed;
  /// The id of the group that it stands in; 0 outside of groups.
  std::uint32_t group = 0;
  /// Degrees, clockwise.
  double rotation = 0;
  bool isHidden = false;
  /// The pointer meets it within its outline, too.
  bool isFilled = false;
  /// Another shape of the slide has its name.
  bool isDouble = false;
};

/// The slides of an open deck as its authors' windows show them, drawn and described when they are asked for
/// and kept until they change. Slides count from 1.
class DeskSlides final : private deck::ChangeListener, private deck::EditListener {
 public:
  /// A slide and the id of a shape on it.
  using Place = std::pair<int, std::uint32_t>;

  /// `changed` is called whenever something has changed; must not throw. The loop and `problems` outlive this
  /// object. See SlidePages for `assetPrefix`.
  DeskSlides(std::shared_ptr<deck::Presentation> deck, host::Loop& loop, ToldOnce& problems,
             std::string assetPrefix, std::function<void()> changed);
  ~DeskSlides() override;
  DeskSlides(const DeskSlides&) = delete;
  DeskSlides& operator=(const DeskSlides&) = delete;

  [[nodiscard]] int count() const { return deck_->slideCount(); }
  /// What names the slide in every version of the deck.
  [[nodiscard]] std::uint32_t id(int slide) const { return deck_->slideId(slide); }
  [[nodiscard]] std::optional<int> find(std::uint32_t id) const;
  /// In CSS px.
  [[nodiscard]] render::SlideSize size() const { return pages_.size(); }

  [[nodiscard]] std::string html(int slide) { return pages_.page(slide).html; }
  /// The element of a shape; empty when it cannot be drawn.
  [[nodiscard]] std::string html(int slide, std::uint32_t shape) { return pages_.shape(slide, shape); }
  /// Counts up whenever the slide looks otherwise, and whenever it must be drawn anew as a whole.
  [[nodiscard]] int drawn(int slide) const { return entry(slide).drawn; }
  [[nodiscard]] int drawnWhole(int slide) const { return entry(slide).drawnWhole; }
  [[nodiscard]] std::optional<web::Asset> asset(std::string_view name) const { return pages_.asset(name); }

  /// In drawing order, the parts of a group behind it.
  [[nodiscard]] const std::vector<DeskShape>& shapes(int slide);
  [[nodiscard]] const std::vector<LinkedShape>& links(int slide) const {
    return pages_.drawn().linkedShapes(slide);
  }

  /// Takes up what was edited since the last call; true when something was.
  bool takeEdits();
  /// The shapes that have changed since the last call.
  [[nodiscard]] std::set<Place> takeChanged() { return std::exchange(changedShapes_, {}); }

 private:
  struct Entry {
    int drawn = 1;
    int drawnWhole = 1;
    std::optional<std::vector<DeskShape>> shapes;
  };

  void shapeChanged(std::int32_t slideIndex, std::uint32_t shapeId) override;
  void slideHiddenChanged(std::int32_t) override { changed_(); }
  void linksUpdated() override { drawAllAnew(); }
  void tagsWillChange(const deck::OwnerId& owner) override { noteEdit(owner); }
  void nameWillChange(const deck::OwnerId& owner) override { noteEdit(owner); }

  [[nodiscard]] Entry& entry(int slide) { return entries_[static_cast<std::size_t>(slide)]; }
  [[nodiscard]] const Entry& entry(int slide) const { return entries_[static_cast<std::size_t>(slide)]; }
  void noteEdit(const deck::OwnerId& owner);
  void describeAnew(int slide);
  void drawAllAnew();
  [[nodiscard]] std::vector<DeskShape> describe(int slide) const;

  std::shared_ptr<deck::Presentation> deck_;
  std::function<void()> changed_;
  SlidePages pages_;
  /// By slide.
  std::vector<Entry> entries_;
  std::set<Place> changedShapes_;
  /// By their ids; 0 stands for the presentation.
  std::set<std::uint32_t> editedSlides_;
};

}  // namespace app
