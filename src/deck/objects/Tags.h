#pragma once

#include <memory>

#include "deck/objects/Presentation.h"

namespace deck {

/// The tags of a presentation, a slide or a shape, as the object model has them: names in upper case,
/// numbered from 1 in the order in which they were added; an index that is none is an error. The list must
/// be one of the presentation's.
class Tags final : public PowerPoint::Tags {
 public:
  Tags(std::shared_ptr<Presentation> presentation, TagList& list)
      : presentation_(std::move(presentation)), list_(list) {}

  [[nodiscard]] std::int32_t Count() const override;
  [[nodiscard]] std::string Name(std::int32_t index) const override;
  [[nodiscard]] std::string Value(std::int32_t index) const override;
  void Add(std::string_view name, std::string_view value) override;
  void Delete(std::string_view name) override;

 private:
  [[nodiscard]] const Tag& item(std::int32_t index) const;

  std::shared_ptr<Presentation> presentation_;
  TagList& list_;
};

}  // namespace deck
