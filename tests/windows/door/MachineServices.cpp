// What the ports to a test's machine make of calls: values, and handlers that the machine calls back.

#include "windows/door/MachineServices.h"

#include <cstring>
#include <utility>
#include <vector>

#include "basic/Error.h"
#include "windows/com/Variant.h"
#include "windows/door/Callee.h"

namespace door {
namespace {

namespace com = windows::com;

com::Class handlerClass{"Handler"};
com::Class timerClass{"Timer"};
com::Class watchClass{"Watch"};

basic::Date dateOf(const com::Variant& value) { return std::get<basic::Date>(value.value()); }

/// What the machine calls when a timer fires or a file has changed, with the text that there is.
class Handler final : public Callee {
 public:
  explicit Handler(std::function<void(const std::string&)> handler)
      : handler_(std::make_shared<std::function<void(const std::string&)>>(std::move(handler))) {}

  /// The machine may keep it for a while.
  void silence() { handler_.reset(); }

 private:
  com::Variant called(const std::vector<com::Variant>& arguments) override {
    const auto handler = handler_;  // it may end what it belongs to
    if (handler) (*handler)(arguments.empty() ? std::string() : arguments[0].text());
    return {};
  }

  std::shared_ptr<std::function<void(const std::string&)>> handler_;
};

/// A handler as long as its owner lives.
class Held {
 public:
  explicit Held(std::function<void(const std::string&)> handler)
      : handler_(com::Ptr<Handler>::taking(new Handler(std::move(handler)))) {}
  Held(const Held&) = delete;
  Held& operator=(const Held&) = delete;
  ~Held() { handler_->silence(); }
  [[nodiscard]] Object object() const { return {com::Ptr<IDispatch>::sharing(handler_.get()), handlerClass}; }

 private:
  com::Ptr<Handler> handler_;
};

class Timer final : public host::Timer {
 public:
  Timer(const Object& machine, std::function<void()> handler)
      : handler_([handler = std::move(handler)](const std::string&) { handler(); }),
        timer_(machine.call(L"CreateTimer", handler_.object()).object(), timerClass) {}
  std::int32_t Interval() const override { return timer_.number(L"Interval"); }
  void Interval(std::int32_t milliseconds) override { timer_.put(L"Interval", milliseconds); }
  bool Enabled() const override { return timer_.flag(L"Enabled"); }
  void Enabled(bool enabled) override { timer_.put(L"Enabled", enabled); }

 private:
  Held handler_;
  Object timer_;
};

class Watch final : public host::FileWatch {
 public:
  Watch(const Object& machine, std::function<void(const std::string&)> changed)
      : handler_(std::move(changed)),
        watch_(machine.call(L"CreateWatch", handler_.object()).object(), watchClass) {}
  void Files(const std::set<std::string>& paths) override {
    std::vector<com::Variant> each;
    for (const std::string& path : paths) each.emplace_back(path);
    const Object watch = watch_;  // what runs meanwhile may end this
    watch.call(L"Files", com::Variant::array(std::move(each)));
  }

 private:
  Held handler_;
  Object watch_;
};

}  // namespace

basic::Date Clock::Now() const { return dateOf(machine_.get(L"Now")); }

std::unique_ptr<host::Timer> Loop::CreateTimer(std::function<void()> handler) {
  return std::make_unique<Timer>(machine_, std::move(handler));
}

std::unique_ptr<host::InputFile> Files::OpenForInput(std::string_view path) {
  struct Input final : host::InputFile {
    basic::Binary content;
    host::Bytes ReadAll() override {
      host::Bytes bytes{std::make_unique<char[]>(content.size()), content.size()};
      if (!content.empty()) std::memcpy(bytes.data.get(), content.data(), content.size());
      return bytes;
    }
  };
  auto input = std::make_unique<Input>();
  input->content = std::get<basic::Binary>(machine_.call(L"Read", path).value());
  return input;
}

basic::Date Files::FileDateTime(std::string_view path) const {
  return dateOf(machine_.get(L"FileDateTime", path));
}

std::int64_t Shell::HtmlHelp(std::int64_t owner, std::string_view file, std::uint32_t command,
                             std::uint32_t data) {
  return machine_
      .call(L"HtmlHelp", static_cast<std::int32_t>(owner), file, static_cast<std::int32_t>(command),
            static_cast<std::int32_t>(data))
      .number();
}

std::optional<host::Shell::Browsed> Shell::BrowseForFolder(std::int64_t, std::string_view,
                                                           std::optional<std::int32_t>, std::uint32_t) {
  throw basic::Error(basic::AdapterError, "test machine", "This machine has no dialogs.");
}

std::unique_ptr<host::FileWatch> FileWatcher::CreateWatch(std::function<void(const std::string&)> changed) {
  return std::make_unique<Watch>(machine_, std::move(changed));
}

}  // namespace door
