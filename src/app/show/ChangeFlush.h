#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <utility>

#include "platform/EventLoop.h"
#include "render/html/SlideRenderer.h"

namespace app {

/// Notes what a handler changes, and hands it on once, when the handler is done.
class ChangeFlush {
 public:
  struct Changes {
    /// By slide, from 1, and id; of a table the cells, where no more of it has changed.
    std::map<std::pair<int, std::uint32_t>, std::optional<render::CellPlaces>> shapes;
    /// What the screens that follow the show draw, and what all of them draw.
    bool slideOnShow = false;
    bool everything = false;
    /// When the first of them happened.
    std::chrono::steady_clock::time_point began;
  };

  /// `flush` is called from the loop as long as this object lives. The loop outlives it.
  ChangeFlush(platform::EventLoop& loop, std::function<void(Changes)> flush);
  ~ChangeFlush();
  ChangeFlush(const ChangeFlush&) = delete;
  ChangeFlush& operator=(const ChangeFlush&) = delete;

  void shape(int slide, std::uint32_t id);
  void cell(int slide, std::uint32_t id, int row, int column);
  void slideOnShow();
  void everything();

 private:
  void request();
  void flush();

  platform::EventLoop& loop_;
  std::function<void(Changes)> flush_;
  Changes changes_;
  bool isRequested_ = false;
  /// Lets a posted flush see that this object is gone.
  std::shared_ptr<ChangeFlush*> self_ = std::make_shared<ChangeFlush*>(this);
};

}  // namespace app
