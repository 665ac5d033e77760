#pragma once

#include <string_view>

#include "render/paint/Paint.h"
#include "render/svg/HtmlOut.h"

namespace render {

/// A fill as the background of an HTML element: the declarations, each with its
/// semicolon. Its lengths are those inside of text and tables (see fine()). What is
/// done to a picture's colours is left out.
void cssFill(HtmlOut& out, const Fill& fill, std::string_view assetPrefix);

}  // namespace render
