// The thread that posts to hubs: what is to be sent comes in, answers go back to the loop.

#include "web/publish/Poster.h"

#include <curl/curl.h>

#include <array>
#include <boost/asio/post.hpp>
#include <future>
#include <map>
#include <mutex>
#include <utility>
#include <vector>

#include "basic/Error.h"
#include "process/BackgroundThread.h"
#include "web/publish/HubNode.h"

namespace web {
// Named, as a class has members of them.
namespace handles {

// libcurl calls the first two by one type.
struct EasyCleanUp {
  void operator()(CURL* handle) const { curl_easy_cleanup(handle); }
};
struct MultiCleanUp {
  void operator()(CURLM* handle) const { curl_multi_cleanup(handle); }
};
struct HeadersCleanUp {
  void operator()(curl_slist* list) const { curl_slist_free_all(list); }
};
using Easy = std::unique_ptr<CURL, EasyCleanUp>;
using Multi = std::unique_ptr<CURLM, MultiCleanUp>;
using Headers = std::unique_ptr<curl_slist, HeadersCleanUp>;

}  // namespace handles

namespace {

void prepareLibrary() {
  // Once for the program, before its threads use it.
  static const CURLcode ready = curl_global_init(CURL_GLOBAL_DEFAULT);
  if (ready != CURLE_OK) throw basic::Error(basic::AdapterError, "web", "libcurl cannot be used.");
}

handles::Headers headersWith(const std::string& token) {
  handles::Headers list;
  std::vector<std::string> lines = {"Content-Type: application/json", "Accept: text/json", "Expect:"};
  if (!token.empty()) lines.push_back("Authorization: Bearer " + token);
  for (const std::string& line : lines) {
    curl_slist* const longer = curl_slist_append(list.get(), line.c_str());
    if (longer == nullptr) throw std::bad_alloc();
    static_cast<void>(list.release());
    list.reset(longer);
  }
  return list;
}

}  // namespace

class Poster::Work : public std::enable_shared_from_this<Poster::Work> {
 public:
  Work(boost::asio::io_context& loop, std::weak_ptr<bool> isWanted, const std::string& token,
       std::chrono::milliseconds timeout)
      : loop_(loop),
        isWanted_(std::move(isWanted)),
        headers_(headersWith(token)),
        timeout_(timeout),
        multi_(curl_multi_init()) {
    if (!multi_) throw basic::Error(basic::AdapterError, "web", "libcurl cannot be used.");
    constexpr long mostConnections = 16;
    curl_multi_setopt(multi_.get(), CURLMOPT_MAX_HOST_CONNECTIONS, mostConnections);
  }

  void start() {
    process::startThread([self = shared_from_this()] {
      self->run();
      self->over_.set_value();
    });
  }
  void stop() {
    {
      const std::lock_guard lock(mutex_);
      isStopped_ = true;
    }
    curl_multi_wakeup(multi_.get());
    over_.get_future().wait();
  }

  void add(const HubNode& node, const std::string& channel, std::shared_ptr<const std::string> body,
           Then then) {
    {
      const std::lock_guard lock(mutex_);
      coming_.push_back({node.url + channel, node.socket, std::move(body), std::move(then), {}, {}, {}});
    }
    curl_multi_wakeup(multi_.get());
  }

 private:
  struct Post {
    std::string url;
    std::string socket;
    std::shared_ptr<const std::string> body;
    Then then;
    std::string received;
    std::array<char, CURL_ERROR_SIZE> why;
    handles::Easy handle;
  };

  void run() {
    while (takeUp()) {
      int running = 0;
      curl_multi_perform(multi_.get(), &running);
      settle();
      constexpr int longestWait = 1000;  // ms; what comes in wakes it
      curl_multi_poll(multi_.get(), nullptr, 0, longestWait, nullptr);
    }
    for (auto& [handle, post] : underWay_) curl_multi_remove_handle(multi_.get(), handle);
    underWay_.clear();
    const std::lock_guard lock(mutex_);
    coming_.clear();
  }

  /// False when it is to end.
  bool takeUp() {
    std::vector<Post> coming;
    {
      const std::lock_guard lock(mutex_);
      if (isStopped_) return false;
      coming.swap(coming_);
    }
    for (Post& post : coming) begin(std::move(post));
    return true;
  }

  void begin(Post post) {
    handles::Easy easy(curl_easy_init());
    CURL* const handle = easy.get();
    post.handle = std::move(easy);
    Post& kept = underWay_.insert_or_assign(handle, std::move(post)).first->second;
    const bool isReady =
        handle != nullptr && prepare(kept, handle) && curl_multi_add_handle(multi_.get(), handle) == CURLM_OK;
    if (!isReady) finish(handle, "libcurl lacks what is needed");
  }

  bool prepare(Post& post, CURL* handle) const {
    const auto set = [handle](CURLoption option, auto value) {
      return curl_easy_setopt(handle, option, value) == CURLE_OK;
    };
    return set(CURLOPT_URL, post.url.c_str()) && set(CURLOPT_PROTOCOLS_STR, "http,https") &&
           (post.socket.empty() || set(CURLOPT_UNIX_SOCKET_PATH, post.socket.c_str())) &&
           set(CURLOPT_HTTPHEADER, headers_.get()) && set(CURLOPT_POSTFIELDS, post.body->data()) &&
           set(CURLOPT_POSTFIELDSIZE_LARGE, static_cast<curl_off_t>(post.body->size())) &&
           set(CURLOPT_TIMEOUT_MS, static_cast<long>(timeout_.count())) && set(CURLOPT_NOSIGNAL, 1L) &&
           set(CURLOPT_QUICK_EXIT, 1L) && set(CURLOPT_USERAGENT, "lumenfold") &&
           set(CURLOPT_ERRORBUFFER, post.why.data()) && set(CURLOPT_WRITEDATA, &post) &&
           set(CURLOPT_WRITEFUNCTION, &Work::body);
  }

  static std::size_t body(char* bytes, std::size_t one, std::size_t size, void* post) {
    constexpr std::size_t largest = 64UL * 1024;
    std::string& received = static_cast<Post*>(post)->received;
    const std::size_t count = one * size;
    // An answer without an end is none.
    if (received.size() + count > largest) return 0;
    received.append(bytes, count);
    return count;
  }

  void settle() {
    int left = 0;
    while (const CURLMsg* const message = curl_multi_info_read(multi_.get(), &left)) {
      if (message->msg != CURLMSG_DONE) continue;
      CURL* const handle = message->easy_handle;
      const CURLcode code = message->data.result;
      curl_multi_remove_handle(multi_.get(), handle);
      finish(handle, code == CURLE_OK ? "" : whyNot(underWay_.at(handle), code));
    }
  }

  static std::string whyNot(const Post& post, CURLcode code) {
    // libcurl speaks of a host and a port there.
    if (code == CURLE_COULDNT_CONNECT && !post.socket.empty()) return "nobody listens at its socket";
    return post.why.front() == '\0' ? curl_easy_strerror(code) : post.why.data();
  }

  void finish(CURL* handle, std::string why) {
    const auto found = underWay_.find(handle);
    Answer answer;
    if (why.empty()) {
      curl_easy_getinfo(handle, CURLINFO_RESPONSE_CODE, &answer.status);
      answer.body = std::move(found->second.received);
    }
    answer.why = std::move(why);
    boost::asio::post(
        loop_, [isWanted = isWanted_, then = std::move(found->second.then), answer = std::move(answer)] {
          if (!isWanted.expired()) then(answer);
        });
    underWay_.erase(found);
  }

  boost::asio::io_context& loop_;
  std::weak_ptr<bool> isWanted_;
  handles::Headers headers_;
  std::chrono::milliseconds timeout_;
  handles::Multi multi_;
  std::promise<void> over_;
  std::mutex mutex_;
  std::vector<Post> coming_;
  bool isStopped_ = false;
  /// The thread's own.
  std::map<CURL*, Post> underWay_;
};

Poster::Poster(boost::asio::io_context& loop, const std::string& token, std::chrono::milliseconds timeout) {
  prepareLibrary();
  work_ = std::make_shared<Work>(loop, isAlive_, token, timeout);
  work_->start();
}

Poster::~Poster() { work_->stop(); }

void Poster::post(const HubNode& node, const std::string& channel, std::shared_ptr<const std::string> body,
                  Then then) {
  work_->add(node, channel, std::move(body), std::move(then));
}

}  // namespace web
