#pragma once

#include <vector>

#include "opc/Package.h"

namespace deck {

/// A new part with a slide's content. What belongs to the slide alone (notes, charts with their workbooks,
/// objects, diagrams, tags) is copied along; layouts, pictures, films and what links lead to are shared.
/// Comments stay with the slide.
opc::Part& copySlidePart(opc::Package& package, opc::Part& slide);

/// The slide's part and those that nobody else refers to.
std::vector<opc::Part*> partsOfSlide(opc::Package& package, opc::Part& slide);

}  // namespace deck
