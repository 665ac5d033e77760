#pragma once

#include <vector>

#include "windows/com/WindowsApi.h"

namespace windows::forms {

/// While it lives, the thread's other windows take no input: a dialog that returns at once is waited for all
/// the same. Windows that come up later are not affected.
class Modality {
 public:
  explicit Modality(HWND dialog);
  ~Modality();
  Modality(const Modality&) = delete;
  Modality& operator=(const Modality&) = delete;

 private:
  std::vector<HWND> disabled_;
};

}  // namespace windows::forms
