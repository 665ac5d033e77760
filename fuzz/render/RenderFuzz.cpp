// Draws a deck of which one part is hostile: nothing but Error leaves the renderer, the pages are bounded and
// well-formed, and the scene is bounded text that does nothing to a terminal.

#include <cstdint>
#include <cstdlib>
#include <string>

#include "HostileDeck.h"
#include "PageCheck.h"
#include "basic/Error.h"
#include "basic/Strings.h"
#include "render/html/SlideRenderer.h"

namespace {

/// Much beyond what parts of the fuzzer's size can mean, and little beside what a screen can take.
constexpr std::size_t LargestPage = 16U << 20U;

void check(const std::string& html) {
  if (html.size() > LargestPage) std::abort();
  checkMarkup(html);
}

void checkScene(const std::string& scene) {
  constexpr std::size_t LargestScene = 5U << 20U;
  if (scene.size() > LargestScene || !basic::IsValidUtf8(scene)) std::abort();
  for (const char c : scene) {
    if ((static_cast<unsigned char>(c) < 0x20 && c != '\n') || c == 0x7F) std::abort();
  }
}

template <typename Draw>
void attempt(Draw draw) {
  try {
    draw();
  } catch (const basic::Error&) {
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  const std::string content(reinterpret_cast<const char*>(data) + 1, size - 1);
  attempt([&] {
    const auto package = hostileDeck(static_cast<char>(data[0]), content);
    if (package == nullptr) return;
    render::SlideRenderer::Options options;
    options.isLive = [](int, std::uint32_t shape) { return shape % 2 == 0; };
    options.now = [] { return basic::Date{45000.5}; };
    render::SlideRenderer renderer(*package, options);
    attempt([&] { check(renderer.slide(1).html); });
    attempt([&] { check(renderer.backdrop(1)); });
    attempt([&] { checkScene(renderer.scene(1)); });
    for (std::uint32_t shape = 1; shape <= LastShapeId; ++shape) {
      attempt([&] {
        check(renderer.shape(1, shape));
        static_cast<void>(renderer.area(1, shape));
      });
    }
  });
  return 0;
}
