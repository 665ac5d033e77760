#include "web/http/Target.h"

#include <gtest/gtest.h>

namespace web {
namespace {

TEST(TargetTest, IsTakenApart) {
  struct Case {
    const char* text;
    std::optional<std::string_view> host;
    const char* path;
    const char* query;
  };
  for (const auto& [text, host, path, query] : std::initializer_list<Case>{
           {"/a/b?x=1&y=/?", {}, "/a/b", "x=1&y=/?"},
           {"/", {}, "/", ""},
           {"/?", {}, "/", ""},
           {"http://board:80/a?x=1", "board:80", "/a", "x=1"},
           {"HTTPS://board", "board", "/", ""},
           {"http://board?x=1", "board", "/", "x=1"},
           {"http:///a", "", "/a", ""},
           {"*", {}, "*", ""},
       }) {
    const Target target = targetOf(text);
    EXPECT_EQ(host, target.host) << text;
    EXPECT_EQ(path, target.path) << text;
    EXPECT_EQ(query, target.query) << text;
  }
}

TEST(TargetTest, FieldsOfAQueryAreDecoded) {
  EXPECT_EQ("A b/ü&=", queryField("x=1&shape=A+b%2F%C3%BC%26%3D&slide=2", "shape"));
  EXPECT_EQ("", queryField("slide", "slide"));
  EXPECT_EQ("%zz%", queryField("slide=%zz%", "slide"));
  EXPECT_EQ(std::nullopt, queryField("/slide=1", "slide"));
}

}  // namespace
}  // namespace web
