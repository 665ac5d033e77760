#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "app/wiring/AddInHost.h"
#include "fakes/FakeServices.h"
#include "platform/EventLoop.h"
#include "support/DeckBuilder.h"

namespace app::test {

/// The add-in in its host on a machine in memory. The show's own loop is a real one, and moves when a test
/// lets it.
struct ShowTest : testing::Test {
  fakes::Machine machine;
  platform::EventLoop loop;
  AddInHost host;

  std::shared_ptr<deck::Presentation> open(const support::DeckBuilder& deck) {
    return host.application().open(deck.package(), {});
  }
  /// Runs what was posted, and what that posts.
  void runPosted() {
    loop.post([this] { loop.post([this] { loop.stop(); }); });
    loop.run();
  }
  [[nodiscard]] std::string errorLog() { return machine.files.files["/addin/errors.txt"].content; }

  /// A deck whose one slide shows cells of book.xlsx.
  static support::DeckBuilder deckWithSheet() {
    support::DeckBuilder deck;
    const int slide = deck.addSlide();
    const std::string book = deck.relate(slide, "oleObject", "book.xlsx!Sheet1!R1C1:R2C2", /*external=*/true);
    deck.shapes(slide,
                "<p:graphicFrame><p:nvGraphicFramePr><p:cNvPr id=\"2\" name=\"Sheet\"/><p:cNvGraphicFramePr/>"
                "<p:nvPr/></p:nvGraphicFramePr><p:xfrm/><a:graphic><a:graphicData uri=\""
                "http://schemas.openxmlformats.org/presentationml/2006/ole\"><p:oleObj "
                "progId=\"Excel.Sheet.12\" r:id=\"" +
                    book + "\"><p:link/></p:oleObj></a:graphicData></a:graphic></p:graphicFrame>");
    return deck;
  }
};

}  // namespace app::test
