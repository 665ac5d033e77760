#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "app/screens/ScreensFile.h"
#include "platform/EventLoop.h"
#include "web/http/KnownScreens.h"

namespace app {

/// The screens of a file, as the file is now. One that is damaged, or gone, changes nothing: the list before
/// stands, and who hears of it is told why, once.
class ScreenRegister final : public web::KnownScreens {
 public:
  struct Hearer {
    std::function<void()> changed;
    std::function<void(const std::string& why)> damaged;
  };

  /// Reads the file; throws basic::Error when it cannot. The loop outlives it.
  ScreenRegister(platform::EventLoop& loop, const std::string& path);

  /// Begins to watch the file.
  void watch(Hearer hearer);
  /// Looks at the file, as is done every second.
  void look();

  [[nodiscard]] std::optional<web::KnownScreen> withToken(std::string_view token) const override;
  [[nodiscard]] std::optional<std::string> nameOf(std::string_view key) const override;
  [[nodiscard]] std::vector<std::string> names() const override;

 private:
  /// What a look at the file found.
  struct Found {
    std::optional<opc::FileState> state;
    std::optional<ScreenList> list;
    std::string why;
  };
  [[nodiscard]] Found find() const;

  ScreensFile file_;
  ScreenList list_;
  std::optional<opc::FileState> read_;
  /// What was complained about.
  std::string complaint_;
  /// A file that is wrong may be half written: it counts when it is at the next look as well.
  std::string suspicion_;
  Hearer hearer_;
  std::unique_ptr<host::Timer> looking_;
};

}  // namespace app
