#include "ado/BackgroundThread.h"

#include <pthread.h>
#include <signal.h>

#include <system_error>
#include <thread>
#include <utility>

#include "basic/Error.h"

namespace ado {
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

void startThread(std::function<void()> work) try {
  const WithoutSignals quiet;
  std::thread(std::move(work)).detach();
} catch (const std::system_error& error) {
  throw basic::Error(basic::AdapterError, "ADODB.Connection",
                     std::string("No thread can be started for the database: ") + error.what() + ".");
}

}  // namespace ado
