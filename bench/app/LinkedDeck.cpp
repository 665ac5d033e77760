#include "app/LinkedDeck.h"

#include "support/DeckBuilder.h"
#include "support/TableShape.h"

namespace bench {

using namespace support;

std::string linkedDeck(int slides, int shapesPerSlide) {
  DeckBuilder deck;
  deck.presentationTags({{"CORVANE VERSION", "1"},
                         {"CORVANE DISPLAYTYPE", "1"},
                         {"CORVANE CONNECTION001", "0\tPrices\tdata.txt\t-1\t"}});
  for (int slide = 1; slide <= slides; ++slide) {
    deck.addSlide();
    std::string shapes;
    for (int shape = 1; shape <= shapesPerSlide; ++shape) {
      const std::string row = std::to_string((slide - 1) * shapesPerSlide + shape);
      const std::string target = deck.addTags({{"CORVANE COLUMN TYPE", "2"},
                                               {"CORVANE COLUMN TAG", "001"},
                                               {"CORVANE COLUMN COLUMNNAME", "Price"},
                                               {"CORVANE COLUMN ROW", row}});
      shapes += textShape(shape + 1, "Text Box " + std::to_string(shape), " ",
                          tagsReference(deck.relate(slide, "tags", target)));
    }
    deck.shapes(slide, shapes);
    deck.afterShapes(slide, tagsReference(deck.relate(
                                slide, "tags", deck.addTags({{"CORVANE SLIDE PROPERTIES", "-1\t0\t"}}))));
  }
  return deck.bytes();
}

std::string linkedData(int rows, int changing, int round) {
  std::string data = "Item\tPrice\n";
  for (int row = 1; row <= rows; ++row) {
    data += "Item " + std::to_string(row) + "\t" + std::to_string(row) + ".50";
    if (row <= changing) data += " " + std::to_string(round);
    data += '\n';
  }
  return data;
}

std::string tableDeck(int rows, int columns) {
  const auto row = [&](const std::string& text) {
    std::string xml = "<a:tr h=\"320000\">";
    for (int column = 1; column <= columns; ++column) {
      xml += "<a:tc><a:txBody><a:bodyPr/><a:lstStyle/><a:p><a:r><a:rPr lang=\"en-GB\" sz=\"1200\"/><a:t>" +
             text + std::to_string(column) + "</a:t></a:r></a:p></a:txBody><a:tcPr/></a:tc>";
    }
    return xml + "</a:tr>";
  };
  std::string body = row("Column ");
  for (int i = 1; i <= rows; ++i) body += row("cell ");
  DeckBuilder deck;
  deck.presentationTags({{"CORVANE VERSION", "1"},
                         {"CORVANE DISPLAYTYPE", "1"},
                         {"CORVANE CONNECTION001", "0\tRows\tdata.txt\t-1\t"}});
  deck.addSlide();
  const std::string target = deck.addTags({{"CORVANE COLUMN TYPE", "4"}, {"CORVANE COLUMN TAG", "001"}});
  deck.shapes(1, tableShape(2, "Table", columns, body, tagsReference(deck.relate(1, "tags", target))));
  return deck.bytes();
}

std::string tableData(int rows, int columns, int changing, int round) {
  std::string data;
  for (int column = 1; column <= columns; ++column)
    data += (column == 1 ? "Column " : "\tColumn ") + std::to_string(column);
  data += '\n';
  for (int cell = 0; cell < rows * columns; ++cell) {
    data += "Value " + std::to_string(cell);
    if (cell < changing) data += " " + std::to_string(round);
    data += (cell + 1) % columns == 0 ? '\n' : '\t';
  }
  return data;
}

}  // namespace bench
