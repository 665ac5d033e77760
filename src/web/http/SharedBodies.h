#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <unordered_map>

namespace web {

/// Lets equal bodies that are being sent at the same time be one: a page of some
/// megabytes that hundreds of slow readers ask for lies in memory once. It looks at every byte, so it is for
/// what was made for an answer, not for files of any size.
class SharedBodies {
 public:
  using Body = std::shared_ptr<const std::string>;

  /// The same text; one that is in use elsewhere, if there is one. Holds none itself.
  [[nodiscard]] Body shared(Body body);

 private:
  std::unordered_multimap<std::size_t, std::weak_ptr<const std::string>> known_;
};

}  // namespace web
