#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "host/powerpoint.h"

/// What becomes of the files that a presentation is linked to when a copy of it is to stand alone, where the
/// host's objects do not reach.
namespace LF2000::modOfflineLinks {

/// Both answer what could not be done, a sentence each.
struct Keeper {
  /// Has linked worksheets show their files as they are now. Those that cannot be drawn keep the picture that
  /// they have.
  std::function<std::vector<std::string>(const std::shared_ptr<PowerPoint::Presentation>& presentation)>
      DrawSheets;
  /// Takes the pictures into a copy to which others than its slides' shapes are linked: backgrounds, masters,
  /// layouts, tables, bullets. Their relative paths lie beside `original`.
  std::function<std::vector<std::string>(const std::shared_ptr<PowerPoint::Presentation>& copy,
                                         const std::string& original)>
      TakePicturesIn;
};

/// Who does it; without anybody nothing is done.
void DoneBy(Keeper keeper);

/// These report what could not be done.
void DrawSheets(const std::shared_ptr<PowerPoint::Presentation>& presentation);
void TakePicturesIn(const std::shared_ptr<PowerPoint::Presentation>& copy, const std::string& original);

}  // namespace LF2000::modOfflineLinks
