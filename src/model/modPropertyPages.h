#pragma once

#include <cstdint>
#include <functional>
#include <memory>

namespace LF2000 {

class clsPresentation;

/// The way from a presentation to its property pages, which stand above the model and enter themselves here.
namespace modPropertyPages {

enum class Page : std::uint8_t { SlideShow, Slide, Clock, DataField, DataObject, Graph, Distribution };

using Opener = std::function<void(Page page, const std::shared_ptr<clsPresentation>& presentation)>;

/// Who opens the pages; an empty one ends that.
void OpenWith(Opener opener);

/// Opens the page by itself (Forms::Placement::Dialog) and returns at once. Raises that there are no pages.
void Open(Page page, const std::shared_ptr<clsPresentation>& presentation);

}  // namespace modPropertyPages
}  // namespace LF2000
