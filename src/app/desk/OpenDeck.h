#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "app/desk/DeskSlides.h"
#include "app/desk/DeskSources.h"
#include "app/wiring/AddInHost.h"
#include "app/wiring/ToldOnce.h"
#include "deck/objects/Presentation.h"
#include "host/services.h"
#include "model/clsPresentation.h"

namespace app {

/// The deck that is open at a desk, or one version of it, with what windows are shown of it.
struct OpenDeck {
  /// The host has it open. `changed`: see DeskSlides; as the loop and `problems` it outlives this object.
  OpenDeck(const AddInHost& host, std::shared_ptr<deck::Presentation> opened, host::Loop& loop,
           ToldOnce& problems, std::string assetPrefix, std::function<void()> changed)
      : presentation(std::move(opened)),
        model(host.entryOf(presentation)),
        slides(presentation, loop, problems, std::move(assetPrefix), std::move(changed)),
        sources(model) {}

  /// Shapes see these rows of every connection that has data, also of one that was opened since it was said
  /// last. Cheap when they do already.
  void preview(LF2000::DataPreview rows) const;

  /// The shapes that show sample data, which a save leaves out.
  [[nodiscard]] std::vector<deck::OwnerId> showingSample() const;

  std::shared_ptr<deck::Presentation> presentation;
  std::shared_ptr<LF2000::clsPresentation> model;
  DeskSlides slides;
  DeskSources sources;
};

}  // namespace app
