// Puts together what the single checks find in a deck, and what a show of it says.

#include "app/inspect/DeckCheck.h"

#include <algorithm>
#include <iterator>
#include <map>
#include <memory>

#include "app/inspect/CollectedErrors.h"
#include "app/inspect/FilledDeck.h"
#include "app/inspect/LinkCheck.h"
#include "app/inspect/OverflowCheck.h"
#include "app/inspect/Standstill.h"
#include "app/wiring/Language.h"
#include "basic/Error.h"
#include "basic/Strings.h"
#include "deck/objects/Application.h"
#include "render/scene/Limitations.h"

namespace app {

namespace {

void append(Findings& all, Findings more) {
  all.insert(all.end(), std::make_move_iterator(more.begin()), std::make_move_iterator(more.end()));
}

Findings checkHidden(const std::vector<bool>& hiddenByAuthor, FilledDeck& filled) {
  Findings findings;
  for (int slide = 1; slide <= filled.slideCount(); ++slide) {
    const bool byAuthor = hiddenByAuthor[static_cast<std::size_t>(slide)];
    if (byAuthor) findings.push_back({Finding::Gravity::Note, slide, "", "The slide is hidden in the deck."});
    if (!byAuthor && filled.deck().isHidden(slide)) {
      findings.push_back({Finding::Gravity::Note, slide, "",
                          "The slide hides itself today: none of its linked shapes has data."});
    }
  }
  return findings;
}

/// How the deck would be shown as it is, and as a kiosk.
Findings checkCourse(const std::shared_ptr<deck::Presentation>& deck) {
  const auto standstill = [&deck](const deck::SlideShowOptions& options) {
    return standstillOf(deck::ShowCourse(deck, options));
  };
  if (const auto why = standstill({})) return {{Finding::Gravity::Note, 0, "", *why}};
  deck::SlideShowOptions kiosk;
  kiosk.kiosk = true;
  if (const auto why = standstill(kiosk)) return {{Finding::Gravity::Note, 0, "", "With --kiosk: " + *why}};
  return {};
}

/// One for each typeface that this machine lacks, as they are missing on many slides.
void addMissingFonts(Findings& findings, const std::map<std::string, std::string>& standIns) {
  for (const auto& [typeface, family] : standIns) {
    findings.push_back({Finding::Gravity::Different, 0, "",
                        "The typeface '" + typeface + "' is not installed here" +
                            (family.empty() ? "." : "; " + family + " stands in for it.")});
  }
}

Findings checkDrawing(FilledDeck& filled) {
  Findings findings;
  for (const deck::Damage& damage : filled.deck().damages()) {
    findings.push_back({Finding::Gravity::Broken, damage.slide, "", damage.text});
  }
  std::map<std::string, std::string> standIns;
  for (int slide = 1; slide <= filled.slideCount(); ++slide) {
    DeckPage page = filled.page(slide);
    for (std::string& problem : page.problems) {
      findings.push_back({Finding::Gravity::Broken, slide, "", std::move(problem)});
    }
    for (const render::Limitation& limitation :
         render::findLimitations(filled.deck().shapesOf(static_cast<std::int32_t>(slide)))) {
      findings.push_back(
          {Finding::Gravity::Different, slide, limitation.shape,
           (limitation.isDrawn ? "Nearly drawn: " : "Not drawn: ") + std::string(limitation.what) + "."});
    }
    for (const render::UsedFont& font : page.fonts) {
      if (!basic::EqualsIgnoreCase(font.typeface, font.family)) standIns.emplace(font.typeface, font.family);
    }
  }
  addMissingFonts(findings, standIns);
  return findings;
}

/// Of a line of the log, what a finding may say as well.
std::string_view cause(std::string_view logged) {
  constexpr std::string_view Frame = "Error while opening presentation. ";
  return logged.starts_with(Frame) ? logged.substr(Frame.size()) : logged;
}

/// Whether the line is about a column of which the finding says that it is missing.
bool isAboutColumn(std::string_view logged, std::string_view finding) {
  constexpr std::string_view Missing = " has no column '";
  const std::size_t at = finding.find(Missing);
  if (at == std::string_view::npos) return false;
  const std::string_view rest = finding.substr(at + Missing.size());
  const std::string column(rest.substr(0, rest.rfind('\'')));
  return logged.find(" of column " + column + " of row ") != std::string_view::npos ||
         (logged.find("The data have no column") != std::string_view::npos &&
          logged.find('\'' + column + '\'') != std::string_view::npos);
}

/// What the show would log, unless it was found before.
Findings checkFilling(const std::vector<std::string>& logged, const Findings& known) {
  Findings findings;
  for (const std::string& text : logged) {
    const bool isKnown = std::any_of(known.begin(), known.end(), [&](const Finding& finding) {
      return finding.text.find(cause(text)) != std::string::npos || isAboutColumn(text, finding.text);
    });
    if (!isKnown) findings.push_back({Finding::Gravity::Broken, 0, "", text});
  }
  return findings;
}

}  // namespace

Findings checkDeck(const std::string& path, platform::EventLoop& loop) {
  Findings findings;
  std::vector<bool> hiddenByAuthor(1);
  {
    const auto application = std::make_shared<deck::Application>();
    const auto deck = application->open(path, deck::Application::Damaged::Repaired);
    for (std::int32_t slide = 1; slide <= deck->slideCount(); ++slide) {
      hiddenByAuthor.push_back(deck->isHidden(slide));
    }
    append(findings, checkLinks(*deck));
    append(findings, checkCourse(deck));
  }
  if (std::string language = unknownLanguage(); !language.empty()) {
    findings.push_back({Finding::Gravity::Different, 0, "", std::move(language)});
  }
  const CollectedErrors errors;
  FilledDeck filled(path, loop);
  append(findings, checkFilling(errors.texts(), findings));
  append(findings, checkDrawing(filled));
  append(findings, checkHidden(hiddenByAuthor, filled));
  try {
    append(findings, checkOverflow(filled));
  } catch (const basic::Error& error) {
    findings.push_back(
        {Finding::Gravity::Note, 0, "", "Whether texts fit was not measured: " + error.description});
  }
  return findings;
}

}  // namespace app
