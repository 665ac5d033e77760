// Handlers run one after the other, by one way that catches what they throw.

#include "platform/EventLoop.h"

#include <csignal>

#include <boost/asio/executor_work_guard.hpp>
#include <boost/asio/io_context.hpp>
#include <boost/asio/post.hpp>
#include <boost/asio/signal_set.hpp>
#include <chrono>
#include <csignal>
#include <exception>
#include <thread>
#include <utility>
#include <vector>

#include "platform/LoopTimer.h"

namespace platform {

namespace asio = boost::asio;

namespace {

/// Unless whoever started the program wants it to outlive the terminal (nohup).
void addHangUp(asio::signal_set& signals) {
  struct sigaction present {};
  if (::sigaction(SIGHUP, nullptr, &present) != 0 || present.sa_handler == SIG_IGN) return;
  signals.add(SIGHUP);
  sigset_t hangUp;
  sigemptyset(&hangUp);
  sigaddset(&hangUp, SIGHUP);
  pthread_sigmask(SIG_UNBLOCK, &hangUp, nullptr);
}

}  // namespace

struct EventLoop::State {
  /// The one way by which handlers run: `step` is the context's. How many did.
  template <typename Step>
  std::size_t guarded(const Step& step) {
    if (!failureHandler) return step();
    try {
      return step();
    } catch (const basic::Error& error) {
      failureHandler(error);
    } catch (const std::exception& error) {
      failureHandler(basic::Error(basic::AdapterError, "platform", error.what()));
    }
    return 1;
  }

  void runOutermost() {
    for (const auto& handler : std::exchange(outermost, {})) {
      guarded([&] {
        handler();
        return std::size_t{1};
      });
    }
  }

  void waitForSignal() {
    signals.async_wait([this](const boost::system::error_code& cancelled, int signal) {
      if (cancelled) return;
      waitForSignal();
      signalHandler(signal);
    });
  }

  asio::io_context context;
  // Without work the context would stop for good.
  asio::executor_work_guard<asio::io_context::executor_type> work = asio::make_work_guard(context);
  asio::signal_set signals{context};
  std::function<void(int)> signalHandler;
  std::function<void(const basic::Error&)> failureHandler;
  std::vector<std::function<void()>> outermost;
  bool stopping = false;
};

EventLoop::EventLoop() : state_(std::make_unique<State>()) {}
EventLoop::~EventLoop() = default;

std::unique_ptr<host::Timer> EventLoop::CreateTimer(std::function<void()> handler) {
  return std::make_unique<LoopTimer>(state_->context, std::move(handler));
}

void EventLoop::DoEvents() {
  using std::chrono::steady_clock;
  // Handlers that keep each other ready must not hold up who is waiting.
  const auto end = steady_clock::now() + std::chrono::milliseconds(50);
  bool any = false;
  while (state_->guarded([this] { return state_->context.poll_one(); }) != 0) {
    any = true;
    if (steady_clock::now() >= end) break;
  }
  if (!any) std::this_thread::sleep_for(std::chrono::milliseconds(1));
}

void EventLoop::post(std::function<void()> handler) { asio::post(state_->context, std::move(handler)); }

void EventLoop::postOutermost(std::function<void()> handler) {
  state_->outermost.push_back(std::move(handler));
}

void EventLoop::onSignal(std::function<void(int)> handler) {
  const bool first = !state_->signalHandler;
  state_->signalHandler = std::move(handler);
  if (!first) return;
  state_->signals.add(SIGINT);
  state_->signals.add(SIGTERM);
  addHangUp(state_->signals);
  state_->waitForSignal();
}

void EventLoop::onFailure(std::function<void(const basic::Error&)> hear) {
  state_->failureHandler = std::move(hear);
}

void EventLoop::run() {
  while (!state_->stopping) {
    state_->runOutermost();
    state_->guarded([this] { return state_->context.run_one(); });
  }
  state_->stopping = false;
}

/// Stops run() and not the context: a handler that is still waiting for
/// something in DoEvents gets it.
void EventLoop::stop() {
  post([state = state_.get()] { state->stopping = true; });
}

asio::io_context& EventLoop::context() { return state_->context; }

}  // namespace platform
