#pragma once

#include <functional>
#include <memory>
#include <string_view>

#include "host/services.h"

namespace windows::server {

/// The loop of an add-in that may be let go while it waits: from then on every wait ends with an error, so
/// that the handlers which lie on one another end.
class LeavingLoop final : public host::Loop {
 public:
  explicit LeavingLoop(host::Loop& loop) : loop_(loop) {}
  [[nodiscard]] std::unique_ptr<host::Timer> CreateTimer(std::function<void()> handler) override {
    return loop_.CreateTimer(std::move(handler));
  }
  void DoEvents() override;
  void leave() { isLeaving_ = true; }
  void stay() { isLeaving_ = false; }
  [[nodiscard]] bool isLeaving() const { return isLeaving_; }

 private:
  host::Loop& loop_;
  bool isLeaving_ = false;
};

/// Asks nobody while it is leaving: what fails then fails because of that.
class LeavingMessageBox final : public host::MessageBox {
 public:
  LeavingMessageBox(host::MessageBox& box, const LeavingLoop& loop) : box_(box), loop_(loop) {}
  host::MsgBoxResult MsgBox(std::string_view text, std::int32_t style, std::string_view title) override;

 private:
  host::MessageBox& box_;
  const LeavingLoop& loop_;
};

}  // namespace windows::server
