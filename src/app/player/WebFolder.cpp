// Gets the index and the files of a distribution folder over HTTP, by libcurl.

#include "app/player/WebFolder.h"

#include <curl/curl.h>

#include <algorithm>
#include <array>
#include <exception>
#include <utility>
#include <vector>

#include "app/wiring/Failure.h"
#include "basic/Quotes.h"
#include "basic/Strings.h"

namespace app {

/// What libcurl hands out, as whole objects.
struct CurlCleanUp {
  void operator()(CURL* handle) const { curl_easy_cleanup(handle); }
  void operator()(curl_slist* list) const { curl_slist_free_all(list); }
  void operator()(CURLU* address) const { curl_url_cleanup(address); }
  void operator()(char* text) const { curl_free(text); }
};
template <typename T>
using Owned = std::unique_ptr<T, CurlCleanUp>;

namespace {

constexpr long Found = 200;
constexpr long PartFound = 206;
constexpr long NotModified = 304;

/// After a change the index is asked for without its tag so often: servers make tags of the time in seconds
/// and the size, which two changes of one second may have in common.
constexpr int LooksAfterChange = 3;
/// Of answers that are of no use.
constexpr std::size_t LongestRefusal = std::size_t{1} << 20U;

std::string partOf(CURLU* address, CURLUPart part, unsigned flags = 0) {
  char* text = nullptr;
  if (curl_url_get(address, part, &text, flags) != CURLUE_OK) return {};
  const Owned<char> owned(text);
  return text;
}

Owned<CURLU> parsed(const std::string& text) {
  Owned<CURLU> address(curl_url());
  if (!address || curl_url_set(address.get(), CURLUPART_URL, text.c_str(), 0) != CURLUE_OK) {
    fail(basic::InQuotes(text) + " is no address of a folder.");
  }
  return address;
}

std::string withoutSecrets(const std::string& text) {
  const Owned<CURLU> address = parsed(text);
  curl_url_set(address.get(), CURLUPART_USER, nullptr, 0);
  curl_url_set(address.get(), CURLUPART_PASSWORD, nullptr, 0);
  return partOf(address.get(), CURLUPART_URL);
}

/// RFC 3986, 2.1; a slash in it separates.
std::string escaped(const std::string& path) {
  std::string text;
  for (const std::string& part : basic::Split(path, '/')) {
    const Owned<char> each(curl_easy_escape(nullptr, part.c_str(), static_cast<int>(part.size())));
    if (!each) fail(basic::InQuotes(path) + " makes no address.");
    text += (text.empty() ? "" : "/") + std::string(each.get());
  }
  return text;
}

FolderListing listingOf(Index index) {
  FolderListing listing;
  for (Note& note : index.notes) listing.decks.push_back({std::move(note), {}});
  std::stable_sort(listing.decks.begin(), listing.decks.end(),
                   [](const ListedDeck& a, const ListedDeck& b) { return a.note.name < b.note.name; });
  for (Index::Problem& problem : index.problems) {
    if (isPlainName(problem.name))
      listing.unreadable.push_back({std::move(problem.name), std::move(problem.why)});
  }
  return listing;
}

}  // namespace

/// One connection to the server, which stays open from request to request.
class WebFolder::Transfer {
 public:
  struct Answer {
    long status = 0;
    std::string tag;  // ETag
  };

  Transfer(const std::string& scheme, GoOn goOn) : handle_(curl_easy_init()), goOn_(std::move(goOn)) {
    if (!handle_) fail("libcurl cannot be used.");
    constexpr long ConnectMilliseconds = 10'000;
    // Less than that for so long is a transfer that has stalled.
    constexpr long SlowestBytes = 1000;
    constexpr long SlowestSeconds = 20;
    // Then others have their turn; the rest comes the next time.
    constexpr long LongestMilliseconds = 120'000;
    constexpr long MostRedirects = 5;
    set(CURLOPT_PROTOCOLS_STR, scheme.c_str());
    set(CURLOPT_REDIR_PROTOCOLS_STR, scheme.c_str());
    set(CURLOPT_FOLLOWLOCATION, 1L);
    set(CURLOPT_MAXREDIRS, MostRedirects);
    set(CURLOPT_NOSIGNAL, 1L);
    set(CURLOPT_CONNECTTIMEOUT_MS, ConnectMilliseconds);
    set(CURLOPT_TIMEOUT_MS, LongestMilliseconds);
    set(CURLOPT_LOW_SPEED_LIMIT, SlowestBytes);
    set(CURLOPT_LOW_SPEED_TIME, SlowestSeconds);
    set(CURLOPT_USERAGENT, "lumenfold");
    set(CURLOPT_ERRORBUFFER, why_.data());
    set(CURLOPT_NOPROGRESS, 0L);
    set(CURLOPT_XFERINFODATA, this);
    set(CURLOPT_XFERINFOFUNCTION, &Transfer::heard);
    set(CURLOPT_HEADERDATA, this);
    set(CURLOPT_HEADERFUNCTION, &Transfer::header);
    set(CURLOPT_WRITEDATA, this);
    set(CURLOPT_WRITEFUNCTION, &Transfer::body);
  }

  using TakeBody = std::function<void(long status, std::string_view bytes)>;

  /// The body of an answer of status 200 or 206 goes to `take`; that of others to nobody. Throws what `take`
  /// and the folder's GoOn throw, and basic::Error with the reason when there is no answer.
  Answer get(const std::string& address, const std::vector<std::string>& headers, const TakeBody& take) {
    Owned<curl_slist> list;
    for (const std::string& each : headers) {
      curl_slist* const longer = curl_slist_append(list.get(), each.c_str());
      if (longer == nullptr) fail("memory is out");
      static_cast<void>(list.release());
      list.reset(longer);
    }
    answer_ = {};
    take_ = &take;
    refused_ = 0;
    failure_ = nullptr;
    why_.front() = '\0';
    set(CURLOPT_URL, address.c_str());
    set(CURLOPT_HTTPHEADER, list.get());
    const CURLcode code = curl_easy_perform(handle_.get());
    set(CURLOPT_HTTPHEADER, static_cast<curl_slist*>(nullptr));
    if (failure_) std::rethrow_exception(failure_);
    if (code != CURLE_OK) fail(why_.front() == '\0' ? curl_easy_strerror(code) : why_.data());
    return answer_;
  }

 private:
  template <typename Value>
  void set(CURLoption option, Value value) {
    if (curl_easy_setopt(handle_.get(), option, value) != CURLE_OK) fail("libcurl lacks what is needed.");
  }

  /// No exception goes through libcurl: it is kept, and the transfer ends.
  template <typename Do>
  bool guarded(const Do& act) {
    try {
      act();
      return true;
    } catch (...) {
      failure_ = std::current_exception();
      return false;
    }
  }

  static int heard(void* self, curl_off_t, curl_off_t, curl_off_t, curl_off_t) {
    auto& transfer = *static_cast<Transfer*>(self);
    return transfer.guarded(transfer.goOn_) ? 0 : 1;
  }
  static std::size_t header(char* text, std::size_t one, std::size_t size, void* self) {
    auto& transfer = *static_cast<Transfer*>(self);
    const std::string_view line(text, one * size);
    constexpr std::string_view Tag = "etag:";
    // Each answer of several begins with its status.
    if (line.starts_with("HTTP/")) transfer.answer_ = {};
    if (basic::EqualsIgnoreCase(line.substr(0, Tag.size()), Tag)) {
      const std::string_view value = line.substr(Tag.size());
      const std::size_t first = value.find_first_not_of(" \t");
      const std::size_t last = value.find_last_not_of(" \t\r\n");
      if (first != std::string_view::npos) transfer.answer_.tag = value.substr(first, last - first + 1);
    }
    curl_easy_getinfo(transfer.handle_.get(), CURLINFO_RESPONSE_CODE, &transfer.answer_.status);
    return line.size();
  }
  static std::size_t body(char* bytes, std::size_t one, std::size_t size, void* self) {
    auto& transfer = *static_cast<Transfer*>(self);
    const long status = transfer.answer_.status;
    const std::size_t count = one * size;
    const bool isGuarded = transfer.guarded([&] {
      if (status == Found || status == PartFound) return (*transfer.take_)(status, {bytes, count});
      if ((transfer.refused_ += count) > LongestRefusal)
        fail("the server answers with status " + std::to_string(status));
    });
    return isGuarded ? count : 0;
  }

  Owned<CURL> handle_;
  GoOn goOn_;
  std::array<char, CURL_ERROR_SIZE> why_{};
  Answer answer_;
  const TakeBody* take_ = nullptr;
  std::size_t refused_ = 0;
  std::exception_ptr failure_;
};

bool WebFolder::isAddress(const std::string& place) {
  return place.starts_with("http://") || place.starts_with("https://");
}

WebFolder::WebFolder(const std::string& address, GoOn goOn) : goOn_(std::move(goOn)) {
  // Once for the program, before its threads use it.
  static const CURLcode ready = curl_global_init(CURL_GLOBAL_DEFAULT);
  if (ready != CURLE_OK) fail("libcurl cannot be used.");
  const Owned<CURLU> whole = parsed(address);
  const std::string scheme = partOf(whole.get(), CURLUPART_SCHEME);
  if (scheme != "http" && scheme != "https") fail(basic::InQuotes(address) + " is no address of a folder.");
  curl_url_set(whole.get(), CURLUPART_QUERY, nullptr, 0);
  curl_url_set(whole.get(), CURLUPART_FRAGMENT, nullptr, 0);
  address_ = partOf(whole.get(), CURLUPART_URL);
  if (!address_.ends_with('/')) address_ += '/';
  name_ = withoutSecrets(address_);
  transfer_ = std::make_unique<Transfer>(scheme, goOn_);
}

WebFolder::~WebFolder() = default;

FolderListing WebFolder::list() try {
  std::string text;
  std::vector<std::string> headers = {"Cache-Control: no-cache"};
  if (!tag_.empty() && looksAfterChange_ == 0) headers.push_back("If-None-Match: " + tag_);
  const Transfer::Answer answer =
      transfer_->get(address_ + std::string(Index::FileName), headers, [&text](long, std::string_view bytes) {
        if (bytes.size() > LargestIndex - text.size()) fail("it is too large");
        text += bytes;
      });
  if (answer.status == NotModified && headers.size() > 1) return listing_;
  if (answer.status != Found) fail("the server answers with status " + std::to_string(answer.status));
  tag_ = answer.tag;
  if (text == text_) {
    looksAfterChange_ = std::max(looksAfterChange_ - 1, 0);
  } else {
    listing_ = listingOf(Index::read(text));
    text_ = std::move(text);
    looksAfterChange_ = LooksAfterChange;
  }
  return listing_;
} catch (const basic::Error& error) {
  fail("The index " + basic::InQuotes(name_ + std::string(Index::FileName)) +
       " cannot be read: " + error.description + ".");
}

void WebFolder::read(const ListedDeck& deck, const SentFile& file, std::uint64_t from, const Take& take) try {
  const std::string path = deck.note.folder.empty() ? file.path : deck.note.folder + "/" + file.path;
  std::vector<std::string> headers;
  if (from > 0) headers.push_back("Range: bytes=" + std::to_string(from) + "-");
  // Of a server that knows no ranges, and sends everything.
  std::uint64_t known = from;
  const Transfer::Answer answer =
      transfer_->get(address_ + escaped(path), headers, [&](long status, std::string_view bytes) {
        if (status == PartFound && from == 0) fail("the server sends a part of it unasked");
        if (status == Found) {
          const auto skipped = static_cast<std::size_t>(std::min<std::uint64_t>(known, bytes.size()));
          known -= skipped;
          bytes.remove_prefix(skipped);
        }
        take(bytes);
      });
  if (answer.status != Found && answer.status != PartFound) {
    fail("the server answers with status " + std::to_string(answer.status));
  }
} catch (const basic::Error& error) {
  fail(basic::InQuotes(file.path) + " cannot be got: " + error.description + ".");
}

}  // namespace app
