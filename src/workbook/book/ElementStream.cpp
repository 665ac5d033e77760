// Huge parts cut into blocks of whole elements, each parsed in place, which is faster than events one by one.

#include "workbook/book/ElementStream.h"

#include <algorithm>
#include <utility>

#include "workbook/book/Xml.h"

namespace workbook {
namespace {

constexpr std::size_t BlockSize = std::size_t{64} << 10U;
// A row of 16,384 cells takes some 3 MB at most, unless texts stand in it.
constexpr std::size_t MaximumItemSize = std::size_t{64} << 20U;
constexpr std::size_t MaximumHeadSize = std::size_t{4} << 20U;
// A sheet of every row and fifty columns; what claims more is made to harm.
constexpr std::uint64_t MaximumPartSize = std::uint64_t{4} << 30U;

constexpr unsigned int ParseOptions = pugi::parse_escapes | pugi::parse_eol | pugi::parse_cdata |
                                      pugi::parse_fragment | pugi::parse_embed_pcdata |
                                      pugi::parse_ws_pcdata_single;

constexpr auto None = std::string::npos;

bool endsName(char c) { return c == ' ' || c == '>' || c == '/' || c == '\t' || c == '\n' || c == '\r'; }

/// Behind the end of a tag that begins at `at`; none when it does not end.
std::size_t endOfTag(std::string_view text, std::size_t at) {
  char quote = 0;
  for (; at < text.size(); ++at) {
    const char c = text[at];
    if (quote != 0) {
      if (c == quote) quote = 0;
    } else if (c == '"' || c == '\'') {
      quote = c;
    } else if (c == '>') {
      return at + 1;
    }
  }
  return None;
}

/// Behind the end of whatever markup begins at `at`.
std::size_t endOfMarkup(std::string_view text, std::size_t at) {
  const auto behind = [&](std::string_view closing) {
    const std::size_t found = text.find(closing, at);
    return found == None ? None : found + closing.size();
  };
  const std::string_view rest = text.substr(at);
  if (rest.starts_with("<!--")) return behind("-->");
  if (rest.starts_with("<?")) return behind("?>");
  return endOfTag(text, at);
}

}  // namespace

ElementStream::ElementStream(const Parts& parts, std::string part, std::string_view container,
                             std::string_view item)
    : parts_(parts), part_(std::move(part)), stream_(parts.open(part_)) {
  findContainer(container);
  itemName_ = prefix_ + std::string(item);
  itemTag_ = "<" + itemName_;
  closingTag_ = "</" + prefix_ + std::string(container);
}

/// Reads until the buffer has that size; false when the part ends before.
bool ElementStream::fill(std::size_t size) {
  const std::size_t before = buffer_.size();
  if (before >= size || partEnded_) return before >= size;
  if (offset_ + size > MaximumPartSize) parts_.failIn(part_, "has more than 4 GB");
  buffer_.resize(size);
  buffer_.resize(before + stream_.read(buffer_.data() + before, size - before));
  partEnded_ = buffer_.size() < size;
  return !partEnded_;
}

void ElementStream::findContainer(std::string_view container) {
  std::size_t at = 0;
  fill(BlockSize);
  if (xml::isUtf16(buffer_)) failAt(0, "it is in UTF-16, not in UTF-8");
  while (true) {
    at = buffer_.find('<', at);
    const std::size_t end = at == None ? None : endOfMarkup(buffer_, at);
    if (end == None) {
      if (partEnded_) failAt(buffer_.size(), "there is no element " + std::string(container));
      if (buffer_.size() >= MaximumHeadSize) parts_.failIn(part_, "has more than 4 MB before its data");
      fill(buffer_.size() * 2);
      at = at == None ? buffer_.size() : at;
      continue;
    }
    const std::string_view tag = std::string_view(buffer_).substr(at, end - at);
    if (tag.starts_with("<!") && !tag.starts_with("<!--")) {
      failAt(at, "a workbook may have no document type declaration");
    }
    const auto nameEnd = std::find_if(tag.begin() + 1, tag.end(), endsName);
    const std::string_view name(tag.begin() + 1, nameEnd);
    const std::string_view local = xml::localName(name);
    if (local == "dimension") dimensionTag_ = tag;
    at = end;
    if (local != container) continue;
    if (const auto fault = xml::findFault(std::string_view(buffer_).substr(0, end)))
      failAt(fault->offset, fault->reason);
    prefix_ = name.substr(0, name.size() - local.size());
    containerEnded_ = tag.ends_with("/>");
    parsed_ = end;
    return;
  }
}

/// Whether a place lies in a comment or CDATA section, which may hold what looks
/// like tags.
bool ElementStream::isWithinSection(std::size_t at) const {
  const auto isOpen = [&](std::string_view opening, std::string_view closing) {
    const std::size_t opened = buffer_.rfind(opening, at);
    return opened != None && opened >= parsed_ && buffer_.find(closing, opened) >= at;
  };
  return isOpen("<![CDATA[", "]]>") || isOpen("<!--", "-->");
}

/// Where the last item begins that is not the first: all before it is complete.
std::size_t ElementStream::lastItemStart() const {
  // Exclamation marks are rare in sheets, and quickly looked for.
  bool hasSections = false;
  for (std::size_t mark = buffer_.find('!'); mark != None && !hasSections;
       mark = buffer_.find('!', mark + 1)) {
    hasSections = mark > 0 && buffer_[mark - 1] == '<';
  }
  std::size_t at = buffer_.size();
  while (at > 0 && (at = buffer_.rfind(itemTag_, at - 1)) != None && at > 0) {
    const std::size_t behind = at + itemTag_.size();
    if (behind < buffer_.size() && endsName(buffer_[behind]) && (!hasSections || !isWithinSection(at)))
      return at;
  }
  return None;
}

bool ElementStream::parseBlock() {
  if (containerEnded_) return false;
  upcoming_ = {};
  document_.reset();
  buffer_.erase(0, parsed_);
  offset_ += parsed_;
  parsed_ = 0;

  std::size_t cut = None;
  for (std::size_t size = BlockSize; cut == None; size *= 2) {
    fill(size);
    cut = lastItemStart();
    for (std::size_t at = cut == None ? 0 : cut; (at = buffer_.find(closingTag_, at)) != None; ++at) {
      if (isWithinSection(at)) continue;
      cut = at;
      containerEnded_ = true;
      break;
    }
    if (cut != None) break;
    if (partEnded_) failAt(buffer_.size(), "the part ends in the middle");
    if (size >= MaximumItemSize) parts_.failIn(part_, "has an element of more than 64 MB");
  }

  const std::string_view block = std::string_view(buffer_).substr(0, cut);
  if (const auto fault = xml::findFault(block)) failAt(fault->offset, fault->reason);
  parsed_ = cut;
  if (cut == 0) return true;
  const pugi::xml_parse_result result =
      document_.load_buffer_inplace(buffer_.data(), cut, ParseOptions, pugi::encoding_utf8);
  if (!result && result.status != pugi::status_no_document_element) {
    failAt(static_cast<std::size_t>(result.offset), result.description());
  }
  upcoming_ = document_.first_child();
  return true;
}

pugi::xml_node ElementStream::next() {
  while (true) {
    for (; upcoming_; upcoming_ = upcoming_.next_sibling()) {
      if (upcoming_.name() == itemName_) return std::exchange(upcoming_, upcoming_.next_sibling());
    }
    if (!parseBlock()) return {};
  }
}

void ElementStream::failAt(std::size_t at, std::string_view reason) const {
  xml::failAt(parts_, part_, offset_ + at, reason);
}

}  // namespace workbook
