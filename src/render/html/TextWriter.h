#pragma once

#include "render/geometry/Units.h"
#include "render/html/RunWriter.h"
#include "render/svg/HtmlOut.h"
#include "render/text/Text.h"

namespace render {

/// Writes text as HTML; the browser breaks its lines.
class TextWriter {
 public:
  /// `assetPrefix` precedes the names of pictures; `fineness` is how many times larger than on the page the
  /// text is laid out.
  TextWriter(HtmlOut& out, std::string_view assetPrefix, double fineness = Fineness)
      : out_(out), runs_(out, assetPrefix, fineness), fineness_(fineness) {}

  /// A block that fills `area` of the enclosing element. Nothing for empty text.
  void block(const TextBody& body, const Rect& area, double rotation);
  /// The paragraphs alone; the first one lies `carried` px lower.
  void paragraphs(const TextBody& body, double carried = 0);

 private:
  /// Browsers centre the font's box in the line; in a presentation all that is added to a line or taken from
  /// it is above the text. This is how much lower than there the text belongs, px.
  static double shiftOf(const Paragraph& paragraph, const BodyProperties& properties);
  /// Returns the shift of the baselines that the next paragraph has to make up for.
  double paragraph(const Paragraph& paragraph, const BodyProperties& properties, double gap, bool isLast);

  [[nodiscard]] double fine(double px) const { return px * fineness_; }

  HtmlOut& out_;
  RunWriter runs_;
  double fineness_;
};

}  // namespace render
