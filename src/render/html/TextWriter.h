#pragma once

#include "render/geometry/Units.h"
#include "render/scene/Scene.h"
#include "render/svg/HtmlOut.h"
#include "render/text/FontMetrics.h"

namespace render {

/// Writes text as HTML; the browser breaks its lines.
class TextWriter {
 public:
  /// `assetPrefix` precedes the names of pictures; `fineness` is how many times larger than on the page the
  /// text is laid out.
  TextWriter(HtmlOut& out, std::string_view assetPrefix, double fineness = Fineness)
      : out_(out), assetPrefix_(assetPrefix), fineness_(fineness) {}

  /// A block that fills `area` of the enclosing element. Nothing for empty text.
  void block(const TextBody& body, const Rect& area, double rotation);
  /// The paragraphs alone; the first one lies `carried` px lower.
  void paragraphs(const TextBody& body, double carried = 0);

 private:
  /// The look of a run as a page states it.
  struct Look {
    double size = 0;  // px
    const FontStack* font = nullptr;
    bool bold = false;
    bool italic = false;
    Color color;
    bool operator==(const Look&) const = default;
  };

  static Look lookOf(const RunStyle& style, const BodyProperties& properties);
  void look(const Look& look);
  void lookDifference(const Look& look, const Look& base);
  void decoration(const RunStyle& style);
  void bullet(const Paragraph& paragraph, const RunStyle& first, const Look& firstLook, double fontScale);
  void pictureBullet(const Asset& picture, double size);
  void runs(const Paragraph& paragraph, const BodyProperties& properties, const Look& base);
  void run(const Run& run, std::string_view text, const Look& look, const Look& base);
  /// Browsers centre the font's box in the line; in a presentation all that is added to a line or taken from
  /// it is above the text. This is how much lower than there the text belongs, px.
  static double shiftOf(const Paragraph& paragraph, const BodyProperties& properties);
  /// Returns the shift of the baselines that the next paragraph has to make up for.
  double paragraph(const Paragraph& paragraph, const BodyProperties& properties, double gap, bool isLast);

  [[nodiscard]] double fine(double px) const { return px * fineness_; }

  HtmlOut& out_;
  std::string_view assetPrefix_;
  double fineness_;
};

}  // namespace render
