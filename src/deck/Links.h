#pragma once

#include <string>
#include <string_view>

#include "host/powerpoint.h"

namespace deck {

class LinkFormat final : public PowerPoint::LinkFormat {
 public:
  explicit LinkFormat(std::string source) : source_(std::move(source)) {}
  [[nodiscard]] std::string SourceFullName() const override { return source_; }

 private:
  std::string source_;
};

class OLEFormat final : public PowerPoint::OLEFormat {
 public:
  explicit OLEFormat(std::string progId) : progId_(std::move(progId)) {}
  [[nodiscard]] std::string ProgID() const override { return progId_; }
  [[nodiscard]] std::shared_ptr<MSGraph::Chart> Object() override;

 private:
  std::string progId_;
};

/// The path that an external relationship's target means: of a file URL the
/// path, as its system writes it ("C:\data\book.xlsx!Sheet1!R1C1:R2C2",
/// "\\server\share\a.png", "/data/a.png"); a relative target lies beside the
/// deck; other URLs are themselves.
std::string sourcePath(std::string_view target, std::string_view deckPath);

}  // namespace deck
