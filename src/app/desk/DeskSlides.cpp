// What the windows of a desk know of a deck's slides, kept until it changes.

#include "app/desk/DeskSlides.h"

#include <algorithm>
#include <unordered_map>

#include "basic/Strings.h"
#include "presentationml/ShapeNode.h"

namespace app {

namespace {

using presentationml::childByLocalName;
using presentationml::localName;

/// Where place and turn of a shape stand.
pugi::xml_node transformOf(pugi::xml_node shape) {
  if (const pugi::xml_node own = childByLocalName(shape, "xfrm")) return own;
  const pugi::xml_node group = childByLocalName(shape, "grpSpPr");
  return childByLocalName(group ? group : childByLocalName(shape, "spPr"), "xfrm");
}

bool isFilled(pugi::xml_node shape) {
  const std::string_view kind = localName(shape);
  if (kind == "cxnSp") return false;
  if (kind != "sp") return true;
  for (const pugi::xml_node property : childByLocalName(shape, "spPr").children()) {
    const std::string_view name = localName(property);
    if (name == "noFill") return false;
    if (name.ends_with("Fill")) return true;
  }
  const pugi::xml_node style = childByLocalName(childByLocalName(shape, "style"), "fillRef");
  return style.attribute("idx").as_int() > 0;
}

}  // namespace

DeskSlides::DeskSlides(std::shared_ptr<deck::Presentation> deck, host::Loop& loop, ToldOnce& problems,
                       std::string assetPrefix, std::function<void()> changed)
    : deck_(std::move(deck)),
      changed_(std::move(changed)),
      pages_(
          *deck_, loop, problems, [this] { drawAllAnew(); }, std::move(assetPrefix)),
      entries_(static_cast<std::size_t>(deck_->slideCount()) + 1) {
  deck_->addListener(static_cast<deck::ChangeListener&>(*this));
  deck_->addListener(static_cast<deck::EditListener&>(*this));
}

DeskSlides::~DeskSlides() {
  deck_->removeListener(static_cast<deck::ChangeListener&>(*this));
  deck_->removeListener(static_cast<deck::EditListener&>(*this));
}

std::optional<int> DeskSlides::find(std::uint32_t slideId) const {
  for (int slide = 1; slide <= count(); ++slide) {
    if (id(slide) == slideId) return slide;
  }
  return std::nullopt;
}

void DeskSlides::shapeChanged(std::int32_t slideIndex, std::uint32_t shapeId) {
  changedShapes_.emplace(slideIndex, shapeId);
  pages_.forget(slideIndex);
  ++entry(slideIndex).drawn;
  entry(slideIndex).shapes.reset();
  changed_();
}

void DeskSlides::drawAllAnew() {
  pages_.forgetAll();
  for (Entry& each : entries_) {
    ++each.drawn;
    ++each.drawnWhole;
  }
  changed_();
}

void DeskSlides::noteEdit(const deck::OwnerId& owner) {
  editedSlides_.insert(owner.slide);
  changed_();
}

bool DeskSlides::takeEdits() {
  const auto edited = std::exchange(editedSlides_, {});
  for (const std::uint32_t slideId : edited) {
    if (const auto slide = find(slideId)) describeAnew(*slide);
  }
  return !edited.empty();
}

/// Live shapes are drawn with digits of equal widths.
void DeskSlides::describeAnew(int slide) {
  const auto ids = [](const std::vector<LinkedShape>& links) {
    std::vector<std::uint32_t> found;
    found.reserve(links.size());
    for (const LinkedShape& link : links) found.push_back(link.id);
    return found;
  };
  const auto before = ids(links(slide));
  pages_.linksChanged(slide);
  for (const std::uint32_t shape : ids(links(slide))) {
    if (std::find(before.begin(), before.end(), shape) == before.end()) shapeChanged(slide, shape);
  }
  entry(slide).shapes.reset();
}

const std::vector<DeskShape>& DeskSlides::shapes(int slide) {
  auto& known = entry(slide).shapes;
  if (!known) known = describe(slide);
  return *known;
}

std::vector<DeskShape> DeskSlides::describe(int slide) const {
  const auto& nodes = deck_->shapesOf(slide).all();
  std::unordered_map<std::uint32_t, std::size_t> places;
  std::unordered_map<std::string, int> names;
  for (const pugi::xml_node node : nodes) {
    places.emplace(presentationml::shapeId(node), places.size());
    ++names[basic::UCase(presentationml::shapeName(node))];
  }
  // Each top-level shape with its parts, at its place.
  std::vector<std::vector<DeskShape>> piles(nodes.size());
  std::size_t place = 0;
  for (ListedShape& listed : listShapes(*deck_, slide)) {
    DeskShape shape;
    if (listed.group.empty()) {
      place = places.at(listed.id);
      const pugi::xml_node node = nodes[place];
      constexpr double unitsPerDegree = 60'000;  // ECMA-376 part 1, 20.1.10.3
      shape.rotation = transformOf(node).attribute("rot").as_double() / unitsPerDegree;
      shape.isHidden = presentationml::shapeProperties(node).attribute("hidden").as_bool();
      shape.isFilled = app::isFilled(node);
      shape.isDouble = names[basic::UCase(listed.name)] > 1;
    } else {
      shape.group = piles[place].front().listed.id;
      shape.isFilled = true;
    }
    shape.listed = std::move(listed);
    piles[place].push_back(std::move(shape));
  }
  std::vector<DeskShape> shapes;
  for (auto& pile : piles) std::move(pile.begin(), pile.end(), std::back_inserter(shapes));
  return shapes;
}

}  // namespace app
