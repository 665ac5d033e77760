#include "app/inspect/Finding.h"

namespace app {

const char* nameOf(Finding::Gravity gravity) {
  switch (gravity) {
    case Finding::Gravity::Broken:
      return "broken";
    case Finding::Gravity::Different:
      return "different";
    case Finding::Gravity::Note:
      break;
  }
  return "note";
}

}  // namespace app
