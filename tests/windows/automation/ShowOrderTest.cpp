#include <gtest/gtest.h>

#include <cstdint>
#include <optional>
#include <set>
#include <vector>

#include "windows/automation/SlideShow.h"

namespace windows::automation {
namespace {

using Slides = std::vector<std::int32_t>;

TEST(SlidesAhead, FollowTheOrderPastHiddenSlides) {
  const std::set<std::int32_t> hidden = {2, 4, 5};
  const auto isHidden = [&hidden](std::int32_t slide) { return hidden.contains(slide); };
  const Course all{{1, 2, 3, 4, 5}, false};

  auto ahead = slidesAhead(all, 0, isHidden);
  EXPECT_EQ(ahead.Next, 3);
  EXPECT_EQ(ahead.PassedOver, Slides{2});

  ahead = slidesAhead(all, 2, isHidden);
  EXPECT_FALSE(ahead.Next) << "it ends here";
  EXPECT_EQ(ahead.PassedOver, (Slides{4, 5, 2})) << "and may go back";

  ahead = slidesAhead({all.order, true}, 2, isHidden);
  EXPECT_EQ(ahead.Next, 1) << "it begins anew";
  EXPECT_EQ(ahead.PassedOver, (Slides{4, 5}));

  ahead = slidesAhead({{3, 4, 3, 1}, false}, 2, isHidden);
  EXPECT_EQ(ahead.Next, 1) << "a slide may stand in a show twice";
  EXPECT_EQ(slidesAhead({{3}, true}, 0, isHidden).Next, std::nullopt);
  EXPECT_EQ(slidesAhead({{}, true}, 0, isHidden).Next, std::nullopt);
}

}  // namespace
}  // namespace windows::automation
