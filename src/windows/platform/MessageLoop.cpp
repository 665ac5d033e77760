// Timers and posted handlers as messages of a window that nobody sees.

#include "windows/platform/MessageLoop.h"

#include <algorithm>
#include <chrono>
#include <map>
#include <utility>
#include <vector>

#include "basic/Error.h"
#include "windows/com/Guard.h"
#include "windows/com/WindowsApi.h"
#include "windows/platform/Library.h"

namespace windows::platform {

namespace {

using std::chrono::milliseconds;
using std::chrono::steady_clock;

constexpr wchar_t ClassName[] = L"LF2000.MessageLoop";
constexpr UINT PostedMessage = WM_APP;
constexpr UINT OutermostMessage = WM_APP + 1;
/// Looks whether the bottom is reached; the timers' own numbers come after it.
constexpr UINT_PTR BottomTimer = 1;
constexpr UINT BottomPause = 15;

}  // namespace

class MessageLoop::Window {
 public:
  /// What a timer is, for as long as its handler runs.
  struct Beat {
    std::function<void()> handler;
    UINT_PTR id = 0;
    std::int32_t interval = 0;
    bool enabled = false;
    bool running = false;
    steady_clock::time_point due;
  };

  Window() {
    WNDCLASSEXW description{};
    description.cbSize = sizeof description;
    description.lpfnWndProc = &Window::receive;
    description.hInstance = thisModule();
    description.lpszClassName = ClassName;
    ::RegisterClassExW(&description);  // once; the others find it there
    window_ =
        ::CreateWindowExW(0, ClassName, L"", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, thisModule(), nullptr);
    if (window_ == nullptr) {
      throw basic::Error(basic::AdapterError, "MessageLoop",
                         "There is no window for timers: error " + std::to_string(::GetLastError()) + ".");
    }
    ::SetWindowLongPtrW(window_, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
  }
  ~Window() {
    ::SetWindowLongPtrW(window_, GWLP_USERDATA, 0);
    ::DestroyWindow(window_);
    ::UnregisterClassW(ClassName, thisModule());  // fails while another loop has a window
  }
  Window(const Window&) = delete;
  Window& operator=(const Window&) = delete;

  void add(const std::shared_ptr<Beat>& beat) {
    beat->id = ++lastTimer_;
    beats_[beat->id] = beat;
  }
  void remove(const Beat& beat) {
    ::KillTimer(window_, beat.id);
    beats_.erase(beat.id);
  }
  /// Begins the interval anew, if the timer is on.
  void wait(Beat& beat) {
    ::KillTimer(window_, beat.id);
    // Its own handler goes on with it when it is done.
    if (!beat.enabled || beat.interval == 0 || beat.running) return;
    beat.due = steady_clock::now() + milliseconds(beat.interval) + milliseconds(Lateness);
    waitForDue(beat);
  }
  void post(std::function<void()> handler) {
    posted_.push_back(std::move(handler));
    ::PostMessageW(window_, PostedMessage, 0, 0);
  }
  void postOutermost(std::function<void()> handler) {
    outermost_.push_back(std::move(handler));
    ::PostMessageW(window_, OutermostMessage, 0, 0);
  }

 private:
  static LRESULT CALLBACK receive(HWND window, UINT message, WPARAM first, LPARAM second) {
    auto* self = reinterpret_cast<Window*>(::GetWindowLongPtrW(window, GWLP_USERDATA));
    if (self == nullptr || (message != WM_TIMER && message != PostedMessage && message != OutermostMessage)) {
      return ::DefWindowProcW(window, message, first, second);
    }
    com::guarded([&] {
      if (message == PostedMessage) return self->runPosted();
      if (message == OutermostMessage || first == BottomTimer) return self->runOutermost();
      self->tick(first);
    });
    return 0;
  }

  void waitForDue(const Beat& beat) {
    const auto rest = std::chrono::ceil<milliseconds>(beat.due - steady_clock::now()).count();
    ::SetTimer(window_, beat.id, static_cast<UINT>(std::clamp<std::int64_t>(rest, 1, USER_TIMER_MAXIMUM)),
               nullptr);
  }

  void tick(UINT_PTR id) {
    const auto found = beats_.find(id);
    if (found == beats_.end()) return;
    const std::shared_ptr<Beat> beat = found->second;
    if (beat->running || !beat->enabled) return;
    // The system's timers may be early by one of its ticks.
    if (steady_clock::now() < beat->due) return waitForDue(*beat);
    ::KillTimer(window_, id);
    beat->running = true;
    const std::weak_ptr<Window> self = self_;
    com::guarded(beat->handler);
    beat->running = false;
    const auto there = self.lock();
    if (there && there->beats_.count(id) != 0) there->wait(*beat);
  }

  void runPosted() {
    if (posted_.empty()) return;
    const auto handler = std::move(posted_.front());
    posted_.erase(posted_.begin());
    handler();
  }

  void runOutermost() {
    ::KillTimer(window_, BottomTimer);
    if (outermost_.empty()) return;
    // This message is a call from outside itself.
    if (com::Entrance::depth() > 1) {
      ::SetTimer(window_, BottomTimer, BottomPause, nullptr);
      return;
    }
    const auto handler = std::move(outermost_.front());
    outermost_.erase(outermost_.begin());
    if (!outermost_.empty()) ::PostMessageW(window_, OutermostMessage, 0, 0);
    handler();
  }

  friend class MessageLoop;
  HWND window_ = nullptr;
  UINT_PTR lastTimer_ = BottomTimer;
  std::map<UINT_PTR, std::shared_ptr<Beat>> beats_;
  std::vector<std::function<void()>> posted_;
  std::vector<std::function<void()>> outermost_;
  std::weak_ptr<Window> self_;
};

class MessageLoop::Timer final : public host::Timer {
 public:
  Timer(const std::shared_ptr<Window>& window, std::function<void()> handler)
      : window_(window), beat_(std::make_shared<Window::Beat>()) {
    beat_->handler = std::move(handler);
    window->add(beat_);
  }
  ~Timer() override {
    beat_->enabled = false;
    if (const auto window = window_.lock()) window->remove(*beat_);
  }
  Timer(const Timer&) = delete;
  Timer& operator=(const Timer&) = delete;

  [[nodiscard]] std::int32_t Interval() const override { return beat_->interval; }
  void Interval(std::int32_t milliseconds) override {
    if (milliseconds == beat_->interval) return;
    beat_->interval = std::max(milliseconds, 0);
    wait();
  }
  [[nodiscard]] bool Enabled() const override { return beat_->enabled; }
  void Enabled(bool enabled) override {
    if (enabled == beat_->enabled) return;
    beat_->enabled = enabled;
    wait();
  }

 private:
  void wait() {
    if (const auto window = window_.lock()) window->wait(*beat_);
  }
  std::weak_ptr<Window> window_;
  std::shared_ptr<Window::Beat> beat_;
};

MessageLoop::MessageLoop() : window_(std::make_shared<Window>()) { window_->self_ = window_; }
MessageLoop::~MessageLoop() = default;

std::unique_ptr<host::Timer> MessageLoop::CreateTimer(std::function<void()> handler) {
  return std::make_unique<Timer>(window_, std::move(handler));
}

void MessageLoop::DoEvents() {
  // Messages that keep each other coming must not hold up who is waiting.
  const auto end = steady_clock::now() + milliseconds(50);
  bool any = false;
  MSG message{};
  while (::PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
    if (message.message == WM_QUIT) {
      ::PostQuitMessage(static_cast<int>(message.wParam));
      break;
    }
    any = true;
    ::TranslateMessage(&message);
    ::DispatchMessageW(&message);
    if (steady_clock::now() >= end) break;
  }
  if (!any) ::MsgWaitForMultipleObjectsEx(0, nullptr, 1, QS_ALLINPUT, 0);
}

void MessageLoop::post(std::function<void()> handler) { window_->post(std::move(handler)); }
void MessageLoop::postOutermost(std::function<void()> handler) { window_->postOutermost(std::move(handler)); }

}  // namespace windows::platform
