// Opens any bytes as a deck, or a small deck of which one part holds any bytes:
// what can be opened can be read, changed and packed, and reads the same again.

#include <array>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <vector>

#include "basic/Error.h"
#include "deck/objects/Slide.h"
#include "deck/objects/SlideShowSettings.h"
#include "support/DeckBuilder.h"

namespace {

using namespace support;

// The first byte of the input chooses one of them, or none: then the rest is
// the whole file.
constexpr std::array<const char*, 8> Parts{"[Content_Types].xml",   "_rels/.rels",
                                           "ppt/presentation.xml",  "ppt/_rels/presentation.xml.rels",
                                           "ppt/slides/slide1.xml", "ppt/slides/_rels/slide1.xml.rels",
                                           "ppt/tags/tag1.xml",     "ppt/presProps.xml"};

std::string deckWith(char which, const std::string& rest) {
  const auto part = static_cast<std::size_t>(which - '0');
  if (part >= Parts.size()) return rest;
  DeckBuilder deck;
  deck.presentationTags({{"A", "1"}});
  deck.addSlide(textShape(2, "Price", "1"));
  deck.part(Parts[part], rest);
  std::vector<ZipEntry> entries = deck.entries();
  for (ZipEntry& entry : entries) entry.deflated = false;
  return zipOf(entries);
}

/// Everything there is to read, put together; with `change` every text and tag
/// list is changed after it was read.
std::string read(const std::shared_ptr<deck::Presentation>& presentation, bool change) {
  std::string all;
  const auto readTags = [&](const std::shared_ptr<PowerPoint::Tags>& tags) {
    for (std::int32_t i = 1; i <= tags->Count(); ++i) all += tags->Name(i) + "=" + tags->Value(i) + "\n";
    if (!change) return;
    if (tags->Count() > 1) tags->Delete(tags->Name(1));
    tags->Add("added", all);
  };
  readTags(presentation->Tags());
  static_cast<void>(deck::SlideShowSettings(*presentation).slides());
  const auto slides = presentation->Slides();
  for (std::int32_t i = 1; i <= slides->Count(); ++i) {
    const auto slide = slides->Item(i);
    readTags(slide->Tags());
    static_cast<void>(slide->SlideShowTransition()->AdvanceTime());
    if (change) slide->SlideShowTransition()->Hidden(!slide->SlideShowTransition()->Hidden());
    const auto shapes = slide->Shapes();
    for (std::int32_t j = 1; j <= shapes->Count(); ++j) {
      const auto shape = shapes->Item(j);
      all += shape->Name() + std::to_string(static_cast<int>(shape->Type()));
      if (!shape->HasTextFrame()) continue;
      const auto range = shape->TextFrame()->TextRange();
      all += range->Text();
      if (change) range->Text(all.substr(all.size() - std::min<std::size_t>(all.size(), 100)) + "\r\v");
    }
  }
  return all;
}

std::shared_ptr<deck::Presentation> open(std::string bytes) {
  opc::Limits limits;
  limits.partBytes = 16U << 20U;
  return std::make_shared<deck::Presentation>(opc::Package::fromBytes(std::move(bytes), "fuzzed", limits),
                                              "fuzzed", std::nullopt);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  const std::string rest(reinterpret_cast<const char*>(data) + 1, size - 1);
  std::string packed;
  std::string before;
  try {
    const auto presentation = open(deckWith(static_cast<char>(data[0]), rest));
    read(presentation, true);
    presentation->tagStore().write();
    before = read(presentation, false);
    packed = presentation->package().serialize();
  } catch (const basic::Error&) {
    return 0;
  }
  if (read(open(packed), false) != before) std::abort();
  return 0;
}
