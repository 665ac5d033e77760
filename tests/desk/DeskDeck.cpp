#include "desk/DeskDeck.h"

#include "basic/Conversion.h"
#include "model/modTags.h"
#include "support/ChartDeck.h"
#include "support/TableShape.h"

namespace app::test {

using namespace support;
using LF2000::SourceType;

namespace {

const char* const Rows =
    "<a:tr h=\"370840\"><a:tc><a:txBody><a:bodyPr/><a:p><a:r><a:t>Item</a:t></a:r></a:p></a:txBody></a:tc>"
    "<a:tc><a:txBody><a:bodyPr/><a:p/></a:txBody></a:tc></a:tr><a:tr h=\"370840\"><a:tc><a:txBody><a:bodyPr/>"
    "<a:p><a:r><a:rPr "
    "b=\"1\"/><a:t>1</a:t></a:r><a:r><a:t>2</a:t></a:r></a:p></a:txBody></a:tc><a:tc/></a:tr>";

const char* const RichText =
    "<a:p><a:pPr algn=\"ctr\"/><a:r><a:rPr b=\"1\"/><a:t>Plum </a:t></a:r><a:r><a:t>cake</a:t></a:r></a:p> "
    "<!-- kept --><a:p><a:endParaRPr sz=\"900\"/></a:p>";

bool isLinked(PowerPoint::Shape& shape) {
  for (std::int32_t i = shape.Tags()->Count(); i >= 1; --i) {
    if (LF2000::modTags::IsColumnTag(shape.Tags()->Name(i))) return true;
  }
  return false;
}

std::string textsOf(PowerPoint::Shape& shape) {
  if (shape.HasTextFrame()) return shape.TextFrame()->TextRange()->Text();
  std::string texts;
  if (shape.HasTable()) {
    const auto table = shape.Table();
    for (std::int32_t i = 0; i < 4; ++i) texts += table->Text(i / 2 + 1, i % 2 + 1) + "|";
  } else {
    const MSGraph::Table cells = shape.OLEFormat()->Object()->Application()->DataSheet()->Cells();
    texts = basic::CStr(cells.cell(1, 1));
  }
  return texts;
}

std::string tagsOf(const PowerPoint::Tags& tags) {
  std::string text;
  for (std::int32_t i = 1; i <= tags.Count(); ++i) {
    if (tags.Name(i) != LF2000::modTags::DisplayType) text += tags.Name(i) + "=" + tags.Value(i) + "; ";
  }
  return text;
}

template <typename Visit>
void forEachShape(deck::Presentation& deck, const Visit& visit) {
  for (std::int32_t slide = 1; slide <= deck.slideCount(); ++slide) {
    const auto shapes = deck.Slides()->Item(slide)->Shapes();
    for (std::int32_t i = 1; i <= shapes->Count(); ++i) visit(slide, *shapes->Item(i));
  }
}

}  // namespace

std::string deskDeck() {
  DeckBuilder builder = ChartDeck().build();
  builder.addSlide();
  const std::vector<std::pair<std::string, std::string>> link{{"CORVANE COLUMN TYPE", "2"},
                                                              {"CORVANE COLUMN TAG", "001"},
                                                              {"CORVANE COLUMN COLUMNNAME", "Price"},
                                                              {"CORVANE COLUMN ROW", "1"}};
  const std::string tags = tagsReference(builder.relate(2, "tags", builder.addTags(link)));
  builder.shapes(2, textShape(2, "Title", "Today") + textShape(3, "p1 Price", " ", tags) +
                        shapeWithParagraphs(4, "p1 Item", RichText) + tableShape(5, "Table", 2, Rows));
  builder.addSlide();
  const std::string first =
      builder.relate(3, "tags", builder.addTags({{"OTHER PROGRAM", "keep"}, {"EMPTY", ""}}));
  const std::string second = builder.relate(3, "tags", builder.addTags(link));
  builder.shapes(3, textShape(2, "Two parts", " ",
                              "<p:custDataLst><p:tags r:id=\"" + first + "\"/><p:tags r:id=\"" + second +
                                  "\"/></p:custDataLst>") +
                        textShape(3, "Twin", "one") + textShape(3, "Twin", "other"));
  builder.presentationTags({{"CORVANE VERSION", "1"},
                            {"CORVANE CONNECTION001", "0\tToday\ttoday.txt\t-1\t"},
                            {"CORVANE CONNECTION002", "0\tOffer\toffer.txt\t-1\t"},
                            {"CORVANE DISPLAYTYPE", "1"}});
  // What is written once more by this program stays byte for byte.
  DeskDeck written(builder.bytes());
  for (const auto& part : written.deck->package().parts()) {
    if (part->name().ends_with(".xml") && part->contentType().find("slide+xml") != std::string::npos) {
      written.deck->noteChange(*part);
    }
  }
  written.deck->noteChange(written.deck->part());
  written.save();
  return written.folder.read("desk.pptx");
}

DeskDeck::DeskDeck(const std::string& bytes)
    : path(folder.write("desk.pptx", bytes)), deck(application->open(path)) {
  linked.Describe(deck);
}

std::shared_ptr<PowerPoint::Shape> DeskDeck::shape(std::int32_t slide, const std::string& name) {
  return deck->Slides()->Item(slide)->Shapes()->Item(name);
}

void DeskDeck::link(PowerPoint::Shape& shape, double row, const std::string& connection) {
  LF2000::clsShape link;
  link.ShapeItem(std::shared_ptr<PowerPoint::Shape>(&shape, [](auto*) {}));
  link.SourceType(
      static_cast<std::int32_t>(shape.HasTextFrame() ? SourceType::DataField : SourceType::Graph));
  link.NewConnectionTagNumber(connection);
  link.NewColumnName("Price");
  link.NewRow(row);
  link.SetShapeTags();
}

void DeskDeck::unlink(PowerPoint::Shape& shape) {
  LF2000::clsShape link;
  link.ShapeItem(std::shared_ptr<PowerPoint::Shape>(&shape, [](auto*) {}));
  link.RemoveLumenfold();
}

std::string DeskDeck::addConnection(const std::string& connectionString) {
  auto connection = std::make_shared<LF2000::clsConnection>();
  connection->ConnectionTagNumber(linked.NewConnectionTagNumber());
  connection->ConnectionDescription("New");
  if (!connectionString.empty()) {
    connection->ConnectionType(1);
    connection->ConnectionString(connectionString);
    connection->RecordsetSQL("SELECT 1");
  }
  linked.Connections().push_back(connection);
  linked.SetConnectionTags();
  return connection->ConnectionTagNumber();
}

void DeskDeck::removeConnection(const std::string& number) {
  std::erase_if(linked.Connections(),
                [&](const auto& connection) { return connection->ConnectionTagNumber() == number; });
  linked.SetConnectionTags();
}

void DeskDeck::setSlide(std::int32_t slide, bool hides) {
  LF2000::clsSlide settings;
  settings.HideWhenNoData(hides);
  settings.SetScrollTime("3", hides ? 500 : 0);
  linked.SetSlideTags(settings, slide);
}

void DeskDeck::fill(const std::string& value) {
  forEachShape(*deck, [&](std::int32_t, PowerPoint::Shape& shape) {
    if (!isLinked(shape)) return;
    if (shape.HasTextFrame()) {
      shape.TextFrame()->TextRange()->Text(value);
    } else if (shape.HasTable()) {
      shape.Table()->Text(2, 1, value);
      shape.Table()->Text(2, 2, value);
    } else {
      MSGraph::Table table(2, 2);
      table.cell(0, 1, "North");
      table.cell(1, 0, "Jan");
      table.cell(1, 1, static_cast<double>(value.size()) + 100);
      shape.OLEFormat()->Object()->Application()->DataSheet()->Cells(table);
    }
  });
}

void DeskDeck::save() {
  linked.PrepareSave();
  deck->Save();
}

std::map<std::string, std::string> DeskDeck::everything() {
  std::map<std::string, std::string> found;
  found["0"] = tagsOf(*deck->Tags());
  for (std::int32_t slide = 1; slide <= deck->slideCount(); ++slide) {
    found[std::to_string(slide)] = tagsOf(*deck->Slides()->Item(slide)->Tags());
  }
  std::int32_t place = 0;
  forEachShape(*deck, [&](std::int32_t slide, PowerPoint::Shape& shape) {
    std::string& text = found[std::to_string(slide) + "/" + std::to_string(++place)];
    text = shape.Name() + ": " + tagsOf(*shape.Tags());
    if (!isLinked(shape)) text += textsOf(shape);
  });
  return found;
}

}  // namespace app::test
