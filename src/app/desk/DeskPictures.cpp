#include "app/desk/DeskPictures.h"

#include <functional>
#include <memory>
#include <system_error>

#include "basic/Error.h"
#include "host/services.h"
#include "pictures/PictureFile.h"

namespace app {

std::string DeskPictures::nameOf(const std::string& path) {
  if (path.empty()) return {};
  std::error_code missing;
  const auto changed = std::filesystem::last_write_time(path, missing);
  if (missing) return {};
  const std::string version = path + '\n' + std::to_string(changed.time_since_epoch().count());
  std::string name = "picture-" + std::to_string(std::hash<std::string>{}(version));
  paths_.insert_or_assign(name, path);
  return name;
}

std::optional<web::Asset> DeskPictures::asset(std::string_view name) const try {
  const auto known = paths_.find(name);
  if (known == paths_.end()) return std::nullopt;
  // What the desk may not read raises here.
  static_cast<void>(host::Current().files->FileDateTime(known->second));
  pictures::PictureFile picture = pictures::readPictureFile(known->second);
  return web::Asset{std::make_shared<const std::string>(std::move(picture.bytes)),
                    std::string(picture.contentType)};
} catch (const basic::Error&) {
  return std::nullopt;
}

}  // namespace app
