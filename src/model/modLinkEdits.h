#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "host/powerpoint.h"
#include "model/modManyLinks.h"

namespace LF2000 {

class clsPresentation;

/// What authors do to the links of shapes that stand on one slide. Each is one step to undo, after which the
/// shapes show what they are linked to.
namespace modLinkEdits {

using Shapes = std::vector<std::shared_ptr<PowerPoint::Shape>>;

/// Called before tags are changed: what follows is one step to undo (Application::StartNewUndoEntry). The
/// presentation is a linked one from here on.
void Begin(clsPresentation& presentation, std::string_view label, std::string_view run = {});

/// Gives the shape another name: "Rename Price".
void Rename(PowerPoint::Shape& shape, std::string_view name);

/// Called after tags were changed: the shapes show what they are linked to now.
void Show(clsPresentation& presentation, PowerPoint::Slide& slide, const Shapes& shapes);

/// Writes the links of a plan, whatever hinders others: "Link Price". Nothing without one.
void Link(clsPresentation& presentation, const modManyLinks::Plan& plan, std::string_view label = {});

/// Takes the links away: "Unlink 3 shapes". Texts stay as they stand; pictures, charts and tables show their
/// author's again.
void Unlink(clsPresentation& presentation, const Shapes& shapes);

/// Moves the rows of all shapes that show one by `rows`. Answers why not, when one of them would leave the
/// data's beginning; then none has moved. The empty text where they have.
std::string MoveRows(clsPresentation& presentation, PowerPoint::Slide& slide, const Shapes& shapes,
                     std::int32_t rows);

/// The source of a connection: its columns as it holds them now, without waiting for it.
[[nodiscard]] modManyLinks::Source SourceOf(const clsPresentation& presentation,
                                            const std::string& connection);

/// How many shapes of the slide fit columns of the connection by their names, and are not linked yet.
[[nodiscard]] std::size_t CountOffers(const clsPresentation& presentation, PowerPoint::Slide& slide,
                                      const std::string& connection);

/// "Price" or "3 shapes", for labels.
[[nodiscard]] std::string NameOf(const Shapes& shapes);
/// Names these shapes in runs of steps.
[[nodiscard]] std::string RunOf(std::string_view what, const Shapes& shapes);

}  // namespace modLinkEdits
}  // namespace LF2000
