#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "app/wiring/AddInHost.h"
#include "fakes/FakeServices.h"
#include "platform/EventLoop.h"
#include "support/DeckBuilder.h"

namespace app::test {

/// The fake machine's files, behind a hook that sees every path that is looked up.
class HookedFiles final : public host::Files {
 public:
  explicit HookedFiles(fakes::Files& files) : files_(files) {}
  /// May throw, and may run the loop as a slow drive does.
  std::function<void(std::string_view)> onLocalPath = [](std::string_view) {};

  std::unique_ptr<host::InputFile> OpenForInput(std::string_view path) override {
    return files_.OpenForInput(path);
  }
  void Append(std::string_view path, std::string_view text) override { files_.Append(path, text); }
  void Kill(std::string_view path) override { files_.Kill(path); }
  void Name(std::string_view path, std::string_view newPath) override { files_.Name(path, newPath); }
  [[nodiscard]] basic::Date FileDateTime(std::string_view path) const override {
    return files_.FileDateTime(path);
  }
  [[nodiscard]] std::string LocalPath(std::string_view path) const override {
    onLocalPath(path);
    return files_.LocalPath(path);
  }
  [[nodiscard]] std::string FileWithin(std::string_view folder, std::string_view name) const override {
    return files_.FileWithin(folder, name);
  }
  [[nodiscard]] std::string TempPath() const override { return files_.TempPath(); }
  [[nodiscard]] std::string TempFileName(std::string_view folder, std::string_view prefix) override {
    return files_.TempFileName(folder, prefix);
  }

 private:
  fakes::Files& files_;
};

/// The add-in in its host on a machine in memory. The show's own loop is a real one, and moves when a test
/// lets it.
struct ShowTest : testing::Test {
  fakes::Machine machine;
  HookedFiles files{machine.files};
  platform::EventLoop loop;
  AddInHost host;

  ShowTest() {
    host::Services services = host::Current();
    services.files = &files;
    host::Use(services);
  }

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
