// Changes inputs as trees where they are XML, so that most of what comes out can be read: attributes take the
// values that are apt to break something, elements are copied, moved, nested and left out.

#include <algorithm>
#include <array>
#include <cstring>
#include <pugixml.hpp>
#include <random>
#include <string>
#include <vector>

extern "C" std::size_t LLVMFuzzerMutate(std::uint8_t* data, std::size_t size, std::size_t maxSize);

namespace {

constexpr std::array<const char*, 30> Hostile{
    "0",           "1",          "-1",        "100000", "2147483647", "2147483648",
    "-2147483648", "4294967296", "1e12",      "-1e12",  "1e308",      "9e999",
    "NaN",         "inf",        "0.0000001", "",       "50%",        "-300%",
    "accent1",     "phClr",      "none",      "FF00FF", "FFFFFFFFFF", "+mn-lt",
    "*/ w h 0",    "pin 0 x 1",  "sqrt -1",   "rId2",   "r",          "\xEF\xBF\xBF<&\"'"};

class Mutation {
 public:
  Mutation(pugi::xml_document& document, unsigned seed) : random_(seed) { collect(document); }

  void apply(std::size_t room) {
    if (elements_.empty()) return;
    auto target = elements_[below(elements_.size())];
    const auto other = elements_[below(elements_.size())];
    auto parent = target.parent();
    const bool isRoot = parent.type() == pugi::node_document;
    switch (below(8)) {
      case 0:
      case 1:
      case 2:
        changeAttribute(target, other);
        break;
      case 3:
        if (!isRoot) parent.remove_child(target);
        break;
      case 4:
        copy(target, parent, isRoot, room);
        break;
      case 5:
        if (!isRoot) nest(target, parent);
        break;
      case 6:
        if (!isWithin(target, other)) target.append_copy(other);
        break;
      default:
        if (!isRoot) pugi::xml_node(target).set_name(other.name());
        break;
    }
  }

 private:
  void collect(pugi::xml_node from) {
    // Documents of the fuzzer's size are no deeper than the stack.
    for (const auto child : from.children()) {
      if (child.type() != pugi::node_element) continue;
      elements_.push_back(child);
      collect(child);
    }
  }

  std::size_t below(std::size_t count) {
    return std::uniform_int_distribution<std::size_t>(0, count - 1)(random_);
  }

  static bool isWithin(pugi::xml_node node, pugi::xml_node tree) {
    for (; node; node = node.parent()) {
      if (node == tree) return true;
    }
    return false;
  }

  static pugi::xml_attribute attributeAt(pugi::xml_node node, std::size_t index) {
    auto attribute = node.first_attribute();
    for (; index > 0; --index) attribute = attribute.next_attribute();
    return attribute;
  }

  static std::size_t countOf(pugi::xml_node node) {
    return static_cast<std::size_t>(std::distance(node.attributes_begin(), node.attributes_end()));
  }

  void changeAttribute(pugi::xml_node target, pugi::xml_node other) {
    const auto count = countOf(target);
    const auto others = countOf(other);
    if (count == 0 || below(6) == 0) {
      if (others > 0) target.append_copy(attributeAt(other, below(others)));
      return;
    }
    auto attribute = attributeAt(target, below(count));
    if (std::strncmp(attribute.name(), "xmlns", 5) == 0) return;
    if (others > 0 && below(4) == 0) {
      attribute.set_value(attributeAt(other, below(others)).value());
      return;
    }
    attribute.set_value(Hostile[below(Hostile.size())]);
  }

  void copy(pugi::xml_node target, pugi::xml_node parent, bool isRoot, std::size_t room) {
    if (isRoot) return;
    std::size_t times = below(4) == 0 ? 200 : 1;
    for (; times > 0 && room > 100; --times, room -= 100) parent.insert_copy_after(target, target);
  }

  /// Puts an element into copies of its parent without what else these hold.
  void nest(pugi::xml_node target, pugi::xml_node parent) {
    auto outer = parent;
    for (std::size_t times = below(3) == 0 ? 300 : 1; times > 0; --times)
      outer = outer.append_child(times % 2 == 0 ? parent.name() : target.name());
    outer.append_copy(target);
  }

  std::mt19937 random_;
  std::vector<pugi::xml_node> elements_;
};

struct Text final : pugi::xml_writer {
  std::string text;
  void write(const void* data, std::size_t size) override {
    text.append(static_cast<const char*>(data), size);
  }
};

}  // namespace

/// The first byte, which chooses the part, stays.
extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size, std::size_t maxSize,
                                               unsigned int seed) {
  pugi::xml_document document;
  const bool isXml = size > 1 && seed % 8 != 0 && document.load_buffer(data + 1, size - 1, pugi::parse_full);
  if (!isXml) return LLVMFuzzerMutate(data, size, maxSize);
  std::mt19937 random(seed);
  for (auto times = 1 + random() % 3; times > 0; --times)
    Mutation(document, static_cast<unsigned>(random())).apply(maxSize - std::min(maxSize, size));
  Text out;
  document.save(out, "", pugi::format_raw | pugi::format_no_declaration);
  if (out.text.size() + 1 > maxSize) return LLVMFuzzerMutate(data, size, maxSize);
  std::memcpy(data + 1, out.text.data(), out.text.size());
  return out.text.size() + 1;
}
