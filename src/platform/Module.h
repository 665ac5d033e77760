#pragma once

#include "host/services.h"

namespace platform {

/// The folder of the help's pages: beside the program, or where it is installed share/lumenfold/help.
std::string helpFolder();

/// The program itself.
class Module final : public host::Module {
 public:
  [[nodiscard]] std::string Title() const override;
  [[nodiscard]] std::string EXEName() const override;
  /// A service's folder of logs; else the folder of the program if it lies where it was built and the user
  /// can write there; otherwise, as for an installed program, stateFolder(), which is created.
  [[nodiscard]] std::string Path() const override;
  [[nodiscard]] std::int32_t Major() const override;
  [[nodiscard]] std::int32_t Minor() const override;
  [[nodiscard]] std::int32_t Revision() const override;
  [[nodiscard]] std::string Licences() const override;
};

}  // namespace platform
