#include "model/clsSlide.h"

#include <vector>

#include "addin/support/modErrors.h"
#include "basic/Conversion.h"
#include "basic/Error.h"
#include "basic/Strings.h"
#include "model/modTags.h"

namespace LF2000 {

namespace {

std::size_t Index(std::string_view key) {
  const std::int32_t number = basic::CLng(key);
  if (number < 0 || number >= static_cast<std::int32_t>(clsSlide::ScrollEntries)) {
    basic::Raise(basic::RuntimeError::SubscriptOutOfRange);
  }
  return static_cast<std::size_t>(number);
}

const std::string& Piece(const std::vector<std::string>& pieces, std::size_t index) {
  if (index >= pieces.size()) basic::Raise(basic::RuntimeError::SubscriptOutOfRange);
  return pieces[index];
}

std::string BooleanText(bool value) { return value ? "-1" : "0"; }

}  // namespace

std::string clsSlide::TagString() const {
  return BooleanText(hideWhenNoData_) + modTags::FieldSeparator + BooleanText(refreshLinkedObjects_) +
         modTags::FieldSeparator;
}

void clsSlide::TagString(std::string_view text) try {
  const std::vector<std::string> pieces = basic::Split(text, modTags::FieldSeparator);
  hideWhenNoData_ = basic::CBool(Piece(pieces, 0));
  refreshLinkedObjects_ = pieces.size() == 2 ? false : basic::CBool(Piece(pieces, 1));
} catch (...) {
  modErrors::CatchError(modErrors::SettingConnectionTag);
}

std::vector<std::string> clsSlide::ReadTags(const PowerPoint::Tags& tags) {
  std::vector<std::string> problems;
  modTags::ForEachTag(tags, modTags::SlideProperties,
                      [&](const std::string&, const std::string& value) { TagString(value); });
  modTags::ForEachTag(tags, modTags::ScrollStep, [&](const std::string& key, const std::string& value) {
    clsSlide entry;
    try {
      entry.AddScrollInfo(key, value);
    } catch (const basic::Error& error) {
      problems.push_back("Scroll entry " + key + " cannot be read: " + error.description + ".");
      return;
    }
    AddScrollInfo(key, value);
  });
  return problems;
}

std::vector<std::int32_t> clsSlide::ScrollEntryNumbers() const {
  std::vector<std::int32_t> numbers;
  for (std::size_t n = 1; n < ScrollEntries; ++n) {
    if (scrollTime_[n] > 0) numbers.push_back(static_cast<std::int32_t>(n));
  }
  return numbers;
}

void clsSlide::AddScrollInfo(std::string_view key, std::string_view value) {
  const std::size_t index = Index(key);
  const std::vector<std::string> pieces = basic::Split(value, modTags::FieldSeparator);
  scrollEnabled_[index] = basic::CBool(Piece(pieces, 0));
  scrollStep_[index] = basic::CLng(Piece(pieces, 1));
  scrollTime_[index] = basic::CLng(Piece(pieces, 2));
}

bool clsSlide::ScrollEnabled(std::string_view key) const { return scrollEnabled_[Index(key)]; }
std::int32_t clsSlide::ScrollStep(std::string_view key) const { return scrollStep_[Index(key)]; }
std::int32_t clsSlide::ScrollTime(std::string_view key) const { return scrollTime_[Index(key)]; }
void clsSlide::SetScrollEnabled(std::string_view key, bool enabled) { scrollEnabled_[Index(key)] = enabled; }
void clsSlide::SetScrollStep(std::string_view key, std::int32_t step) { scrollStep_[Index(key)] = step; }
void clsSlide::SetScrollTime(std::string_view key, std::int32_t time) { scrollTime_[Index(key)] = time; }

}  // namespace LF2000
