#pragma once

#include <memory>

#include "addin/Connect.h"
#include "fakes/Passage.h"

namespace fakes {

/// What a host calls: the passage's, or the system's own entry object.
inline std::shared_ptr<AddInDesigner::IDTExtensibility2> newEntry() {
  if (passage == nullptr) return std::make_shared<LF2000::Connect>();
  return passage->newEntry();
}

/// As a host does that starts: with a new entry where there is none yet.
inline void load(std::shared_ptr<AddInDesigner::IDTExtensibility2>& entry,
                 const std::shared_ptr<Application>& host) {
  if (!entry) entry = newEntry();
  entry->OnConnection(handed(host), AddInDesigner::ConnectMode::Startup, handed(std::make_shared<AddIn>()));
}

/// For a test that looks at the system's own objects: it throws where those are out of reach.
inline LF2000::Application* inside(AddInDesigner::IDTExtensibility2& entry) {
  return dynamic_cast<LF2000::Connect&>(entry).Application();
}

}  // namespace fakes
