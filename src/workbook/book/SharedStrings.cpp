#include "workbook/book/SharedStrings.h"

#include <utility>

#include "workbook/book/RichText.h"

namespace workbook {
namespace {

constexpr std::size_t MaximumSize = std::size_t{1} << 30U;
constexpr std::size_t MaximumCount = std::size_t{1} << 26U;

}  // namespace

SharedStrings::SharedStrings(const Parts& parts, std::string part)
    : parts_(parts), part_(std::move(part)), ended_(part_.empty()) {}

void SharedStrings::readNext() {
  if (!stream_) stream_.emplace(parts_, part_, "sst", "si");
  const pugi::xml_node item = stream_->next();
  if (!item) {
    ended_ = true;
    stream_.reset();
    return;
  }
  appendRichText(texts_, item, stream_->prefix());
  if (texts_.size() > MaximumSize) parts_.failIn(part_, "has more than 1 GB of text");
  if (ends_.size() == MaximumCount) parts_.failIn(part_, "has more than 67,108,864 texts");
  ends_.push_back(static_cast<std::uint32_t>(texts_.size()));
}

std::string_view SharedStrings::at(std::size_t index) {
  while (!ended_ && ends_.size() <= index) readNext();
  if (index >= ends_.size()) return {};
  const std::uint32_t begin = index == 0 ? 0 : ends_[index - 1];
  return std::string_view(texts_).substr(begin, ends_[index] - begin);
}

}  // namespace workbook
