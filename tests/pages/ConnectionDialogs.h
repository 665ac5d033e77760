#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "addin/support/modGlobalFunctions.h"
#include "basic/Strings.h"
#include "fakes/FakeFormView.h"
#include "fakes/FakePowerPoint.h"
#include "fakes/JobMachine.h"
#include "model/clsPresentation.h"
#include "pages/modConnectionPages.h"
#include "support/ErrorOf.h"

namespace LF2000::test {

/// A presentation in /decks that is being edited, with its dialogs.
struct ConnectionDialogs : testing::Test {
  fakes::JobMachine machine;
  fakes::FormView view;
  std::shared_ptr<fakes::Application> host = std::make_shared<fakes::Application>();
  std::shared_ptr<fakes::Presentation> deck = std::make_shared<fakes::Presentation>();
  std::shared_ptr<clsPresentation> presentation = std::make_shared<clsPresentation>();
  std::string stored;

  ConnectionDialogs() {
    machine.UseForms(&view);
    modGlobalFunctions::HostApplication = host;
  }
  ~ConnectionDialogs() override { modGlobalFunctions::HostApplication.reset(); }
  ConnectionDialogs(const ConnectionDialogs&) = delete;
  ConnectionDialogs& operator=(const ConnectionDialogs&) = delete;

  /// Connections by their tag strings, "|" for TABs, numbered from 001.
  void Load(const std::vector<std::string>& connections) {
    deck->tags->items = {{"CORVANE VERSION", "1"}, {"CORVANE DISPLAYTYPE", "1"}};
    int number = 0;
    for (const std::string& each : connections) {
      deck->tags->items.emplace_back("CORVANE CONNECTION00" + std::to_string(++number),
                                     basic::Replace(each, "|", "\t"));
    }
    presentation->ActivePresentation(deck);
    machine.RunJobs();
  }
  void OpenNew(ConnectionKind kind, const std::string& path = {}) {
    modConnectionPages::OpenNew(kind, path, presentation,
                                [this](const std::string& number) { stored = number; });
    machine.RunJobs();
  }
  void OpenExisting(const std::string& number) {
    modConnectionPages::OpenExisting(number, presentation,
                                     [this](const std::string& each) { stored = each; });
    machine.RunJobs();
  }
  /// A stored connection, "|" for TABs.
  [[nodiscard]] std::string Tag(const std::string& number) const {
    return basic::Replace((*deck->tags)["CORVANE CONNECTION" + number], "\t", "|");
  }
  [[nodiscard]] std::string Preview() const {
    std::string text;
    for (const auto& row : view.Cells("grdPreview")) {
      text += text.empty() ? "" : "/";
      for (const std::string& cell : row) text += cell + " ";
    }
    return text;
  }
  [[nodiscard]] std::string LastComplaint() const {
    return view.complaints.empty() ? "" : view.complaints.back();
  }
};

}  // namespace LF2000::test
