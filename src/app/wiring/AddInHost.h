#pragma once

#include <memory>
#include <string>

#include "addin/Connect.h"
#include "deck/objects/Application.h"

namespace app {

/// The presentation host with the add-in loaded into it, for as long as this
/// object lives.
class AddInHost {
 public:
  /// Throws basic::Error when the add-in does not run in this host.
  AddInHost();
  ~AddInHost();
  AddInHost(const AddInHost&) = delete;
  AddInHost& operator=(const AddInHost&) = delete;

  [[nodiscard]] deck::Application& application() { return *application_; }

  /// Opens a deck; the add-in loads its connections and fills its shapes.
  std::shared_ptr<deck::Presentation> open(
      const std::string& path, deck::Application::Damaged damaged = deck::Application::Damaged::Refused);
  /// The system's entry of an open deck; null without one.
  [[nodiscard]] std::shared_ptr<LF2000::clsPresentation> entryOf(
      const std::shared_ptr<deck::Presentation>& presentation) const;
  /// What drives the running show; null without one.
  [[nodiscard]] LF2000::FrmRuntimeTimer* runtimeTimer() const;

 private:
  std::shared_ptr<deck::Application> application_;
  LF2000::Connect connect_;
};

}  // namespace app
