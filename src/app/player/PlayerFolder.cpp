#include "app/player/PlayerFolder.h"

#include "app/distribution/Digest.h"
#include "platform/UserFolders.h"

namespace app {

std::string PlayerFolder::usualCache(const PlayerFolderOptions& options) {
  const std::string key = options.trust ? options.trust->id() : std::string();
  const std::string name = sha256(options.place + '\n' + options.computer + '\n' + key).substr(0, 16);
  return platform::cacheFolder() + "/players/" + name;
}

}  // namespace app
