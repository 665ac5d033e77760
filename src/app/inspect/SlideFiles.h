#pragma once

#include <filesystem>
#include <string>
#include <string_view>

#include "app/inspect/HeadlessBrowser.h"
#include "render/html/SlideRenderer.h"

namespace app {

// The files that verbs write of a deck's slides. What fails throws basic::Error, naming the file.

/// "slide-001", without what tells its kind.
std::string slideFileName(int slide);

void makeFolder(const std::string& folder);
void writeFile(const std::filesystem::path& path, std::string_view content);

/// A whole slide in a picture as wide as that, in pixels.
HeadlessBrowser::View slideView(const render::SlideSize& size, int width);

}  // namespace app
