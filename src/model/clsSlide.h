#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "host/powerpoint.h"

namespace LF2000 {

/// The settings of one slide. Scroll entries are named by a key text, the
/// entry's number 0 to 999; a key outside raises "Subscript out of range", one
/// that is no number "Type mismatch".
class clsSlide {
 public:
  /// HideWhenNoData, TAB, RefreshLinkedObjects, TAB, each "-1" or "0".
  [[nodiscard]] std::string TagString() const;
  /// A text that ends after the second value without a TAB is the older form and
  /// clears RefreshLinkedObjects. A text that cannot be parsed is reported.
  void TagString(std::string_view text);

  /// Reads the settings from a slide's tags. An entry that cannot be read is left
  /// out; the answer says which and why.
  std::vector<std::string> ReadTags(const PowerPoint::Tags& tags);

  /// Stores the pieces of ScrollEnabled, TAB, ScrollStep, TAB, ScrollTime in
  /// order; what was stored before a failing piece stays.
  void AddScrollInfo(std::string_view key, std::string_view value);

  /// The numbers of the entries that are stored: those with a time.
  [[nodiscard]] std::vector<std::int32_t> ScrollEntryNumbers() const;

  [[nodiscard]] bool ScrollEnabled(std::string_view key) const;
  /// Rows.
  [[nodiscard]] std::int32_t ScrollStep(std::string_view key) const;
  /// Milliseconds.
  [[nodiscard]] std::int32_t ScrollTime(std::string_view key) const;
  void SetScrollEnabled(std::string_view key, bool enabled);
  void SetScrollStep(std::string_view key, std::int32_t step);
  void SetScrollTime(std::string_view key, std::int32_t time);

  [[nodiscard]] bool HideWhenNoData() const { return hideWhenNoData_; }
  void HideWhenNoData(bool hide) { hideWhenNoData_ = hide; }
  [[nodiscard]] bool RefreshLinkedObjects() const { return refreshLinkedObjects_; }
  void RefreshLinkedObjects(bool refresh) { refreshLinkedObjects_ = refresh; }
  /// Held with the settings, stored in no tag.
  [[nodiscard]] bool DesignMode() const { return designMode_; }
  void DesignMode(bool design) { designMode_ = design; }

  static constexpr std::size_t ScrollEntries = 1000;
  // What authors may ask for: rows either way, and milliseconds up to a day.
  static constexpr std::int32_t MostScrollRows = 1'000'000;
  static constexpr std::int32_t LeastScrollTime = 20;
  static constexpr std::int32_t MostScrollTime = 86'400'000;

 private:
  bool hideWhenNoData_ = false;
  bool refreshLinkedObjects_ = false;
  bool designMode_ = false;
  std::array<bool, ScrollEntries> scrollEnabled_{};
  std::array<std::int32_t, ScrollEntries> scrollStep_{};
  std::array<std::int32_t, ScrollEntries> scrollTime_{};
};

}  // namespace LF2000
