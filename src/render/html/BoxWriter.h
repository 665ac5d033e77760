#pragma once

#include <string>
#include <string_view>

#include "render/scene/Scene.h"
#include "render/svg/HtmlOut.h"

namespace render {

/// Writes boxes as HTML elements. Throws basic::Error when the page would become too large; what was written
/// by then stands.
class BoxWriter {
 public:
  /// Pictures are addressed as `assetPrefix` and their name.
  BoxWriter(HtmlOut& out, std::string_view assetPrefix) : out_(out), assetPrefix_(assetPrefix) {}

  /// The element gets `elementId`; its parts' names start with it. A box that
  /// draws nothing still gives its element, for what may come to stand there.
  void write(const Box& box, const std::string& elementId, bool isLive);
  /// Without an id of its own; names of parts start with `idPrefix`.
  void writeAnonymous(const Box& box, const std::string& idPrefix);
  /// A cell of a table as it stands in the table's box.
  void cell(const TableCell& cell);
  void background(const Fill& fill, const std::string& idPrefix, double width, double height);

 private:
  void frame(const Box& box);
  void content(const Box& box, const std::string& idPrefix);
  void media(const Media& media);
  void table(const Table& table);
  void chart(const Box& box, const std::string& id);

  HtmlOut& out_;
  std::string_view assetPrefix_;
};

}  // namespace render
