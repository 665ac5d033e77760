#include "app/show/ChangeFlush.h"

namespace app {

ChangeFlush::ChangeFlush(platform::EventLoop& loop, std::function<void(Changes)> flush)
    : loop_(loop), flush_(std::move(flush)) {}

ChangeFlush::~ChangeFlush() { *self_ = nullptr; }

void ChangeFlush::shape(int slide, std::uint32_t id) {
  request();
  changes_.shapes[{slide, id}] = std::nullopt;
}

void ChangeFlush::cell(int slide, std::uint32_t id, int row, int column) {
  request();
  const auto shape = changes_.shapes.try_emplace({slide, id}, render::CellPlaces()).first;
  if (shape->second) shape->second->insert({row, column});
}

void ChangeFlush::slideOnShow() {
  request();
  changes_.slideOnShow = true;
}

void ChangeFlush::everything() {
  request();
  changes_.everything = true;
}

void ChangeFlush::request() {
  if (isRequested_) return;
  isRequested_ = true;
  changes_.began = std::chrono::steady_clock::now();
  loop_.post([self = self_] {
    if (*self) (*self)->flush();
  });
}

void ChangeFlush::flush() {
  isRequested_ = false;
  flush_(std::exchange(changes_, {}));
}

}  // namespace app
