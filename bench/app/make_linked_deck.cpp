// make_linked_deck SLIDES SHAPES FOLDER: writes deck.pptx and data.txt.
#include <cstdlib>
#include <fstream>
#include <iostream>
#include <string>

#include "app/LinkedDeck.h"

int main(int argc, char** argv) {
  if (argc != 4) {
    std::cerr << "usage: make_linked_deck SLIDES SHAPES FOLDER\n";
    return 2;
  }
  const int slides = std::atoi(argv[1]);
  const int shapes = std::atoi(argv[2]);
  const std::string folder = argv[3];
  std::ofstream(folder + "/deck.pptx", std::ios::binary) << bench::linkedDeck(slides, shapes);
  std::ofstream(folder + "/data.txt", std::ios::binary) << bench::linkedData(slides * shapes, 0, 0);
}
