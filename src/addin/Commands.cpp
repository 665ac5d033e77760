// The table of commands: what they are called, where they stand, when they are of use and what they do.

#include "addin/Commands.h"

#include <algorithm>
#include <array>
#include <utility>

#include "addin/support/modErrors.h"
#include "addin/support/modGlobalFunctions.h"
#include "addin/support/modHelp.h"
#include "host/distribution.h"
#include "host/services.h"
#include "model/modCommandState.h"
#include "model/modLinkClipboard.h"
#include "model/modLinkEdits.h"
#include "model/modTags.h"
#include "pages/frmAbout.h"
#include "pages/frmOfflineCopy.h"
#include "pages/modPages.h"

namespace LF2000 {

namespace {

using modLinkable::Shows;
using modLinkClipboard::Way;
using Selection = const CommandSelection&;

constexpr std::string_view NoPresentation = "Open a presentation first.";
constexpr std::int32_t ShowNormal = 1;

std::string Quoted(const PowerPoint::Shape& shape) { return "'" + shape.Name() + "'"; }

/// Of no use without a presentation, whatever else a command asks for.
template <typename Question>
std::function<std::string(Selection)> InPresentation(Question question) {
  return [question = std::move(question)](Selection selection) {
    return selection.Presentation() ? std::string(question(selection)) : std::string(NoPresentation);
  };
}

std::string Never(Selection) { return {}; }

std::string WhyNotLinkable(Selection selection) {
  return selection.WhyNot([](PowerPoint::Shape&, Shows) { return true; }, {});
}

std::string WhyNoText(Selection selection) {
  return selection.WhyNot([](PowerPoint::Shape& shape, Shows) { return shape.HasTextFrame(); },
                          [](const PowerPoint::Shape& shape) { return Quoted(shape) + " holds no text."; });
}

std::string WhyNoPicture(Selection selection) {
  return selection.WhyNot(
      [](PowerPoint::Shape& shape, Shows) { return modLinkable::HasPicture(shape); },
      [](const PowerPoint::Shape& shape) { return Quoted(shape) + " shows no picture."; });
}

std::string WhyNoGraph(Selection selection) {
  return selection.WhyNot(
      [](PowerPoint::Shape&, Shows shows) { return shows == Shows::Graph || shows == Shows::Table; },
      [](const PowerPoint::Shape&) {
        return std::string("Only charts and tables take a whole connection.");
      });
}

std::string WhyLinkable(Selection selection) {
  std::string why = WhyNotLinkable(selection);
  if (selection.Shapes().empty()) return why;
  return why.empty() ? "What is selected can be linked." : "";
}

std::string WhyNoSlide(Selection selection) { return selection.Slide() ? "" : "There is no slide."; }

std::string WhyNoConnection(Selection selection) {
  return selection.Presentation()->Connections().empty() ? "Connect data first." : "";
}

/// Columns are known of what has been read alone.
std::string WhyNoColumns(Selection selection) {
  const auto& connections = selection.Presentation()->Connections();
  const bool isAnyOpen = std::any_of(connections.begin(), connections.end(),
                                     [](const auto& connection) { return connection->RecordsetReady(); });
  if (isAnyOpen) return {};
  return connections.empty() ? WhyNoConnection(selection) : "No data have been read yet.";
}

std::string WhyNoFilling(Selection selection) {
  if (std::string why = WhyNoColumns(selection); !why.empty()) return why;
  return selection.Shapes().size() < 2 ? "Select the shapes that are to show rows, at least two." : "";
}

std::string WhyNoNames(Selection selection) {
  const std::string why = WhyNoColumns(selection);
  return why.empty() ? WhyNoSlide(selection) : why;
}

std::string WhyNoCopy(Selection selection) {
  if (selection.LinksOfShapes().Linked == 0) return "Nothing here is linked.";
  return selection.Shapes().size() == 1 ? "" : "Select one shape alone.";
}

std::function<std::string(Selection)> WhyNoPaste(Way way) {
  return InPresentation([way](Selection selection) {
    if (!selection.Slide()) return WhyNoSlide(selection);
    return modLinkClipboard::WhyNot(*selection.Presentation(), *selection.Slide(), selection.Shapes(), way);
  });
}

std::string WhyNoNextRow(Selection selection) {
  return selection.LinksOfShapes().WithRow == 0 ? "Nothing here shows a row." : "";
}

std::string WhyNoPreviousRow(Selection selection) {
  const std::string& first = selection.LinksOfShapes().FirstRowShape;
  return first.empty() ? WhyNoNextRow(selection) : "'" + first + "' shows the first row.";
}

std::string WhyNoUnlink(Selection selection) {
  return selection.LinksOfShapes().Linked == 0 ? "Nothing here is linked." : "";
}

void Tell(const std::string& text) {
  if (text.empty()) return;
  host::Current().messageBox->MsgBox(text, host::vbOKOnly + host::vbInformation, ProductTitle);
}

void Paste(Selection selection, Way way) {
  const modLinkClipboard::Pasted pasted =
      modLinkClipboard::Paste(*selection.Presentation(), *selection.Slide(), selection.Shapes(), way);
  std::string leftOut;
  for (const std::string& sentence : pasted.LeftOut) leftOut += (leftOut.empty() ? "" : "\r\n") + sentence;
  Tell(leftOut);
}

std::function<void(Selection)> MovesRows(std::int32_t rows) {
  return [rows](Selection selection) {
    Tell(modLinkEdits::MoveRows(*selection.Presentation(), *selection.Slide(), selection.Shapes(), rows));
  };
}

/// Opens a property page of the presentation.
std::function<void(Selection)> Opens(void (clsPresentation::*page)()) {
  return [page](Selection selection) { (selection.Presentation().get()->*page)(); };
}

void Refresh(Selection selection) {
  selection.Presentation()->FillValues(false);
  selection.Presentation()->RequeryInBackground(true);
}

std::string WhyNoOfflineCopy(Selection selection) {
  const bool isLinked = modTags::HasVersionTag(*selection.Presentation()->ActivePresentation());
  return isLinked ? "" : "Nothing is linked here: the presentation stands alone already.";
}

std::string WhyNoSending(Selection) {
  return host::Current().distribution == nullptr ? "Presentations cannot be sent from here." : "";
}

std::string HelpFile() {
  using modGlobalFunctions::FileInFolder;
  return FileInFolder(FileInFolder(host::Current().module->Path(), "help"), "index.html");
}

std::string WebPage() { return modGlobalFunctions::InfoSetting("WebPage"); }

std::vector<Command> Links() {
  constexpr std::uint32_t ForShapes = OnMenu | OnBar | OnShapes;
  return {
      {"cbrDataField", "&Data field…", "", ForShapes, InPresentation(WhyNoText),
       Opens(&clsPresentation::ShowDataFieldProperties)},
      {"cbrDataObject", "&Picture or object…", "", ForShapes, InPresentation(WhyNoPicture),
       Opens(&clsPresentation::ShowDataObjectProperties)},
      {"cbrClock", "&Clock…", "", ForShapes, InPresentation(WhyNoText),
       Opens(&clsPresentation::ShowClockProperties)},
      {"cbrGraph", "&Graph…", "", ForShapes, InPresentation(WhyNoGraph),
       Opens(&clsPresentation::ShowGraphProperties)},
      {"cbrSlide", "&Slide properties…", "", OnMenu | OnBar | OnSlides | NewGroup, InPresentation(WhyNoSlide),
       Opens(&clsPresentation::ShowSlideProperties)},
      {"cbrSlideShow", "Slide show proper&ties…", "", OnMenu | OnBar | OnSlides, InPresentation(Never),
       Opens(&clsPresentation::ShowSlideShowProperties)},
      {"cbrFillWithRows", "&Fill with rows…", "Ctrl+Shift+Enter", ForShapes | NewGroup,
       InPresentation(WhyNoFilling),
       [](Selection selection) { modPages::OpenFillWithRows(selection.Presentation()); }},
      {"cbrLinkByNames", "Link by na&mes…", "", ForShapes | OnSlides, InPresentation(WhyNoNames),
       [](Selection selection) { modPages::OpenLinkByNames(selection.Presentation()); }},
      {"cbrCopyLink", "C&opy link", "Ctrl+C", ForShapes | NewGroup, InPresentation(WhyNoCopy),
       [](Selection selection) { modLinkClipboard::Copy(selection.Shapes().front()); }},
      {"cbrPasteLink", "Paste &link", "Ctrl+V", ForShapes, WhyNoPaste(Way::Same),
       [](Selection selection) { Paste(selection, Way::Same); }},
      {"cbrPasteNextRow", "Paste as ne&xt row", "Ctrl+Shift+V", ForShapes, WhyNoPaste(Way::NextRow),
       [](Selection selection) { Paste(selection, Way::NextRow); }},
      {"cbrRowUp", "Previo&us row", "Alt+↑", ForShapes | NewGroup, InPresentation(WhyNoPreviousRow),
       MovesRows(-1)},
      {"cbrRowDown", "Next ro&w", "Alt+↓", ForShapes, InPresentation(WhyNoNextRow), MovesRows(1)},
      {"cbrUnlink", "Unl&ink", "Delete", ForShapes | NewGroup, InPresentation(WhyNoUnlink),
       [](Selection selection) { modLinkEdits::Unlink(*selection.Presentation(), selection.Shapes()); }},
      {"cbrNotLinkable", "Ob&jections to linking…", "", OnMenu | OnShapes, InPresentation(WhyLinkable),
       [](Selection selection) { modPages::OpenNotLinkable(selection.Presentation()); }},
  };
}

std::vector<Command> DisplayTypes() {
  constexpr std::array<std::pair<std::string_view, std::string_view>, 7> Captions = {
      {{"cbrDisplayValue", "&Value"},
       {"cbrDisplayConnection", "&Connection"},
       {"cbrDisplayColumn", "C&olumn"},
       {"cbrDisplayIndex", "&Index"},
       {"cbrDisplayColumnIndex", "Column - In&dex"},
       {"cbrDisplayConnectionColumn", "Connection - Colu&mn"},
       {"cbrDisplayNothing", "&Nothing"}}};
  std::vector<Command> commands;
  for (const auto& [tag, caption] : Captions) {
    const auto code = static_cast<std::int32_t>(commands.size()) + 1;
    commands.push_back({tag, caption, "", OnDisplayMenu, WhyNoDisplayType,
                        [code](Selection selection) { ShowDisplayType(selection, code); }, nullptr, code});
  }
  return commands;
}

std::vector<Command> Services() {
  constexpr std::uint32_t Everywhere = OnMenu | OnBar;
  return {
      {"cbrOfflineCopy", "Off-li&ne copy…", "", OnMenu | NewGroup, InPresentation(WhyNoOfflineCopy),
       [](Selection selection) { std::make_shared<frmOfflineCopy>(selection.Presentation())->Open(); }},
      {"cbrDistribution", "Deli&very to players…", "", Everywhere, InPresentation(Never),
       Opens(&clsPresentation::SetDistributionList)},
      {"cbrSend", "Send dec&k to players", "", Everywhere, InPresentation(WhyNoSending),
       [](Selection selection) { selection.Presentation()->SendPresentation(); }},
      {"cbrRefresh", "&Refresh", "", Everywhere | NewGroup, InPresentation(WhyNoConnection), Refresh},
      {"cbrErrorsLog", "&Errors log", "", Everywhere, Never, [](Selection) { modErrors::OpenErrorLog(); }},
      {"cbrProductHelp", "&Help", "", Everywhere | NewGroup, Never,
       [](Selection) { modHelp::ShowHelp(0, HelpFile()); }, [] { return "Opening " + HelpFile(); }},
      {"cbrWebPage", "We&b page", "", Everywhere,
       [](Selection) { return WebPage().empty() ? "The settings name no web page (WebPage)." : ""; },
       [](Selection) { modGlobalFunctions::OpenUrl(WebPage(), ShowNormal); }},
      {"cbrAbout", "&About…", "", Everywhere, Never, [](Selection) { std::make_shared<frmAbout>()->Open(); }},
  };
}

}  // namespace

const std::vector<Command>& AllCommands() {
  static const std::vector<Command> commands = [] {
    std::vector<Command> all = Links();
    for (const auto& group : {DisplayTypes(), Services()}) all.insert(all.end(), group.begin(), group.end());
    return all;
  }();
  return commands;
}

std::string WhyNoDisplayType(const CommandSelection& selection) { return InPresentation(Never)(selection); }

void ShowDisplayType(const CommandSelection& selection, std::int32_t code) {
  selection.Presentation()->DisplayType(code);
  selection.Presentation()->FillValues(false);
}

}  // namespace LF2000
