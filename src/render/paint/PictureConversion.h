#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

namespace render {

/// What has become of a picture that browsers do not show (a metafile, TIFF).
struct PictureConversion {
  enum class State : std::uint8_t { Pending, Done, Failed };
  State state = State::Pending;
  /// Null unless done.
  std::shared_ptr<const std::string> svg;
  /// Why it failed, as the end of a sentence about the picture.
  std::string problem;
};

/// Makes SVG of such pictures while its caller goes on.
class PictureConversions {
 public:
  virtual ~PictureConversions() = default;

  /// What is known of a picture; begins its conversion when that is nothing. `name` is made from the content
  /// and stands for it, so for a known one `bytes` may be left out. Width and height are the picture's
  /// natural size in CSS px, or 0. The reference holds as long as this object; what it says may change.
  virtual const PictureConversion& convert(const std::string& name, std::string_view bytes, double width,
                                           double height) = 0;
};

}  // namespace render
