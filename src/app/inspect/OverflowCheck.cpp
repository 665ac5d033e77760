#include "app/inspect/OverflowCheck.h"

#include <algorithm>
#include <cmath>
#include <fstream>

#include "app/inspect/HeadlessBrowser.h"
#include "json/Json.h"
#include "process/TemporaryFolder.h"
#include "render/html/PageContract.h"

namespace app {

namespace {

/// By how many px the lines of each live shape stand out of it: of its height,
/// and of its width where lines are broken, else of the slide's.
constexpr const char* Measure = R"js(
[...document.querySelectorAll(".live")].map(shape => {
  let out = 0;
  for (const frame of shape.querySelectorAll(".t")) {
    const own = frame.getBoundingClientRect();
    const wide = frame.querySelector(".n") ? document.querySelector(".slide").getBoundingClientRect() : own;
    const text = document.createRange();
    text.selectNodeContents(frame);
    for (const line of text.getClientRects()) {
      if (line.width === 0) continue;
      // A line's box is a little taller than what is seen of it.
      const spare = line.height * 0.15;
      out = Math.max(out, own.top - line.top - spare, line.bottom - own.bottom - spare,
                     wide.left - line.left, line.right - wide.right);
    }
  }
  return {id: shape.id, out};
}))js";

/// Less is not seen.
constexpr double Tolerance = 2;

}  // namespace

Findings checkOverflow(FilledDeck& filled) {
  Findings findings;
  HeadlessBrowser browser;
  const process::TemporaryFolder folder;
  const render::SlideSize size = filled.size();
  const HeadlessBrowser::View view{static_cast<int>(std::ceil(size.width)),
                                   static_cast<int>(std::ceil(size.height)), 1};
  for (int slide = 1; slide <= filled.slideCount(); ++slide) {
    const auto& linked = filled.linkedShapes(slide);
    if (linked.empty()) continue;
    const auto file = folder.path() / "slide.html";
    std::ofstream(file, std::ios::binary) << filled.page(slide).html;
    browser.open(file, view);
    for (const auto& measured : json::Json::parse(browser.evaluate(Measure))) {
      const auto out = measured["out"].get<double>();
      if (out <= Tolerance) continue;
      const auto shape = std::find_if(linked.begin(), linked.end(), [&](const LinkedShape& each) {
        return measured["id"] == render::page::shapeElement(slide, each.id);
      });
      if (shape == linked.end()) continue;
      findings.push_back({Finding::Gravity::Broken, slide, shape->name,
                          "Today's text is larger than the shape, by " + std::to_string(std::lround(out)) +
                              " px of the slide's " + std::to_string(view.height) + "."});
    }
  }
  return findings;
}

}  // namespace app
