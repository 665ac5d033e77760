#include "render/html/SlideRenderer.h"

#include <algorithm>
#include <cmath>
#include <set>

#include "basic/Error.h"
#include "presentationml/ShapeNode.h"
#include "render/chart/ChartModel.h"
#include "render/geometry/XmlValues.h"
#include "render/html/BoxWriter.h"
#include "render/html/PageContract.h"
#include "render/scene/SceneBuilder.h"
#include "render/scene/SceneDump.h"
#include "render/text/FontMetrics.h"

// Slides put together: what is inherited is kept by layout, what lies behind by slide, and what fails costs
// its shape.

namespace render {

namespace {

[[noreturn]] void fail(const std::string& description) {
  throw basic::Error(basic::AdapterError, "render", description);
}

pugi::xml_node shapesOf(opc::Part& part) { return presentationml::shapeTree(part.xml().document_element()); }

bool hasId(pugi::xml_node shape, std::uint32_t id) {
  if (std::string_view(shape.name()) != "mc:AlternateContent") return presentationml::shapeId(shape) == id;
  for (const auto way : shape.children()) {
    for (const auto content : way.children()) {
      if (presentationml::shapeId(content) == id) return true;
    }
  }
  return false;
}

Box undrawn(pugi::xml_node shape) {
  Box box;
  box.id = presentationml::shapeId(shape);
  return box;
}

/// What the charts of a shape, or of a group, are drawn without.
void addChartProblems(const Box& box, const std::string& where, std::vector<std::string>& problems) {
  if (box.chart) {
    for (const auto& problem : box.chart->problems) {
      problems.push_back("The chart of " + where + " is not drawn whole: " + problem + ".");
    }
  }
  for (const auto& child : box.children) addChartProblems(child, where, problems);
}

bool showsMaster(opc::Part& part) {
  return boolOf(part.xml().document_element().attribute("showMasterSp")).value_or(true);
}

}  // namespace

/// A slide with what stays the same when its shapes change.
struct SlideRenderer::Prepared {
  Prepared(opc::Part& slidePart, int slideIndex, Fields shown, Inheritance& inherits)
      : part(slidePart),
        index(slideIndex),
        fields(std::move(shown)),
        inheritance(inherits),
        builder(inherits, slidePart, fields) {}

  opc::Part& part;
  int index;
  Fields fields;
  Inheritance& inheritance;
  SceneBuilder builder;
  /// What the layout and master show behind the slide's shapes.
  bool isBehindDrawn = false;
  std::string behind;
  /// The background of the layout or master, for slides without their own.
  std::string background;
  std::vector<std::string> behindAssets;
  std::vector<std::string> behindProblems;
  TextUse behindText;
};

SlideRenderer::SlideRenderer(opc::Package& package) : SlideRenderer(package, Options{}) {}

SlideRenderer::SlideRenderer(opc::Package& package, Options options)
    : package_(package),
      options_(std::move(options)),
      presentation_(package.related(opc::relationship::OfficeDocument)),
      assets_(package, options_.converter) {
  if (presentation_ == nullptr) fail("The file " + package.name() + " holds no presentation.");
}

SlideRenderer::~SlideRenderer() = default;

SlideSize SlideRenderer::size() const {
  const auto node = presentation_->xml().document_element().child("p:sldSz");
  const auto width = emuOf(node.attribute("cx")).value_or(0);
  const auto height = emuOf(node.attribute("cy")).value_or(0);
  if (width <= 0 || height <= 0) return {};
  return {pxFromEmu(width), pxFromEmu(height)};
}

int SlideRenderer::slideCount() const {
  const auto list = presentation_->xml().document_element().child("p:sldIdLst").children("p:sldId");
  return static_cast<int>(std::distance(list.begin(), list.end()));
}

opc::Part& SlideRenderer::slidePart(int index) const {
  int at = 0;
  for (const auto sldId : presentation_->xml().document_element().child("p:sldIdLst").children("p:sldId")) {
    if (++at != index) continue;
    if (opc::Part* part = presentation_->target(sldId.attribute("r:id").value())) return *part;
    fail("Slide " + std::to_string(index) + " is missing in the file " + package_.name() + ".");
  }
  fail("There is no slide " + std::to_string(index) + " in " + package_.name() + "; it has " +
       std::to_string(at) + ".");
}

SlideRenderer::Prepared& SlideRenderer::prepare(int index) {
  auto& part = slidePart(index);
  auto& known = prepared_[&part];
  if (known && known->index == index) return *known;
  opc::Part* layout = part.related(opc::relationship::SlideLayout);
  if (layout == nullptr)
    fail("Slide " + std::to_string(index) + " of " + package_.name() + " has no layout.");
  const Inheritance::Overrides own{
      part.xml().document_element().child("p:clrMapOvr").child("a:overrideClrMapping"),
      part.related(opc::relationship::ThemeOverride)};
  auto& inheritance = inheritance_[{layout, own.isEmpty() ? nullptr : &part}];
  if (!inheritance) inheritance = std::make_unique<Inheritance>(*presentation_, *layout, assets_, own);
  const auto first = numberOf(presentation_->xml().document_element().attribute("firstSlideNum")).value_or(1);
  known = std::make_unique<Prepared>(
      part, index, Fields{std::to_string(static_cast<long>(first) + index - 1), options_.now}, *inheritance);
  return *known;
}

std::string SlideRenderer::background(const Prepared& slide, opc::Part& part,
                                      std::vector<std::string>& problems) {
  try {
    const auto fill = SceneBuilder(slide.inheritance, part, slide.fields).background();
    if (!fill) return {};
    const auto area = size();
    HtmlOut out(HtmlOut::LargestPage / 8);
    BoxWriter(out, options_.assetPrefix)
        .background(*fill, page::slideElement(slide.index) + "-bg", area.width, area.height);
    return out.take();
  } catch (const basic::Error& error) {
    problems.push_back("The background of " + part.name() + " is not drawn: " + error.description);
    return {};
  }
}

void SlideRenderer::drawBehind(Prepared& slide) {
  // A date that the layout shows does not stay as it is.
  if (slide.isBehindDrawn && slide.behindText.timeShown == TimeShown::None) return;
  slide.behindAssets.clear();
  slide.behindProblems.clear();
  const Assets::Collecting collecting(assets_, slide.behindAssets, slide.behindProblems);
  opc::Part* layout = slide.inheritance.layout();
  opc::Part* master = slide.inheritance.master();
  const std::string prefix = page::slideElement(slide.index) + "-";
  HtmlOut out(HtmlOut::LargestPage / 4);
  BoxWriter writer(out, options_.assetPrefix);
  const auto drawShapes = [&](opc::Part& part, const std::string& name) {
    SceneBuilder builder(slide.inheritance, part, slide.fields);
    int count = 0;
    for (const auto child : shapesOf(part).children()) {
      if (presentationml::placeholder(child)) continue;
      const auto before = out.size();
      try {
        if (const auto box = builder.build(child))
          writer.writeAnonymous(*box, prefix + name + std::to_string(++count));
      } catch (const basic::Error& error) {
        out.cut(before);
        slide.behindProblems.push_back("A shape of " + part.name() + " is not drawn: " + error.description);
      }
    }
  };
  if (master != nullptr && showsMaster(*layout)) drawShapes(*master, "m");
  drawShapes(*layout, "l");
  slide.behindText = out.textUse();
  slide.behind.clear();
  if (out.size() > 0) {
    slide.behind.assign("<div class=\"").append(page::Behind).append("\" aria-hidden=\"true\">");
    slide.behind.append(out.str()).append("</div>");
  }
  slide.background = background(slide, *layout, slide.behindProblems);
  if (slide.background.empty() && master != nullptr)
    slide.background = background(slide, *master, slide.behindProblems);
  slide.isBehindDrawn = true;
}

std::optional<Box> SlideRenderer::build(Prepared& slide, pugi::xml_node shape,
                                        std::vector<std::string>* problems) {
  try {
    auto box = slide.builder.build(
        shape, options_.isLive && options_.isLive(slide.index, presentationml::shapeId(shape)));
    if (box && problems != nullptr) {
      const auto where = "shape " + std::to_string(box->id) + " of slide " + std::to_string(slide.index);
      addChartProblems(*box, where, *problems);
    }
    return box;
  } catch (const basic::Error& error) {
    auto box = undrawn(shape);
    if (problems != nullptr) {
      problems->push_back("Shape " + std::to_string(box.id) + " of slide " + std::to_string(slide.index) +
                          " is not drawn: " + error.description);
    }
    return box;
  }
}

bool SlideRenderer::write(HtmlOut& out, const Prepared& slide, const Box& box, int occurrence) const {
  const bool live = options_.isLive && options_.isLive(slide.index, box.id);
  auto id = page::shapeElement(slide.index, box.id);
  // Ids ought to be unique and sometimes are not.
  if (occurrence > 1) id += "-" + std::to_string(occurrence);
  const auto before = out.size();
  try {
    BoxWriter(out, options_.assetPrefix).write(box, id, live);
    return true;
  } catch (const basic::Error&) {
    out.cut(before);
    out.lift();
    BoxWriter(out, options_.assetPrefix).write({}, id, live);
    return false;
  }
}

SlidePage SlideRenderer::slide(int index) {
  auto& slide = prepare(index);
  drawBehind(slide);
  SlidePage page;
  page.assets = slide.behindAssets;
  page.problems = slide.behindProblems;
  const Assets::Collecting collecting(assets_, page.assets, page.problems);
  const auto area = size();
  HtmlOut out;
  out << page::startSlide(index, area.width, area.height);
  const auto own = background(slide, slide.part, page.problems);
  out << (own.empty() ? slide.background : own);
  if (showsMaster(slide.part)) {
    out << slide.behind;
    out.textUse() = slide.behindText;
  }
  std::map<std::uint32_t, int> occurrences;
  bool isFull = false;
  for (const auto shape : shapesOf(slide.part).children()) {
    const auto box = isFull ? std::optional(undrawn(shape)) : build(slide, shape, &page.problems);
    if (!box || write(out, slide, *box, ++occurrences[box->id]) || isFull) continue;
    isFull = true;
    page.problems.push_back("Slide " + std::to_string(index) + " is drawn without its shapes from shape " +
                            std::to_string(box->id) + " on: they would make the page too large.");
  }
  out.lift();
  out << "</section>";
  page.timeShown = out.textUse().timeShown;
  for (const FontStack* font : out.textUse().fonts) page.fonts.push_back({font->typeface, font->family});
  page.html = out.take();
  return page;
}

std::string SlideRenderer::scene(int index) {
  auto& slide = prepare(index);
  std::vector<std::string> assets;
  std::vector<std::string> problems;
  const Assets::Collecting collecting(assets_, assets, problems);
  const auto attempt = [&](const std::string& what, const auto& read) {
    try {
      read();
    } catch (const basic::Error& error) {
      problems.push_back(what + " is not drawn: " + error.description);
    }
  };
  opc::Part* const layout = slide.inheritance.layout();
  opc::Part* const master = slide.inheritance.master();
  std::optional<Fill> background;
  for (opc::Part* part : {&slide.part, layout, master}) {
    if (background || part == nullptr) continue;
    attempt("The background of " + part->name(),
            [&] { background = SceneBuilder(slide.inheritance, *part, slide.fields).background(); });
  }
  SceneDump dump;
  dump.slide(index, size().width, size().height, background.value_or(NoFill{}));
  const auto addBehind = [&](opc::Part& part, const char* section) {
    dump.section(section);
    SceneBuilder builder(slide.inheritance, part, slide.fields);
    for (const auto child : shapesOf(part).children()) {
      if (presentationml::placeholder(child) || dump.isFull()) continue;
      attempt("A shape of " + part.name(), [&] {
        if (const auto box = builder.build(child)) dump.add(*box);
      });
    }
  };
  if (showsMaster(slide.part)) {
    if (master != nullptr && showsMaster(*layout)) addBehind(*master, "master");
    addBehind(*layout, "layout");
  }
  dump.section("shapes");
  for (const auto shape : shapesOf(slide.part).children()) {
    if (dump.isFull()) break;
    if (const auto box = build(slide, shape, &problems)) dump.add(*box);
  }
  for (const auto& problem : problems) dump.problem(problem);
  return dump.take();
}

Box SlideRenderer::find(Prepared& slide, std::uint32_t shapeId) {
  for (const auto shape : shapesOf(slide.part).children()) {
    if (!hasId(shape, shapeId)) continue;
    auto box = build(slide, shape, nullptr);
    if (box && box->id == shapeId) return std::move(*box);
  }
  fail("Slide " + std::to_string(slide.index) + " of " + package_.name() + " has no shape with the id " +
       std::to_string(shapeId) + ".");
}

std::string SlideRenderer::shape(int slideIndex, std::uint32_t shapeId) {
  auto& slide = prepare(slideIndex);
  HtmlOut out;
  write(out, slide, find(slide, shapeId), 1);
  return out.take();
}

std::vector<DrawnCell> SlideRenderer::cells(int slideIndex, std::uint32_t shapeId, const CellPlaces& places) {
  const Box box = find(prepare(slideIndex), shapeId);
  std::vector<DrawnCell> drawn;
  if (!box.table) return drawn;
  std::size_t index = 0;
  for (std::size_t row = 0; row < box.table->rows.size(); ++row) {
    for (const TableCell& cell : box.table->rows[row].cells) {
      if (places.contains({static_cast<int>(row) + 1, cell.column + 1})) {
        HtmlOut out;
        BoxWriter(out, options_.assetPrefix).cell(cell);
        drawn.push_back({index, out.take()});
      }
      ++index;
    }
  }
  return drawn;
}

Rect SlideRenderer::area(int slideIndex, std::uint32_t shapeId) {
  const Box box = find(prepare(slideIndex), shapeId);
  const double angle = box.rotation * std::acos(-1.0) / 180;
  const double width = std::abs(box.frame.w * std::cos(angle)) + std::abs(box.frame.h * std::sin(angle));
  const double height = std::abs(box.frame.w * std::sin(angle)) + std::abs(box.frame.h * std::cos(angle));
  return {box.frame.x + (box.frame.w - width) / 2, box.frame.y + (box.frame.h - height) / 2, width, height};
}

std::string SlideRenderer::backdrop(int index, int as) {
  auto& slide = prepare(index);
  drawBehind(slide);
  const auto area = size();
  HtmlOut out;
  out << page::startSlide(as, area.width, area.height);
  out << slide.background << "</section>";
  return out.take();
}

void SlideRenderer::forget() {
  prepared_.clear();
  inheritance_.clear();
}

}  // namespace render
