#pragma once

#include <string_view>
#include <vector>

#include "render/geometry/Units.h"
#include "render/svg/HtmlOut.h"
#include "render/text/FontMetrics.h"
#include "render/text/Tabs.h"
#include "render/text/Text.h"

namespace render {

/// The look of a run as a page states it.
struct RunLook {
  double size = 0;  // px
  const FontStack* font = nullptr;
  bool bold = false;
  bool italic = false;
  Color color;
  bool operator==(const RunLook&) const = default;
};

RunLook lookOf(const RunStyle& style, const BodyProperties& properties);

/// Writes the runs of paragraphs as spans that state how they differ from their paragraph.
class RunWriter {
 public:
  /// `assetPrefix` precedes the names of pictures; lengths are written `fineness` times larger.
  RunWriter(HtmlOut& out, std::string_view assetPrefix, double fineness)
      : out_(out), assetPrefix_(assetPrefix), fineness_(fineness) {}

  /// Declarations for an element whose runs have the look.
  void look(const RunLook& look);
  /// The bullet of a paragraph that has one; `first` is the look of its first run, whose style is `style`.
  void bullet(const Paragraph& paragraph, const RunStyle& style, const RunLook& first, double fontScale);
  /// All runs of a paragraph, in an element that has the look `base`.
  void runs(const Paragraph& paragraph, const BodyProperties& properties, const RunLook& base);

 private:
  void lookDifference(const RunLook& look, const RunLook& base);
  void decoration(const RunStyle& style);
  void pictureBullet(const Asset& picture, double size);
  void tabbedLine(const std::vector<TabCell>& cells, const BodyProperties& properties, const RunLook& base);
  void run(const Run& run, std::string_view text, const RunLook& look, const RunLook& base);

  [[nodiscard]] double fine(double px) const { return px * fineness_; }

  HtmlOut& out_;
  std::string_view assetPrefix_;
  double fineness_;
};

}  // namespace render
