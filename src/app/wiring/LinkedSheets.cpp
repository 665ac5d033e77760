#include "app/wiring/LinkedSheets.h"

#include <exception>
#include <utility>

#include "addin/support/modErrors.h"
#include "basic/Strings.h"
#include "pictures/PictureFile.h"
#include "workbook/drawing/RangeDrawing.h"

namespace app {

namespace {

struct Drawing {
  explicit Drawing(bool& flag) : isGoingOn(flag) { isGoingOn = true; }
  ~Drawing() { isGoingOn = false; }
  Drawing(const Drawing&) = delete;
  Drawing& operator=(const Drawing&) = delete;
  bool& isGoingOn;
};

}  // namespace

LinkedSheets::LinkedSheets(std::shared_ptr<deck::Presentation> presentation, host::Loop& loop)
    : presentation_(std::move(presentation)), loop_(loop) {
  draw();
  presentation_->addListener(*this);
}

LinkedSheets::~LinkedSheets() { presentation_->removeListener(*this); }

std::vector<std::string> LinkedSheets::failures() const {
  std::vector<std::string> texts;
  for (const auto& [which, why] : failures_) texts.push_back(which + ": " + why);
  return texts;
}

void LinkedSheets::linksUpdated() { draw(); }

void LinkedSheets::draw() {
  // Reading lets the loop run, which may come back here.
  if (isDrawing_) return;
  const Drawing drawing(isDrawing_);
  for (std::int32_t slide = 1; slide <= presentation_->slideCount(); ++slide) {
    for (const deck::LinkedObject& object : deck::linkedObjects(*presentation_, slide)) {
      if (basic::StartsWith(object.progId, "Excel.Sheet")) draw(slide, object);
    }
  }
}

void LinkedSheets::draw(std::int32_t slide, const deck::LinkedObject& object) {
  const std::string which = "Slide " + std::to_string(slide) + ", shape '" + object.shapeName + "'";
  try {
    const std::string path = host::Current().files->LocalPath(object.file);
    // Raises what keeps it from being read here.
    static_cast<void>(host::Current().files->FileDateTime(path));
    std::string drawing = workbook::drawRange(path, object.item, loop_);
    presentation_->showLinkedObject(slide, object.shapeId,
                                    pictures::asPicture(std::move(drawing), object.file));
    failures_.erase(which);
  } catch (const std::exception& error) {
    std::string& told = failures_[which];
    if (told == error.what()) return;
    told = error.what();
    LF2000::modErrors::WriteErrorLog(which + ": " + told);
  }
}

}  // namespace app
