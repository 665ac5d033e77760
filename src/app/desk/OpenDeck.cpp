#include "app/desk/OpenDeck.h"

#include "model/modSample.h"

namespace app {

void OpenDeck::preview(LF2000::DataPreview rows) const {
  const auto connections = model->Connections();
  for (const auto& connection : connections) {
    if (!connection->RecordsetReady() || connection->Preview() == rows) continue;
    connection->Preview(rows);
    model->FillConnection(connection->ConnectionTagNumber());
  }
}

std::vector<deck::OwnerId> OpenDeck::showingSample() const {
  std::vector<deck::OwnerId> shapes;
  if (!LF2000::modSample::Find(*model)) return shapes;
  for (int slide = 1; slide <= slides.count(); ++slide) {
    for (const LinkedShape& link : slides.links(slide)) {
      if (link.connection == LF2000::modSample::Number) shapes.push_back({slides.id(slide), link.id});
    }
  }
  return shapes;
}

}  // namespace app
