// Linked shapes as their tags describe them.

#include "app/wiring/LinkedShapes.h"

#include <gtest/gtest.h>

#include "render/html/PageContract.h"

namespace app {
namespace {

TEST(LinkedShapesTest, AConnectionIsKnownByTheNumberThatTheRuntimeReads) {
  const auto key = [](const char* tag) {
    LinkedShape shape;
    shape.connection = tag;
    return shape.connectionKey();
  };
  EXPECT_EQ(key("001"), "001");
  EXPECT_EQ(key(" 12 "), "012");
  EXPECT_EQ(key("4294967297"), "") << "one more than fits";
  EXPECT_EQ(key("one"), "");
  EXPECT_EQ(key(""), "");
}

TEST(LinkedShapesTest, AnElementsIdHoldsItsShapes) {
  EXPECT_EQ(render::page::shapeElement(3, 4000000000), "s3-sh4000000000");
  EXPECT_EQ(render::page::shapeOf("s3-sh4000000000"), 4000000000);
  EXPECT_EQ(render::page::shapeOf("s3-sh7-2"), 7U);
  EXPECT_EQ(render::page::shapeOf("s3-l4"), 0U);
}

}  // namespace
}  // namespace app
