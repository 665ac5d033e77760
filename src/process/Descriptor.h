#pragma once

#include <unistd.h>

#include <utility>

namespace process {

/// Owns a file descriptor of the system and closes it, without a look at what close(2) answers: who has
/// written closes by hand (see release()).
class Descriptor {
 public:
  Descriptor() = default;
  /// Below 0 it is none, as open(2) answers when it fails.
  explicit Descriptor(int number) : number_(number) {}
  ~Descriptor() { reset(); }
  Descriptor(Descriptor&& other) noexcept : number_(other.release()) {}
  Descriptor& operator=(Descriptor&& other) noexcept {
    reset(other.release());
    return *this;
  }

  [[nodiscard]] int get() const { return number_; }
  [[nodiscard]] bool isOpen() const { return number_ >= 0; }
  /// Gives it away: closing is the caller's from now on.
  [[nodiscard]] int release() { return std::exchange(number_, -1); }
  /// Closes it and takes another one, or none.
  void reset(int number = -1) {
    const int old = std::exchange(number_, number);
    if (old >= 0) ::close(old);
  }

 private:
  int number_ = -1;
};

}  // namespace process
