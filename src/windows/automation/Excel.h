#pragma once

#include <memory>

#include "host/excel.h"

namespace windows::automation {

/// Excel, a program of its own that is started when it is needed.
class ExcelFactory final : public Excel::Factory {
 public:
  [[nodiscard]] std::shared_ptr<Excel::Application> CreateApplication() override;
};

}  // namespace windows::automation
