#pragma once

#include <functional>
#include <memory>
#include <string>

#include "model/clsPresentation.h"
#include "model/modPropertyPages.h"

/// The property pages: which one is shown for what is selected.
namespace LF2000::modPages {

/// Enters the pages where presentations look for them (modPropertyPages).
void Install();

/// Shows a page as a dialog, for what is selected in the active window. Raises why there is nothing that it
/// could be about.
void Open(modPropertyPages::Page page, const std::shared_ptr<clsPresentation>& presentation);

/// Dialogs for many links at once: for the shapes that are selected in the active window, of names also for
/// all shapes of its slide where fewer than two are. They raise what is missing for them.
void OpenFillWithRows(const std::shared_ptr<clsPresentation>& presentation);
void OpenLinkByNames(const std::shared_ptr<clsPresentation>& presentation);

/// A dialog that says why some of what is selected in the active window cannot be linked. Raises that all
/// can.
void OpenNotLinkable(const std::shared_ptr<clsPresentation>& presentation);

/// Shows the page that fits what is selected in the active window in its panel. One that is there already for
/// the same shapes stays, and is brought up to date.
void Dock(const std::shared_ptr<clsPresentation>& presentation);

/// The presentation or its data have changed: brings the docked pages of all windows up to date.
void Refresh(const std::shared_ptr<clsPresentation>& presentation);

/// What a host does besides to show its author the shapes of a connection ("Show uses"), by its number.
void ShowUsesWith(std::function<void(const std::string& connection)> show);
void ShowUses(const std::string& connection);

/// Forgets which pages are docked, and what shows uses.
void Reset();

}  // namespace LF2000::modPages
