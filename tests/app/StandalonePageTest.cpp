// A slide as a page that needs nothing beside it.

#include "app/inspect/StandalonePage.h"

#include <gmock/gmock.h>

namespace app {
namespace {

using testing::HasSubstr;
using testing::Not;

StandalonePage pageOf(std::string slide) {
  StandalonePage page;
  page.title = "a <b> & c";
  page.slide = std::move(slide);
  page.styles = ".s{}";
  page.asset = [](std::string_view name) -> std::optional<web::Asset> {
    if (name != "a1-2_b.png") return std::nullopt;
    return web::Asset{std::make_shared<const std::string>("\x01\x02\x03"), "image/png"};
  };
  return page;
}

TEST(StandalonePageTest, HoldsItsFilesAndNothingThatMayBeMistaken) {
  const std::string html =
      pageOf("<img src=\"assets/a1-2_b.png\"><image href=\"assets/a1-2_b.png\"/>see assets/gone.png, assets/")
          .html();
  EXPECT_THAT(html, HasSubstr("<title>a &lt;b&gt; &amp; c</title>"));
  EXPECT_THAT(html, HasSubstr("<img src=\"data:image/png;base64,AQID\"><image "
                              "href=\"data:image/png;base64,AQID\"/>see assets/gone.png, assets/</body>"));
}

TEST(StandalonePageTest, BringsWhatDrawsChartsOnlyWhereThereIsOne) {
  EXPECT_THAT(pageOf("<section></section>").html(), Not(HasSubstr("<script>")));
  EXPECT_THAT(pageOf("<section><deck-chart></deck-chart></section>").html(), HasSubstr("<script>"));
}

}  // namespace
}  // namespace app
