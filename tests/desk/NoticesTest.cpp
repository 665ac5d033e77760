// What authors are told, and what their answers do.

#include "app/desk/Notices.h"

#include <gtest/gtest.h>

#include "support/ErrorOf.h"
#include "web/desk/Desk.h"

namespace app::test {
namespace {

TEST(Notices, AnAnswerCountsOnce) {
  int changes = 0;
  int taken = 0;
  Notices notices([&] { ++changes; });
  const int asked =
      notices.tell(Notices::Level::Warning, "Take it?", {},
                   {{"take", "Take it", [&] { ++taken; }}, {"look", "Look", {}, /*isKept=*/true}});
  notices.press(asked, "look");
  EXPECT_TRUE(notices.isTold(asked));
  // Of two clicks the second finds nothing left to do.
  notices.press(asked, "take");
  notices.press(asked, "take");
  EXPECT_EQ(taken, 1);
  EXPECT_EQ(changes, 2);
  // What went otherwise was not done, which is said.
  const int gone =
      notices.tell(Notices::Level::Warning, "Take it?", {}, {{"take", "Take it", [&] { ++taken; }}});
  notices.dismiss(gone);
  EXPECT_THROW(notices.press(gone, "take"), web::Refusal);
  EXPECT_EQ(taken, 1);
}

}  // namespace
}  // namespace app::test
