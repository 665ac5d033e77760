// Reads the shapes of a slide: kind, name, text, place, and the tags that they bear.

#include "ppt/DrawingReader.h"

#include <algorithm>
#include <array>
#include <optional>
#include <utility>

#include "ppt/Failure.h"
#include "ppt/Text.h"

namespace ppt {
namespace {

/// Deeper than anybody groups; each level is a call within a call.
constexpr int DeepestGroup = 100;
/// 576 an inch ([MS-PPT] 2.2.13).
constexpr double EmuPerUnit = 1587.5;

// [MS-ODRAW] 2.2.40.
constexpr std::uint32_t IsPatriarch = 0x4;
constexpr std::uint32_t IsDeleted = 0x8;
constexpr std::uint32_t IsObject = 0x10;
constexpr std::uint32_t IsConnector = 0x100;
// [MS-ODRAW] 2.4.24.
constexpr std::uint32_t LineType = 20;
constexpr std::uint32_t PictureType = 75;
// [MS-ODRAW] 2.3.4.1 and 2.3.4.37.
constexpr std::uint32_t NameProperty = 0x0380;
constexpr std::uint32_t TableProperty = 0x039F;

double signedNumber(std::uint32_t number) { return static_cast<std::int32_t>(number); }

Frame between(double left, double top, double right, double bottom) {
  return {left, top, right - left, bottom - top};
}

/// left, top, right, bottom.
Frame frameIn(const Record& record) {
  const basic::FileBytes n = record.numbers();
  return between(signedNumber(n.little32(0)), signedNumber(n.little32(4)), signedNumber(n.little32(8)),
                 signedNumber(n.little32(12)));
}

/// top, left, right, bottom; small or large numbers ([MS-PPT] 2.7.1).
Frame anchorIn(const Record& record) {
  const basic::FileBytes n = record.numbers();
  constexpr std::size_t LargeSize = 16;
  const auto number = [&](std::size_t i) {
    return record.body.size() >= LargeSize
               ? signedNumber(n.little32(4 * i))
               : static_cast<double>(static_cast<std::int16_t>(n.little16(2 * i)));
  };
  return between(number(1) * EmuPerUnit, number(0) * EmuPerUnit, number(2) * EmuPerUnit,
                 number(3) * EmuPerUnit);
}

/// From the coordinates of a group's members to those around the group.
struct Mapping {
  Frame from;
  Frame to;

  [[nodiscard]] Frame of(const Frame& frame) const {
    const double across = from.width == 0 ? 0 : to.width / from.width;
    const double down = from.height == 0 ? 0 : to.height / from.height;
    return {to.left + (frame.left - from.left) * across, to.top + (frame.top - from.top) * down,
            frame.width * across, frame.height * down};
  }
};

/// Properties whose data are an array ([MS-ODRAW] 2.2.51).
constexpr std::array<std::uint32_t, 10> ArrayProperties{0x145, 0x146, 0x151, 0x152, 0x155,
                                                        0x156, 0x157, 0x197, 0x1CF, 0x383};

/// How long the data of a property are that begin at `at`: the length that is stated for an array may leave
/// out the array's own header.
std::size_t lengthOf(std::uint32_t property, std::uint32_t stated, const basic::FileBytes& numbers,
                     std::size_t at) {
  constexpr std::size_t Header = 6;
  constexpr std::size_t HalfAddresses = 0xFFF0;
  if (std::find(ArrayProperties.begin(), ArrayProperties.end(), property) == ArrayProperties.end())
    return stated;
  const std::size_t size = numbers.little16(at + 4) == HalfAddresses ? 4 : numbers.little16(at + 4);
  return stated != 0 && numbers.little16(at) * size == stated ? stated + Header : stated;
}

class Reader {
 public:
  explicit Reader(const Surroundings& surroundings) : surroundings_(surroundings) {}

  /// What stands in a group, or on the slide itself.
  std::vector<Shape> readGroup(const Record& group, const std::optional<Mapping>& mapping, int depth) {
    if (depth > DeepestGroup) failDamaged("its groups are too deep");
    std::vector<Shape> shapes;
    bool isFirst = true;
    forEachRecord(group.body, [&](const Record& record) {
      // The first one is the group's own.
      if (std::exchange(isFirst, false)) return;
      if (record.type == type::Shape) add(shapes, readShape(record, mapping));
      if (record.type != type::Group) return;
      const Record own = firstRecord(record.body, type::Shape);
      std::optional<Shape> shape = readShape(own, mapping);
      if (!shape) return;
      if (shape->kind != Shape::Kind::Table) shape->kind = Shape::Kind::Group;
      shape->members = readGroup(
          record, Mapping{frameIn(firstRecord(own.body, type::GroupFrame)), shape->frame}, depth + 1);
      shapes.push_back(std::move(*shape));
    });
    return shapes;
  }

 private:
  static void add(std::vector<Shape>& shapes, std::optional<Shape> shape) {
    if (shape) shapes.push_back(std::move(*shape));
  }

  std::optional<Shape> readShape(const Record& container, const std::optional<Mapping>& mapping) {
    Shape shape;
    std::uint32_t flags = 0;
    forEachRecord(container.body, [&](const Record& record) {
      switch (record.type) {
        case type::ShapeKind:
          flags = record.numbers().little32(4);
          // Numbers are given out to drawings in clusters of 1024.
          shape.number = record.numbers().little32(0) & 0x3FFU;
          shape.kind = kindOf(record.instance, flags);
          break;
        case type::Properties:
        case type::MoreProperties:
          readProperties(record, shape);
          break;
        case type::Anchor:
          shape.frame = anchorIn(record);
          break;
        case type::MemberAnchor:
          if (mapping) shape.frame = mapping->of(frameIn(record));
          break;
        case type::TextBox:
          readText(record, shape);
          break;
        case type::ClientData:
          readClientData(record, shape);
          break;
        default:
          break;
      }
    });
    if ((flags & (IsPatriarch | IsDeleted)) != 0) return std::nullopt;
    if (surroundings_.shapesLeft-- == 0) failDamaged("it has more shapes than anybody draws");
    return shape;
  }

  static Shape::Kind kindOf(std::uint32_t type, std::uint32_t flags) {
    if ((flags & IsObject) != 0) return Shape::Kind::Object;
    if (type == PictureType) return Shape::Kind::Picture;
    return type == LineType || (flags & IsConnector) != 0 ? Shape::Kind::Line : Shape::Kind::Shape;
  }

  /// [MS-ODRAW] 2.2.7: numbers of six bytes each, then what did not fit into them, in the same order.
  static void readProperties(const Record& record, Shape& shape) {
    constexpr std::size_t Size = 6;
    constexpr std::uint32_t IsLong = 0x8000;
    const basic::FileBytes n = record.numbers();
    std::size_t rest = record.instance * Size;
    for (std::size_t at = 0; at < record.instance * Size && at + Size <= record.body.size(); at += Size) {
      const std::uint32_t id = n.little16(at) & 0x3FFFU;
      const std::uint32_t value = n.little32(at + 2);
      if (id == TableProperty && (value & 1U) != 0) shape.kind = Shape::Kind::Table;
      if ((n.little16(at) & IsLong) == 0) continue;
      if (id == NameProperty) {
        shape.name = textOfUtf16(n.at(rest, value));
        shape.name.resize(std::min(shape.name.size(), shape.name.find('\0')));
      }
      rest += lengthOf(id, value, n, rest);
    }
  }

  void readText(const Record& box, Shape& shape) const {
    std::vector<std::string> own;
    forEachRecord(box.body, [&](const Record& record) { addText(record, own); });
    if (!own.empty()) shape.text = std::move(own.front());
    const Record reference = firstRecord(box.body, type::OutlineText);
    if (reference.body.empty()) return;
    const std::size_t index = reference.numbers().little32(0);
    if (index < surroundings_.outline.size()) shape.text = surroundings_.outline[index];
  }

  void readClientData(const Record& data, Shape& shape) const {
    forEachRecord(data.body, [&](const Record& record) {
      if (record.type == type::Placeholder) shape.placeholder = record.numbers().byte(4);
      if (record.type == type::Tags) shape.tags = tagsIn(record);
      if (record.type != type::ObjectReference) return;
      const auto program = surroundings_.programs.find(record.numbers().little32(0));
      if (program == surroundings_.programs.end()) return;
      shape.kind = Shape::Kind::Object;
      shape.program = program->second;
    });
  }

  const Surroundings& surroundings_;
};

}  // namespace

std::vector<Tag> tagsIn(const Record& tags) {
  std::vector<Tag> found;
  forEachRecord(tags.body, [&](const Record& record) {
    if (record.type != type::StringTag) return;
    Tag& tag = found.emplace_back();
    forEachRecord(record.body, [&](const Record& part) {
      if (part.type != type::String) return;
      (part.instance == 0 ? tag.name : tag.value) = textOfUtf16(part.body);
    });
    if (tag.name.empty()) found.pop_back();
  });
  return found;
}

void addText(const Record& record, std::vector<std::string>& texts) {
  if (record.type == type::TextHeader) texts.emplace_back();
  if (texts.empty()) return;
  if (record.type == type::TextCharacters) texts.back() = textOfUtf16(record.body);
  if (record.type == type::TextBytes) texts.back() = textOfBytes(record.body);
}

std::vector<Shape> shapesIn(const Record& drawing, const Surroundings& surroundings) {
  const Record content = firstRecord(drawing.body, type::DrawingContent);
  return Reader(surroundings).readGroup(firstRecord(content.body, type::Group), std::nullopt, 0);
}

}  // namespace ppt
