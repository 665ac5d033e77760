#pragma once

#include <cstdint>
#include <pugixml.hpp>
#include <string>
#include <string_view>

#include "workbook/book/Parts.h"

namespace workbook {

/// The children of one name of one element, such as the rows of a sheet, in a
/// part that may be huge: inflated and parsed block by block, no further than
/// asked for.
class ElementStream {
 public:
  /// Reads up to the start of `container`; names are without prefix. Throws
  /// basic::Error with part, line and column here and in next().
  ElementStream(const Parts& parts, std::string part, std::string_view container, std::string_view item);

  /// The next item, null when the container ends. It and all its text is valid
  /// until the next call.
  pugi::xml_node next();

  /// What stands before the name of every element ("x:"), most often nothing.
  [[nodiscard]] const std::string& prefix() const { return prefix_; }
  /// The start tag of the element `dimension` before the container, if any.
  [[nodiscard]] const std::string& dimensionTag() const { return dimensionTag_; }

 private:
  bool fill(std::size_t size);
  void findContainer(std::string_view container);
  [[nodiscard]] std::size_t lastItemStart() const;
  [[nodiscard]] bool isWithinSection(std::size_t at) const;
  bool parseBlock();
  [[noreturn]] void failAt(std::size_t at, std::string_view reason) const;

  const Parts& parts_;
  std::string part_;
  PartStream stream_;
  std::string prefix_;
  std::string itemName_;
  std::string itemTag_;
  std::string closingTag_;
  std::string dimensionTag_;

  std::string buffer_;
  std::uint64_t offset_ = 0;  // of the buffer in the part
  std::size_t parsed_ = 0;    // bytes of the buffer that the document lies in
  bool partEnded_ = false;
  bool containerEnded_ = false;
  pugi::xml_document document_;
  pugi::xml_node upcoming_;
};

}  // namespace workbook
