#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace ppt {

struct Tag {
  std::string name;
  std::string value;
};

/// In EMU from the slide's upper left corner.
struct Frame {
  double left = 0;
  double top = 0;
  double width = 0;
  double height = 0;
};

struct Shape {
  enum class Kind : std::uint8_t { Shape, Line, Picture, Object, Group, Table };

  Kind kind = Kind::Shape;
  /// On its slide, counted as the program that wrote it counts for the names that it shows: "Rectangle 4".
  std::uint32_t number = 0;
  /// As an author has named it; empty for most.
  std::string name;
  /// Paragraphs are separated by CR, line breaks are VT.
  std::string text;
  Frame frame;
  /// [MS-PPT] 2.13.22; 0 for none.
  std::uint32_t placeholder = 0;
  /// Of an object: "MSGraph.Chart.8".
  std::string program;
  std::vector<Tag> tags;
  /// Of a group, in drawing order.
  std::vector<Shape> members;
};

struct Slide {
  std::vector<Tag> tags;
  /// In drawing order.
  std::vector<Shape> shapes;
};

/// A presentation in the binary format of PowerPoint 97 to 2003 ([MS-PPT]), as far as links lie in it: its
/// string tags, and what tells the shapes that bear them from others.
struct Deck {
  std::vector<Tag> tags;
  /// In their order.
  std::vector<Slide> slides;
  /// As far as they can be read.
  std::vector<Slide> masters;
  std::vector<Slide> notes;
};

/// Reads a file's bytes, in time and memory in proportion to them, whatever they are. Throws a basic::Error
/// with the reason alone, to follow the file's name, when they are no such presentation, are encrypted, of
/// PowerPoint 95, or damaged.
Deck readDeck(std::string_view bytes);

}  // namespace ppt
