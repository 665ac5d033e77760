#include "app/wiring/Token.h"

#include <gmock/gmock.h>

#include "platform/Sandbox.h"

namespace app::test {
namespace {

using TokenTest = platform::Sandbox;

TEST_F(TokenTest, IsTheFirstWordOfItsFileIfThatCanBeSent) {
  EXPECT_EQ(readToken(write("token", "\n  secret-1 and a note\n")), "secret-1");
  EXPECT_EQ(readToken(write("token", std::string(1000, 'x'))), std::string(1000, 'x'));
  const auto complaint = [](const std::string& file) {
    return platform::errorOf([&] { static_cast<void>(readToken(file)); });
  };
  EXPECT_THAT(complaint(folder_ + "/none"),
              testing::HasSubstr("none: the token file cannot be read: No such file"));
  EXPECT_THAT(complaint(folder_), testing::HasSubstr("cannot be read: Is a directory"));
  EXPECT_THAT(complaint(write("token", " \n")), testing::HasSubstr("holds no token"));
  for (const char* const wrong : {"t\xC3\xB6ken", "a\x01", "\x7F"}) {
    EXPECT_THAT(complaint(write("token", wrong)), testing::HasSubstr("letters, digits and signs of ASCII"))
        << wrong;
  }
  EXPECT_THAT(complaint(write("token", std::string(1001, 'x'))), testing::HasSubstr("up to 1000"));
}

}  // namespace
}  // namespace app::test
