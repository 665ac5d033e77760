#pragma once

#include "app/desk/DeskWindow.h"
#include "app/desk/OpenDeck.h"
#include "app/desk/UndoStack.h"
#include "deck/objects/Application.h"

namespace app {

/// What was undone or redone is taken up by the system, shown by the shapes that it touched, and selected in
/// the window.
void takeUp(const StepEffect& effect, deck::Application& application, OpenDeck& open, DeskWindow& window);

}  // namespace app
