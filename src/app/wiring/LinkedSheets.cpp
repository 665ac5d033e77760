#include "app/wiring/LinkedSheets.h"

#include <utility>

#include "addin/support/modErrors.h"
#include "basic/Error.h"
#include "basic/Strings.h"
#include "pictures/PictureFile.h"
#include "workbook/drawing/RangeDrawing.h"

namespace app {

LinkedSheets::LinkedSheets(std::shared_ptr<deck::Presentation> presentation, host::Loop& loop)
    : presentation_(std::move(presentation)), loop_(loop) {
  draw();
  presentation_->addListener(*this);
}

LinkedSheets::~LinkedSheets() { presentation_->removeListener(*this); }

void LinkedSheets::linksUpdated() { draw(); }

void LinkedSheets::draw() {
  // Reading lets the loop run, which may come back here.
  if (std::exchange(isDrawing_, true)) return;
  for (std::int32_t slide = 1; slide <= presentation_->slideCount(); ++slide) {
    for (const deck::LinkedObject& object : deck::linkedObjects(*presentation_, slide)) {
      if (basic::StartsWith(object.progId, "Excel.Sheet")) draw(slide, object);
    }
  }
  isDrawing_ = false;
}

void LinkedSheets::draw(std::int32_t slide, const deck::LinkedObject& object) {
  const std::string which = "Slide " + std::to_string(slide) + ", shape '" + object.shapeName + "'";
  try {
    const std::string path = host::Current().files->LocalPath(object.file);
    std::string drawing = workbook::drawRange(path, object.item, loop_);
    presentation_->showLinkedObject(slide, object.shapeId,
                                    pictures::asPicture(std::move(drawing), object.file));
    failures_.erase(which);
  } catch (const basic::Error& error) {
    std::string& told = failures_[which];
    if (told == error.description) return;
    told = error.description;
    LF2000::modErrors::WriteErrorLog(which + ": " + error.description);
  }
}

}  // namespace app
