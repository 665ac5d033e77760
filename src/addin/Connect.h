#pragma once

#include <memory>
#include <string_view>

#include "addin/Application.h"
#include "addin/support/modDebug.h"
#include "host/addin.h"

namespace LF2000 {

/// The add-in's entry object (ProgID LF2000.Connect). Owns the one Application.
/// In every entry point the failure of one step does not stop the next.
class Connect final : public AddInDesigner::IDTExtensibility2 {
 public:
  void OnConnection(const std::shared_ptr<PowerPoint::Application>& application,
                    AddInDesigner::ConnectMode mode,
                    const std::shared_ptr<AddInDesigner::AddIn>& addInInst) override;
  void OnDisconnection(AddInDesigner::RemoveMode mode) override;
  void OnAddInsUpdate() override;
  void OnStartupComplete() override;
  void OnBeginShutdown() override;

  /// Null before the connection, after the disconnection and when the
  /// installation check failed.
  [[nodiscard]] LF2000::Application* Application() const { return application_.get(); }
  /// Set at the end of every OnConnection.
  [[nodiscard]] bool Connected() const { return connected_; }

 private:
  static void Log(modDebug::DebugKind kind, std::string_view text);

  std::unique_ptr<LF2000::Application> application_;
  bool connected_ = false;
};

}  // namespace LF2000
