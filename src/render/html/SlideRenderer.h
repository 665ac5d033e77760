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

#include "basic/Date.h"
#include "opc/Package.h"
#include "render/paint/Assets.h"
#include "render/scene/Inheritance.h"
#include "render/scene/Scene.h"
#include "render/svg/HtmlOut.h"

// Slides as HTML with inline SVG, at their natural size in CSS px; whoever shows
// them scales the whole with a transform. docs/linking/what-is-drawn.md says what is drawn.

namespace render {

struct SlideSize {
  double width = 960;
  double height = 720;
};

/// A typeface that text is set in, and the family that this machine draws it with: itself
/// when it is installed, empty on a machine without fonts.
struct UsedFont {
  std::string typeface;
  std::string family;
};

struct SlidePage {
  /// A section (page::Slide); in it one element per top-level shape, in drawing order. PageContract.h says
  /// what others find in it.
  std::string html;
  /// Names of the pictures it uses; each once.
  std::vector<std::string> assets;
  /// What could not be read and is therefore missing, one sentence each.
  std::vector<std::string> problems;
  /// What its text is set in, each typeface once, as written in the deck; not those of symbols,
  /// which are drawn as characters that every font has.
  std::vector<UsedFont> fonts;
  /// By its fields: such a page is right until the day is over, or the minute.
  TimeShown timeShown = TimeShown::None;
};

/// Where a cell of a table stands: row and column, from 1.
using CellPlaces = std::set<std::pair<int, int>>;

/// A cell as it stands in its table's element.
struct DrawnCell {
  /// Among the td elements, from 0.
  std::size_t index = 0;
  std::string html;
};

/// Renders the slides of one package, which must outlive it. Reads the package's
/// present state at every call; only what layouts, masters, themes and pictures
/// give is kept (see forget()). One thread.
class SlideRenderer {
 public:
  struct Options {
    /// What precedes a picture's name in its address.
    std::string assetPrefix = "assets/";
    /// Whether a shape's text changes while it is shown; its digits get equal widths.
    std::function<bool(int slideIndex, std::uint32_t shapeId)> isLive;
    /// For pictures that browsers do not show; may be null, must outlive the renderer. Whoever gives it calls
    /// forget() when a conversion has ended, and renders anew.
    PictureConversions* converter = nullptr;
    /// Local time, for fields that show a date or time; without it they show what was stored.
    std::function<basic::Date()> now = nullptr;
  };

  explicit SlideRenderer(opc::Package& package);
  SlideRenderer(opc::Package& package, Options options);
  ~SlideRenderer();

  /// In CSS px (EMU / 9525).
  [[nodiscard]] SlideSize size() const;
  [[nodiscard]] int slideCount() const;

  /// By one-based index in the presentation's order, hidden slides included. An
  /// index out of range is an error; what is wrong inside a slide is not. A page holds
  /// 32 MB at most; shapes beyond are not drawn.
  SlidePage slide(int index);

  /// What slide() draws, before it is a page, as SceneDump writes it. Errors as there.
  std::string scene(int index);

  /// The element of one top-level shape, byte for byte as it stands in the slide.
  /// An unknown id is an error.
  std::string shape(int slideIndex, std::uint32_t shapeId);

  /// The cells of a table at these places, byte for byte as they stand in its element. Those that others
  /// cover are left out. Errors as above.
  std::vector<DrawnCell> cells(int slideIndex, std::uint32_t shapeId, const CellPlaces& places);

  /// What the shape's frame covers of its slide, turned as it is, in CSS px. As above.
  Rect area(int slideIndex, std::uint32_t shapeId);

  /// A slide with the id "s<as>" that shows the background of this slide's layout alone.
  std::string backdrop(int index, int as = 0);

  /// The pictures that rendered slides refer to.
  [[nodiscard]] const Assets& assets() const { return assets_; }

  /// To be called when pictures were converted, when a layout, master or theme changed, or a slide got
  /// another layout or colour map.
  void forget();

 private:
  struct Prepared;

  [[nodiscard]] opc::Part& slidePart(int index) const;
  Prepared& prepare(int index);
  /// The background that a part states itself; empty without one.
  std::string background(const Prepared& slide, opc::Part& part, std::vector<std::string>& problems);
  void drawBehind(Prepared& slide);
  /// The element of a top-level shape; an unknown id is an error.
  Box find(Prepared& slide, std::uint32_t shapeId);
  std::optional<Box> build(Prepared& slide, pugi::xml_node shape, std::vector<std::string>* problems);
  /// False when there was no room: then the element is empty, and whatever follows may be written.
  bool write(HtmlOut& out, const Prepared& slide, const Box& box, int occurrence) const;

  opc::Package& package_;
  Options options_;
  opc::Part* presentation_;
  Assets assets_;
  std::map<std::pair<opc::Part*, opc::Part*>, std::unique_ptr<Inheritance>> inheritance_;
  std::map<opc::Part*, std::unique_ptr<Prepared>> prepared_;
};

}  // namespace render
