// Many shapes are linked at once: by where they stand, what they are called, what is typed into them.

#include "app/commands/LinkMany.h"

#include <iostream>
#include <map>

#include "app/commands/Editing.h"
#include "app/inspect/SourceLook.h"
#include "app/wiring/Failure.h"
#include "app/wiring/LinkedShapes.h"
#include "app/wiring/Output.h"
#include "app/wiring/StoredConnections.h"
#include "basic/Counted.h"
#include "basic/Strings.h"
#include "model/modManyLinks.h"

namespace app {

namespace {

using LF2000::modManyLinks::Plan;
using LF2000::modManyLinks::PlannedLink;
using LF2000::modManyLinks::Source;

/// The connections of a deck, each asked for its columns once.
class Sources {
 public:
  explicit Sources(Editing& editing) : editing_(editing) {}

  /// Null without one of that number; without a number, unless there is one alone.
  const Source* find(const std::string& number) {
    const auto& all = editing_.linked.Connections();
    const auto connection = !number.empty()   ? editing_.linked.FindConnection(number)
                            : all.size() == 1 ? all.front()
                                              : nullptr;
    if (!connection) return nullptr;
    const auto [found, isNew] = sources_.try_emplace(connection->ConnectionTagNumber());
    if (isNew) {
      found->second.Connection = connection->ConnectionTagNumber();
      const SourceLook look = lookInto(*connection);
      if (look.isReadable()) found->second.Columns.emplace(connection->Columns());
      failure_ = look.failure;
    }
    return &found->second;
  }

  /// Of the source that was looked into last; empty when it can be read.
  [[nodiscard]] const std::string& failure() const { return failure_; }

 private:
  Editing& editing_;
  std::string failure_;
  std::map<std::string, Source> sources_;
};

const Source& sourceFor(const LinkManyOptions& options, Sources& sources) {
  const Source* source = sources.find(options.connection);
  if (source == nullptr && options.connection.empty()) {
    fail(options.deck + ": there is more than one connection or none; say with --connection which one.");
  }
  if (source == nullptr) failUnknownConnection(options.deck, options.connection);
  if (options.byNames && !source->Columns) {
    fail(options.deck + ": connection " + source->Connection +
         " cannot be read, so there are no columns to compare names with: " + sources.failure());
  }
  return *source;
}

Plan planGrid(const LinkManyOptions& options, Editing& editing, Sources& sources) {
  Plan plan;
  const auto slide = slideOf(*editing.deck, options.slide.value());
  static_cast<void>(shapeOf(*editing.deck, *options.slide, options.grid));  // one and no more
  LF2000::modManyLinks::GridWish wish;
  wish.Start = options.grid;
  for (const std::string& column : basic::Split(options.columns, ',')) {
    wish.Columns.emplace_back(basic::Trim(column));
  }
  wish.Rows = options.rows;
  wish.FirstRow = options.firstRow;
  LF2000::modManyLinks::AddGrid(plan, *slide, wish, sourceFor(options, sources));
  return plan;
}

/// By names or texts.
Plan planSlides(const LinkManyOptions& options, Editing& editing, Sources& sources) {
  Plan plan;
  const std::int32_t first = options.slide.value_or(1);
  const std::int32_t last = options.slide.value_or(editing.deck->slideCount());
  for (std::int32_t i = first; i <= last; ++i) {
    const auto slide = slideOf(*editing.deck, i);
    if (options.byNames) {
      LF2000::modManyLinks::AddNames(plan, *slide, sourceFor(options, sources));
    } else {
      LF2000::modManyLinks::AddTexts(plan, *slide, [&](std::string_view number) {
        return sources.find(number.empty() ? options.connection : std::string(number));
      });
    }
  }
  if (!plan.Links.empty() || !plan.Hindrances.empty()) return plan;
  const std::string where = options.deck + (options.slide ? ": slide " + std::to_string(first) : "");
  if (options.byTexts) fail(where + ": no shape holds a mark such as {{Column.1}}.");
  const Source& source = sourceFor(options, sources);
  fail(where + ": no shape has a name such as '" +
       source.Columns->List().substr(0, source.Columns->List().find(',')) +
       " 1', of a column and a row. Connection " + source.Connection + " has: " + source.Columns->List() +
       ".");
}

void requireUnhindered(const LinkManyOptions& options, const Plan& plan) {
  if (plan.Hindrances.empty()) return;
  std::string reasons;
  for (const std::string& each : plan.Hindrances) reasons += "\n  " + each;
  fail(options.deck + ": nothing was linked:" + reasons);
}

void print(const Plan& plan) {
  std::vector<std::vector<std::string>> rows;
  for (const PlannedLink& link : plan.Links) {
    const auto before = linkOf(link.Shape);
    rows.push_back({std::to_string(link.SlideIndex), oneLine(link.Shape->Name()), link.Connection,
                    oneLine(link.Value.Column), std::to_string(link.Value.Row),
                    before ? oneLine(linkText(*before)) : ""});
  }
  printTable(std::cout, {"Slide", "Shape", "Connection", "Column", "Row", "Linked so far"}, rows);
}

}  // namespace

void linkMany(LinkManyOptions options) {
  Editing editing(options.deck);
  if (!options.connection.empty()) options.connection = connectionNumber(*editing.deck, options.connection);
  Sources sources(editing);
  const Plan plan =
      options.grid.empty() ? planSlides(options, editing, sources) : planGrid(options, editing, sources);
  requireUnhindered(options, plan);
  const std::size_t count = plan.Links.size();
  const std::string shapes = basic::Counted(count, "shape");
  if (options.isDryRun) {
    print(plan);
    std::cout << shapes << " would be linked; nothing is written.\n";
    return;
  }
  editing.keepsBackup = options.backup;
  editing.becomeLinked();
  LF2000::modManyLinks::Write(plan, LF2000::modManyLinks::Files{options.folder, options.extension});
  editing.save();
  std::cout << shapes << " linked.\n";
}

}  // namespace app
