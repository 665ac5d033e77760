#include "app/desk/OwnerText.h"

#include "basic/Quotes.h"
#include "basic/Strings.h"
#include "model/modTags.h"

namespace app {
namespace {

namespace modTags = LF2000::modTags;

void append(std::string& text, const std::string& more) { text += (text.empty() ? "" : ", ") + more; }

std::string valueOf(const OwnerState& state, std::string_view key) {
  std::string value;
  for (const deck::Tag& tag : state.tags) {
    if (modTags::Matches(tag.name, key)) value = tag.value;
  }
  return value;
}

std::string describeDeck(const OwnerState& state) {
  std::string connections;
  bool isDistributed = false;
  for (const deck::Tag& tag : state.tags) {
    if (modTags::Matches(tag.name, modTags::Connection)) {
      const auto fields = basic::Split(tag.value, modTags::FieldSeparator);
      append(connections,
             tag.name.substr(modTags::Connection.size()) + (fields.size() > 1 ? " " + fields[1] : ""));
    }
    isDistributed |= modTags::Matches(tag.name, modTags::Distribution);
  }
  return (connections.empty() ? "no connections" : "connections " + connections) +
         (isDistributed ? ", distributed" : "");
}

std::string describeSlide(const OwnerState& state) {
  std::string text;
  int scrolling = 0;
  const auto settings = basic::Split(valueOf(state, modTags::SlideProperties), modTags::FieldSeparator);
  if (!settings.empty() && settings[0] == "-1") append(text, "hides when no data");
  if (settings.size() > 2 && settings[1] == "-1") append(text, "refreshes linked objects");
  for (const deck::Tag& tag : state.tags)
    scrolling += modTags::Matches(tag.name, modTags::ScrollStep) ? 1 : 0;
  if (scrolling > 0) append(text, std::to_string(scrolling) + " scroll entries");
  return text.empty() ? "no settings" : text;
}

std::string describeLink(const OwnerState& state) {
  std::string text;
  if (const auto column = valueOf(state, modTags::ColumnName); !column.empty())
    append(text, "column " + column);
  if (const auto row = valueOf(state, modTags::ColumnRow); !row.empty()) append(text, "row " + row);
  if (const auto format = valueOf(state, modTags::ColumnDateFormat); !format.empty())
    append(text, "clock " + format);
  if (const auto connection = valueOf(state, modTags::ColumnTag); !connection.empty())
    append(text, "connection " + connection);
  if (const auto folder = valueOf(state, modTags::ColumnObjectFolder); !folder.empty())
    append(text, "folder " + folder);
  if (const auto extension = valueOf(state, modTags::ColumnObjectExtension); !extension.empty())
    append(text, "extension " + extension);
  return text.empty() ? "not linked" : text;
}

}  // namespace

std::string nameOf(const deck::OwnerId& owner, const OwnerState& state, const deck::Presentation& deck) {
  if (owner.isPresentation()) return "The deck";
  std::string slide = "a slide that is gone";
  for (std::int32_t i = 1; i <= deck.slideCount(); ++i) {
    if (deck.slideId(i) == owner.slide) slide = "slide " + std::to_string(i);
  }
  if (owner.isShape()) return basic::InQuotes(state.name) + " on " + slide;
  slide.front() = basic::UCase(slide.substr(0, 1)).front();
  return slide;
}

std::string describe(const deck::OwnerId& owner, const OwnerState& state) {
  if (owner.isPresentation()) return describeDeck(state);
  return owner.isSlide() ? describeSlide(state) : describeLink(state);
}

}  // namespace app
