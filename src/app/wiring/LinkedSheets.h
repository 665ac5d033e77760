#pragma once

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "deck/objects/LinkedObjects.h"
#include "deck/objects/Presentation.h"
#include "host/services.h"

namespace app {

/// Draws the cells of workbooks that are linked into a deck, at once and whenever
/// the deck's links are updated, for as long as this object lives. What cannot be
/// drawn keeps the picture it has; the errors log tells why, once.
class LinkedSheets final : private deck::ChangeListener {
 public:
  LinkedSheets(std::shared_ptr<deck::Presentation> presentation, host::Loop& loop);
  ~LinkedSheets() override;
  LinkedSheets(const LinkedSheets&) = delete;
  LinkedSheets& operator=(const LinkedSheets&) = delete;

  /// What could not be drawn the last time, and why.
  [[nodiscard]] std::vector<std::string> failures() const;

 private:
  void shapeChanged(std::int32_t, std::uint32_t) override {}
  void slideHiddenChanged(std::int32_t) override {}
  void linksUpdated() override;

  void draw();
  void draw(std::int32_t slide, const deck::LinkedObject& object);

  std::shared_ptr<deck::Presentation> presentation_;
  host::Loop& loop_;
  bool isDrawing_ = false;
  /// By slide and shape, what was last told of it.
  std::map<std::string, std::string> failures_;
};

}  // namespace app
