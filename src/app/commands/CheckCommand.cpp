// The verb check: what an author should know before a deck goes on screens.

#include <CLI/CLI.hpp>
#include <algorithm>
#include <iostream>
#include <memory>

#include "app/commands/Commands.h"
#include "app/inspect/DeckCheck.h"
#include "app/wiring/Environment.h"
#include "app/wiring/Failure.h"
#include "app/wiring/Output.h"
#include "json/Json.h"
#include "platform/Console.h"

namespace app {

namespace {

using json::Json;

struct CheckOptions {
  std::string deck;
  bool json = false;
};

void print(const std::string& deck, const Findings& findings) {
  if (findings.empty()) {
    std::cout << deck << ": nothing to complain about\n";
    return;
  }
  for (const Finding& finding : findings) {
    std::cout << nameOf(finding.gravity) << ": ";
    if (finding.slide > 0) std::cout << "slide " << finding.slide;
    if (!finding.shape.empty()) std::cout << ", " << oneLine(finding.shape);
    std::cout << (finding.slide > 0 ? ": " : "") << platform::forTerminal(finding.text) << '\n';
  }
}

void printAsJson(const std::string& deck, const Findings& findings) {
  Json list = Json::array();
  for (const Finding& finding : findings) {
    list.push_back({{"gravity", nameOf(finding.gravity)},
                    {"slide", finding.slide},
                    {"shape", finding.shape},
                    {"text", finding.text}});
  }
  const Json json = {{"deck", deck}, {"findings", list}};
  printJson(std::cout, json);
}

void check(const CheckOptions& options, Environment& environment) {
  Findings findings = checkDeck(options.deck, environment.loop());
  std::stable_sort(findings.begin(), findings.end(),
                   [](const Finding& a, const Finding& b) { return a.slide < b.slide; });
  if (options.json) {
    printAsJson(options.deck, findings);
  } else {
    print(options.deck, findings);
  }
  const auto broken = std::count_if(findings.begin(), findings.end(), [](const Finding& finding) {
    return finding.gravity == Finding::Gravity::Broken;
  });
  if (broken > 0) {
    fail(options.deck + ": " + std::to_string(broken) + (broken == 1 ? " thing is" : " things are") +
         " broken.");
  }
}

}  // namespace

void addCheckCommand(CLI::App& program, Environment& environment) {
  auto options = std::make_shared<CheckOptions>();
  CLI::App* verb = program.add_subcommand(
      "check", "Look a deck over before it goes on screens: links, data, texts, drawing");
  verb->add_option("DECK", options->deck, "The deck")->required();
  verb->add_flag("--json", options->json, "Print as JSON");
  verb->callback([options, &environment] { check(*options, environment); });
}

}  // namespace app
