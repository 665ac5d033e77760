#include "web/show/WallPart.h"

#include <gtest/gtest.h>

namespace web {
namespace {

TEST(WallPartTest, IsCountedRowByRow) {
  EXPECT_EQ((WallPart{2, 1, 0, 0}), wallPartNamed("2x1/1"));
  EXPECT_EQ((WallPart{3, 2, 2, 0}), wallPartNamed("3x2/3"));
  EXPECT_EQ((WallPart{3, 2, 0, 1}), wallPartNamed("3x2/4"));
  EXPECT_EQ((WallPart{64, 64, 63, 63}), wallPartNamed("64x64/4096"));
}

TEST(WallPartTest, IsNoneWhereTheTextSaysSomethingElse) {
  for (const char* wrong :
       {"", "2x1", "2x1/0", "2x1/3", "0x1/1", "65x1/1", "1x65/1", "-2x1/1", "2x-1/1", "2 x1/1", "2x1/1 ",
        "2X1/1", "2x1/1/1", "+2x1/1", "2x1/99999999999", "99999999999x1/1"}) {
    EXPECT_FALSE(wallPartNamed(wrong)) << wrong;
  }
}

}  // namespace
}  // namespace web
