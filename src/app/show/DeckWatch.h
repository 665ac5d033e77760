#pragma once

#include <cstddef>
#include <functional>
#include <future>
#include <memory>
#include <string>
#include <thread>

#include "opc/Files.h"
#include "opc/Package.h"
#include "platform/EventLoop.h"

namespace app {

/// A version of a deck as it was read from its file.
struct DeckVersion {
  /// Whole: every part can be read.
  std::unique_ptr<opc::Package> package;
  opc::FileState state;
};

/// Watches the file of a deck for as long as this object lives. It looks and reads
/// on a thread of its own, so that neither a large deck nor a file system that hangs
/// holds up the show; what it finds it tells on the loop.
class DeckWatch {
 public:
  struct Hearer {
    /// Another version is there and whole. One with the same bytes is none.
    std::function<void(DeckVersion)> version;
    /// Another version is there and stays broken; why, as a sentence.
    std::function<void(const std::string&)> broken;
  };

  /// The path is absolute; `shown` is what was read from it before, `fingerprint` that of its package.
  DeckWatch(platform::EventLoop& loop, std::string path, const opc::FileState& shown, std::size_t fingerprint,
            Hearer hearer);
  ~DeckWatch();
  DeckWatch(const DeckWatch&) = delete;
  DeckWatch& operator=(const DeckWatch&) = delete;

 private:
  struct Shared;
  class Lookout;

  std::shared_ptr<Shared> shared_;
  std::future<void> ended_;
  std::thread thread_;
};

}  // namespace app
