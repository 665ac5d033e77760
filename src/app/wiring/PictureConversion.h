#pragma once

#include <filesystem>

#include "platform/UserFolders.h"
#include "render/conversion/PictureConverter.h"

namespace app {

/// Pictures are converted once for this user, not at every start.
inline render::PictureConverter::Options pictureConversion() {
  render::PictureConverter::Options options;
  options.cache = std::filesystem::path(platform::cacheFolder()) / "pictures";
  return options;
}

}  // namespace app
