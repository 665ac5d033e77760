#pragma once

#include <optional>
#include <string>
#include <vector>

#include "basic/Error.h"
#include "host/distribution.h"
#include "host/services.h"

namespace fakes {

/// Keeps what is sent, or fails. In force as long as it lives.
class Distribution final : public host::Distribution {
 public:
  Distribution() { Use(this); }
  ~Distribution() override { Use(nullptr); }
  Distribution(const Distribution&) = delete;
  Distribution& operator=(const Distribution&) = delete;

  host::Sent Send(const host::Parcel& parcel) override {
    if (!failure.empty()) throw basic::Error(basic::AdapterError, "fake distribution", failure);
    sent.push_back(parcel);
    return {parcel.Folder + "/" + parcel.Name + ".pptx", 1, 1000, {}};
  }
  void Withdraw(const std::string&, const std::string& name, const std::string&) override {
    withdrawn.push_back(name);
  }
  std::optional<host::LastSending> Last(const std::string&, const std::string&) override { return last; }

  std::vector<host::Parcel> sent;
  std::vector<std::string> withdrawn;
  std::optional<host::LastSending> last;
  /// Why nothing can be sent; empty where it can.
  std::string failure;

 private:
  static void Use(host::Distribution* distribution) {
    host::Services services = host::Current();
    services.distribution = distribution;
    host::Use(services);
  }
};

}  // namespace fakes
