#pragma once

#include <cstdint>
#include <functional>

#include "host/distribution.h"

namespace app {

/// Sends decks into folders, as docs/distribution-folder.md has them: the content first, then the note, then
/// the index. What was sent before stays until its note has been replaced, a package of files until the
/// sending after that: a player may be reading it.
class DistributionFolder final : public host::Distribution {
 public:
  /// Milliseconds since 1970, UTC.
  using Now = std::function<std::int64_t()>;
  explicit DistributionFolder(Now now = systemTime) : now_(std::move(now)) {}

  host::Sent Send(const host::Parcel& parcel) override;
  void Withdraw(const std::string& folder, const std::string& name, const std::string& keyFile) override;
  [[nodiscard]] std::optional<host::LastSending> Last(const std::string& folder,
                                                      const std::string& name) override;

  [[nodiscard]] static std::int64_t systemTime();

 private:
  Now now_;
};

}  // namespace app
