// The connection of sample data: how it comes, goes, and hands its links on.

#include "model/modSample.h"

#include <algorithm>
#include <map>
#include <utility>
#include <vector>

#include "addin/support/modGlobalFunctions.h"
#include "basic/Counted.h"
#include "basic/Error.h"
#include "basic/Quotes.h"
#include "host/services.h"
#include "model/modCommandState.h"
#include "model/modFieldNames.h"
#include "model/modLinkEdits.h"
#include "model/modRelink.h"
#include "model/modSampleRows.h"

namespace LF2000::modSample {

namespace {

[[noreturn]] void Fail(std::string description) {
  throw basic::Error(basic::AdapterError, basic::DefaultSource, std::move(description));
}

std::vector<modRelink::Linked> LinksOf(const clsPresentation& presentation) {
  return modRelink::FindLinks(*presentation.ActivePresentation(), Number);
}

void Add(clsPresentation& presentation) {
  const auto sample = std::make_shared<clsConnection>();
  sample->ActivePresentationName(presentation.ActivePresentation()->FullName());
  sample->ConnectionTagNumber(std::string(Number));
  sample->ConnectionDescription("Sample data");
  sample->DesignMode(true);
  sample->HoldSample(modSampleRows::MadeFor(*presentation.ActivePresentation()));
  auto& connections = presentation.Connections();
  connections.insert(connections.begin(), sample);
  modCommandState::TellChanged();
}

/// "Price (2 shapes), Gate (1 shape)"
std::string ListOf(const std::map<std::string, std::size_t>& columns) {
  std::string list;
  for (const auto& [column, shapes] : columns) {
    list +=
        (list.empty() ? "" : ", ") + basic::InQuotes(column) + " (" + basic::Counted(shapes, "shape") + ")";
  }
  return list;
}

}  // namespace

std::shared_ptr<clsConnection> Find(const clsPresentation& presentation) {
  auto connection = presentation.FindConnection(Number);
  return connection && connection->IsSample() ? connection : nullptr;
}

std::size_t CountLinks(const clsPresentation& presentation) {
  return Find(presentation) ? LinksOf(presentation).size() : 0;
}

void Begin(clsPresentation& presentation) {
  if (Find(presentation)) return;
  if (!presentation.Connections().empty()) Fail("There are data in this presentation already.");
  Add(presentation);
}

void Follow(clsPresentation& presentation) {
  const auto found = presentation.FindConnection(Number);
  if (found && !found->IsSample()) return;
  const bool isUsed = !LinksOf(presentation).empty();
  if (isUsed && !found) {
    Add(presentation);
    presentation.FillConnection(Number);
  } else if (!isUsed && found && presentation.Connections().size() > 1) {
    std::erase(presentation.Connections(), found);
    modCommandState::TellChanged();
  }
}

void TakeOver(clsPresentation& presentation, std::string_view number, std::string_view label,
              std::string_view run) {
  const auto connection = presentation.FindConnection(number);
  if (!Find(presentation) || !connection || connection->IsSample() || !connection->RecordsetReady()) return;
  const modFieldNames::ColumnNames columns(connection->Columns());
  std::map<std::string, std::vector<modRelink::Linked>> taken;  // by the connection's column
  std::map<std::string, std::size_t> left;
  std::size_t count = 0;
  for (modRelink::Linked& link : LinksOf(presentation)) {
    const bool isWhole = link.Column.empty();
    const std::string* column = isWhole ? nullptr : columns.Find(link.Column);
    if (!isWhole && column == nullptr) column = columns.FindLoosely(link.Column);
    if (!isWhole && column == nullptr) {
      ++left[link.Column];
      continue;
    }
    ++count;
    taken[isWhole ? std::string() : *column].push_back(std::move(link));
  }
  if (count > 0) {
    modLinkEdits::Begin(presentation, label, run);
    for (const auto& [column, links] : taken) modRelink::Relink(links, std::string(number), column);
    presentation.FillConnection(number);
  }
  Follow(presentation);
  std::string told;
  if (count > 0) {
    told = basic::Counted(count, "shape") + (count == 1 ? " shows " : " show ") + std::string(number) + " " +
           connection->ConnectionDescription() + " now instead of sample data.";
  }
  if (!left.empty()) {
    told += (told.empty() ? "" : " ") + std::string("Sample data stay where ") + std::string(number) +
            " has no such column: " + ListOf(left) + ".";
  }
  if (!told.empty()) {
    host::Current().messageBox->MsgBox(told, left.empty() ? host::vbInformation : host::vbExclamation,
                                       ProductTitle);
  }
}

void RequireNone(const clsPresentation& presentation, std::string_view cannot) {
  const std::size_t count = CountLinks(presentation);
  if (count == 0) return;
  Fail(std::string(cannot) + " while " + basic::Counted(count, "shape") + (count == 1 ? " shows" : " show") +
       " sample data. Connect data of your own first, or remove the sample data.");
}

}  // namespace LF2000::modSample
