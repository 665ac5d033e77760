// What the shapes of a slide are about to show is read: of all of them before the first one is written.

#include <functional>
#include <utility>

#include "addin/support/modErrors.h"
#include "addin/support/modGlobalFunctions.h"
#include "basic/Conversion.h"
#include "model/clsShape.h"
#include "model/modGraph.h"
#include "model/modLinkedFiles.h"
#include "model/modTable.h"
#include "runtime/FrmRuntimeTimer.h"

namespace LF2000 {

using modDebug::DebugKind;

void FrmRuntimeTimer::LogValue(const clsRTShapeInfo& shape, double row, const std::string& value) {
  if (!modDebug::DebugOn) return;
  Log(DebugKind::Variable, "Column:" + shape.ColumnName + ":Rownbr:" + basic::CStr(row) + ":Value:" + value);
}

std::string FrmRuntimeTimer::SlideSource(std::int32_t slide) { return "slide " + std::to_string(slide); }

std::vector<FrmRuntimeTimer::Reading> FrmRuntimeTimer::ReadShapes(PowerPoint::Slide& slide,
                                                                  std::vector<clsRTShapeInfo>& shapes) {
  std::vector<Reading> readings;
  readings.reserve(shapes.size());
  for (clsRTShapeInfo& shape : shapes) {
    readings.push_back(ReadShape(slide, shape));
    if (unloaded_) break;
  }
  return readings;
}

FrmRuntimeTimer::Reading FrmRuntimeTimer::ReadShape(PowerPoint::Slide& slide, clsRTShapeInfo& shape) {
  clsConnection& connection = Connection(shape.ConnectionKey);
  // A source that fails leaves its last values standing, and its slide in the show.
  if (!connection.RecordsetReady()) return {.IsJudged = false};
  switch (static_cast<SourceType>(shape.SourceType)) {
    case SourceType::LinkedObject:
      return ReadObject(slide, shape, connection);
    case SourceType::Graph:
      return ReadWhole(slide, shape, connection);
    default:
      return ReadText(slide, shape, connection);
  }
}

FrmRuntimeTimer::Reading FrmRuntimeTimer::ReadText(PowerPoint::Slide& slide, clsRTShapeInfo& shape,
                                                   clsConnection& connection) {
  Reading reading;
  const double row = RowOf(slide, shape);
  std::string value = connection.GetValueDatabase(row, shape.ColumnName, /*displayType=*/1,
                                                  /*showMarkers=*/false, reading.NoValue);
  const bool hasValue = !reading.NoValue || !connection.IsNull(row, shape.ColumnName);
  if (value.empty()) value = " ";
  if (value == shape.Text) {
    if (hasValue != shape.HasValue) reading.Write = [&shape, hasValue] { shape.HasValue = hasValue; };
    return reading;
  }
  auto range = slide.Shapes()->Item(shape.Name)->TextFrame()->TextRange();
  reading.Write = [&shape, row, hasValue, range = std::move(range), text = std::move(value)] {
    LogValue(shape, row, text);
    shape.HasValue = hasValue;
    range->Text(text);
    shape.Text = text;
  };
  return reading;
}

FrmRuntimeTimer::Reading FrmRuntimeTimer::ReadWhole(PowerPoint::Slide& slide, clsRTShapeInfo& shape,
                                                    clsConnection& connection) {
  Reading reading;
  const double rows = connection.RecordCount();
  reading.NoValue = rows <= 0;
  const std::int64_t version = connection.DataVersion();
  const double row = RowOf(slide, shape);
  if (version == shape.DataVersion && row == shape.TableRow) return reading;
  const auto hostShape = slide.Shapes()->Item(shape.Name);
  std::string told;
  std::function<void()> fill;
  if (shape.TableRows) {
    told = "Table:" + shape.Name + ":Rownbr:" + basic::CStr(row);
    fill = [hostShape, cells = modTable::ReadCells(*hostShape, connection, row, /*displayType=*/1)] {
      modTable::WriteCells(*hostShape, cells);
    };
  } else {
    told = "Graph:" + shape.Name;
    fill = modGraph::PrepareGraph(*hostShape, connection);
  }
  told += ":Rows:" + basic::CStr(rows);
  reading.Write = [&shape, version, row, told = std::move(told), fill = std::move(fill)] {
    Log(DebugKind::Variable, told);
    fill();
    shape.DataVersion = version;
    shape.TableRow = row;
  };
  return reading;
}

template <typename Step>
void FrmRuntimeTimer::KeepPicture(const std::string& source, const Step& step) try {
  step();
} catch (...) {
  // The last picture stands, and the other shapes are refreshed.
  Report(source, "RefreshSlide", modErrors::RefreshingSlide);
}

FrmRuntimeTimer::Reading FrmRuntimeTimer::ReadObject(PowerPoint::Slide& slide, clsRTShapeInfo& shape,
                                                     clsConnection& connection) {
  Reading reading;
  const double row = RowOf(slide, shape);
  const std::string name = connection.GetValueObject(row, shape.ColumnName, shape.ObjectFolder,
                                                     shape.ObjectExtension, /*displayType=*/1,
                                                     /*showMarkers=*/false, reading.NoValue);
  const std::string source = SlideSource(slide.SlideIndex()) + ", shape " + shape.Name;
  std::string path;
  basic::Date date;
  bool isFound = true;
  if (!reading.NoValue) {
    isFound = false;
    KeepPicture(source, [&] {
      path = modLinkedFiles::FindFile(name, shape.ObjectFolder,
                                      modGlobalFunctions::BaseOf(presentation_->FullName()));
      date = host::Current().files->FileDateTime(path);
      isFound = true;
    });
  }
  if (!isFound) return reading;
  if (shape.Text == path && (reading.NoValue || date == shape.FileDate)) {
    NoteSuccess(source);
    return reading;
  }
  const auto hostShape = slide.Shapes()->Item(shape.Name);
  // Without a name it is the shape's own content: beside texts that have gone blank, the picture of
  // what is no more would lie.
  reading.Write = [this, &shape, row, source, hostShape, path, date] {
    KeepPicture(source, [&] {
      if (!path.empty()) LogValue(shape, row, path);
      modLinkedFiles::ShowFile(*hostShape, path);
      shape.Text = path;
      shape.FileDate = date;
      NoteSuccess(source);
    });
  };
  return reading;
}

}  // namespace LF2000
