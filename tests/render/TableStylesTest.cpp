#include "render/scene/TableStyles.h"

#include <gtest/gtest.h>

namespace render {
namespace {

TEST(TableStyles, AreWrittenAsADeckWouldHaveThem) {
  const auto medium = builtInTableStyle("{f5ab1c69-6edb-4ff4-983f-18bd219ef322}");
  const auto whole = medium.child("a:wholeTbl");
  EXPECT_STREQ(whole.child("a:tcTxStyle").child("a:schemeClr").attribute("val").value(), "dk1");
  const auto fill = whole.child("a:tcStyle").child("a:fill").child("a:solidFill").child("a:schemeClr");
  EXPECT_STREQ(fill.attribute("val").value(), "accent3");
  EXPECT_STREQ(fill.child("a:tint").attribute("val").value(), "20000");
  const auto header = medium.child("a:firstRow");
  EXPECT_STREQ(header.child("a:tcTxStyle").attribute("b").value(), "on");
  const auto below = header.child("a:tcStyle").child("a:tcBdr").child("a:bottom").child("a:ln");
  EXPECT_EQ(below.attribute("w").as_int(), 38100);
  EXPECT_STREQ(below.attribute("cmpd").value(), "sng");

  const auto themed = builtInTableStyle("{D113A9D2-9D6B-4929-AA2D-F23B5EE8CBE7}");
  EXPECT_EQ(themed.child("a:tblBg").child("a:fillRef").attribute("idx").as_int(), 3);
  const auto frame = themed.child("a:wholeTbl").child("a:tcStyle").child("a:tcBdr").child("a:left");
  EXPECT_EQ(frame.child("a:lnRef").attribute("idx").as_int(), 1);
  EXPECT_STREQ(frame.child("a:lnRef").child("a:schemeClr").child("a:tint").attribute("val").value(), "50000");

  const auto dark = builtInTableStyle("{91EBBBCC-DAD2-459C-BE2E-F6DE35CF9A28}");
  const auto total = dark.child("a:lastRow").child("a:tcStyle").child("a:tcBdr").child("a:top").child("a:ln");
  EXPECT_STREQ(total.attribute("cmpd").value(), "dbl");
  EXPECT_STREQ(dark.select_node("a:firstRow//a:fill//a:schemeClr/@val").attribute().value(), "accent4");

  EXPECT_FALSE(builtInTableStyle("{00000000-0000-0000-0000-000000000000}"));
  EXPECT_FALSE(builtInTableStyle(""));
}

}  // namespace
}  // namespace render
