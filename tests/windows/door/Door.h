#pragma once

#include "windows/com/WindowsApi.h"

// The door of the module that scenarios load: the same objects as the add-in's own, but that time, files,
// settings and message boxes are those of a test. They come as one automation object, so that neither
// exceptions nor memory cross the module's border.

/// Exported as "TakeMachine". Add-in objects that are connected from now on ask this machine, and keep it;
/// null takes it back.
using TakesMachine = void (*)(IDispatch* machine);
