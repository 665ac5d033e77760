#include "app/desk/OpenDeck.h"

namespace app {

void OpenDeck::preview(LF2000::DataPreview rows) const {
  const auto connections = model->Connections();
  for (const auto& connection : connections) {
    if (!connection->RecordsetReady() || connection->Preview() == rows) continue;
    connection->Preview(rows);
    model->FillConnection(connection->ConnectionTagNumber());
  }
}

}  // namespace app
