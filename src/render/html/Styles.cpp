#include <algorithm>
#include <iterator>

#include "render/geometry/Units.h"
#include "render/html/PageContract.h"

namespace render {

namespace {

constexpr std::string_view Styles =
    R"(.slide{all:initial;cursor:inherit;pointer-events:inherit;visibility:inherit;direction:ltr;display:block;position:relative;overflow:hidden;background:#fff;text-rendering:geometricPrecision;font-kerning:normal;-webkit-text-size-adjust:none;--fineness:8}
.slide,.slide *{forced-color-adjust:none}
.slide .behind,.slide .s,.slide .t,.slide svg,.slide table,.slide deck-chart{position:absolute}
.slide .behind,.slide svg,.slide table,.slide deck-chart{left:0;top:0}
.slide svg{overflow:visible}
.slide .m{position:absolute;left:0;top:0;width:100%;height:100%;object-fit:fill}
.slide .t{display:flex;flex-direction:column;box-sizing:border-box}
.slide .t,.slide table{transform:scale(.125)}
.slide table{transform-origin:0 0}
.slide .t>*{flex:none}
.slide p{margin:0;white-space:pre-wrap;overflow-wrap:break-word}
.slide .n>p{white-space:pre}
.slide .b,.slide .tab{display:inline-block;text-indent:0;white-space:pre}
.slide .tr,.slide .tc{display:inline-block;width:0;text-indent:0}
.slide .tr>*,.slide .tc>*{display:inline-block;white-space:pre;transform:translateX(-100%)}
.slide .tc>*{transform:translateX(-50%)}
.slide .b{line-height:0}
.slide .k{white-space:nowrap}
.slide .k::after{content:"\2060"}
.slide table{table-layout:fixed;border-collapse:collapse;border-spacing:0}
.slide td{vertical-align:top;box-sizing:border-box}
.slide .live{font-variant-numeric:tabular-nums}
)";

constexpr bool isStyled(std::string_view name) {
  for (auto at = Styles.find(name); at != std::string_view::npos; at = Styles.find(name, at + 1)) {
    const std::string_view behind = Styles.substr(at + name.size(), 1);
    if (Styles[at - 1] == '.' && behind.find_first_of("{,> :") == 0) return true;
  }
  return false;
}
// What nobody gives a style to has another name by now.
constexpr std::string_view Classes[] = {page::Slide,      page::Behind,    page::Shape,    page::Live,
                                        page::Text,       page::Unwrapped, page::Media,    page::Bullet,
                                        page::BulletWord, page::Tab,       page::TabRight, page::TabCentre};
static_assert(std::all_of(std::begin(Classes), std::end(Classes), isStyled));
static_assert(Fineness == 8 && Styles.find(";--fineness:8}") != std::string_view::npos &&
                  Styles.find("{transform:scale(.125)}") != std::string_view::npos,
              "text is scaled down as much as it was laid out larger");

}  // namespace

std::string_view slideStyles() { return Styles; }

}  // namespace render
