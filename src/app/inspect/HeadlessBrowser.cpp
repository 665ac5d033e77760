// Drives a Chromium without a window by the DevTools protocol.

#include "app/inspect/HeadlessBrowser.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <cctype>
#include <cerrno>
#include <cstring>
#include <vector>

#include "app/wiring/Failure.h"
#include "basic/Base64.h"
#include "json/Json.h"
#include "process/ChildProcess.h"
#include "process/Descriptor.h"
#include "process/TemporaryFolder.h"

namespace app {

namespace {

using json::Json;
using Clock = std::chrono::steady_clock;

constexpr std::chrono::seconds LongestAnswer{30};
constexpr std::chrono::minutes LongestPrint{5};

/// Both ends lie above the numbers that the child gives its own.
void connectPair(process::Descriptor& ours, process::Descriptor& childs) {
  constexpr int LowestNumber = 10;
  std::array<int, 2> ends{};
  if (::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends.data()) != 0) {
    fail(std::string("the browser cannot be reached: ") + std::strerror(errno) + ".");
  }
  ours.reset(ends[0]);
  childs.reset(ends[1]);
  ours.reset(::fcntl(ours.get(), F_DUPFD_CLOEXEC, LowestNumber));
  childs.reset(::fcntl(childs.get(), F_DUPFD_CLOEXEC, LowestNumber));
}

/// RFC 8089.
std::string fileUrl(const std::filesystem::path& path) {
  constexpr std::string_view Hex = "0123456789ABCDEF";
  constexpr std::string_view Marks = "/-._~";
  std::string url = "file://";
  for (const char c : std::filesystem::absolute(path).string()) {
    const auto byte = static_cast<unsigned char>(c);
    if ((byte < 0x80 && std::isalnum(byte)) || Marks.find(c) != std::string_view::npos) {
      url += c;
    } else {
      url.append("%").append(1, Hex[byte >> 4U]).append(1, Hex[byte & 15U]);
    }
  }
  return url;
}

std::string dataOf(const Json& answer) {
  auto bytes = basic::fromBase64(answer.at("data").get<std::string>());
  if (!bytes) fail("what the browser made cannot be read.");
  return std::move(*bytes);
}

}  // namespace

/// The DevTools protocol as --remote-debugging-pipe speaks it: JSON texts, each
/// ended by NUL.
class HeadlessBrowser::Pipe {
 public:
  Pipe() {
    process::Descriptor childs;
    connectPair(socket_, childs);
    start(childs.get());
  }

  Json call(const std::string& method, const Json& parameters, const std::string& session = {},
            std::chrono::seconds patience = LongestAnswer) {
    const int id = ++calls_;
    Json message = {{"id", id}, {"method", method}, {"params", parameters}};
    if (!session.empty()) message["sessionId"] = session;
    send(json::textOf(message));
    while (true) {
      Json answer = receive(patience);
      if (answer.value("id", 0) != id) continue;
      if (answer.contains("error")) {
        fail("the browser refused " + method + ": " + answer["error"].value("message", "") + ".");
      }
      return answer["result"];
    }
  }

  void waitFor(const std::string& event) {
    while (receive(LongestAnswer).value("method", "") != event) {
    }
  }

 private:
  void start(int childs) {
    constexpr int CommandsIn = 3;
    constexpr int AnswersOut = 4;
    for (const char* name : {"chromium", "chromium-browser", "google-chrome"}) {
      std::vector<std::string> command = {name,
                                          "--headless",
                                          "--remote-debugging-pipe",
                                          "--user-data-dir=" + (folder_.path() / "profile").string(),
                                          "--disable-gpu",
                                          "--hide-scrollbars",
                                          "--force-color-profile=srgb",
                                          "--font-render-hinting=none",
                                          "--no-first-run"};
      // Its sandbox does not work for root.
      if (::geteuid() == 0) command.emplace_back("--no-sandbox");
      process_ = std::make_unique<process::ChildProcess>(
          command, (folder_.path() / "log").string(),
          std::vector<process::Inherited>{{childs, CommandsIn}, {childs, AnswersOut}});
      if (process_->startError() == 0) return;
      if (process_->startError() != ENOENT) {
        fail(std::string(name) + " cannot be started: " + std::strerror(process_->startError()) + ".");
      }
    }
    fail("pictures and PDF files take Chromium, which is not installed (apt install chromium).");
  }

  void send(std::string message) {
    message += '\0';
    std::string_view rest = message;
    while (!rest.empty()) {
      const ssize_t sent = ::send(socket_.get(), rest.data(), rest.size(), MSG_NOSIGNAL);
      if (sent < 0 && errno == EINTR) continue;
      if (sent <= 0) fail(std::string("the browser cannot be reached: ") + std::strerror(errno) + ".");
      rest.remove_prefix(static_cast<std::size_t>(sent));
    }
  }

  Json receive(std::chrono::seconds patience) {
    const Clock::time_point latest = Clock::now() + patience;
    while (true) {
      if (const std::size_t end = received_.find('\0', searched_); end != std::string::npos) {
        Json message = Json::parse(received_.substr(0, end), nullptr, false);
        received_.erase(0, end + 1);
        searched_ = 0;
        if (message.is_object()) return message;
        continue;
      }
      searched_ = received_.size();
      readMore(latest);
    }
  }

  void readMore(Clock::time_point latest) {
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(latest - Clock::now()).count();
    pollfd waiting{socket_.get(), POLLIN, 0};
    const int ready = ::poll(&waiting, 1, left > 0 ? static_cast<int>(left) : 0);
    if (ready < 0 && errno == EINTR) return;
    if (ready == 0) fail("the browser does not answer.");
    std::array<char, 65536> buffer{};
    const ssize_t size = ::read(socket_.get(), buffer.data(), buffer.size());
    if (size <= 0) fail("the browser has ended.");
    received_.append(buffer.data(), static_cast<std::size_t>(size));
  }

  process::TemporaryFolder folder_;
  process::Descriptor socket_;
  std::unique_ptr<process::ChildProcess> process_;
  std::string received_;
  std::size_t searched_ = 0;
  int calls_ = 0;
};

HeadlessBrowser::HeadlessBrowser() : pipe_(std::make_unique<Pipe>()) {
  const Json target = pipe_->call("Target.createTarget", {{"url", "about:blank"}});
  const Json attached =
      pipe_->call("Target.attachToTarget", {{"targetId", target.at("targetId")}, {"flatten", true}});
  session_ = attached.at("sessionId").get<std::string>();
  pipe_->call("Page.enable", Json::object(), session_);
}

HeadlessBrowser::~HeadlessBrowser() = default;

void HeadlessBrowser::open(const std::filesystem::path& page, const View& view) {
  pipe_->call(
      "Emulation.setDeviceMetricsOverride",
      {{"width", view.width}, {"height", view.height}, {"deviceScaleFactor", view.scale}, {"mobile", false}},
      session_);
  pipe_->call("Page.navigate", {{"url", fileUrl(page)}}, session_);
  pipe_->waitFor("Page.loadEventFired");
  evaluate(
      "Promise.all([document.fonts.ready, document.querySelector('deck-chart') && "
      "customElements.whenDefined('deck-chart'), ...[...document.images].map(i => i.decode().catch(() => "
      "{}))])"
      ".then(() => new Promise(done => requestAnimationFrame(() => requestAnimationFrame(() => done(0)))))");
}

std::string HeadlessBrowser::photograph() {
  return dataOf(
      pipe_->call("Page.captureScreenshot", {{"format", "png"}, {"captureBeyondViewport", false}}, session_));
}

std::string HeadlessBrowser::print() {
  const Json options = {{"printBackground", true}, {"preferCSSPageSize", true}, {"marginTop", 0},
                        {"marginRight", 0},        {"marginBottom", 0},         {"marginLeft", 0}};
  return dataOf(pipe_->call("Page.printToPDF", options, session_, LongestPrint));
}

std::string HeadlessBrowser::evaluate(const std::string& expression) {
  const Json answer =
      pipe_->call("Runtime.evaluate",
                  {{"expression", expression}, {"awaitPromise", true}, {"returnByValue", true}}, session_);
  if (answer.contains("exceptionDetails")) {
    fail("the browser's script failed: " + answer["exceptionDetails"].value("text", "") + ".");
  }
  return json::textOf(answer.at("result").value("value", Json()));
}

}  // namespace app
