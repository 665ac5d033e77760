#include "app/LinkedDeck.h"

#include "support/DeckBuilder.h"

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

}  // namespace bench
