#include "process/BackgroundThread.h"

#include <pthread.h>
#include <csignal>

#include <thread>
#include <utility>

namespace process {
namespace {

/// Blocks all signals of this thread, which its children inherit.
class WithoutSignals {
 public:
  WithoutSignals() {
    sigset_t all;
    sigfillset(&all);
    pthread_sigmask(SIG_SETMASK, &all, &before_);
  }
  ~WithoutSignals() { pthread_sigmask(SIG_SETMASK, &before_, nullptr); }
  WithoutSignals(const WithoutSignals&) = delete;
  WithoutSignals& operator=(const WithoutSignals&) = delete;

 private:
  sigset_t before_{};
};

}  // namespace

void startThread(std::function<void()> work) {
  const WithoutSignals quiet;
  std::thread(std::move(work)).detach();
}

}  // namespace process
