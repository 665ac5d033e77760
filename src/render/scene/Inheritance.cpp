#include "render/scene/Inheritance.h"

#include "presentationml/Placeholders.h"
#include "presentationml/ShapeNode.h"
#include "render/scene/TableStyles.h"

// The way from a slide's placeholder to its counterparts on layout and master.

namespace render {

namespace {

pugi::xml_node shapesOf(opc::Part* part) {
  return part == nullptr ? pugi::xml_node() : presentationml::shapeTree(part->xml().document_element());
}

pugi::xml_node overrideOf(opc::Part* part) {
  return part->xml().document_element().child("p:clrMapOvr").child("a:overrideClrMapping");
}

}  // namespace

Inheritance::Inheritance(opc::Part& presentation, opc::Part& layout, Assets& assets, const Overrides& slide)
    : presentation_(&presentation), layout_(&layout), assets_(&assets) {
  master_ = layout.related(opc::relationship::SlideMaster);
  themePart_ = master_ != nullptr ? master_->related(opc::relationship::Theme) : nullptr;
  if (themePart_ == nullptr) themePart_ = presentation.related(opc::relationship::Theme);
  if (themePart_ != nullptr) theme_ = Theme(themePart_->xml().document_element());
  opc::Part* const changed =
      slide.theme != nullptr ? slide.theme : layout.related(opc::relationship::ThemeOverride);
  if (changed != nullptr) overrideTheme(*changed);
  const auto colorMapOverride = slide.colorMap ? slide.colorMap : overrideOf(&layout);
  if (colorMapOverride) {
    colorMap_ = ColorMap(colorMapOverride);
  } else if (master_ != nullptr) {
    colorMap_ = ColorMap(master_->xml().document_element().child("p:clrMap"));
  }
}

void Inheritance::overrideTheme(opc::Part& changed) {
  const Theme base = theme_;
  const auto root = changed.xml().document_element();
  theme_ = Theme(root, &base);
  // Pictures of a format scheme are named by relationships of the part that holds it.
  if (root.child("a:fmtScheme")) themePart_ = &changed;
}

PaintContext Inheritance::paint(opc::Part* part) const {
  return {&theme_, {&theme_.colors(), &colorMap_, {}}, part, assets_};
}

const Inherited& Inheritance::of(pugi::xml_node ph) {
  std::string key;
  if (ph) {
    key = presentationml::placeholderType(ph);
    key += '/';
    key += ph.attribute("idx").value();
  }
  const auto known = inherited_.find(key);
  if (known != inherited_.end()) return *known->second;

  auto made = std::make_unique<Inherited>();
  auto& list = made->listStyle;
  for (auto& level : list.levels) {
    level.run.size = 18;
    level.run.latin = theme_.typeface("+mn-lt");
    level.run.fill = theme_.colors()[static_cast<std::size_t>(*colorMap_.resolve("tx1"))];
  }
  const auto type = ph ? presentationml::masterType(ph) : std::string_view();
  const bool isTitleOrBody = type == "title" || type == "body";
  pugi::xml_node masterStyle;
  if (ph && master_ != nullptr) {
    const char* name = type == "title" ? "p:titleStyle" : type == "body" ? "p:bodyStyle" : "p:otherStyle";
    masterStyle = master_->xml().document_element().child("p:txStyles").child(name);
  }
  // Titles and bodies have their master's style in place of the presentation's.
  if (!isTitleOrBody || !masterStyle)
    list.apply(presentation_->xml().document_element().child("p:defaultTextStyle"), paint(presentation_));
  if (masterStyle) list.apply(masterStyle, paint(master_));
  if (ph) {
    made->layoutShape = presentationml::layoutCounterpart(shapesOf(layout_), ph);
    // The layout knows the type of a placeholder that the slide names by index alone.
    const auto layoutPh = presentationml::placeholder(made->layoutShape);
    made->masterShape = presentationml::masterCounterpart(
        shapesOf(master_), presentationml::masterType(layoutPh ? layoutPh : ph));
    for (const auto& [shape, part] :
         {std::pair{made->masterShape, master_}, std::pair{made->layoutShape, layout_}}) {
      const auto text = shape.child("p:txBody");
      list.apply(text.child("a:lstStyle"), paint(part));
      made->body.apply(text.child("a:bodyPr"));
    }
  }
  return *inherited_.emplace(std::move(key), std::move(made)).first->second;
}

pugi::xml_node Inheritance::tableStyle(std::string_view id) {
  if (opc::Part* styles = presentation_->related(opc::relationship::TableStyles)) {
    for (const auto style : styles->xml().document_element().children("a:tblStyle")) {
      if (id == style.attribute("styleId").value()) return style;
    }
  }
  return builtInTableStyle(id);
}

}  // namespace render
