#pragma once

#include <vector>

#include "render/text/Text.h"

namespace render {

/// How much room text takes, by the widths of this machine's fonts.
class TextExtent {
 public:
  explicit TextExtent(const TextBody& body);

  /// px, of the longest line when only its own breaks break it.
  [[nodiscard]] double width() const;
  /// px, when lines are broken at `width`, with the fitting that `properties` state.
  [[nodiscard]] double height(double width, const BodyProperties& properties) const;

 private:
  /// What stays together when a line breaks, at full size.
  struct Word {
    double width = 0;  // px
    double space = 0;  // behind it
    double size = 0;   // px
    bool breaks = false;
  };
  struct Lines {
    const Paragraph* paragraph;
    std::vector<Word> words;
    double size = 0;  // px, of an empty line
  };

  static Lines split(const Paragraph& paragraph);

  std::vector<Lines> paragraphs_;
};

/// Makes text that shrinks (a:normAutofit) fit into a room of `width` by `height` px: what the file states is
/// kept as long as the text fits with it, else type and lines get smaller in the steps that presentation
/// programs take. Text may stick out by the share `tolerance` of the height.
void fitText(TextBody& body, double width, double height, double tolerance);

}  // namespace render
