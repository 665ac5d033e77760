#include "SquareFont.h"

#include <utility>
#include <vector>

// The tables that FreeType and fontconfig ask for, and no others.

namespace render::test {

namespace {

std::string be16(std::vector<int> values) {
  std::string bytes;
  for (const int value : values) {
    bytes += static_cast<char>(value >> 8);
    bytes += static_cast<char>(value & 0xFF);
  }
  return bytes;
}

std::string be32(unsigned value) {
  return be16({static_cast<int>(value >> 16U), static_cast<int>(value & 0xFFFFU)});
}

constexpr int OnCurve = 1;

std::string head() {
  return be32(0x00010000) + be32(0) + be32(0) + be32(0x5F0F3CF5) + be16({0, 1000}) + std::string(16, '\0') +
         be16({0, 0, 1000, 1000, 0, 8, 2, 0, 0});
}

std::string hhea() {
  return be32(0x00010000) + be16({800, -200, 0, 1000, 0, 0, 1000, 1, 0, 0, 0, 0, 0, 0, 0, 3});
}

std::string maxp() { return be32(0x00010000) + be16({3, 4, 1, 0, 0, 1, 0, 0, 0, 0, 0, 0, 0, 0}); }

/// One contour; points as steps from the one before.
std::string glyph(const std::vector<int>& flags, const std::vector<int>& dx, const std::vector<int>& dy) {
  std::string bytes = be16({1, 0, 0, 1000, 1000, static_cast<int>(flags.size()) - 1, 0});
  for (const int flag : flags) bytes += static_cast<char>(flag);
  bytes += be16(dx) + be16(dy);
  if (bytes.size() % 2 != 0) bytes += '\0';
  return bytes;
}

std::string names() {
  const auto wide = [](const std::string& text) {
    std::string bytes;
    for (const char c : text) bytes += std::string{'\0', c};
    return bytes;
  };
  const std::string family = wide("Square");
  const std::string style = wide("Regular");
  const auto record = [](int id, std::size_t length, std::size_t offset) {
    return be16({3, 1, 0x409, id, static_cast<int>(length), static_cast<int>(offset)});
  };
  return be16({0, 2, 6 + 2 * 12}) + record(1, family.size(), 0) + record(2, style.size(), family.size()) +
         family + style;
}

/// Format 4: A and B are glyphs 1 and 2.
std::string cmap() {
  return be16({0, 1, 3, 1}) + be32(12) +
         be16({4, 32, 0, 4, 4, 1, 0, 'B', 0xFFFF, 0, 'A', 0xFFFF, 1 - 'A', 1, 0, 0});
}

}  // namespace

std::string squareFont() {
  const std::string square =
      glyph({OnCurve, OnCurve, OnCurve, OnCurve}, {0, 0, 1000, 0}, {0, 1000, 0, -1000});
  const std::string arch = glyph({OnCurve, 0, OnCurve}, {0, 500, 500}, {0, 1000, -1000});
  const auto half = [](std::size_t size) { return static_cast<int>(size / 2); };
  const std::vector<std::pair<std::string, std::string>> tables{
      {"cmap", cmap()},
      {"glyf", square + arch},
      {"head", head()},
      {"hhea", hhea()},
      {"hmtx", be16({1000, 0, 1000, 0, 1000, 0})},
      {"loca", be16({0, 0, half(square.size()), half(square.size() + arch.size())})},
      {"maxp", maxp()},
      {"name", names()}};
  std::string directory = be32(0x00010000) + be16({static_cast<int>(tables.size()), 128, 3, 0});
  std::string bytes;
  const std::size_t start = directory.size() + 16 * tables.size();
  for (const auto& [tag, table] : tables) {
    directory += tag + be32(0) + be32(static_cast<unsigned>(start + bytes.size())) +
                 be32(static_cast<unsigned>(table.size()));
    bytes += table + std::string((4 - table.size() % 4) % 4, '\0');
  }
  return directory + bytes;
}

}  // namespace render::test
