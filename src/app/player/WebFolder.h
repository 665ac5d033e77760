#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>

#include "app/player/DeckFolder.h"

namespace app {

/// A distribution folder behind a web server, by its "index.json" (RFC 9110). Asked again and again, it costs
/// an answer without a body as long as nothing has changed. Certificates are verified; a redirect is followed
/// within the same scheme alone. A user name and a password in the address go to the server and into no
/// message.
class WebFolder final : public DeckFolder {
 public:
  /// What an index may have.
  static constexpr std::uint64_t LargestIndex = std::uint64_t{8} << 20U;

  /// Whether the place of a folder is the address of one.
  [[nodiscard]] static bool isAddress(const std::string& place);

  /// The address is that of the folder, with or without a slash behind it.
  WebFolder(const std::string& address, GoOn goOn);
  ~WebFolder() override;
  WebFolder(const WebFolder&) = delete;
  WebFolder& operator=(const WebFolder&) = delete;

  [[nodiscard]] FolderListing list() override;
  void read(const ListedDeck& deck, const SentFile& file, std::uint64_t from, const Take& take) override;

 private:
  class Transfer;

  std::string address_;
  std::string name_;  // as messages call it
  GoOn goOn_;
  std::unique_ptr<Transfer> transfer_;
  /// The last index, what it lists, and its tag (ETag).
  std::string text_;
  FolderListing listing_;
  std::string tag_;
  int looksAfterChange_ = 0;
};

}  // namespace app
