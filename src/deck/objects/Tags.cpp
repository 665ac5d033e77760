#include "deck/objects/Tags.h"

#include "deck/Failure.h"

namespace deck {

std::int32_t Tags::Count() const { return static_cast<std::int32_t>(list_.all().size()); }

const Tag& Tags::item(std::int32_t index) const {
  if (index < 1 || index > Count()) {
    fail("There is no tag " + std::to_string(index) + " among " + std::to_string(Count()) + " tags.");
  }
  return list_.all()[static_cast<std::size_t>(index - 1)];
}

std::string Tags::Name(std::int32_t index) const { return item(index).name; }
std::string Tags::Value(std::int32_t index) const { return item(index).value; }

void Tags::Add(std::string_view name, std::string_view value) {
  if (list_.add(name, value)) presentation_->Saved(false);
}

void Tags::Delete(std::string_view name) {
  if (list_.remove(name)) presentation_->Saved(false);
}

}  // namespace deck
