// How the program talks with a browser that others wrote, played here by scripts.

#include "app/inspect/HeadlessBrowser.h"

#include <gtest/gtest.h>

#include <cstdlib>

#include "support/ErrorOf.h"
#include "support/TemporaryFolder.h"

namespace app {
namespace {

using support::errorOf;

/// Answers every call with `result`, read by NUL from descriptor 3 and written to 4.
std::string answering(const std::string& result) {
  return R"(while IFS= read -r -d '' call <&3; do
  id=${call#*\"id\":}; id=${id%%[,\}]*}
  printf '{"id":%s,%s}\0' "$id" ')" +
         result + R"(' >&4
  case $call in *Page.navigate*) printf '{"method":"Page.loadEventFired"}\0' >&4 ;; esac
done
)";
}

struct HeadlessBrowserTest : testing::Test {
  support::TemporaryFolder folder;
  std::string usualPath = std::getenv("PATH");

  ~HeadlessBrowserTest() override { ::setenv("PATH", usualPath.c_str(), 1); }
  /// A browser of that name is all that can be found.
  void install(const std::string& name, const std::string& script) {
    const std::string file = folder.write(name, "#!/bin/bash\n" + script);
    std::filesystem::permissions(file, std::filesystem::perms::owner_all);
    ::setenv("PATH", folder.path().c_str(), 1);
  }
};

constexpr const char* Useful =
    R"("result":{"targetId":"t","sessionId":"s","data":"UE5H","result":{"value":{"out":3}}})";

TEST_F(HeadlessBrowserTest, OpensMeasuresPhotographsAndPrints) {
  install("google-chrome", answering(Useful));
  HeadlessBrowser browser;
  browser.open("/some where/slide.html", {});
  EXPECT_EQ(browser.photograph(), "PNG");
  EXPECT_EQ(browser.print(), "PNG") << "whatever it made";
  EXPECT_EQ(browser.evaluate("measure"), R"({"out":3})");
}

TEST_F(HeadlessBrowserTest, SaysWhatIsWrongWithIt) {
  const auto begin = [] { const HeadlessBrowser browser; };
  ::setenv("PATH", folder.path().c_str(), 1);
  EXPECT_EQ(errorOf(begin),
            "pictures and PDF files take Chromium, which is not installed (apt install chromium).");
  install("chromium", "read -r -d '' call <&3\n");
  EXPECT_EQ(errorOf(begin), "the browser has ended.");
  install("chromium", answering(R"("error":{"message":"not today"})"));
  EXPECT_EQ(errorOf(begin), "the browser refused Target.createTarget: not today.");
  install(
      "chromium",
      answering(R"("result":{"targetId":"t","sessionId":"s","exceptionDetails":{"text":"no such thing"}})"));
  HeadlessBrowser browser;
  EXPECT_EQ(errorOf([&] { browser.evaluate("measure"); }), "the browser's script failed: no such thing.");
}

}  // namespace
}  // namespace app
