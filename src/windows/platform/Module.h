#pragma once

#include "host/services.h"

namespace windows::platform {

/// The file that holds this code: the add-in's DLL.
class Module final : public host::Module {
 public:
  [[nodiscard]] std::string Title() const override;
  [[nodiscard]] std::string EXEName() const override;
  [[nodiscard]] std::string Path() const override;
  [[nodiscard]] std::int32_t Major() const override;
  [[nodiscard]] std::int32_t Minor() const override;
  [[nodiscard]] std::int32_t Revision() const override;
  [[nodiscard]] std::string Licences() const override;
};

}  // namespace windows::platform
