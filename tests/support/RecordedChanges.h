#pragma once

#include <string>
#include <vector>

#include "deck/objects/Presentation.h"

namespace support {

/// Writes down what a presentation tells of its changes: "1/7" for shape 7 of slide 1.
struct RecordedChanges final : deck::ChangeListener {
  void shapeChanged(std::int32_t slide, std::uint32_t shape) override {
    shapes.push_back(std::to_string(slide) + "/" + std::to_string(shape));
  }
  void slideHiddenChanged(std::int32_t slide) override { hidden.push_back(slide); }
  void linksUpdated() override { ++links; }

  std::vector<std::string> shapes;
  std::vector<std::int32_t> hidden;
  int links = 0;
};

}  // namespace support
