// Reads any bytes as an old presentation, or as the stream of one in a whole file. What is read is
// UTF-8, and no more than the bytes can hold.

#include <cstdint>
#include <cstdlib>
#include <string>

#include "basic/Error.h"
#include "basic/Strings.h"
#include "ppt/Deck.h"
#include "support/OldDeck.h"

namespace {

std::size_t checked(const std::vector<ppt::Tag>& tags) {
  std::size_t size = 0;
  for (const ppt::Tag& tag : tags) {
    if (!basic::IsValidUtf8(tag.name) || !basic::IsValidUtf8(tag.value)) std::abort();
    size += tag.name.size() + tag.value.size();
  }
  return size;
}

std::size_t checked(const std::vector<ppt::Shape>& shapes) {
  std::size_t size = 0;
  for (const ppt::Shape& shape : shapes) {
    if (!basic::IsValidUtf8(shape.name) || !basic::IsValidUtf8(shape.text)) std::abort();
    size += shape.name.size() + checked(shape.tags) + checked(shape.members);
  }
  return size;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  const std::string rest(reinterpret_cast<const char*>(data) + 1, size - 1);
  // The stream's last edit ends it, as in a file that was just saved.
  constexpr std::size_t EditSize = 36;
  const auto lastEdit = static_cast<std::uint32_t>(rest.size() > EditSize ? rest.size() - EditSize : 0);
  const std::string user = support::atomOf(0x0FF6, support::numbers({0x14, 0xE391C05F, lastEdit})).bytes();
  const std::string bytes =
      data[0] == 'f' ? rest : support::compoundFile({{"Current User", user}, {"PowerPoint Document", rest}});
  try {
    const ppt::Deck deck = ppt::readDeck(bytes);
    std::size_t sum = checked(deck.tags);
    for (const ppt::Slide& slide : deck.slides) sum += checked(slide.tags) + checked(slide.shapes);
    // Two bytes of UTF-16 are three of UTF-8 at most.
    if (sum > 2 * bytes.size()) std::abort();
  } catch (const basic::Error&) {
  }
  return 0;
}
