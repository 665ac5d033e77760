#include "render/html/SlideRenderer.h"

namespace render {

// A slide looks the same wherever it is put: of what surrounds it, it takes over only whether it is seen
// and how the pointer acts.
std::string_view SlideRenderer::styles() {
  return R"(.slide{all:initial;cursor:inherit;pointer-events:inherit;visibility:inherit;direction:ltr;display:block;position:relative;overflow:hidden;background:#fff;text-rendering:geometricPrecision;font-kerning:normal;-webkit-text-size-adjust:none}
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
}

}  // namespace render
